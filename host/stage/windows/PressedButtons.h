#pragma once

#include <QPointer>
#include <vector>

class QAction;
class QWidget;

namespace stage {

/// The buttons of plug-ins' toolbars that are down, as for animating objects: a plug-in lets go of them where
/// a level is put together anew, and the user finds them as they were.
class PressedButtons {
public:
    /// Those that are down now in the toolbars of this window.
    explicit PressedButtons(const QWidget& window);

    /// Presses those of them that are up now and can be pressed.
    void PressAgain() const;

private:
    std::vector<QPointer<QAction>> buttons;
};

} // namespace stage

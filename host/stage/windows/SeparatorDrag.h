#pragma once

#include <QMainWindow>

namespace stage {

/// Ends the drag of a line between docks where the mouse let it go. QMainWindow moves the line when it is
/// idle again and forgets what is left to move at the release; in a window whose views take a while to draw,
/// a quick pull would take the line along only a bit of its way. The window owns the object.
class SeparatorDrag : public QObject {
public:
    explicit SeparatorDrag(QMainWindow& owner);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QMainWindow& window;
};

} // namespace stage

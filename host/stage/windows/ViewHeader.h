#pragma once

#include "host/stage/host/ViewLook.h"

#include <QToolButton>

class QMenu;

namespace stage {

class ViewArea;
class ViewWidget;

/// The button in a view's upper left corner: says from where the view looks and how it shows bodies, and
/// opens the menu that changes both. Hidden while a plug-in holds the view.
class ViewHeader : public QToolButton {
    Q_OBJECT
public:
    ViewHeader(ViewArea& viewArea, ViewWidget& view);

    /// Shows what the view is now. While the view is painted.
    void Follow();
    /// The entries for a view's look; also those of a context menu.
    static void Fill(QMenu& menu, ViewArea& area, int view);

private:
    QString Text() const;

    ViewArea& area;
    const int number;
};

} // namespace stage

#include "host/stage/windows/films/FilmListMenu.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QMenu>
#include <utility>

namespace stage {

FilmListMenu::FilmListMenu(QAbstractItemView& filmList, std::function<void(int)> choose,
                           const QList<QAction*>& actions)
    : QObject(&filmList), list(filmList), chooseLine(std::move(choose)) {
    for (QAction* action : actions) {
        entries.append(action);
    }
    list.installEventFilter(this); // the key for menus
    list.viewport()->installEventFilter(this);
}

bool FilmListMenu::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ContextMenu) {
        return QObject::eventFilter(watched, event);
    }
    const auto& asked = static_cast<const QContextMenuEvent&>(*event);
    const bool byKey = asked.reason() == QContextMenuEvent::Keyboard;
    const QPoint place = byKey ? list.visualRect(list.currentIndex()).center()
                               : list.viewport()->mapFromGlobal(asked.globalPos());
    // After the event: the menu runs a loop of its own, in which the list may go.
    QMetaObject::invokeMethod(
        this, [this, place] { Show(place); }, Qt::QueuedConnection);
    event->accept();
    return true;
}

void FilmListMenu::Show(const QPoint& inViewport) {
    const QPoint screen = list.viewport()->mapToGlobal(inViewport);
    const QPointer<FilmListMenu> alive(this);
    if (const QModelIndex line = list.indexAt(inViewport); line.isValid()) {
        chooseLine(line.row());
    }
    if (alive.isNull()) {
        return;
    }
    QMenu menu;
    menu.setObjectName("FilmListMenu");
    for (const QPointer<QAction>& entry : entries) {
        if (entry.isNull()) {
            menu.addSeparator();
        } else {
            menu.addAction(entry);
        }
    }
    menu.exec(screen);
}

} // namespace stage

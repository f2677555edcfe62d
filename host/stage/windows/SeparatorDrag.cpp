#include "host/stage/windows/SeparatorDrag.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QLayout>

namespace stage {

SeparatorDrag::SeparatorDrag(QMainWindow& owner) : QObject(&owner), window(owner) {
    window.installEventFilter(this);
}

/// The move that is left is the one timer of the window itself that is due at once.
bool SeparatorDrag::eventFilter(QObject* watched, QEvent* event) {
    const auto* dispatcher = QAbstractEventDispatcher::instance();
    if (watched == &window && event->type() == QEvent::MouseButtonRelease && dispatcher != nullptr) {
        for (const auto& timer : dispatcher->registeredTimers(&window)) {
            if (timer.interval == 0) {
                QTimerEvent fires(timer.timerId);
                QCoreApplication::sendEvent(&window, &fires);
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace stage

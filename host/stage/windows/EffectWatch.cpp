#include "host/stage/windows/EffectWatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <utility>

namespace stage {

void EffectWatch::NoteRedraw() {
    ++effects;
    drawnSinceStop = true;
}

void EffectWatch::NoteFilmStopped() {
    if (std::exchange(drawnSinceStop, false)) {
        ++effects;
    }
}

bool EffectWatch::HasEffect(const std::function<void()>& command) {
    const int before = effects;
    QCoreApplication::instance()->installEventFilter(this); // once, also when commands run inside each other
    command();
    QCoreApplication::instance()->removeEventFilter(this);
    return effects != before;
}

bool EffectWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        const auto* widget = qobject_cast<QWidget*>(watched);
        // A tip over a button comes by itself.
        if (widget != nullptr && widget->isWindow() && widget->windowType() != Qt::ToolTip) {
            ++effects;
        }
    }
    return false;
}

} // namespace stage

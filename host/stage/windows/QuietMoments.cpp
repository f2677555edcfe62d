#include "host/stage/windows/QuietMoments.h"

#include "host/engine/Film.h"
#include "host/stage/host/EditorHost.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace stage {

namespace {

bool IsInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Wheel:
    case QEvent::Drop:
    case QEvent::InputMethod:
        return true;
    default:
        return false;
    }
}

} // namespace

QuietMoments::QuietMoments(EditorHost& editorHost, QObject* parent) : QObject(parent), host(editorHost) {
    pause.setSingleShot(true);
    pause.setInterval(kPauseMs);
    connect(&pause, &QTimer::timeout, this, &QuietMoments::OnPause);
    QCoreApplication::instance()->installEventFilter(this);
}

bool QuietMoments::eventFilter(QObject* watched, QEvent* event) {
    if (IsInput(event->type())) {
        pause.start();
    }
    return QObject::eventFilter(watched, event);
}

void QuietMoments::Request() {
    if (!pause.isActive()) {
        pause.start();
    }
}

bool QuietMoments::IsQuiet() const {
    const engine::LevelData* data = host.level.Data();
    const auto* film =
        data != nullptr ? static_cast<const engine::Film*>(data->filmManager->currentFilm) : nullptr;
    const bool isPlaying = film != nullptr && film->IsPlaying();
    return !isPlaying && QApplication::mouseButtons() == Qt::NoButton && QWidget::mouseGrabber() == nullptr &&
           QApplication::activePopupWidget() == nullptr && QApplication::activeModalWidget() == nullptr;
}

void QuietMoments::OnPause() {
    if (IsQuiet()) {
        emit Quiet();
    } else {
        pause.start();
    }
}

} // namespace stage

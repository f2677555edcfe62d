#include "host/stage/windows/browse/EffectPicture.h"

#include "host/stage/windows/ThemeColors.h"

#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QPainterPath>

namespace stage {

namespace {
/// A picture that could not be drawn for a while goes on where it was.
constexpr float kLongestStep = 0.25f;
constexpr double kCorner = 4.0;
} // namespace

EffectPicture::EffectPicture(QWidget* parent) : QWidget(parent) {
    setMinimumSize(200, 160);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    timer.setInterval(1000 / kFramesPerSecond);
    connect(&timer, &QTimer::timeout, this,
            [this] { Advance(std::min(static_cast<float>(elapsed.restart()) / 1000.0f, kLongestStep)); });
}

void EffectPicture::Show(std::optional<EffectSimulation> simulation, const QString& text) {
    shown.reset();
    if (simulation.has_value()) {
        shown.emplace(std::move(*simulation));
    }
    message = text;
    time = 0.0f;
    RunTimer();
    update();
}

void EffectPicture::Advance(float seconds) {
    if (shown.has_value()) {
        time = std::fmod(time + seconds, shown->LoopSeconds());
        update();
    }
}

void EffectPicture::RunTimer() {
    if (shown.has_value() && isVisible()) {
        elapsed.start();
        timer.start();
    } else {
        timer.stop();
    }
}

void EffectPicture::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    RunTimer();
}

void EffectPicture::hideEvent(QHideEvent* event) {
    timer.stop();
    QWidget::hideEvent(event);
}

void EffectPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath frame;
    frame.addRoundedRect(QRectF(rect()), kCorner, kCorner);
    painter.setClipPath(frame);
    if (shown.has_value()) {
        shown->Paint(painter, QRectF(rect()), time);
        return;
    }
    painter.fillRect(rect(), QColor::fromRgb(PresentColors().title));
    painter.setPen(QColor::fromRgb(Color::kMuted));
    painter.drawText(rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, message);
}

} // namespace stage

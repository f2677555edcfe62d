#include "host/stage/windows/browse/WaveView.h"

#include "host/stage/windows/ThemeColors.h"

#include <algorithm>
#include <QMouseEvent>
#include <QPainter>

namespace stage {

namespace {
constexpr double kCorner = 4.0;
constexpr QRgb kPlate = 0xff26303a;
constexpr QRgb kLine = 0xff3d4a57;
constexpr QRgb kWave = 0xff4fb3c6;
constexpr QRgb kPlayed = 0xff9fe3ee;
/// The part of the height that the loudest sample takes.
constexpr double kHeightShare = 0.9;
} // namespace

WaveView::WaveView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void WaveView::Show(std::shared_ptr<sound::SoundWave> shown, const QString& text) {
    wave = std::move(shown);
    message = text;
    cursorShare = -1.0f;
    setCursor(wave != nullptr ? Qt::PointingHandCursor : Qt::ArrowCursor);
    update();
}

void WaveView::SetCursorAt(float share) {
    cursorShare = share;
    update();
}

void WaveView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && wave != nullptr) {
        const double share = event->position().x() / std::max(width(), 1);
        emit Pressed(static_cast<float>(std::clamp(share, 0.0, 1.0)));
    }
}

void WaveView::PaintWave(QPainter& painter) {
    const double middle = height() / 2.0;
    const double reach = middle * kHeightShare;
    const auto columns = static_cast<float>(width());
    painter.setPen(QColor::fromRgb(kLine));
    painter.drawLine(QPointF(0.0, middle), QPointF(width(), middle));
    const int read = static_cast<int>(wave->ShareRead() * columns);
    for (int x = 0; x < read; ++x) {
        const sound::SoundWave::Range range =
            wave->Between(static_cast<float>(x) / columns, static_cast<float>(x + 1) / columns);
        const bool isPlayed = static_cast<float>(x) < cursorShare * columns;
        painter.setPen(QColor::fromRgb(isPlayed ? kPlayed : kWave));
        painter.drawLine(QPointF(x + 0.5, middle - double{range.high} * reach),
                         QPointF(x + 0.5, middle - double{range.low} * reach));
    }
    if (cursorShare >= 0.0f) {
        const double x = double{std::min(cursorShare, 1.0f)} * (width() - 1) + 0.5;
        painter.setPen(QPen(QColor::fromRgb(Color::kFilm), 1.5));
        painter.drawLine(QPointF(x, 0.0), QPointF(x, height()));
    }
}

void WaveView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(wave != nullptr ? QColor::fromRgb(kPlate) : QColor::fromRgb(PresentColors().title));
    painter.drawRoundedRect(rect(), kCorner, kCorner);
    if (wave != nullptr) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        PaintWave(painter);
        return;
    }
    painter.setPen(QColor::fromRgb(Color::kMuted));
    painter.drawText(rect().adjusted(10, 10, -10, -10), Qt::AlignCenter | Qt::TextWordWrap, message);
}

} // namespace stage

#include "host/stage/windows/browse/PlayBar.h"

#include "host/stage/windows/ThemeColors.h"

#include <cmath>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QToolButton>

namespace stage {

namespace {

constexpr int kIntervalMs = 25;
constexpr int kIconSize = 20;
constexpr float kFrameTolerance = 0.01f; ///< frames, for what the float of a whole frame lacks

/// A slider that goes to where it is clicked.
class ScrubSlider : public QSlider {
public:
    explicit ScrubSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {}

protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) {
            setSliderDown(true);
            Follow(*event);
        }
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (isSliderDown()) {
            Follow(*event);
        }
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) {
            setSliderDown(false);
        }
    }

private:
    void Follow(const QMouseEvent& event) {
        const int handle = style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
        setValue(QStyle::sliderValueFromPosition(
            minimum(), maximum(), qRound(event.position().x()) - handle / 2, width() - handle));
    }
};

QIcon DrawnIcon(bool pause, const QColor& color) {
    constexpr int kFactor = 3; // drawn large, so that it is sharp on any screen
    QPixmap picture(kIconSize * kFactor, kIconSize * kFactor);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(kFactor, kFactor);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    if (pause) {
        painter.drawRoundedRect(QRectF(5, 4, 3.6, 12), 1, 1);
        painter.drawRoundedRect(QRectF(11.4, 4, 3.6, 12), 1, 1);
    } else {
        QPainterPath arrow;
        arrow.moveTo(6, 3.5);
        arrow.lineTo(16, 10);
        arrow.lineTo(6, 16.5);
        arrow.closeSubpath();
        painter.drawPath(arrow);
    }
    painter.end();
    return QIcon(picture);
}

} // namespace

PlayBar::PlayBar(QWidget* parent)
    : QWidget(parent), button(new QToolButton(this)), slider(new ScrubSlider(this)), label(new QLabel(this)) {
    button->setIconSize(QSize(kIconSize, kIconSize));
    button->setAutoRaise(true);
    slider->setFocusPolicy(Qt::NoFocus); // the arrows are the list's
    button->setFocusPolicy(Qt::TabFocus);
    label->setProperty("role", "hint");
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance("00.00 / 00.00 s   frame 0000"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(button);
    layout->addWidget(slider, 1);
    layout->addWidget(label);
    timer.setInterval(kIntervalMs);
    connect(&timer, &QTimer::timeout, this,
            [this] { Advance(static_cast<float>(elapsed.restart()) / 1000.0f); });
    connect(button, &QToolButton::clicked, this, [this] { SetPlaying(!playing); });
    connect(slider, &QSlider::valueChanged, this, [this](int milliseconds) {
        clock.SetPosition(static_cast<float>(milliseconds) / 1000.0f);
        ShowPosition();
        emit Moved(clock.Position());
    });
    Start(0.0f);
}

void PlayBar::Start(float clipSeconds) {
    clock.Start(clipSeconds);
    const QSignalBlocker quiet(slider);
    slider->setRange(0, static_cast<int>(std::lround(clock.Duration() * 1000.0f)));
    slider->setPageStep(std::max(slider->maximum() / 10, 1));
    setEnabled(clock.Duration() > 0.0f);
    Update();
    ShowPosition();
}

bool PlayBar::IsPlaying() const {
    return playing && clock.Duration() > 0.0f;
}

void PlayBar::SetPlaying(bool plays) {
    if (plays != playing) {
        playing = plays;
        Update();
        emit PlayingChanged();
    }
}

void PlayBar::Update() {
    button->setIcon(DrawnIcon(playing, QColor::fromRgb(isEnabled() ? Color::kIcon : Color::kMuted)));
    button->setToolTip(playing ? tr("Hold (Space in the list)") : tr("Play (Space in the list)"));
    RunTimer();
}

void PlayBar::RunTimer() {
    if (!IsPlaying() || !isVisible()) {
        timer.stop();
    } else if (!timer.isActive()) {
        elapsed.start();
        timer.start();
    }
}

void PlayBar::Advance(float seconds) {
    if (!slider->isSliderDown() && IsPlaying()) {
        clock.Advance(seconds);
        ShowPosition();
        emit Moved(clock.Position());
    }
}

void PlayBar::ShowPosition() {
    const QSignalBlocker quiet(slider);
    slider->setValue(static_cast<int>(std::lround(clock.Position() * 1000.0f)));
    label->setText(clock.Duration() > 0.0f
                       ? tr("%1 / %2 s   frame %3")
                             .arg(clock.Position(), 0, 'f', 2)
                             .arg(clock.Duration(), 0, 'f', 2)
                             .arg(static_cast<int>(clock.Position() * kFramesPerSecond + kFrameTolerance))
                       : QString());
}

void PlayBar::showEvent(QShowEvent*) {
    RunTimer();
}

void PlayBar::hideEvent(QHideEvent*) {
    timer.stop();
}

} // namespace stage

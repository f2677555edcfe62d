#pragma once

#include "host/stage/windows/browse/EffectPainter.h"

#include <optional>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

namespace stage {

/// A picture in which an effect runs, again and again. Its timer runs only while it can be seen.
class EffectPicture : public QWidget {
    Q_OBJECT
public:
    static constexpr int kFramesPerSecond = 30;

    explicit EffectPicture(QWidget* parent);

    /// Starts the effect anew; without one the text stands in the picture's place.
    void Show(std::optional<EffectSimulation> simulation, const QString& text = QString());
    /// What the timer does: goes on by these seconds.
    void Advance(float seconds);
    /// Seconds since the effect's last beginning.
    float Time() const { return time; }
    bool IsTicking() const { return timer.isActive(); }
    const QString& Text() const { return message; }
    bool HasEffect() const { return shown.has_value(); }

    QSize sizeHint() const override { return {420, 360}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void RunTimer();

    std::optional<EffectPainter> shown;
    QString message;
    QTimer timer;
    QElapsedTimer elapsed;
    float time = 0.0f;
};

} // namespace stage

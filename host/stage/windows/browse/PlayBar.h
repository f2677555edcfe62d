#pragma once

#include "host/stage/windows/browse/ClipClock.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QSlider;
class QToolButton;

namespace stage {

/// Plays an animation round and round: a button that starts and holds it, a slider to go through it, and
/// where it stands. Its timer runs only while it plays and can be seen.
class PlayBar : public QWidget {
    Q_OBJECT
public:
    static constexpr int kFramesPerSecond = 30;

    explicit PlayBar(QWidget* parent);

    /// From the start of an animation this long; 0 has nothing to play.
    void Start(float clipSeconds);
    /// What the timer does: goes on by these seconds, unless the slider is held.
    void Advance(float elapsed);
    void SetPlaying(bool plays);
    /// Playing, and there is something to play.
    bool IsPlaying() const;
    float Position() const { return clock.Position(); }
    /// The picture timer runs.
    bool IsTicking() const { return timer.isActive(); }

    QToolButton* button;
    QSlider* slider; ///< milliseconds

signals:
    /// Another position, seconds.
    void Moved(float seconds);
    void PlayingChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Update();
    void RunTimer();
    void ShowPosition();

    QLabel* label;
    ClipClock clock;
    QTimer timer;
    QElapsedTimer elapsed;
    bool playing = true;
};

} // namespace stage

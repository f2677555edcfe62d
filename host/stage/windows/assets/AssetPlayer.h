#pragma once

#include "host/sound/SoundPlayer.h"
#include "host/stage/windows/assets/AssetFiles.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QLabel;
class QStackedWidget;
class QToolButton;

namespace stage {

class EffectPicture;
class WaveView;

/// A sound with its wave, or an effect that runs, below the list of assets; hidden while nothing plays.
class AssetPlayer : public QWidget {
    Q_OBJECT
public:
    explicit AssetPlayer(QWidget* parent);
    ~AssetPlayer() override;

    /// Plays a sound or an effect from its start; what can't be played is told in its place.
    void Play(const Asset& asset);
    /// Silence, and nothing to see.
    void Close();
    bool IsPlaying() const { return isVisibleTo(parentWidget()); }
    const QString& Name() const { return playing; }

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void PlaySound(const std::string& path, float share);
    void PlayEffect(const Asset& asset);
    void Advance();
    void Silence();

    QStackedWidget* stack;
    WaveView* wave;
    EffectPicture* effect;
    QLabel* label;
    sound::SoundPlayer player;
    int sound = 0; ///< the player's number; 0 in silence
    QString playing;
    std::string file;     ///< of the sound
    float startAt = 0.0f; ///< seconds
    QTimer ticker;
    QElapsedTimer elapsed;
};

} // namespace stage

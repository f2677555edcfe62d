#pragma once

#include "host/sound/SoundPlayer.h"

#include <functional>
#include <memory>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class QFileDialog;
class QLabel;
class QPushButton;

namespace stage {

class WaveCache;
class WaveView;

/// What stands beside the list of a dialog that opens sounds: the chosen file's wave, its length, rate and
/// channels, and a button that plays it. The space bar in the list plays and stops too. Another file, the end
/// of the dialog and hiding stop the sound. Without a sound device it plays in silence and says so.
class SoundPreview : public QWidget {
    Q_OBJECT
public:
    /// For SetFilePreview: a preview for dialogs that offer wav or ogg files, null for others.
    /// The folder of the open level, asked each time, is among the places of the dialog; none while empty.
    static std::function<QWidget*(QFileDialog&)> Maker(std::function<QString()> levelFolder);

    /// Belongs to the dialog, and gives it the size that it had last.
    SoundPreview(QFileDialog& fileDialog, std::shared_ptr<WaveCache> waveCache);

    void ShowFile(const QString& path);
    /// Plays from a share of the sound, 0 to 1.
    void PlayFrom(float share);
    void Stop();
    bool IsPlaying() const { return playing; }
    /// Where it plays, seconds from the sound's start.
    float Position() const { return position; }
    /// What the timer of the cursor does: goes on by these seconds.
    void Advance(float seconds);
    /// What the timer of the drawing does: reads on for a moment.
    void ReadOn();
    bool IsReading() const { return readTimer.isActive(); }
    bool IsTicking() const { return playTimer.isActive(); }

    WaveView* wave;
    QLabel* name;
    QLabel* info;
    QPushButton* button;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Toggle();
    void WatchLists();
    void WidenColumns();
    void OfferFolder(const QString& folder);
    void KeepSize();
    void UpdateButton();

    QFileDialog& dialog;
    std::shared_ptr<WaveCache> cache;
    QString file; ///< empty while no sound can be played
    sound::SoundPlayer player;
    int sound = 0; ///< the player's number; 0 in silence
    bool playing = false;
    float position = 0.0f;
    QTimer readTimer;
    QTimer playTimer;
    QElapsedTimer elapsed;
};

} // namespace stage

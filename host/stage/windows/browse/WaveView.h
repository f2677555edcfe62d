#pragma once

#include "host/sound/SoundWave.h"

#include <memory>
#include <QString>
#include <QWidget>

namespace stage {

/// The drawing of a sound with a cursor where it plays.
class WaveView : public QWidget {
    Q_OBJECT
public:
    explicit WaveView(QWidget* parent);

    /// Null shows the text in its place.
    void Show(std::shared_ptr<sound::SoundWave> shown, const QString& text = QString());
    /// A share of the sound, 0 to 1; negative for none.
    void SetCursorAt(float share);
    float CursorShare() const { return cursorShare; }
    const QString& Text() const { return message; }
    const std::shared_ptr<sound::SoundWave>& Wave() const { return wave; }

    QSize sizeHint() const override { return {260, 140}; }
    QSize minimumSizeHint() const override { return {180, 90}; }

signals:
    /// The user points at a share of the sound.
    void Pressed(float share);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void PaintWave(QPainter& painter);

    std::shared_ptr<sound::SoundWave> wave;
    QString message;
    float cursorShare = -1.0f;
};

} // namespace stage

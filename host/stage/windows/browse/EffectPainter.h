#pragma once

#include "host/stage/effects/EffectSimulation.h"

#include <QRectF>

class QPainter;
class QPointF;

namespace stage {

/// Draws an effect at a time into a rectangle, from a little above and large enough to be seen whole.
class EffectPainter {
public:
    explicit EffectPainter(EffectSimulation ownSimulation);

    /// `time` is from the start of a showing, which begins with the effect in full swing if it goes on for
    /// ever.
    void Paint(QPainter& painter, const QRectF& place, float time) const;
    /// What is drawn of an effect without a blind: all of it, unless that covers the picture more often than
    /// kMostCovers; then evenly less, so that no file can make the picture slow.
    std::vector<EffectSprite> Sprites(const QRectF& place, float time) const;
    static constexpr double kMostCovers = 30.0;
    /// After so many seconds the showing begins anew.
    float LoopSeconds() const;

private:
    /// From the level's units to pixels of a picture.
    struct Lens {
        QPointF middle;
        double scale; ///< pixels a unit
        QPointF At(const Vector3& place) const;
    };

    void Measure();
    Lens LensFor(const QRectF& place) const;
    /// The effect's own time.
    float TimeOf(float time) const;
    float KeySeconds() const;
    void PaintSprites(QPainter& painter, const QRectF& place, float time) const;
    void PaintBlind(QPainter& painter, const QRectF& place, float time) const;

    EffectSimulation simulation;
    QRectF extent; ///< what the effect needs, in units as they are projected, up is positive
};

} // namespace stage

#pragma once

#include "host/stage/effects/Effect.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

namespace stage {

/// One thing to draw.
struct EffectSprite {
    Vector3 place;
    Vector3 tail;      ///< the other end of a line; `place` for other shapes
    float size = 0.0f; ///< diameter, or width of a line
    float turn = 0.0f; ///< degrees
    float rays = 0.0f;
    EffectShape shape = EffectShape::Glow;
    bool glow = false; ///< its light is added to what is behind
    EffectColor color;
};

/// What an effect looks like at a time. No clock and no state: the same effect, seed and time give the same
/// sprites, in whatever order they are asked for. Space: the key's point is 0, its normal y, its forward z;
/// units.
class EffectSimulation {
public:
    /// Where a moving thing is at a time.
    using Path = std::function<Vector3(float seconds)>;

    EffectSimulation(Effect ownEffect, std::uint32_t ownSeed);

    /// `time` is from the effect's start; before it there is nothing. From `stop` on no new particles come.
    std::vector<EffectSprite> At(float time, float stop = std::numeric_limits<float>::infinity()) const;
    /// What lies over the whole picture, for a key of `length` seconds; opacity 0 unless it is a blind.
    EffectColor Screen(float time, float length) const;
    /// How long the effect takes by itself; 0 for one that goes on.
    float Seconds() const;
    /// What a trace follows; without one it is DemoPath.
    void SetPath(Path newPath) { path = std::move(newPath); }
    /// A lying eight, 200 units to each side and 80 up and down, once in four seconds.
    static Vector3 DemoPath(float seconds);

    const Effect& TheEffect() const { return effect; }

private:
    float Random(std::uint32_t number, std::uint32_t channel) const;
    void Sequence(const SequenceEffect& looks, float time, std::vector<EffectSprite>& sprites) const;
    void Particles(const ParticleEffect& looks, float time, float stop,
                   std::vector<EffectSprite>& sprites) const;
    void Trace(const TraceEffect& looks, float time, std::vector<EffectSprite>& sprites) const;
    void Marks(const TraceEffect& looks, float time, std::vector<EffectSprite>& sprites) const;
    void Rain(const RainEffect& looks, float time, std::vector<EffectSprite>& sprites) const;

    Effect effect;
    std::uint32_t seed;
    Path path;
};

} // namespace stage

#pragma once

#include <string>
#include <variant>
#include <vector>

namespace stage {

/// The kinds of effects, by the codes that plug-ins ask for them with.
enum class EffectKind { Sequence = 1, Particle = 2, Trace = 3, Flare = 4, Rain = 5, Blind = 6 };
constexpr int kEffectKinds = 6;

/// The kind of a code; false for a code that means none.
bool EffectKindOf(int code, EffectKind& kind);
/// Also the name of the kind's folder, as "particle".
const char* EffectKindName(EffectKind kind);

/// Red, green, blue and opacity, 0 to 1 each.
struct EffectColor {
    float r = 1.0f;
    float g = 1.0f;
    float b = 1.0f;
    float a = 1.0f;
    bool operator==(const EffectColor&) const = default;
};

/// What a single part of an effect looks like.
enum class EffectShape { Glow, Ring, Star, Bolt, Line };

// Lengths are units of the level (centimetres), times seconds, angles degrees, sizes diameters. The ranges of
// the numbers are in EffectFile.cpp.

/// One moment of a sequence; until the next one its looks go over evenly into that one's.
struct EffectFrame {
    float seconds = 0.1f;
    float size = 100.0f;
    float turn = 0.0f;
    EffectColor color;
};

/// A picture that goes through frames once: an explosion, a stroke of lightning.
struct SequenceEffect {
    std::vector<EffectFrame> frames{EffectFrame{}};
    EffectShape shape = EffectShape::Glow;
    float rays = 8.0f; ///< of a star, and bends of a bolt
    bool glow = true;
};

/// Particles that leave a disc in a cone around the key's normal, fly, fall and change.
struct ParticleEffect {
    float rate = 20.0f; ///< particles a second
    float life = 1.5f;
    float variation = 0.3f; ///< by which share life and speed differ from particle to particle
    float speed = 100.0f;
    float spread = 20.0f; ///< half the cone's angle
    float radius = 0.0f;  ///< of the disc
    float gravity = 0.0f; ///< downwards, units a second each second
    float sizeBegin = 10.0f;
    float sizeEnd = 10.0f;
    EffectColor colorBegin;
    EffectColor colorEnd{1.0f, 1.0f, 1.0f, 0.0f};
    bool glow = false;
};

/// What a moving thing leaves behind: a ribbon, or marks every so many units.
struct TraceEffect {
    float length = 1.0f; ///< seconds that a place of the trace lasts
    float width = 10.0f;
    float step = 0.0f; ///< units between marks, 0 for an unbroken ribbon
    EffectColor colorBegin;
    EffectColor colorEnd{1.0f, 1.0f, 1.0f, 0.0f};
    bool glow = false;
};

/// A light that shines into the eye.
struct FlareEffect {
    float size = 100.0f;
    float rays = 0.0f;
    float halo = 2.0f;  ///< times the size, 0 for none
    float pulse = 0.0f; ///< times a second
    float depth = 0.0f; ///< which share of the light a pulse takes away
    EffectColor color;
};

/// What falls everywhere: drops, flakes, leaves. A box around the eye, repeated.
struct RainEffect {
    float drops = 300.0f; ///< in the box
    float speed = 800.0f;
    float wind = 0.0f; ///< units a second sideways
    float sway = 0.0f; ///< units to each side, once in two seconds
    float size = 2.0f;
    float length = 0.0f; ///< of the streak, 0 for round drops
    float area = 600.0f; ///< the box's side
    float variation = 0.1f;
    EffectColor color;
};

/// A colour over the whole picture.
struct BlindEffect {
    EffectColor color{0.0f, 0.0f, 0.0f, 1.0f};
    float opacity = 1.0f;
    float fadeIn = 0.5f;
    float fadeOut = 0.5f;
};

/// One effect as its file tells it.
struct Effect {
    std::string about; ///< a line for the user, may be empty
    std::variant<SequenceEffect, ParticleEffect, TraceEffect, FlareEffect, RainEffect, BlindEffect> looks;

    EffectKind Kind() const { return static_cast<EffectKind>(looks.index() + 1); }
};

} // namespace stage

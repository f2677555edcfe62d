#include "host/stage/effects/EffectSimulation.h"

#include "host/engine/Math.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace stage {

using engine::operator+;
using engine::operator-;
using engine::operator*;

namespace {

constexpr float kTurn = 2.0f * std::numbers::pi_v<float>;
/// Seconds between the places of a ribbon.
constexpr float kTraceStep = 1.0f / 60.0f;
constexpr int kMaxTracePlaces = 600;
constexpr float kSwaySeconds = 2.0f;

float Mix(float from, float to, float share) {
    return from + (to - from) * share;
}

EffectColor Mix(const EffectColor& from, const EffectColor& to, float share) {
    return {Mix(from.r, to.r, share), Mix(from.g, to.g, share), Mix(from.b, to.b, share),
            Mix(from.a, to.a, share)};
}

/// Into 0 to `size`, the end not included.
float Wrap(float value, float size) {
    const float rest = std::fmod(value, size);
    return rest < 0.0f ? rest + size : rest;
}

EffectColor WithOpacity(EffectColor color, float share) {
    color.a *= share;
    return color;
}

void Flare(const FlareEffect& looks, float time, std::vector<EffectSprite>& sprites) {
    const float light = 1.0f - looks.depth * (0.5f - 0.5f * std::cos(kTurn * looks.pulse * time));
    EffectSprite part;
    part.glow = true;
    if (looks.halo > 0.0f) {
        part.size = looks.size * looks.halo;
        part.color = WithOpacity(looks.color, 0.25f * light);
        sprites.push_back(part);
    }
    part.size = looks.size;
    part.color = WithOpacity(looks.color, light);
    sprites.push_back(part);
    if (looks.rays >= 1.0f) {
        part.shape = EffectShape::Star;
        part.size = looks.size * 2.0f;
        part.rays = std::floor(looks.rays);
        part.color = WithOpacity(looks.color, 0.6f * light);
        sprites.push_back(part);
    }
}

} // namespace

EffectSimulation::EffectSimulation(Effect ownEffect, std::uint32_t ownSeed)
    : effect(std::move(ownEffect)), seed(ownSeed), path(DemoPath) {
}

Vector3 EffectSimulation::DemoPath(float seconds) {
    const float angle = kTurn * seconds / 4.0f;
    return {200.0f * std::sin(angle), 80.0f * std::sin(2.0f * angle), 0.0f};
}

float EffectSimulation::Random(std::uint32_t number, std::uint32_t channel) const {
    // Three rounds of multiply and shift leave no pattern that an eye can see.
    std::uint32_t bits = seed * 0x9E3779B9u + number * 0x85EBCA6Bu + channel * 0xC2B2AE35u + 0x27D4EB2Fu;
    for (int round = 0; round < 3; ++round) {
        bits ^= bits >> 15;
        bits *= 0x2C1B3C6Du;
        bits ^= bits >> 12;
    }
    return static_cast<float>(bits >> 8) / 16777216.0f;
}

float EffectSimulation::Seconds() const {
    if (const auto* sequence = std::get_if<SequenceEffect>(&effect.looks)) {
        float seconds = 0.0f;
        for (const EffectFrame& frame : sequence->frames) {
            seconds += frame.seconds;
        }
        return seconds;
    }
    return 0.0f;
}

EffectColor EffectSimulation::Screen(float time, float length) const {
    const auto* blind = std::get_if<BlindEffect>(&effect.looks);
    if (blind == nullptr || !(time >= 0.0f && time <= length)) {
        return {0.0f, 0.0f, 0.0f, 0.0f};
    }
    float share = blind->opacity;
    if (time < blind->fadeIn) {
        share *= time / blind->fadeIn;
    }
    if (length - time < blind->fadeOut) {
        share *= (length - time) / blind->fadeOut;
    }
    return WithOpacity(blind->color, share);
}

std::vector<EffectSprite> EffectSimulation::At(float time, float stop) const {
    std::vector<EffectSprite> sprites;
    // Asked this way round for what is no number. A day is more than any film has.
    if (!(time >= 0.0f && time <= 86400.0f)) {
        return sprites;
    }
    if (const auto* sequence = std::get_if<SequenceEffect>(&effect.looks)) {
        Sequence(*sequence, time, sprites);
    } else if (const auto* particles = std::get_if<ParticleEffect>(&effect.looks)) {
        Particles(*particles, time, stop, sprites);
    } else if (const auto* trace = std::get_if<TraceEffect>(&effect.looks)) {
        trace->step > 0.0f ? Marks(*trace, time, sprites) : Trace(*trace, time, sprites);
    } else if (const auto* flare = std::get_if<FlareEffect>(&effect.looks)) {
        Flare(*flare, time, sprites);
    } else if (const auto* rain = std::get_if<RainEffect>(&effect.looks)) {
        Rain(*rain, time, sprites);
    }
    return sprites;
}

void EffectSimulation::Sequence(const SequenceEffect& looks, float time,
                                std::vector<EffectSprite>& sprites) const {
    float start = 0.0f;
    for (std::size_t i = 0; i < looks.frames.size(); ++i) {
        const EffectFrame& frame = looks.frames[i];
        if (time < start + frame.seconds) {
            const EffectFrame& next = looks.frames[std::min(i + 1, looks.frames.size() - 1)];
            const float share = (time - start) / frame.seconds;
            EffectSprite sprite;
            sprite.size = Mix(frame.size, next.size, share);
            sprite.turn = Mix(frame.turn, next.turn, share);
            sprite.color = Mix(frame.color, next.color, share);
            sprite.shape = looks.shape;
            sprite.rays = std::floor(looks.rays);
            sprite.glow = looks.glow;
            sprites.push_back(sprite);
            return;
        }
        start += frame.seconds;
    }
}

void EffectSimulation::Particles(const ParticleEffect& looks, float time, float stop,
                                 std::vector<EffectSprite>& sprites) const {
    // Particle n is born at n / rate.
    const double oldest = double{time} - double{looks.life} * (1.0 + double{looks.variation});
    const auto first = static_cast<std::int64_t>(std::max(0.0, std::floor(oldest * double{looks.rate})));
    for (std::int64_t n = first;; ++n) {
        const double birth = static_cast<double>(n) / double{looks.rate};
        if (birth > double{time} || birth >= double{stop}) {
            return;
        }
        const auto number = static_cast<std::uint32_t>(n);
        const auto varied = [&](std::uint32_t channel) {
            return 1.0f + looks.variation * (2.0f * Random(number, channel) - 1.0f);
        };
        const auto age = static_cast<float>(double{time} - birth);
        const float life = looks.life * varied(0);
        if (age >= life) {
            continue;
        }
        const float around = kTurn * Random(number, 2);
        const float upward = Mix(1.0f, std::cos(looks.spread * kTurn / 360.0f), Random(number, 3));
        const float outward = std::sqrt(std::max(0.0f, 1.0f - upward * upward));
        const Vector3 way{outward * std::cos(around), upward, outward * std::sin(around)};
        const float from = looks.radius * std::sqrt(Random(number, 4));
        const float side = kTurn * Random(number, 5);
        EffectSprite sprite;
        sprite.place = Vector3{from * std::cos(side), 0.0f, from * std::sin(side)} +
                       way * (looks.speed * varied(1) * age) +
                       Vector3{0.0f, -0.5f * looks.gravity * age * age, 0.0f};
        sprite.tail = sprite.place;
        sprite.size = Mix(looks.sizeBegin, looks.sizeEnd, age / life);
        sprite.color = Mix(looks.colorBegin, looks.colorEnd, age / life);
        sprite.glow = looks.glow;
        sprites.push_back(sprite);
    }
}

void EffectSimulation::Trace(const TraceEffect& looks, float time, std::vector<EffectSprite>& sprites) const {
    const float reach = std::min(looks.length, time);
    const int places = std::clamp(static_cast<int>(std::ceil(reach / kTraceStep)), 1, kMaxTracePlaces);
    const float step = reach / static_cast<float>(places);
    Vector3 newer = path(time);
    for (int i = 0; i < places; ++i) {
        const Vector3 older = path(time - step * static_cast<float>(i + 1));
        const float share = step * static_cast<float>(i) / looks.length;
        EffectSprite sprite;
        sprite.place = newer;
        sprite.tail = older;
        sprite.shape = EffectShape::Line;
        sprite.size = looks.width * (1.0f - share);
        sprite.color = Mix(looks.colorBegin, looks.colorEnd, share);
        sprite.glow = looks.glow;
        sprites.push_back(sprite);
        newer = older;
    }
}

void EffectSimulation::Marks(const TraceEffect& looks, float time, std::vector<EffectSprite>& sprites) const {
    // Marks stand where they are made, so their places are counted from the path's start.
    const float since = std::max(0.0f, time - looks.length);
    const auto places = static_cast<int>(std::min(time / kTraceStep, 36000.0f));
    float way = 0.0f;
    float next = 0.0f;
    int left = -1;
    Vector3 before = path(0.0f);
    for (int i = 0; i <= places; ++i) {
        const float when = kTraceStep * static_cast<float>(i);
        const Vector3 here = path(when);
        const Vector3 move = here - before;
        way += engine::Length(move);
        before = here;
        if (way < next) {
            continue;
        }
        next = way + looks.step;
        left = -left;
        if (when < since) {
            continue;
        }
        const Vector3 along = engine::Normalized(move, {1.0f, 0.0f, 0.0f});
        EffectSprite sprite;
        sprite.place = here + Vector3{-along.y, along.x, 0.0f} * (looks.width * static_cast<float>(left));
        sprite.tail = sprite.place;
        sprite.size = looks.width;
        sprite.color = Mix(looks.colorBegin, looks.colorEnd, std::min(1.0f, (time - when) / looks.length));
        sprite.glow = looks.glow;
        sprites.push_back(sprite);
    }
}

void EffectSimulation::Rain(const RainEffect& looks, float time, std::vector<EffectSprite>& sprites) const {
    const float fall = std::sqrt(looks.speed * looks.speed + looks.wind * looks.wind);
    const Vector3 back{-looks.wind * looks.length / fall, looks.speed * looks.length / fall, 0.0f};
    const auto drops = static_cast<std::uint32_t>(looks.drops);
    for (std::uint32_t i = 0; i < drops; ++i) {
        const float speed = looks.speed * (1.0f + looks.variation * (2.0f * Random(i, 0) - 1.0f));
        const float sway = looks.sway * std::sin(kTurn * (time / kSwaySeconds + Random(i, 1)));
        EffectSprite sprite;
        sprite.place.x =
            Wrap(looks.area * Random(i, 2) + looks.wind * time + sway, looks.area) - 0.5f * looks.area;
        sprite.place.y = 0.5f * looks.area - Wrap(looks.area * Random(i, 3) + speed * time, looks.area);
        sprite.place.z = looks.area * (Random(i, 4) - 0.5f);
        sprite.tail = sprite.place + back;
        sprite.shape = looks.length > 0.0f ? EffectShape::Line : EffectShape::Glow;
        sprite.size = looks.size;
        sprite.color = looks.color;
        sprites.push_back(sprite);
    }
}

} // namespace stage

#include "keys/rules/KeyTimeRules.h"

#include <algorithm>
#include <cmath>

namespace {

/// A frame as a key hops over a neighbour. Required: it doesn't follow the plug-in's frame rate.
constexpr float kHopSeconds = 1.0f / 30.0f;

bool LiesInside(float time, const KeySpan& key) {
    return key.start < time && key.End() > time;
}

} // namespace

KeyLimits FindKeyLimits(const KeySpan& key, std::span<const KeySpan> others, const TimeAxis& axis) {
    KeyLimits limits{axis.start, axis.end};
    const float end = key.End();
    for (const KeySpan& other : others) {
        const float otherEnd = other.End();
        if (other.start >= end && other.start <= limits.hi) {
            limits.hi = other.start;
        }
        if (otherEnd <= key.start && otherEnd >= limits.lo) {
            limits.lo = otherEnd;
        }
        // Required: on whichever side the other lies, so that the last one of the list decides.
        if (key.duration != 0.0f && key.start < otherEnd) {
            limits.lo = otherEnd;
        }
        if (key.duration != 0.0f && end > other.start) {
            limits.hi = other.start;
        }
    }
    return limits;
}

float ClampToAxis(float time, const TimeAxis& axis) {
    // In this order, and so that what is no number ends on the axis too.
    const float fromStart = time > axis.start ? time : axis.start;
    return fromStart < axis.end ? fromStart : axis.end;
}

float NextTic(const TimeAxis& axis, float ref, bool forward) {
    // Required: a fixed time, not half a tic. An edge off the grid by no more stays off it.
    constexpr float kOnTicSeconds = 0.5f;
    const float step = std::isnan(axis.tic) ? 0.0f : axis.tic;
    float tic = axis.start + step * std::trunc((ref - axis.start) / step);
    if (!std::isfinite(tic)) {
        tic = ref; // tics without a distance, or endlessly far apart
    }
    if (forward) {
        tic = std::fabs(tic - ref) > kOnTicSeconds ? tic + step : ref;
    }
    if (tic == ref) {
        tic = forward ? tic + step : tic - step;
    }
    return tic;
}

float FollowMouse(const KeySpan& key, const KeyLimits& limits, float mouseTime, bool forward) {
    const float limit = limits.Ahead(forward);
    if (limit == KeyLimits::kNone) {
        return mouseTime;
    }
    if (mouseTime == limit) {
        return forward ? limit + kHopSeconds : limit - kHopSeconds;
    }
    const bool reached = forward ? !(key.End() < limit) : !(key.start > limit);
    return key.duration != 0.0f && reached ? limit : mouseTime;
}

bool IsSameMoment(float a, float b) {
    return std::fabs(a - b) < kSameMomentSeconds;
}

bool IsFreeAmong(std::span<const KeySpan> others, float time) {
    // Required: a key may be dragged to another's end, but not be placed there.
    return std::ranges::none_of(
        others, [time](const KeySpan& other) { return other.start <= time && other.End() >= time; });
}

float RoomBehind(std::span<const KeySpan> others, float time, const TimeAxis& axis) {
    float next = axis.end;
    for (const KeySpan& other : others) {
        if (other.start > time && other.start < next) {
            next = other.start;
        }
    }
    return std::fabs(next - time);
}

bool FitAmong(std::span<const KeySpan> others, const KeySpan& present, KeySpan& proposed, float oldDuration) {
    const float newEnd = proposed.End();
    const bool isMove = proposed.duration == oldDuration;
    for (const KeySpan& other : others) {
        if (LiesInside(proposed.start, other)) {
            const float end = other.End();
            proposed.duration = isMove ? present.duration : std::fabs(end - present.start) + present.duration;
            proposed.start = end;
            return true;
        }
        if (LiesInside(newEnd, other)) {
            // Required: without a sign, so that near time 0 the key is thrown forward.
            proposed = isMove ? KeySpan{std::fabs(other.start - present.duration), present.duration}
                              : KeySpan{proposed.start, other.start - proposed.start};
            return true;
        }
        const bool swallows = other.start > proposed.start && other.start < newEnd && !(other.End() > newEnd);
        if (swallows || LiesInside(present.start, other)) {
            return false;
        }
    }
    return true;
}

bool IsNearMark(const KeySpan& key, float markTime) {
    constexpr float kReachSeconds = 0.1f;
    const float low = markTime - kReachSeconds;
    const float high = markTime + kReachSeconds;
    const auto isNear = [low, high](float time) { return time > low && time < high; };
    return isNear(key.start) || isNear(key.End());
}

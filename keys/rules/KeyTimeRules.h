#pragma once

#include <span>

// Where a key may go among the other keys of its row. All times are float seconds, and every intermediate
// result is one too, so that keys which touch are seen to touch.

/// Two moments that are one are nearer than this; seconds.
inline constexpr float kSameMomentSeconds = 0.00001f;
/// The nearest key to a time lies farther away than the first of these and nearer than the second; seconds.
inline constexpr float kPassedOverSeconds = 0.000001f;
inline constexpr float kFarthestSeconds = 100000.0f;

/// A key as these rules see it. A key of no duration is a span of no length.
struct KeySpan {
    float start = 0.0f;
    float duration = 0.0f;

    float End() const { return start + duration; }
};

/// The axis of a row.
struct TimeAxis {
    float start = 0.0f;
    float end = 0.0f;
    float tic = 1.0f; ///< between two tics; any value ends
};

/// The gap around a key. For a key with neighbours on both sides lo may lie above hi.
struct KeyLimits {
    /// What stands for "no limit on this side".
    static constexpr float kNone = -1.0f;

    float lo = kNone;
    float hi = kNone;

    float Ahead(bool forward) const { return forward ? hi : lo; }
};

/// `others` are all other keys of the same kind, here and below, in draw order.
KeyLimits FindKeyLimits(const KeySpan& key, std::span<const KeySpan> others, const TimeAxis& axis);

float ClampToAxis(float time, const TimeAxis& axis);
/// The next tic for an edge at `ref`, not clamped.
float NextTic(const TimeAxis& axis, float ref, bool forward);
/// Where a key that follows the mouse by frames stops at its neighbours; not clamped.
float FollowMouse(const KeySpan& key, const KeyLimits& limits, float mouseTime, bool forward);

/// Whether a key that stands at one of the times stands at the other.
bool IsSameMoment(float a, float b);

bool IsFreeAmong(std::span<const KeySpan> others, float time);
/// Seconds from a time to the next key behind it, or to the end of the axis.
float RoomBehind(std::span<const KeySpan> others, float time, const TimeAxis& axis);

/// Fits a key that is to be moved (its old duration kept) or resized. Only the first key that is in the way
/// changes the proposal, and the result isn't looked at again.
/// False if the proposal can't be taken: it would swallow a key, or the key is stuck in one already.
bool FitAmong(std::span<const KeySpan> others, const KeySpan& present, KeySpan& proposed, float oldDuration);

/// Whether the start or the end of a key goes along with a mark at this time.
bool IsNearMark(const KeySpan& key, float markTime);

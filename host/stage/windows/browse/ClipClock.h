#pragma once

namespace stage {

/// Where a looping animation stands. Seconds; no clock of its own.
class ClipClock {
public:
    /// From the start of an animation this long; 0 or less, or a number that is none, stands still at 0.
    void Start(float clipSeconds);
    /// Goes on, round and round.
    void Advance(float elapsed);
    /// Limited to the animation.
    void SetPosition(float seconds);

    float Position() const { return position; }
    float Duration() const { return duration; }

private:
    float duration = 0.0f;
    float position = 0.0f;
};

} // namespace stage

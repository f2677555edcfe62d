#pragma once

#include "keys/rules/KeyTimeRules.h"

/// A step of the drag of a key with a duration: where the mouse came from and where it is. Seconds.
struct TimedKeyDrag {
    /// What the mouse holds: values of `mode`.
    static constexpr int kNone = 0;
    static constexpr int kMove = 1;
    static constexpr int kLeftGrip = 2;
    static constexpr int kRightGrip = 3;

    int mode = kNone;
    KeySpan key;
    float lastMouse = 0.0f;
    float mouse = 0.0f;

    bool IsForward() const { return mouse - lastMouse > 0.0f; }
    /// The edge that the drag takes along; 0.0 in no mode.
    float Edge() const;
    /// Keeps a target that was found with Alt from running ahead of the mouse.
    float HoldBack(float target) const;
    /// The same without Alt: only the left grip of a key of no duration is held.
    float HoldAtStart(float target) const;
    /// Start and duration with the edge at the target.
    KeySpan Propose(float target) const;

private:
    bool IsShutBehindMouse() const;
    float HoldMove(float target) const;
    float HoldLeftGrip(float target) const;
    float HoldRightGrip(float target) const;
};

/// Whether the mouse has come more than half way from where it was towards the target.
bool IsPastHalfWay(float lastMouse, float target, float mouse);

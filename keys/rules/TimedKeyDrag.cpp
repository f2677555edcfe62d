#include "keys/rules/TimedKeyDrag.h"

#include <algorithm>
#include <cmath>

float TimedKeyDrag::Edge() const {
    switch (mode) {
    case kMove:
        return IsForward() ? key.End() : key.start;
    case kLeftGrip:
        return key.start;
    case kRightGrip:
        return key.End();
    default:
        return 0.0f;
    }
}

float TimedKeyDrag::HoldBack(float target) const {
    switch (mode) {
    case kMove:
        return HoldMove(target);
    case kLeftGrip:
        return HoldLeftGrip(target);
    case kRightGrip:
        return HoldRightGrip(target);
    default:
        return target;
    }
}

float TimedKeyDrag::HoldMove(float target) const {
    const float edge = Edge();
    const float way = std::fabs(mouse - lastMouse);
    if (!(way < std::fabs(edge - target))) {
        return target;
    }
    return IsForward() ? edge + way : edge - way;
}

/// A key of no duration whose left grip is pulled to the right.
bool TimedKeyDrag::IsShutBehindMouse() const {
    constexpr float kNoDuration = 0.00001f;
    return key.duration < kNoDuration && mouse > key.start;
}

float TimedKeyDrag::HoldLeftGrip(float target) const {
    if (IsShutBehindMouse()) {
        return key.start;
    }
    if (mouse > key.End()) {
        return key.End();
    }
    return std::fabs(target - Edge()) > std::fabs(mouse - key.start) ? mouse : target;
}

float TimedKeyDrag::HoldRightGrip(float target) const {
    const float way = std::fabs(target - Edge());
    if (IsForward()) {
        return way < std::fabs(mouse - Edge()) ? target : mouse;
    }
    if (mouse > Edge()) {
        return Edge();
    }
    // Required: measured from the key's start, so a grip that a neighbour holds comes back late.
    return way < std::fabs(mouse - key.start) ? target : mouse;
}

float TimedKeyDrag::HoldAtStart(float target) const {
    return mode == kLeftGrip && IsShutBehindMouse() ? key.start : target;
}

KeySpan TimedKeyDrag::Propose(float target) const {
    switch (mode) {
    case kMove:
        return {IsForward() ? target - key.duration : target, key.duration};
    case kLeftGrip:
        return {target, std::max(key.start - target + key.duration, 0.0f)};
    case kRightGrip:
        return {key.start, std::max(target - key.start, 0.0f)};
    default:
        return key;
    }
}

bool IsPastHalfWay(float lastMouse, float target, float mouse) {
    return 0.5f * std::fabs(target - lastMouse) > std::fabs(target - mouse);
}

#include "host/stage/windows/browse/ClipClock.h"

#include <algorithm>
#include <cmath>

namespace stage {

void ClipClock::Start(float clipSeconds) {
    duration = std::isfinite(clipSeconds) ? std::max(clipSeconds, 0.0f) : 0.0f;
    position = 0.0f;
}

void ClipClock::Advance(float elapsed) {
    if (duration > 0.0f && std::isfinite(elapsed)) {
        position = std::fmod(position + std::max(elapsed, 0.0f), duration);
    }
}

void ClipClock::SetPosition(float seconds) {
    position = std::isfinite(seconds) ? std::clamp(seconds, 0.0f, duration) : 0.0f;
}

} // namespace stage

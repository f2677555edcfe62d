#include "keys/rules/KeyShift.h"

#include <algorithm>

std::optional<KeyTimes> ShiftedKey(const KeyTimes& key, float delta) {
    constexpr float kBeginSeconds = 0.00001f; ///< nearer to 0 than this is the begin of the film
    constexpr float kLeastEndSeconds = 0.001f;
    const KeyTimes shifted{key.start + delta, key.end + delta};
    // Required: also for a key of no length that comes to 0 exactly, or stands there and isn't moved at all.
    if (shifted.end < kBeginSeconds) {
        return std::nullopt;
    }
    if (shifted.start < kBeginSeconds) {
        return KeyTimes{0.0f, std::max(shifted.end, kLeastEndSeconds)};
    }
    return shifted;
}

#pragma once

#include <optional>

/// Start and end of a key; seconds.
struct KeyTimes {
    float start = 0.0f;
    float end = 0.0f;

    bool operator==(const KeyTimes&) const = default;
};

/// Where a key comes to by `delta` seconds. One that straddles the begin of the film is cut to start there;
/// nothing for one that would end before it, or at it.
std::optional<KeyTimes> ShiftedKey(const KeyTimes& key, float delta);

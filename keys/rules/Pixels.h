#pragma once

#include <cmath>
#include <limits>

/// Farther from a window's edge than anything that is drawn, and near enough that sums of a few such numbers
/// fit an int.
inline constexpr int kFarPixel = 1 << 24;

/// Cuts a position in pixels toward zero. What lies farther away than kFarPixel stops there; no number at all
/// (0/0) is 0.
inline int CutToPixel(double position) {
    if (std::isnan(position)) {
        return 0;
    }
    return static_cast<int>(std::fmin(std::fmax(position, -kFarPixel), kFarPixel));
}

/// Cuts a count toward zero into the limits of an int; no number at all is 0.
inline int CutToInt(double count) {
    if (std::isnan(count)) {
        return 0;
    }
    return static_cast<int>(
        std::fmin(std::fmax(count, std::numeric_limits<int>::min()), std::numeric_limits<int>::max()));
}

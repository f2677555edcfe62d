#pragma once

#include <algorithm>

/// Pixels beyond this are cut: far outside any window, and sums of a few of them stay in an int.
inline constexpr int kPixelLimit = 1'000'000;

/// Cut toward zero and to the limit; NaN gives 0.
inline int CutToPixel(double value) {
    if (!(value == value)) {
        return 0;
    }
    return static_cast<int>(std::clamp<double>(value, -kPixelLimit, kPixelLimit));
}

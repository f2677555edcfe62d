#include "host/stage/windows/PictureDetail.h"

#include <algorithm>
#include <cmath>

namespace stage {

namespace {
/// Details are multiples of this: each change makes new buffers.
constexpr float kStep = 1.0f / 16;
/// Pictures whose mean decides.
constexpr int kCounted = 4;
/// A mean within these shares of the target changes nothing.
constexpr double kSlow = 1.1;
constexpr double kQuick = 0.75;
} // namespace

void PictureDetail::Begin(float newDetail) {
    detail = newDetail;
    sum = 0.0;
    count = 0;
}

void PictureDetail::Note(double milliseconds) {
    if (!(milliseconds >= 0.0)) {
        return;
    }
    sum += milliseconds;
    if (++count < kCounted) {
        return;
    }
    const double share = sum / count / kTargetMs;
    if (share > kSlow) {
        // The work goes with the pixels.
        const double wanted = detail / std::sqrt(share);
        Begin(std::max(std::floor(static_cast<float>(wanted) / kStep) * kStep, kLeast));
    } else {
        Begin(share < kQuick ? std::min(detail + kStep, 1.0f) : detail);
    }
}

} // namespace stage

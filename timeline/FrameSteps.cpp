#include "timeline/FrameSteps.h"

#include <algorithm>
#include <cmath>

namespace {

/// Seconds within which a time counts as standing on a frame.
constexpr double kOnFrame = 0.0001;
constexpr double kNextFrame = 0.999999;

double FrameLength(int framesPerSecond) {
    return framesPerSecond != 0 ? 1.0 / framesPerSecond : 0.0;
}

double Fraction(double time) {
    double whole = 0.0;
    return std::modf(time, &whole);
}

} // namespace

float FrameBack(float time, int framesPerSecond) {
    const double t = static_cast<double>(time);
    const double frame = FrameLength(framesPerSecond);
    const double fraction = Fraction(t);
    const double rest =
        framesPerSecond != 0 ? fraction - std::trunc(framesPerSecond * fraction) * frame : 0.0;
    const bool insideFrame = rest >= kOnFrame;
    const double back = insideFrame ? t - rest : t - frame;
    return static_cast<float>(std::max(back, 0.0));
}

float FrameForward(float time, int framesPerSecond, float length) {
    const double t = static_cast<double>(time);
    const double frame = FrameLength(framesPerSecond);
    const double fraction = Fraction(t);
    const double frames = framesPerSecond * fraction;
    double passed = std::trunc(frames);
    // Required: frames are compared with seconds, so that the frame counts as passed soon after it began.
    if (frames - passed * frame > kNextFrame) {
        passed += 1.0;
    }
    const double rest = framesPerSecond != 0 ? fraction - passed * frame : 0.0;
    const bool insideFrame = rest >= kOnFrame;
    const double ahead = insideFrame ? t + frame - rest : t + frame;
    return std::min(static_cast<float>(ahead), length);
}

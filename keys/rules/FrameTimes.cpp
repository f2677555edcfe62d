#include "keys/rules/FrameTimes.h"

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

/// The frame nearest to a time, half a frame going back. `whole` cuts a count of frames to those that have
/// begun.
double Nearest(double time, int framesPerSecond, double (*whole)(double)) {
    const double frame = FrameLength(framesPerSecond);
    const double fraction = time - std::trunc(time); // no number for an endless time
    const double remainder = fraction - whole(framesPerSecond * fraction) * frame;
    const bool goesBack = remainder <= frame / 2.0 || framesPerSecond == 0;
    return goesBack ? time - remainder : time - remainder + frame;
}

} // namespace

double NearestFrame(double time, int framesPerSecond) {
    return Nearest(time, framesPerSecond, [](double frames) { return std::trunc(frames); });
}

double NearestFrameFromBelow(double time, int framesPerSecond) {
    return Nearest(time, framesPerSecond, [](double frames) { return std::floor(frames); });
}

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

#include "timeline/CursorFrame.h"

#include <cmath>

double NearestFrame(double time, int framesPerSecond) {
    const double frame = framesPerSecond != 0 ? 1.0 / framesPerSecond : 0.0;
    const double fraction = time - std::trunc(time);
    const double remainder = fraction - std::trunc(framesPerSecond * fraction) * frame;
    return remainder <= frame / 2.0 || framesPerSecond == 0 ? time - remainder : time - remainder + frame;
}

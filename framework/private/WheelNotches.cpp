#include "framework/private/WheelNotches.h"

#include "framework/Constants.h"

namespace wheel_notches {
namespace {

// Only compared, so it may be one that is gone.
const NativeWindow* last = nullptr;
int rest = 0;

} // namespace

int Gather(const NativeWindow& window, int delta, bool begins) {
    const bool turnsBack = (rest > 0 && delta < 0) || (rest < 0 && delta > 0);
    if (begins || turnsBack || last != &window) {
        rest = 0;
    }
    last = &window;
    rest += delta;
    const int whole = rest / WHEEL_DELTA * WHEEL_DELTA;
    rest -= whole;
    return whole;
}

} // namespace wheel_notches

#pragma once

class NativeWindow;

namespace wheel_notches {

/// What to tell of a vertical turn of the wheel over a window: a whole number of notches of WHEEL_DELTA, 0
/// while there is not one yet. Touchpads and fine wheels turn in pieces, which are gathered while they go one
/// way over one window; `begins` is set where the input device says that a gesture begins.
int Gather(const NativeWindow& window, int delta, bool begins);

} // namespace wheel_notches

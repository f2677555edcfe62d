#pragma once

#include <string>
#include <vector>

/// The time axis of a window as its tics see it. Times are seconds.
struct TicAxis {
    double rangeStart = 0.0;
    double ticDistance = 0.0;
    double viewStart = 0.0;
    double viewEnd = 0.0;
    int bigTics = 1;       ///< every so many tics one is a big one
    int labelDistance = 0; ///< labels on big tics with numbers divisible by it; none if not above 0
};

struct Tic {
    int x = 0; ///< pixels
    bool big = false;
    std::string label; ///< empty without one
};

/// How far the tics reach down a window, in pixels. A tic whose end lies above its start runs upwards.
struct TicRows {
    int axisY = 0;
    int bigFrom = 0;
    int bigTo = 0;
    int smallFrom = 0;
    int smallTo = 0;
};

/// The tics of the view, left to right, on the pixels from `left` to `right`. Where tics stand closer than
/// pixels there is one for each column: a big one, if the column has one. Empty for a view of no length.
std::vector<Tic> LayOutTics(const TicAxis& axis, int left, int right);

/// All 0 for an unknown alignment.
TicRows TicRowsOf(int alignment, int top, int bottom);

/// "%3.2f", whatever the locale.
std::string TicLabel(double seconds);

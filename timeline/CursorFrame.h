#pragma once

/// A time in seconds brought to the nearest frame, half a frame going back. With a rate of 0, cut to whole
/// seconds. Differs from the plug-in object's rounding below 0, where this cuts toward zero.
double NearestFrame(double time, int framesPerSecond);

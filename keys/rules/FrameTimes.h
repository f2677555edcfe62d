#pragma once

// Frames of films, as times in seconds at a whole rate. Under a rate of 0 a frame has no length.

/// A time brought to the nearest frame, half a frame going back; below 0 frames are counted toward zero. With
/// a rate of 0, cut to whole seconds.
double NearestFrame(double time, int framesPerSecond);

/// The same, but frames are counted downwards below 0 too.
double NearestFrameFromBelow(double time, int framesPerSecond);

/// The start of the frame that holds a time, or of the frame before if the time stands on a frame; never
/// negative. Times are seconds; a rate of 0 frames per second leaves the time.
float FrameBack(float time, int framesPerSecond);

/// The time one step ahead, but not behind `length`. On a frame and early in a frame that is the next frame;
/// later in a frame it is one frame's length on, so that the time stays off the frames.
float FrameForward(float time, int framesPerSecond, float length);

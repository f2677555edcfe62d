#pragma once

#include <vector>

class IFilm;

namespace stage {

/// The times at which another camera comes into force, or one goes and none follows, rising; seconds. Of keys
/// that hold at one time the one of the lowest priority counts, the first of them in the track.
std::vector<float> CameraCuts(const IFilm& film);

/// The frame that shows what a cut brings: the first one at it or behind it.
int FrameOfCut(float seconds, int framesPerSecond);

} // namespace stage

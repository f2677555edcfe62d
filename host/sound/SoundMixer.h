#pragma once

#include "host/sound/SoundSpace.h"

#include <memory>

namespace sound {

/// Renders what would be heard into memory instead of to loudspeakers, as fast as the processor can. The
/// sound library's loopback device does the work, so placed sounds come as in the editor.
class SoundMixer {
public:
    /// Stereo at this rate. Without the loopback extension `IsReady` is false and all is silence.
    explicit SoundMixer(int rate);
    bool IsReady() const { return space != nullptr && space->HasDevice(); }
    int Rate() const { return framesPerSecond; }
    /// Where to play sounds; null unless ready.
    SoundSpace* Space() const { return IsReady() ? space.get() : nullptr; }
    /// Appends the next `frames` stereo frames to `samples`, interleaved.
    void Render(int frames, std::vector<float>& samples);

private:
    int framesPerSecond;
    std::unique_ptr<SoundSpace> space;
};

} // namespace sound

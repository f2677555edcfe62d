#pragma once

#include "host/sound/SoundSpace.h"

#include <memory>

namespace sound {

/// Sounds on the machine's loudspeakers. The device is opened at the first sound; a machine without one is
/// silent. What can't be played is told by `LastError` and is not an error of the caller.
class SoundPlayer {
public:
    /// As SoundSpace::Play, but 0 for a file that can't be used.
    int Play(const SoundRequest& request);
    void Move(int sound, const std::array<float, 3>& position);
    void Stop(int sound);
    void StopAll();
    bool IsPlaying(int sound);
    void SetListener(const float* cameraMatrix);
    /// Why the last Play gave 0; empty if it did not.
    const std::string& LastError() const { return lastError; }

private:
    std::unique_ptr<SoundSpace> space;
    std::string lastError;
};

} // namespace sound

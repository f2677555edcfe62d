#include "host/sound/SoundPlayer.h"

#include <AL/alc.h>
#include <cstdlib>

namespace sound {

int SoundPlayer::Play(const SoundRequest& request) {
    if (space == nullptr) {
        // A machine without loudspeakers is no reason for messages on the console.
        setenv("ALSOFT_LOGLEVEL", "0", /*overwrite*/ 0);
        space = std::make_unique<SoundSpace>(alcOpenDevice(nullptr), nullptr);
    }
    try {
        const int sound = space->Play(request);
        lastError = sound != 0 ? "" : space->HasDevice() ? "no voice is free" : "no sound device";
        return sound;
    } catch (const SoundError& error) {
        lastError = error.what();
        return 0;
    }
}

void SoundPlayer::Move(int sound, const std::array<float, 3>& position) {
    if (space != nullptr) {
        space->Move(sound, position);
    }
}

void SoundPlayer::Stop(int sound) {
    if (space != nullptr) {
        space->Stop(sound);
    }
}

void SoundPlayer::StopAll() {
    if (space != nullptr) {
        space->StopAll();
    }
}

bool SoundPlayer::IsPlaying(int sound) {
    return space != nullptr && space->IsPlaying(sound);
}

void SoundPlayer::SetListener(const float* cameraMatrix) {
    if (space != nullptr) {
        space->SetListener(cameraMatrix);
    }
}

} // namespace sound

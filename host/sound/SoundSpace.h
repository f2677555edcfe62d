#pragma once

#include "host/sound/SoundFile.h"

#include <array>
#include <map>
#include <optional>

struct ALCcontext_struct;
struct ALCdevice_struct;
using ALCcontext = ALCcontext_struct;
using ALCdevice = ALCdevice_struct;

namespace sound {

/// How a sound is played.
struct SoundRequest {
    std::string path;
    float offset = 0.0f; ///< seconds into the sound at which it starts
    bool looped = false;
    float gain = 1.0f;
    /// World place; without one the sound is heard everywhere alike.
    std::optional<std::array<float, 3>> position = std::nullopt;
};

/// Sounds around a listener on one OpenAL device, which it owns together with its context. With a null
/// device everything is silent and every operation does nothing.
class SoundSpace {
public:
    /// Takes over an opened device; `attributes` as alcCreateContext takes them.
    SoundSpace(ALCdevice* opened, const int* attributes);
    ~SoundSpace();
    SoundSpace(const SoundSpace&) = delete;
    SoundSpace& operator=(const SoundSpace&) = delete;

    bool HasDevice() const { return context != nullptr; }
    ALCdevice* Device() const { return device; }
    /// A number for the sound, 0 if it is not played: no device, no voice free, or an offset beyond its end.
    /// Throws SoundError for a file that can't be used.
    int Play(const SoundRequest& request);
    void Move(int sound, const std::array<float, 3>& position);
    void Stop(int sound);
    void StopAll();
    bool IsPlaying(int sound);
    /// The camera's matrix in the world: 16 floats, row 2 points backwards.
    void SetListener(const float* cameraMatrix);
    /// Frees the voices of sounds that have ended.
    void Collect();

private:
    struct Buffer {
        unsigned name = 0;
        float seconds = 0.0f;
    };

    bool Enter() const;
    const Buffer& BufferFor(const std::string& path, bool placed);

    ALCdevice* device;
    ALCcontext* context = nullptr;
    std::map<std::pair<std::string, bool>, Buffer> buffers;
    std::map<int, unsigned> sources;
    int nextSound = 1;
};

} // namespace sound

#include "host/sound/SoundSpace.h"

#include "host/engine/Units.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <cmath>
#include <cstdint>

namespace sound {

namespace {

/// Units at which a placed sound is as loud as its file.
constexpr float kReferenceDistance = engine::Metres(4.0f);

std::int16_t To16Bit(float sample) {
    return static_cast<std::int16_t>(std::lround(std::fmin(std::fmax(sample, -1.0f), 1.0f) * 32767.0f));
}

/// OpenAL places mono sounds only, so a placed stereo sound is mixed down.
std::vector<std::int16_t> ToFrames(const SoundData& sound, bool mono) {
    std::vector<std::int16_t> frames;
    if (mono && sound.channels == 2) {
        frames.reserve(sound.samples.size() / 2);
        for (std::size_t i = 0; i + 1 < sound.samples.size(); i += 2) {
            frames.push_back(To16Bit((sound.samples[i] + sound.samples[i + 1]) * 0.5f));
        }
        return frames;
    }
    frames.reserve(sound.samples.size());
    for (const float sample : sound.samples) {
        frames.push_back(To16Bit(sample));
    }
    return frames;
}

} // namespace

SoundSpace::SoundSpace(ALCdevice* opened, const int* attributes) : device(opened) {
    context = device != nullptr ? alcCreateContext(device, attributes) : nullptr;
    if (Enter()) {
        alDistanceModel(AL_INVERSE_DISTANCE_CLAMPED);
    }
}

SoundSpace::~SoundSpace() {
    if (Enter()) {
        StopAll();
        for (const auto& [key, buffer] : buffers) {
            alDeleteBuffers(1, &buffer.name);
        }
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(context);
    }
    if (device != nullptr) {
        alcCloseDevice(device);
    }
}

bool SoundSpace::Enter() const {
    return context != nullptr && alcMakeContextCurrent(context) != ALC_FALSE;
}

const SoundSpace::Buffer& SoundSpace::BufferFor(const std::string& path, bool placed) {
    const auto key = std::make_pair(path, placed);
    const auto found = buffers.find(key);
    if (found != buffers.end()) {
        return found->second;
    }
    const std::shared_ptr<const SoundData> sound = LoadSound(path);
    const std::vector<std::int16_t> frames = ToFrames(*sound, placed);
    const bool stereo = sound->channels == 2 && !placed;
    ALuint buffer = 0;
    alGenBuffers(1, &buffer);
    alBufferData(buffer, stereo ? AL_FORMAT_STEREO16 : AL_FORMAT_MONO16, frames.data(),
                 static_cast<ALsizei>(frames.size() * sizeof(std::int16_t)), sound->rate);
    return buffers.emplace(key, Buffer{buffer, sound->Seconds()}).first->second;
}

int SoundSpace::Play(const SoundRequest& request) {
    if (!Enter()) {
        return 0;
    }
    Collect();
    const Buffer& buffer = BufferFor(request.path, request.position.has_value());
    if (!request.looped && request.offset >= buffer.seconds) {
        return 0;
    }
    alGetError();
    ALuint source = 0;
    alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR) {
        return 0;
    }
    alSourcei(source, AL_BUFFER, static_cast<ALint>(buffer.name));
    alSourcei(source, AL_LOOPING, request.looped ? AL_TRUE : AL_FALSE);
    alSourcef(source, AL_GAIN, request.gain);
    alSourcei(source, AL_SOURCE_RELATIVE, request.position ? AL_FALSE : AL_TRUE);
    alSourcef(source, AL_REFERENCE_DISTANCE, kReferenceDistance);
    if (request.position) {
        alSourcefv(source, AL_POSITION, request.position->data());
    }
    if (request.offset > 0.0f && buffer.seconds > 0.0f) {
        alSourcef(source, AL_SEC_OFFSET, std::fmod(request.offset, buffer.seconds));
    }
    alSourcePlay(source);
    sources.emplace(nextSound, source);
    return nextSound++;
}

void SoundSpace::Move(int sound, const std::array<float, 3>& position) {
    const auto found = sources.find(sound);
    if (found != sources.end() && Enter()) {
        alSourcefv(found->second, AL_POSITION, position.data());
    }
}

void SoundSpace::Stop(int sound) {
    const auto found = sources.find(sound);
    if (found != sources.end() && Enter()) {
        alSourceStop(found->second);
        alDeleteSources(1, &found->second);
        sources.erase(found);
    }
}

void SoundSpace::StopAll() {
    while (!sources.empty()) {
        const int sound = sources.begin()->first;
        Stop(sound);
        sources.erase(sound);
    }
}

bool SoundSpace::IsPlaying(int sound) {
    const auto found = sources.find(sound);
    if (found == sources.end() || !Enter()) {
        return false;
    }
    ALint state = AL_STOPPED;
    alGetSourcei(found->second, AL_SOURCE_STATE, &state);
    return state == AL_PLAYING;
}

void SoundSpace::SetListener(const float* cameraMatrix) {
    if (!Enter()) {
        return;
    }
    const float* m = cameraMatrix;
    for (int i = 0; i < 16; ++i) {
        if (!std::isfinite(m[i])) {
            return;
        }
    }
    const float facing[6] = {-m[8], -m[9], -m[10], m[4], m[5], m[6]};
    alListener3f(AL_POSITION, m[12], m[13], m[14]);
    alListenerfv(AL_ORIENTATION, facing);
}

void SoundSpace::Collect() {
    for (auto it = sources.begin(); it != sources.end();) {
        const int sound = it->first;
        ++it;
        if (!IsPlaying(sound)) {
            Stop(sound);
        }
    }
}

} // namespace sound

#include "host/sound/SoundMixer.h"

#include <AL/alc.h>
#include <AL/alext.h>
#include <algorithm>

namespace sound {

namespace {

template <class Function> Function Find(const char* name) {
    return reinterpret_cast<Function>(alcGetProcAddress(nullptr, name));
}

} // namespace

SoundMixer::SoundMixer(int rate) : framesPerSecond(std::clamp(rate, 8000, 192000)) {
    if (!alcIsExtensionPresent(nullptr, "ALC_SOFT_loopback")) {
        return;
    }
    const auto open = Find<LPALCLOOPBACKOPENDEVICESOFT>("alcLoopbackOpenDeviceSOFT");
    const auto isSupported = Find<LPALCISRENDERFORMATSUPPORTEDSOFT>("alcIsRenderFormatSupportedSOFT");
    ALCdevice* device = open != nullptr ? open(nullptr) : nullptr;
    if (device == nullptr) {
        return;
    }
    if (isSupported == nullptr || !isSupported(device, framesPerSecond, ALC_STEREO_SOFT, ALC_FLOAT_SOFT)) {
        alcCloseDevice(device);
        return;
    }
    const int attributes[] = {ALC_FORMAT_CHANNELS_SOFT,
                              ALC_STEREO_SOFT,
                              ALC_FORMAT_TYPE_SOFT,
                              ALC_FLOAT_SOFT,
                              ALC_FREQUENCY,
                              framesPerSecond,
                              ALC_HRTF_SOFT,
                              ALC_FALSE,
                              0};
    space = std::make_unique<SoundSpace>(device, attributes);
}

void SoundMixer::Render(int frames, std::vector<float>& samples) {
    const std::size_t first = samples.size();
    samples.resize(first + static_cast<std::size_t>(std::max(frames, 0)) * 2, 0.0f);
    const auto render = Find<LPALCRENDERSAMPLESSOFT>("alcRenderSamplesSOFT");
    if (IsReady() && render != nullptr && frames > 0) {
        render(space->Device(), samples.data() + first, frames);
    }
}

} // namespace sound

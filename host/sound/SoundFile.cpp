#include "host/sound/SoundFile.h"

#include "host/sound/OpenSound.h"

#include <algorithm>
#include <cmath>

namespace sound {

namespace {

std::vector<float> MixToOne(const std::vector<float>& samples, int channels) {
    std::vector<float> mono(samples.size() / static_cast<std::size_t>(channels));
    for (std::size_t i = 0; i < mono.size(); ++i) {
        float sum = 0.0f;
        for (int c = 0; c < channels; ++c) {
            sum += samples[i * static_cast<std::size_t>(channels) + static_cast<std::size_t>(c)];
        }
        mono[i] = sum / static_cast<float>(channels);
    }
    return mono;
}

} // namespace

float SoundData::Seconds() const {
    return rate > 0 && channels > 0
               ? static_cast<float>(samples.size()) / static_cast<float>(channels) / static_cast<float>(rate)
               : 0.0f;
}

std::shared_ptr<const SoundData> LoadSound(const std::string& path) {
    const OpenSound open(path);
    open.Check(path);
    auto sound = std::make_shared<SoundData>();
    sound->rate = open.info.samplerate;
    sound->channels = open.info.channels;
    // The header's count is only a claim, so the room grows with what is really there.
    constexpr sf_count_t kBlockFrames = 65536;
    std::vector<float> block(static_cast<std::size_t>(kBlockFrames * open.info.channels));
    sf_count_t left = open.info.frames;
    while (left > 0) {
        const sf_count_t count = sf_readf_float(open.file, block.data(), std::min(left, kBlockFrames));
        if (count <= 0) {
            break;
        }
        sound->samples.insert(sound->samples.end(), block.begin(),
                              block.begin() + static_cast<std::ptrdiff_t>(count * open.info.channels));
        left -= count;
    }
    for (float& sample : sound->samples) {
        sample = std::isfinite(sample) ? sample : 0.0f;
    }
    if (sound->channels > 2) {
        sound->samples = MixToOne(sound->samples, sound->channels);
        sound->channels = 1;
    }
    return sound;
}

float SoundSeconds(const std::string& path) {
    const OpenSound open(path);
    return open.IsUsable() ? static_cast<float>(static_cast<double>(open.info.frames) /
                                                static_cast<double>(open.info.samplerate))
                           : -1.0f;
}

} // namespace sound

#include "host/sound/SoundWave.h"

#include "host/sound/OpenSound.h"

#include <algorithm>
#include <cmath>

namespace sound {

SoundWave::SoundWave(const std::string& path, int pieces) : open(std::make_unique<OpenSound>(path)) {
    open->Check(path);
    rate = open->info.samplerate;
    channels = open->info.channels;
    frames = open->info.frames;
    // Not more pieces than there are frames, so that none is empty.
    const auto count = static_cast<std::size_t>(std::clamp<std::int64_t>(frames, 1, std::max(pieces, 1)));
    ranges.resize(count);
    isSet.resize(count);
}

SoundWave::~SoundWave() = default;

float SoundWave::Seconds() const {
    return static_cast<float>(static_cast<double>(frames) / static_cast<double>(rate));
}

float SoundWave::ShareRead() const {
    return IsComplete() || frames == 0
               ? 1.0f
               : static_cast<float>(static_cast<double>(done) / static_cast<double>(frames));
}

bool SoundWave::ReadOn(int samples) {
    if (open == nullptr) {
        return false;
    }
    const std::int64_t wanted = std::clamp<std::int64_t>(samples / channels, 1, frames - done + 1);
    std::vector<float> block(static_cast<std::size_t>(wanted * channels));
    const sf_count_t count = sf_readf_float(open->file, block.data(), wanted);
    if (count > 0) {
        Add(block, std::min<std::int64_t>(count, frames - done));
    }
    // The header's count is only a claim; what is missing stays silent.
    if (count < wanted || done >= frames) {
        open.reset();
    }
    return open != nullptr;
}

void SoundWave::Add(const std::vector<float>& samples, std::int64_t count) {
    const auto pieces = static_cast<std::int64_t>(ranges.size());
    for (std::int64_t i = 0; i < count; ++i, ++done) {
        const auto piece = static_cast<std::size_t>(done * pieces / frames);
        for (std::int64_t c = 0; c < channels; ++c) {
            const float read = samples[static_cast<std::size_t>(i * channels + c)];
            const float sample = std::isfinite(read) ? std::clamp(read, -1.0f, 1.0f) : 0.0f;
            Range& range = ranges[piece];
            range.low = isSet[piece] ? std::min(range.low, sample) : sample;
            range.high = isSet[piece] ? std::max(range.high, sample) : sample;
            isSet[piece] = true;
        }
    }
}

SoundWave::Range SoundWave::Between(float from, float to) const {
    const auto pieces = static_cast<int>(ranges.size());
    const int first = std::clamp(static_cast<int>(from * static_cast<float>(pieces)), 0, pieces - 1);
    const int last =
        std::clamp(static_cast<int>(std::ceil(to * static_cast<float>(pieces))) - 1, first, pieces - 1);
    Range whole;
    bool any = false;
    for (auto i = static_cast<std::size_t>(first); i <= static_cast<std::size_t>(last); ++i) {
        if (isSet[i]) {
            whole.low = any ? std::min(whole.low, ranges[i].low) : ranges[i].low;
            whole.high = any ? std::max(whole.high, ranges[i].high) : ranges[i].high;
            any = true;
        }
    }
    return whole;
}

} // namespace sound

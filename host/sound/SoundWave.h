#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace sound {

class OpenSound;

/// How loud a sound is along its time, for a drawing: the lowest and the highest sample of each of many equal
/// pieces. Read bit by bit, so that a long sound stops nobody.
class SoundWave {
public:
    struct Range {
        float low = 0.0f;
        float high = 0.0f;
        bool operator==(const Range&) const = default;
    };

    /// Reads the header. Throws SoundError as LoadSound does.
    explicit SoundWave(const std::string& path, int pieces = 2048);
    ~SoundWave();
    SoundWave(const SoundWave&) = delete;
    SoundWave& operator=(const SoundWave&) = delete;

    /// Reads on by about so many samples; false when all is read. The file is closed then.
    bool ReadOn(int samples);
    bool IsComplete() const { return open == nullptr; }
    /// Which share of the sound is read, 0 to 1.
    float ShareRead() const;
    /// What lies between two shares of the sound, as far as it is read; over all channels, -1 to 1.
    Range Between(float from, float to) const;

    float Seconds() const;
    int Rate() const { return rate; }
    int Channels() const { return channels; }

private:
    void Add(const std::vector<float>& samples, std::int64_t count);

    std::unique_ptr<OpenSound> open; ///< until all is read
    int rate = 0;
    int channels = 0;
    std::int64_t frames = 0;
    std::int64_t done = 0;
    std::vector<Range> ranges;
    std::vector<bool> isSet; ///< a range without a sample yet takes the first as it is
};

} // namespace sound

#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace sound {

/// A sound file could not be used; `what` names the file and the reason.
class SoundError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A decoded sound.
struct SoundData {
    int rate = 0;               ///< frames a second
    int channels = 0;           ///< 1 or 2
    std::vector<float> samples; ///< interleaved, -1 to 1

    float Seconds() const;
};

/// Reads a wav, ogg or other file that libsndfile knows. More than two channels are mixed to one. Throws
/// SoundError for a file that is missing, broken, or longer than ten minutes of 48 kHz stereo.
std::shared_ptr<const SoundData> LoadSound(const std::string& path);

/// Seconds of a sound file from its header, -1.0 if it can't be read. Never throws.
float SoundSeconds(const std::string& path);

} // namespace sound

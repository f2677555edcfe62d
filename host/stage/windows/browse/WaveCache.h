#pragma once

#include "host/sound/SoundWave.h"

#include <cstdint>
#include <list>
#include <memory>
#include <string>

namespace stage {

/// The waves of the sounds last looked at, so that going back to one shows it at once. A file that has
/// changed is read anew.
class WaveCache {
public:
    static constexpr std::size_t kMost = 32;

    /// The file's wave, which may not be read to its end yet. Throws SoundError.
    std::shared_ptr<sound::SoundWave> Get(const std::string& path);

private:
    struct Entry {
        std::string path;
        std::int64_t size;
        std::int64_t changed; ///< nanoseconds
        std::shared_ptr<sound::SoundWave> wave;
    };
    std::list<Entry> entries; ///< the last one asked for first
};

} // namespace stage

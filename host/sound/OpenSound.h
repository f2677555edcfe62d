#pragma once

#include "host/outside/OutsideFile.h"

#include <sndfile.h>
#include <string>

namespace sound {

/// A sound file open for decoding; closed with the object. Inside host/sound alone.
class OpenSound {
public:
    /// The length that a sound may have: ten minutes of 48 kHz stereo.
    static constexpr sf_count_t kMaxSamples = 600LL * 48000 * 2;

    explicit OpenSound(const std::string& path);
    ~OpenSound();
    OpenSound(const OpenSound&) = delete;
    OpenSound& operator=(const OpenSound&) = delete;

    /// False for what is no sound; it may still be too long.
    bool IsUsable() const;
    /// Why the file is not usable.
    std::string Reason() const;
    /// Throws SoundError if the file is not usable or too long.
    void Check(const std::string& path) const;

    SF_INFO info{};
    OutsideFile outside;
    SNDFILE* file = nullptr;
};

} // namespace sound

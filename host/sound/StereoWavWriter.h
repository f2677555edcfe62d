#pragma once

#include "host/sound/SoundFile.h"

struct sf_private_tag;

namespace sound {

/// Writes a 16-bit stereo wav file piece by piece, so that a long sound needs no more memory than a short
/// one. Beyond 4 GiB the file becomes an RF64, which holds any length.
class StereoWavWriter {
public:
    /// Writes into an open file from its start; the descriptor stays the caller's. `name` is for errors.
    /// Throws SoundError, as all operations do.
    StereoWavWriter(int descriptor, std::string fileName, int rate);
    /// Leaves an unfinished file behind, unless Finish came before.
    ~StereoWavWriter();
    StereoWavWriter(const StereoWavWriter&) = delete;
    StereoWavWriter& operator=(const StereoWavWriter&) = delete;

    /// Appends interleaved samples, -1 to 1; what lies outside is cut.
    void Write(const std::vector<float>& samples);
    /// Completes the header.
    void Finish();

private:
    std::string name;
    sf_private_tag* file;
};

} // namespace sound

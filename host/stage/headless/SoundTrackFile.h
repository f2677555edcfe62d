#pragma once

#include "host/sound/StereoWavWriter.h"

namespace headless {

/// A video's sound on its way to the program that makes the video: a file without a name, so that nothing of
/// it stays, however the program ends.
class SoundTrackFile {
public:
    /// Its data lies on the disk of the video. Throws OutputError or SoundError.
    SoundTrackFile(const std::string& video, int rate);
    ~SoundTrackFile();
    SoundTrackFile(const SoundTrackFile&) = delete;
    SoundTrackFile& operator=(const SoundTrackFile&) = delete;

    sound::StereoWavWriter& Writer() { return *writer; }
    /// Open for a program that is started.
    int Descriptor() const { return descriptor; }

private:
    int descriptor;
    std::unique_ptr<sound::StereoWavWriter> writer;
};

} // namespace headless

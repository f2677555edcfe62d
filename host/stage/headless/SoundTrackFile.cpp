#include "host/stage/headless/SoundTrackFile.h"

#include "host/stage/headless/OutputError.h"
#include "host/stage/headless/UnfinishedFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace headless {

namespace {

/// Open under a name that is gone when this returns.
int OpenNameless(const std::string& beside) {
    const UnfinishedFile named(beside);
    const int descriptor = open(named.Path().c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        throw OutputError(beside + ": no room for the sound: " + std::strerror(errno));
    }
    return descriptor;
}

} // namespace

SoundTrackFile::SoundTrackFile(const std::string& video, int rate) : descriptor(OpenNameless(video)) {
    try {
        writer = std::make_unique<sound::StereoWavWriter>(descriptor, "the sound of " + video, rate);
    } catch (...) {
        close(descriptor);
        throw;
    }
}

SoundTrackFile::~SoundTrackFile() {
    writer.reset();
    close(descriptor);
}

} // namespace headless

#include "host/engine/SoundDuration.h"

#include "host/engine/LowLevelFiles.h"
#include "host/outside/OutsideFile.h"

#include <algorithm>
#include <sndfile.h>

namespace engine {

float SoundFileSeconds(const std::string& path) {
    std::string portable = path;
    std::replace(portable.begin(), portable.end(), '\\', '/');
    const OutsideFile outside(portable, kMaxFileBytes);
    SF_INFO info = {};
    SNDFILE* file = outside.IsOpen()
                        ? sf_open_fd(outside.Descriptor(), SFM_READ, &info, /*close_desc*/ SF_FALSE)
                        : nullptr;
    if (file == nullptr) {
        return -1.0f;
    }
    sf_close(file);
    if (info.samplerate <= 0 || info.frames < 0) {
        return -1.0f;
    }
    return static_cast<float>(static_cast<double>(info.frames) / info.samplerate);
}

} // namespace engine

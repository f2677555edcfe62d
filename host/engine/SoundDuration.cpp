#include "host/engine/SoundDuration.h"

#include <algorithm>
#include <sndfile.h>

namespace engine {

float SoundFileSeconds(const std::string& path) {
    std::string portable = path;
    std::replace(portable.begin(), portable.end(), '\\', '/');
    SF_INFO info = {};
    SNDFILE* file = sf_open(portable.c_str(), SFM_READ, &info);
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

#include "host/sound/OpenSound.h"

#include "host/sound/SoundFile.h"

namespace sound {

namespace {
/// Ten minutes of 48 kHz stereo in floats are 220 MiB.
constexpr std::uint64_t kMaxFileBytes = 256 * OutsideFile::kMiB;
} // namespace

OpenSound::OpenSound(const std::string& path) : outside(path, kMaxFileBytes) {
    if (outside.IsOpen()) {
        file = sf_open_fd(outside.Descriptor(), SFM_READ, &info, /*close_desc*/ SF_FALSE);
    }
}

OpenSound::~OpenSound() {
    if (file != nullptr) {
        sf_close(file);
    }
}

bool OpenSound::IsUsable() const {
    return file != nullptr && info.samplerate > 0 && info.channels > 0 && info.frames >= 0;
}

std::string OpenSound::Reason() const {
    return file == nullptr ? outside.IsOpen() ? sf_strerror(nullptr) : outside.Error() : "no usable sound";
}

void OpenSound::Check(const std::string& path) const {
    if (!IsUsable()) {
        throw SoundError(path + ": " + Reason());
    }
    if (info.frames > kMaxSamples / info.channels) {
        throw SoundError(path + ": longer than ten minutes");
    }
}

} // namespace sound

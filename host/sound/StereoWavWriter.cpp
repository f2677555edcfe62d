#include "host/sound/StereoWavWriter.h"

#include <sndfile.h>
#include <utility>

namespace sound {

StereoWavWriter::StereoWavWriter(int descriptor, std::string fileName, int rate)
    : name(std::move(fileName)), file(nullptr) {
    SF_INFO form{};
    form.samplerate = rate;
    form.channels = 2;
    form.format = SF_FORMAT_RF64 | SF_FORMAT_PCM_16;
    file = sf_open_fd(descriptor, SFM_WRITE, &form, /*close_desc*/ SF_FALSE);
    if (file == nullptr) {
        throw SoundError(name + ": " + sf_strerror(nullptr));
    }
    sf_command(file, SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE);
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
}

StereoWavWriter::~StereoWavWriter() {
    if (file != nullptr) {
        sf_close(file);
    }
}

void StereoWavWriter::Write(const std::vector<float>& samples) {
    const auto frames = static_cast<sf_count_t>(samples.size() / 2);
    if (sf_writef_float(file, samples.data(), frames) != frames) {
        throw SoundError(name + ": " + sf_strerror(file));
    }
}

void StereoWavWriter::Finish() {
    SNDFILE* whole = std::exchange(file, nullptr);
    if (whole != nullptr && sf_close(whole) != 0) {
        throw SoundError(name + ": the sound can't be completed");
    }
}

} // namespace sound

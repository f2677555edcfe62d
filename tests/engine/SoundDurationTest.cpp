#include "host/engine/SoundDuration.h"
#include "host/engine/ByteStream.h"
#include "tests/engine/EngineFixture.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace engine_test {

/// A mono wav file of 8 bits at 1000 samples a second.
std::string WavBytes(std::uint32_t samples) {
    std::string bytes;
    engine::ByteWriter out(bytes);
    out.Raw("RIFF", 4);
    out.U32(36 + samples);
    out.Raw("WAVEfmt ", 8);
    out.U32(16);
    out.U16(1); // PCM
    out.U16(1);
    out.U32(1000);
    out.U32(1000);
    out.U16(1);
    out.U16(8);
    out.Raw("data", 4);
    out.U32(samples);
    bytes.append(samples, '\x80');
    return bytes;
}

class SoundDurationTest : public EngineTest {
protected:
    SoundDurationTest() {
        char name[] = "/tmp/films-sound-XXXXXX";
        folder = mkdtemp(name);
        std::ofstream(folder / "horn.wav", std::ios::binary) << WavBytes(2500);
        std::ofstream(folder / "noise.wav", std::ios::binary) << "this is no sound";
    }
    ~SoundDurationTest() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder;
};

TEST_F(SoundDurationTest, WavFileGivesItsSeconds) {
    EXPECT_FLOAT_EQ(engine::SoundFileSeconds((folder / "horn.wav").string()), 2.5f);
    EXPECT_EQ(engine::SoundFileSeconds((folder / "noise.wav").string()), -1.0f);
    EXPECT_EQ(engine::SoundFileSeconds((folder / "missing.wav").string()), -1.0f);
    EXPECT_EQ(engine::SoundFileSeconds(""), -1.0f);
    ASSERT_EQ(mkfifo((folder / "pipe.wav").c_str(), 0600), 0);
    EXPECT_EQ(engine::SoundFileSeconds((folder / "pipe.wav").string()), -1.0f);
}

TEST_F(SoundDurationTest, KeysFindSoundsBesideTheLevel) {
    level.SetFolder(folder.string());
    IFilmKey* key = MakeKey(KeyKind::Sound, 0.0f);
    auto& sound = static_cast<CFilmSoundKey&>(*key);
    sound.wavPath = "horn.wav";
    EXPECT_FLOAT_EQ(sound.GetNaturalDuration(), 2.5f);
    sound.wavPath = ".\\horn.wav";
    EXPECT_FLOAT_EQ(sound.GetNaturalDuration(), 2.5f);
    sound.wavPath = (folder / "horn.wav").string();
    level.SetFolder("");
    EXPECT_FLOAT_EQ(sound.GetNaturalDuration(), 2.5f);
    Films().keyFactory->DestroyKey(key);
}

} // namespace engine_test

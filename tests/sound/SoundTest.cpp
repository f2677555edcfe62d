#include "host/sound/SoundFile.h"
#include "host/sound/SoundMixer.h"
#include "host/sound/SoundPlayer.h"
#include "host/sound/StereoWavWriter.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <cmath>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

using sound::LoadSound;
using sound::SoundError;
using sound::SoundSeconds;

namespace {

constexpr int kRate = 48000;

/// A folder of its own that goes with the test.
class SoundTest : public testing::Test {
protected:
    std::string Path(const char* name) const { return folder.File(name); }

    /// Stereo of constant values, `seconds` long.
    std::string Constant(const char* name, float left, float right, float seconds) const {
        std::vector<float> samples;
        for (int i = 0; i < static_cast<int>(seconds * kRate); ++i) {
            samples.push_back(left);
            samples.push_back(right);
        }
        Write(Path(name), {samples});
        return Path(name);
    }

    /// A wav file of the pieces one after the other.
    static void Write(const std::string& path, const std::vector<std::vector<float>>& pieces) {
        const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        ASSERT_GE(descriptor, 0);
        sound::StereoWavWriter writer(descriptor, path, kRate);
        for (const std::vector<float>& piece : pieces) {
            writer.Write(piece);
        }
        writer.Finish();
        close(descriptor);
    }

    static float Loudness(const std::vector<float>& samples, std::size_t channel, std::size_t first,
                          std::size_t last) {
        double sum = 0.0;
        for (std::size_t i = first; i < last; ++i) {
            sum += std::abs(samples[2 * i + channel]);
        }
        return static_cast<float>(sum / static_cast<double>(last - first));
    }

    const TempFolder folder;
};

TEST_F(SoundTest, WhatIsWrittenIsReadBack) {
    const auto sound = LoadSound(Constant("a.wav", 0.5f, -0.25f, 0.1f));
    EXPECT_EQ(sound->rate, kRate);
    EXPECT_EQ(sound->channels, 2);
    ASSERT_EQ(sound->samples.size(), 9600u);
    EXPECT_NEAR(sound->samples[0], 0.5f, 1e-4f);
    EXPECT_NEAR(sound->samples[1], -0.25f, 1e-4f);
    EXPECT_NEAR(sound->Seconds(), 0.1f, 1e-6f);
}

TEST_F(SoundTest, PiecesFollowOneAnother) {
    Write(Path("a.wav"), {{0.25f, 0.5f}, {}, {-0.25f, -0.5f, 0.0f, 0.125f}});
    const auto sound = LoadSound(Path("a.wav"));
    const std::vector<float> expected = {0.25f, 0.5f, -0.25f, -0.5f, 0.0f, 0.125f};
    ASSERT_EQ(sound->samples.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(sound->samples[i], expected[i], 1e-4f) << i;
    }
}

TEST_F(SoundTest, AFileThatCanNotBeWrittenIsToldByItsName) {
    const std::string path = Constant("a.wav", 0.0f, 0.0f, 0.01f);
    const int readOnly = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    try {
        sound::StereoWavWriter writer(readOnly, "the sound of a.mp4", kRate);
        writer.Write(std::vector<float>(100000, 0.5f));
        writer.Finish();
        ADD_FAILURE() << "a file that is open for reading was written";
    } catch (const SoundError& error) {
        EXPECT_EQ(std::string(error.what()).find("the sound of a.mp4: "), 0u) << error.what();
    }
    close(readOnly);
}

TEST_F(SoundTest, LoudSamplesAreCutNotWrapped) {
    const auto sound = LoadSound(Constant("a.wav", 3.0f, -3.0f, 0.01f));
    EXPECT_GT(sound->samples[0], 0.99f);
    EXPECT_LT(sound->samples[1], -0.99f);
}

TEST_F(SoundTest, DurationsComeFromTheHeader) {
    EXPECT_FLOAT_EQ(SoundSeconds(Constant("a.wav", 0, 0, 0.5f)), 0.5f);
    EXPECT_EQ(SoundSeconds(Path("none.wav")), -1.0f);
}

TEST_F(SoundTest, TheSamplesSoundsHaveTheirLengths) {
    const std::string sounds = SampleFolder() + "/sounds/";
    EXPECT_FLOAT_EQ(SoundSeconds(sounds + "horn.wav"), 2.4f);
    EXPECT_FLOAT_EQ(SoundSeconds(sounds + "steps.wav"), 1.0f);
}

TEST_F(SoundTest, BrokenFilesAreRefusedWithTheirName) {
    std::ofstream(Path("broken.wav")) << "RIFF and no more";
    for (const char* name : {"broken.wav", "none.wav"}) {
        try {
            LoadSound(Path(name));
            FAIL() << name;
        } catch (const SoundError& error) {
            EXPECT_EQ(std::string(error.what()).find(Path(name) + ": "), 0u) << error.what();
        }
    }
    EXPECT_EQ(SoundSeconds(Path("broken.wav")), -1.0f);
}

TEST_F(SoundTest, AFifoOrADeviceInPlaceOfASoundIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(Path("pipe.wav").c_str(), 0600), 0);
    for (const std::string& path : {Path("pipe.wav"), std::string("/dev/zero")}) {
        EXPECT_THROW(LoadSound(path), SoundError) << path;
        EXPECT_EQ(SoundSeconds(path), -1.0f) << path;
    }
}

TEST_F(SoundTest, AFileThatClaimsMoreThanItHasIsReadAsFarAsItGoes) {
    const std::string path = Constant("a.wav", 0.5f, 0.5f, 0.1f);
    std::filesystem::resize_file(path, std::filesystem::file_size(path) / 2);
    EXPECT_LT(LoadSound(path)->Seconds(), 0.06f);
}

TEST_F(SoundTest, APlayerWithoutLoudspeakersIsSilentAndSafe) {
    sound::SoundPlayer player;
    const float listener[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    player.SetListener(listener);
    player.StopAll();
    const int sound = player.Play({.path = Constant("a.wav", 0.1f, 0.1f, 0.2f)});
    EXPECT_EQ(sound == 0, !player.LastError().empty());
    player.Move(sound, {1, 2, 3});
    player.Stop(sound);
    EXPECT_FALSE(player.IsPlaying(sound));
    player.Stop(sound);
    EXPECT_EQ(player.Play({.path = Path("none.wav")}), 0);
    EXPECT_FALSE(player.LastError().empty());
}

class SoundMixerTest : public SoundTest {
protected:
    SoundMixerTest() : mixer(kRate) {}
    void SetUp() override { ASSERT_TRUE(mixer.IsReady()); }

    sound::SoundMixer mixer;
    std::vector<float> mix;
};

TEST_F(SoundMixerTest, WithoutSoundsItMixesSilence) {
    mixer.Render(1000, mix);
    ASSERT_EQ(mix.size(), 2000u);
    for (const float sample : mix) {
        ASSERT_EQ(sample, 0.0f);
    }
}

TEST_F(SoundMixerTest, ASoundIsHeardForItsLength) {
    mixer.Space()->Play({.path = Constant("a.wav", 0.5f, 0.5f, 0.5f)});
    mixer.Render(kRate, mix);
    EXPECT_GT(Loudness(mix, 0, 4800, 19200), 0.1f);
    EXPECT_LT(Loudness(mix, 0, 28800, 48000), 0.001f);
}

TEST_F(SoundMixerTest, OffsetStartsInsideTheSound) {
    mixer.Space()->Play({.path = Constant("a.wav", 0.5f, 0.5f, 0.5f), .offset = 0.4f});
    mixer.Render(kRate / 2, mix);
    EXPECT_GT(Loudness(mix, 0, 480, 4300), 0.1f);
    EXPECT_LT(Loudness(mix, 0, 7200, 24000), 0.001f);
    EXPECT_EQ(mixer.Space()->Play({.path = Path("a.wav"), .offset = 2.0f}), 0) << "beyond its end";
}

TEST_F(SoundMixerTest, LoopedSoundsGoOnUntilStopped) {
    const int sound = mixer.Space()->Play({.path = Constant("a.wav", 0.5f, 0.5f, 0.1f), .looped = true});
    mixer.Render(kRate, mix);
    EXPECT_GT(Loudness(mix, 0, 43200, 48000), 0.1f);
    EXPECT_TRUE(mixer.Space()->IsPlaying(sound));
    mixer.Space()->Stop(sound);
    mixer.Render(4800, mix);
    const std::size_t end = mix.size() / 2;
    EXPECT_LT(Loudness(mix, 0, end - 2400, end), 0.001f);
}

TEST_F(SoundMixerTest, PlacedSoundsComeFromTheirSideAndFade) {
    // The listener looks along -z, so +x is to his right.
    const float listener[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    mixer.Space()->SetListener(listener);
    const std::string path = Constant("a.wav", 0.5f, 0.5f, 1.0f);
    const int sound = mixer.Space()->Play({.path = path, .position = std::array<float, 3>{300, 0, 0}});
    mixer.Render(9600, mix);
    EXPECT_GT(Loudness(mix, 1, 2400, 9600), 2.0f * Loudness(mix, 0, 2400, 9600));
    const float near = Loudness(mix, 1, 2400, 9600);
    mixer.Space()->Move(sound, {6000, 0, 0});
    mixer.Render(9600, mix);
    EXPECT_LT(Loudness(mix, 1, 14400, 19200), near * 0.25f);
}

TEST_F(SoundMixerTest, SoundsFadeFromFourMetresOn) {
    const float listener[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    mixer.Space()->SetListener(listener);
    const std::string path = Constant("a.wav", 0.5f, 0.5f, 2.0f);
    const int sound = mixer.Space()->Play({.path = path, .position = std::array<float, 3>{200, 0, 0}});
    std::size_t heard = 0;
    const auto loudnessAt = [&](float distance) {
        mixer.Space()->Move(sound, {distance, 0, 0});
        mixer.Render(9600, mix);
        heard += 9600;
        return Loudness(mix, 1, heard - 4800, heard); // the first half glides from the last place
    };
    const float full = loudnessAt(400.0f);
    EXPECT_GT(full, 0.1f);
    EXPECT_NEAR(loudnessAt(200.0f) / full, 1.0f, 0.01f) << "no louder from nearby";
    EXPECT_NEAR(loudnessAt(800.0f) / full, 0.5f, 0.01f);   // 4 m over 8 m
    EXPECT_NEAR(loudnessAt(1600.0f) / full, 0.25f, 0.01f); // 4 m over 16 m
    EXPECT_NEAR(loudnessAt(4000.0f) / full, 0.1f, 0.01f);
}

TEST_F(SoundMixerTest, AListenerThatIsNotFiniteIsIgnored) {
    const float bad[16] = {std::numeric_limits<float>::quiet_NaN()};
    mixer.Space()->SetListener(bad);
    mixer.Space()->Play({.path = Constant("a.wav", 0.5f, 0.5f, 0.2f)});
    mixer.Render(4800, mix);
    for (const float sample : mix) {
        ASSERT_TRUE(std::isfinite(sample));
    }
}

TEST_F(SoundMixerTest, ManySoundsRunOutOfVoicesQuietly) {
    const std::string path = Constant("a.wav", 0.001f, 0.001f, 0.1f);
    int refused = 0;
    for (int i = 0; i < 2000; ++i) {
        refused += mixer.Space()->Play({.path = path, .looped = true}) == 0 ? 1 : 0;
    }
    EXPECT_GT(refused, 0);
    mixer.Space()->StopAll();
    EXPECT_NE(mixer.Space()->Play({.path = path}), 0);
}

} // namespace

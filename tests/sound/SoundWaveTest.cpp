#include "host/sound/SoundWave.h"

#include "host/sound/SoundFile.h"
#include "host/sound/StereoWavWriter.h"
#include "tests/support/TempFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using sound::SoundWave;

namespace {

constexpr int kRate = 8000;
/// What 16 bits may take away.
constexpr float kStep = 1.0f / 32767.0f;

class SoundWaveTest : public testing::Test {
protected:
    /// A stereo wav of interleaved samples.
    std::string Write(const std::vector<float>& samples) const {
        std::string path = folder.File("a.wav");
        const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        sound::StereoWavWriter writer(descriptor, path, kRate);
        writer.Write(samples);
        writer.Finish();
        close(descriptor);
        return path;
    }
    static void ReadAll(SoundWave& wave) {
        while (wave.ReadOn(1000)) {
        }
    }
    std::string Refusal(const std::string& path) const {
        try {
            SoundWave wave(path);
            return "";
        } catch (const sound::SoundError& error) {
            return error.what();
        }
    }

    const TempFolder folder;
};

TEST_F(SoundWaveTest, PiecesHoldTheLowestAndHighestOfBothChannels) {
    // Four frames in two pieces.
    SoundWave wave(Write({0.5f, -0.25f, 0.25f, 0.0f, 0.75f, 0.75f, 0.5f, 1.0f}), 2);
    EXPECT_EQ(wave.Channels(), 2);
    EXPECT_EQ(wave.Rate(), kRate);
    EXPECT_EQ(wave.Seconds(), 4.0f / 8000.0f);
    ReadAll(wave);
    EXPECT_NEAR(wave.Between(0.0f, 0.5f).low, -0.25f, kStep);
    EXPECT_NEAR(wave.Between(0.0f, 0.5f).high, 0.5f, kStep);
    EXPECT_NEAR(wave.Between(0.5f, 1.0f).low, 0.5f, kStep) << "0 is not in it";
    EXPECT_NEAR(wave.Between(0.5f, 1.0f).high, 1.0f, kStep);
    EXPECT_NEAR(wave.Between(0.0f, 1.0f).low, -0.25f, kStep);
    EXPECT_NEAR(wave.Between(0.0f, 1.0f).high, 1.0f, kStep);
}

TEST_F(SoundWaveTest, ALongSoundIsReadBitByBit) {
    std::vector<float> samples(20000, 0.5f); // 10,000 frames
    SoundWave wave(Write(samples), 100);
    EXPECT_EQ(wave.ShareRead(), 0.0f);
    EXPECT_TRUE(wave.ReadOn(5000)); // 2,500 frames
    EXPECT_EQ(wave.ShareRead(), 0.25f);
    EXPECT_NEAR(wave.Between(0.2f, 0.25f).high, 0.5f, kStep);
    EXPECT_EQ(wave.Between(0.3f, 0.4f), SoundWave::Range()) << "not read yet";
    EXPECT_FALSE(wave.IsComplete());
    int more = 0;
    while (wave.ReadOn(5000)) {
        ++more;
    }
    EXPECT_EQ(more, 2) << "the fourth quarter ends it";
    EXPECT_TRUE(wave.IsComplete());
    EXPECT_EQ(wave.ShareRead(), 1.0f);
    EXPECT_NEAR(wave.Between(0.99f, 1.0f).low, 0.5f, kStep);
    EXPECT_FALSE(wave.ReadOn(5000));
}

TEST_F(SoundWaveTest, MorePiecesThanFramesLeaveNoGap) {
    SoundWave wave(Write({0.5f, 0.5f, -0.5f, -0.5f}), 1000);
    ReadAll(wave);
    EXPECT_NEAR(wave.Between(0.4f, 0.41f).low, 0.5f, kStep);
    EXPECT_NEAR(wave.Between(0.6f, 0.61f).high, -0.5f, kStep);
    EXPECT_NEAR(wave.Between(1.0f, 1.0f).high, -0.5f, kStep) << "the very end";
}

TEST_F(SoundWaveTest, AnEmptySoundIsSilent) {
    SoundWave wave(Write({}));
    EXPECT_EQ(wave.Seconds(), 0.0f);
    EXPECT_EQ(wave.ShareRead(), 1.0f);
    ReadAll(wave);
    EXPECT_EQ(wave.Between(0.0f, 1.0f), SoundWave::Range());
}

TEST_F(SoundWaveTest, WhatACutFileLacksIsSilent) {
    const std::string path = Write(std::vector<float>(2000, 0.5f)); // 1,000 frames of 4 bytes
    ASSERT_EQ(truncate(path.c_str(), 44 + 2000), 0);
    SoundWave wave(path, 10);
    ReadAll(wave);
    EXPECT_NEAR(wave.Between(0.0f, 0.1f).high, 0.5f, kStep);
    EXPECT_TRUE(wave.IsComplete());
}

TEST_F(SoundWaveTest, WhatIsNoSoundIsRefusedWithTheReason) {
    const std::string missing = folder.File("missing.wav");
    EXPECT_EQ(Refusal(missing), missing + ": no such file");
    const std::string text = folder.File("text.wav");
    WriteWholeFile(text, "no sound at all");
    EXPECT_TRUE(Refusal(text).starts_with(text + ": "));
    EXPECT_EQ(Refusal(folder.Path()), folder.Path() + ": not a file");
    const std::string pipe = folder.File("pipe.wav");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Refusal(pipe), pipe + ": not a file");
}

} // namespace

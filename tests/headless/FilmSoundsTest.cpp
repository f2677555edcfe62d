#include "host/stage/headless/FilmSounds.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

constexpr int kRate = 48000;

TEST(FilmSoundsTest, ALongFilmIsMixedInPiecesOfATenthOfASecond) {
    std::size_t samples = 0;
    std::size_t longest = 0;
    headless::FilmSounds sounds("", kRate, [&](const std::vector<float>& block) {
        samples += block.size();
        longest = std::max(longest, block.size());
    });
    ASSERT_TRUE(sounds.IsReady());
    sounds.MixUpTo(0.0f, 20.05f, nullptr);
    EXPECT_EQ(samples, 2u * 962400u) << "20.05 s of stereo";
    EXPECT_EQ(longest, 2u * 4800u);
}

TEST(FilmSoundsTest, FramesThatAreNoWholeSamplesAddUpToTheFilm) {
    std::size_t samples = 0;
    headless::FilmSounds sounds("", kRate, [&](const std::vector<float>& block) { samples += block.size(); });
    for (int frame = 1; frame <= 70; ++frame) {
        sounds.MixUpTo(0.0f, static_cast<float>(frame) / 7.0f, nullptr); // 6,857.14 samples a frame
    }
    EXPECT_EQ(samples, 2u * 480000u) << "10 s of stereo";
}

} // namespace

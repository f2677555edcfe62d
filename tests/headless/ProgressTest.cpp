#include "host/stage/headless/Progress.h"

#include <gtest/gtest.h>

using headless::FormatProgress;

namespace {

TEST(ProgressTest, ShowsShareRateAndTimeLeft) {
    // 30 of 120 frames in 10 seconds: 3 a second, 90 left take 30 seconds.
    EXPECT_EQ(FormatProgress(30, 120, 10.0),
              "[######..................]  25%  30/120 frames  3.0 frames/s  0:30 left");
}

TEST(ProgressTest, NothingIsKnownBeforeTheFirstFrame) {
    EXPECT_EQ(FormatProgress(0, 120, 0.0),
              "[........................]   0%  0/120 frames  -- frames/s  -- left");
}

TEST(ProgressTest, TheEndIsFull) {
    EXPECT_EQ(FormatProgress(4, 4, 2.0),
              "[########################] 100%  4/4 frames  2.0 frames/s  0:00 left");
}

TEST(ProgressTest, HoursAreShown) {
    EXPECT_NE(FormatProgress(1, 3662, 1.0).find("1:01:01 left"), std::string::npos);
}

TEST(ProgressTest, OddNumbersAreNoTrouble) {
    EXPECT_NE(FormatProgress(9, 0, 1.0), "");
    EXPECT_NE(FormatProgress(-5, 10, 1e-30), "");
    EXPECT_NE(FormatProgress(1, 2000000000, 1e30), "");
}

TEST(ProgressTest, AFileGetsALineEveryTenth) {
    std::FILE* file = std::tmpfile();
    headless::Progress progress(file, 100);
    for (int i = 1; i <= 100; ++i) {
        progress.Show(i);
    }
    progress.Finish();
    std::rewind(file);
    int lines = 0;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) {
        lines += c == '\n' ? 1 : 0;
    }
    std::fclose(file);
    EXPECT_EQ(lines, 11) << "at 0, 10 and so on to 100 percent";
}

} // namespace

#include "host/stage/windows/app/CommandLine.h"

#include <gtest/gtest.h>

using stage::ParseCommandLine;

TEST(CommandLineTest, ALevelAndAFilmToPlay) {
    const auto line = ParseCommandLine({"harbour.level", "--film", "Intro", "--play"});
    EXPECT_TRUE(line.error.isEmpty());
    EXPECT_EQ(line.level, "harbour.level");
    EXPECT_EQ(line.film, "Intro");
    EXPECT_TRUE(line.play);
}

TEST(CommandLineTest, SeveralScreenshotsFollowTheirOption) {
    const auto line = ParseCommandLine({"--screenshot", "a.png", "b.png", "x.level", "--size", "1280x720"});
    EXPECT_EQ(line.screenshots, (QStringList{"a.png", "b.png"}));
    EXPECT_EQ(line.level, "x.level");
    EXPECT_EQ(line.size, QSize(1280, 720));
}

TEST(CommandLineTest, InspectionIsAskedFor) {
    EXPECT_FALSE(ParseCommandLine({"x.level"}).inspect);
    EXPECT_TRUE(ParseCommandLine({"x.level", "--inspect"}).inspect);
}

struct BadLine {
    QStringList arguments;
    const char* part; ///< of the message
};

class BadCommandLineTest : public ::testing::TestWithParam<BadLine> {};

TEST_P(BadCommandLineTest, IsRefusedWithAReason) {
    const auto line = ParseCommandLine(GetParam().arguments);
    EXPECT_TRUE(line.error.contains(GetParam().part)) << line.error.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    All, BadCommandLineTest,
    ::testing::Values(BadLine{{"--film"}, "--film"}, BadLine{{"--film", "--play"}, "--film"},
                      BadLine{{"--film", "Intro"}, "level"}, BadLine{{"a.level", "--play"}, "--film NAME"},
                      BadLine{{"a.level", "b.level"}, "b.level"}, BadLine{{"--sise", "1x1"}, "--sise"},
                      BadLine{{"--size", "big"}, "--size"}, BadLine{{"--screenshot"}, "--screenshot"}));

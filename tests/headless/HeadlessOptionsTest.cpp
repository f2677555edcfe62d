#include "host/stage/headless/HeadlessOptions.h"

#include <gtest/gtest.h>

namespace {

std::optional<headless::HeadlessOptions> Parse(const std::vector<std::string>& arguments,
                                               std::string* reason = nullptr) {
    std::string error;
    auto options = headless::ParseHeadlessOptions(arguments, error);
    EXPECT_EQ(options.has_value(), error.empty());
    if (reason != nullptr) {
        *reason = error;
    }
    return options;
}

std::vector<std::string> With(std::vector<std::string> more) {
    std::vector<std::string> arguments = {"--render", "a.level", "--film", "Intro", "--out", "frames"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

TEST(HeadlessOptionsTest, TheLeastIsLevelFilmAndOutput) {
    const auto options = Parse(With({}));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->level, "a.level");
    EXPECT_EQ(options->film, "Intro");
    EXPECT_EQ(options->folder, "frames");
    EXPECT_EQ(options->fps, 30);
    EXPECT_EQ(options->width, 1280);
    EXPECT_EQ(options->height, 720);
    EXPECT_EQ(options->firstFrame, 0);
    EXPECT_EQ(options->lastFrame, -1);
    EXPECT_FALSE(options->draft);
    EXPECT_FALSE(options->strict);
}

TEST(HeadlessOptionsTest, EverythingCanBeSet) {
    const auto options = Parse(With({"--fps", "25", "--size", "640x360", "--frames", "10:20", "--video",
                                     "a.mp4", "--draft", "--strict"}));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->fps, 25);
    EXPECT_EQ(options->width, 640);
    EXPECT_EQ(options->height, 360);
    EXPECT_EQ(options->firstFrame, 10);
    EXPECT_EQ(options->lastFrame, 20);
    EXPECT_EQ(options->video, "a.mp4");
    EXPECT_TRUE(options->draft);
    EXPECT_TRUE(options->strict);
}

TEST(HeadlessOptionsTest, ValuesMayStandBehindAnEqualsSign) {
    const auto options = Parse(With({"--fps=60", "--frames=5:"}));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->fps, 60);
    EXPECT_EQ(options->firstFrame, 5);
    EXPECT_EQ(options->lastFrame, -1);
}

TEST(HeadlessOptionsTest, NamesMayHoldEqualsSignsAndSpaces) {
    const auto options = Parse({"--render", "a=b c.level", "--film=x = y", "--out", "o"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->level, "a=b c.level");
    EXPECT_EQ(options->film, "x = y");
}

TEST(HeadlessOptionsTest, HelpNeedsNothingElse) {
    EXPECT_TRUE(Parse({"--help"})->help);
}

TEST(HeadlessOptionsTest, HelpIsHelpWhereverItStands) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"--render", "--help"},
                                               {"--render", "a", "--film", "--help"},
                                               {"--fast", "--help"},
                                               {"--help", "--fast"}}) {
        const auto options = Parse(arguments);
        ASSERT_TRUE(options);
        EXPECT_TRUE(options->help);
    }
}

TEST(HeadlessOptionsTest, ALevelNamedLikeHelpStandsBehindAnEqualsSign) {
    const auto options = Parse({"--render=--help", "--film", "a", "--out", "o"});
    ASSERT_TRUE(options);
    EXPECT_FALSE(options->help);
    EXPECT_EQ(options->level, "--help");
}

struct WrongCase {
    const char* name;
    std::vector<std::string> arguments;
    const char* reason;
};

class WrongOptionsTest : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongOptionsTest, AreRefusedWithAReason) {
    std::string reason;
    EXPECT_FALSE(Parse(GetParam().arguments, &reason));
    EXPECT_EQ(reason, GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    HeadlessOptions, WrongOptionsTest,
    testing::Values(
        WrongCase{"NoLevel", {"--film", "a", "--out", "o"}, "--render LEVEL is missing"},
        WrongCase{"NoFilm", {"--render", "a", "--out", "o"}, "--film NAME is missing"},
        WrongCase{"NoOutput", {"--render", "a", "--film", "b"}, "--out FOLDER or --video FILE is missing"},
        WrongCase{"Unknown", With({"--fast"}), "unknown option \"--fast\""},
        WrongCase{"NoValue", With({"--fps"}), "--fps needs a number from 1 to 240"},
        WrongCase{"ZeroRate", With({"--fps", "0"}), "--fps needs a number from 1 to 240, not \"0\""},
        WrongCase{"RateIsText", With({"--fps", "30fps"}),
                  "--fps needs a number from 1 to 240, not \"30fps\""},
        WrongCase{"HugeRate", With({"--fps", "99999999999"}),
                  "--fps needs a number from 1 to 240, not \"99999999999\""},
        WrongCase{"SizeWithoutCross", With({"--size", "1280"}),
                  "--size needs WIDTHxHEIGHT, 16 to 8192 each, not \"1280\""},
        WrongCase{"SizeTooSmall", With({"--size", "8x8"}),
                  "--size needs WIDTHxHEIGHT, 16 to 8192 each, not \"8x8\""},
        WrongCase{"FramesBackwards", With({"--frames", "9:3"}), "--frames needs FIRST:LAST, not \"9:3\""},
        WrongCase{"FramesNegative", With({"--frames=-1:3"}), "--frames needs FIRST:LAST, not \"-1:3\""},
        WrongCase{"FramesAlone", With({"--frames", "9"}), "--frames needs FIRST:LAST, not \"9\""},
        WrongCase{"OddVideo", With({"--video", "a.mp4", "--size", "641x360"}),
                  "--size must be even numbers for a video"},
        WrongCase{"EmptyFilm",
                  {"--render", "a", "--film", "", "--out", "o"},
                  "--film needs a film's name, not \"\""}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace

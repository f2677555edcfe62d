#include "keys/rules/FrameTimes.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr int kRate = 30;
constexpr float kLength = 10.0f;

float Forward(float time) {
    return FrameForward(time, kRate, kLength);
}

} // namespace

TEST(FrameStepsTest, BackFromAFrameGoesToTheFrameBefore) {
    EXPECT_FLOAT_EQ(FrameBack(1.5f, kRate), 1.4666667f); // 45 / 30 to 44 / 30
    EXPECT_FLOAT_EQ(FrameBack(2.0f, kRate), 1.9666667f);
    EXPECT_FLOAT_EQ(FrameBack(1.4666667f, kRate), 1.4333334f);
}

TEST(FrameStepsTest, BackInsideAFrameGoesToItsStart) {
    EXPECT_FLOAT_EQ(FrameBack(1.51f, kRate), 1.5f);       // 45.3 frames
    EXPECT_FLOAT_EQ(FrameBack(1.53f, kRate), 1.5f);       // 45.9 frames
    EXPECT_FLOAT_EQ(FrameBack(1.54f, kRate), 1.5333333f); // 46.2 frames
}

TEST(FrameStepsTest, BackStopsAtZero) {
    EXPECT_EQ(FrameBack(0.0f, kRate), 0.0f);
    EXPECT_EQ(FrameBack(0.00005f, kRate), 0.0f); // on frame 0: 0.00005 - 1/30 is negative
}

TEST(FrameStepsTest, NearlyOnAFrameCountsAsOnIt) {
    EXPECT_NEAR(FrameBack(1.50005f, kRate), 1.50005f - 1.0f / 30.0f, 1e-6f);
    EXPECT_NEAR(FrameBack(1.5002f, kRate), 1.5f, 1e-6f);
}

// float32 of 43 / 30 lies 5e-8 below it: frame 42 holds it, and its start is one frame back all the same.
TEST(FrameStepsTest, BackFromATimeRoundedBelowItsFrameIsOneFrame) {
    EXPECT_FLOAT_EQ(FrameBack(1.4333333f, kRate), 1.4f);
}

TEST(FrameStepsTest, BackWalksEveryFrameOfASecond) {
    float time = 3.0f;
    for (int frame = 89; frame >= 60; --frame) {
        time = FrameBack(time, kRate);
        EXPECT_NEAR(time, static_cast<float>(frame) / 30.0f, 1e-5f) << "frame " << frame;
    }
}

TEST(FrameStepsTest, ForwardFromAFrameGoesToTheNext) {
    EXPECT_FLOAT_EQ(Forward(1.5f), 1.5333333f);
    EXPECT_FLOAT_EQ(Forward(0.0f), 0.033333335f);
    EXPECT_FLOAT_EQ(Forward(2.0f), 2.0333333f);
}

TEST(FrameStepsTest, ForwardWalksEveryFrameOfASecond) {
    float time = 2.0f;
    for (int frame = 61; frame <= 90; ++frame) {
        time = Forward(time);
        EXPECT_NEAR(time, static_cast<float>(frame) / 30.0f, 1e-5f) << "frame " << frame;
    }
}

TEST(FrameStepsTest, ForwardEarlyInASecondReachesTheNextFrame) {
    // 0.3 frames: 0 frames passed, 0.01 s of the frame are over.
    EXPECT_FLOAT_EQ(Forward(1.01f), 1.0333333f);
    // 1.02 frames: 1.02 - 1/30 = 0.98667 isn't above 0.999999, so 1 frame passed and 0.00067 s are over.
    EXPECT_FLOAT_EQ(Forward(1.034f), 1.0666667f);
}

TEST(FrameStepsTest, ForwardLaterInASecondKeepsItsDistanceFromTheFrames) {
    // 1.2 frames: 1.2 - 1/30 is above 0.999999, so 2 count as passed; 0.04 - 2/30 is negative: a whole frame.
    EXPECT_FLOAT_EQ(Forward(1.04f), 1.0733333f);
    // 15.3 frames: 15.3 - 15/30 = 14.8, so 16 count as passed; 0.51 - 16/30 is negative: a whole frame.
    EXPECT_FLOAT_EQ(Forward(1.51f), 1.5433333f);
}

TEST(FrameStepsTest, ForwardStopsAtTheEnd) {
    EXPECT_EQ(Forward(10.0f), 10.0f);
    EXPECT_EQ(Forward(9.99f), 10.0f);
    EXPECT_EQ(FrameForward(0.0f, kRate, 0.0f), 0.0f);
    EXPECT_EQ(Forward(12.0f), 10.0f) << "a time behind the end comes back to it";
}

TEST(FrameStepsTest, RateOfZeroStepsNowhere) {
    EXPECT_EQ(FrameBack(1.51f, 0), 1.51f);
    EXPECT_EQ(FrameForward(1.51f, 0, kLength), 1.51f);
}

TEST(FrameStepsTest, StepsFollowTheRate) {
    EXPECT_FLOAT_EQ(FrameBack(1.5f, 1000), 1.499f);
    EXPECT_FLOAT_EQ(FrameForward(1.5f, 1000, kLength), 1.501f);
    // A frame shorter than the tolerance: every time stands on a frame.
    EXPECT_FLOAT_EQ(FrameBack(1.5f, 20000), 1.49995f);
    EXPECT_FLOAT_EQ(FrameBack(1.5f, 1), 1.0f); // 0.5 s into frame 1
    EXPECT_FLOAT_EQ(FrameForward(1.5f, 1, kLength), 2.0f);
}

TEST(FrameStepsTest, NegativeTimesComeToZeroOrStepOn) {
    EXPECT_EQ(FrameBack(-0.5f, kRate), 0.0f);
    // -14.7 frames are cut to -14, the rest of -0.02333 isn't above 0: a whole frame.
    EXPECT_FLOAT_EQ(Forward(-0.49f), -0.45666668f);
}

TEST(FrameStepsTest, EndlessTimesStayHarmless) {
    constexpr float kEndless = std::numeric_limits<float>::infinity();
    EXPECT_EQ(FrameBack(kEndless, kRate), kEndless);
    EXPECT_EQ(Forward(kEndless), kLength);
    EXPECT_EQ(FrameBack(1.0e9f, kRate), 1.0e9f); // a frame is less than the step of float32 there
}

#include "keys/rules/FrameTimes.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

TEST(CursorFrameTest, GoesToTheNearerFrame) {
    // 0.51 is 0.01 behind frame 15, 0.53 is 0.0033 before frame 16.
    EXPECT_NEAR(NearestFrame(0.51, 30), 0.5, 1e-9);
    EXPECT_NEAR(NearestFrame(0.53, 30), 16.0 / 30.0, 1e-9);
    EXPECT_NEAR(NearestFrame(7.0, 30), 7.0, 1e-9);
}

TEST(CursorFrameTest, HalfAFrameGoesBack) {
    // At 2 frames a second half a frame is 0.25 seconds: all exact in binary.
    EXPECT_EQ(NearestFrame(1.25, 2), 1.0);
    EXPECT_EQ(NearestFrame(1.26, 2), 1.5);
}

TEST(CursorFrameTest, CutsTowardZeroBelowZero) {
    // The fraction -0.52 has 15 whole frames, so the rest is -0.02, which never is above half a frame.
    EXPECT_NEAR(NearestFrame(-0.52, 30), -0.5, 1e-9);
}

TEST(CursorFrameTest, WithoutARateOnlyWholeSecondsStay) {
    EXPECT_EQ(NearestFrame(3.75, 0), 3.0);
    EXPECT_EQ(NearestFrame(-3.75, 0), -3.0);
}

TEST(CursorFrameTest, AtAThousandFramesStaysClose) {
    EXPECT_NEAR(NearestFrame(1.0004, 1000), 1.0, 1e-9);
    EXPECT_NEAR(NearestFrame(1.0006, 1000), 1.001, 1e-9);
}

TEST(CursorFrameTest, WhatIsNoNumberStaysSo) {
    EXPECT_TRUE(std::isnan(NearestFrame(std::numeric_limits<double>::quiet_NaN(), 30)));
}

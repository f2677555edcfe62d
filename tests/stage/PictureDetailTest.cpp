#include "host/stage/windows/PictureDetail.h"

#include <gtest/gtest.h>

#include <limits>

using stage::PictureDetail;

namespace {

/// Four pictures decide.
void NoteFour(PictureDetail& detail, double milliseconds) {
    for (int i = 0; i < 4; ++i) {
        detail.Note(milliseconds);
    }
}

TEST(PictureDetailTest, BeginsInFull) {
    EXPECT_EQ(PictureDetail().Detail(), 1.0f);
}

TEST(PictureDetailTest, PicturesInTimeStayInFull) {
    PictureDetail detail;
    NoteFour(detail, 12.5);
    NoteFour(detail, 17.5);
    EXPECT_EQ(detail.Detail(), 1.0f);
}

/// 32 ms are twice the target: a side of 1 over the root of 2, 0.707, is 11.3 steps of 1/16.
TEST(PictureDetailTest, SlowPicturesLosePixelsByTheirTime) {
    PictureDetail detail;
    NoteFour(detail, 32.0);
    EXPECT_EQ(detail.Detail(), 11.0f / 16);
    NoteFour(detail, 16.0);
    EXPECT_EQ(detail.Detail(), 11.0f / 16);
}

TEST(PictureDetailTest, OneSlowPictureAloneChangesNothing) {
    PictureDetail detail;
    detail.Note(40.0);
    EXPECT_EQ(detail.Detail(), 1.0f);
    detail.Note(10.0);
    detail.Note(10.0);
    detail.Note(10.0); // a mean of 17.5
    EXPECT_EQ(detail.Detail(), 1.0f);
}

TEST(PictureDetailTest, NoSideLosesMoreThanHalf) {
    PictureDetail detail;
    NoteFour(detail, 10000.0);
    EXPECT_EQ(detail.Detail(), 0.5f);
}

TEST(PictureDetailTest, QuickPicturesWinThemBackStepByStep) {
    PictureDetail detail;
    NoteFour(detail, 32.0);
    NoteFour(detail, 10.0);
    EXPECT_EQ(detail.Detail(), 12.0f / 16);
    for (int i = 0; i < 10; ++i) {
        NoteFour(detail, 5.0);
    }
    EXPECT_EQ(detail.Detail(), 1.0f);
}

TEST(PictureDetailTest, TimesThatAreNoneAreLetPass) {
    PictureDetail detail;
    NoteFour(detail, -1.0);
    NoteFour(detail, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(detail.Detail(), 1.0f);
}

} // namespace

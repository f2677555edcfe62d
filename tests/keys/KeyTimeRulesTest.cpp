#include "keys/rules/KeyTimeRules.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr TimeAxis kAxis{0.0f, 100.0f, 1.0f};
constexpr float kFrame = 0.0333333351f;

template <class Case> std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

struct LimitsCase {
    const char* name;
    KeySpan key;
    std::vector<KeySpan> others;
    float lo;
    float hi;
};

class KeyLimitsTest : public ::testing::TestWithParam<LimitsCase> {};

TEST_P(KeyLimitsTest, GapAroundTheKey) {
    const KeyLimits limits = FindKeyLimits(GetParam().key, GetParam().others, kAxis);
    EXPECT_EQ(limits.lo, GetParam().lo);
    EXPECT_EQ(limits.hi, GetParam().hi);
}

INSTANTIATE_TEST_SUITE_P(
    NoDuration, KeyLimitsTest,
    ::testing::Values(LimitsCase{"Alone", {5, 0}, {}, 0, 100},
                      LimitsCase{"BetweenTwo", {5, 0}, {{9, 0}, {2, 0}}, 2, 9},
                      LimitsCase{"NearestOnesInAnyOrder", {5, 0}, {{1, 0}, {12, 0}, {3, 0}, {8, 0}}, 3, 8},
                      LimitsCase{"AnotherAtTheSameTime", {5, 0}, {{5, 0}}, 5, 5},
                      LimitsCase{"KeysOffTheAxisDontCount", {5, 0}, {{120, 0}, {-5, 0}}, 0, 100},
                      LimitsCase{"InsideALongKey", {5, 0}, {{4, 3}}, 0, 100},
                      LimitsCase{"KeyThatIsNoNumber", {5, 0}, {{kNaN, 0}, {7, 0}, {kNaN, 0}}, 0, 7}),
    NameOf<LimitsCase>);

// A key with a duration takes, on both sides, whatever key of the list comes last.
INSTANTIATE_TEST_SUITE_P(
    WithDuration, KeyLimitsTest,
    ::testing::Values(LimitsCase{"Alone", {4, 2}, {}, 0, 100},
                      LimitsCase{"OnlyOneBehind", {4, 2}, {{8, 1}}, 9, 8},
                      LimitsCase{"OnlyOneBefore", {4, 2}, {{1, 2}}, 3, 1},
                      LimitsCase{"LowAboveHighBetweenTwo", {4, 2}, {{1, 2}, {8, 1}}, 9, 1},
                      LimitsCase{"LowAboveHighInTheOtherOrder", {4, 2}, {{8, 1}, {1, 2}}, 9, 1},
                      LimitsCase{"LastBeforeSetsHigh", {4, 2}, {{1, 1}, {2, 1}}, 3, 2},
                      LimitsCase{"LastBeforeSetsHighTurned", {4, 2}, {{2, 1}, {1, 1}}, 3, 1},
                      LimitsCase{"LastBehindSetsLow", {4, 2}, {{8, 1}, {20, 5}}, 25, 8},
                      LimitsCase{"LastBehindSetsLowTurned", {4, 2}, {{20, 5}, {8, 1}}, 9, 8},
                      LimitsCase{"Touching", {4, 2}, {{6, 2}}, 8, 6}),
    NameOf<LimitsCase>);

struct TicCase {
    const char* name;
    TimeAxis axis;
    float ref;
    float forward;
    float back;
};

class NextTicTest : public ::testing::TestWithParam<TicCase> {};

TEST_P(NextTicTest, NextTicOfBothDirections) {
    EXPECT_EQ(NextTic(GetParam().axis, GetParam().ref, true), GetParam().forward);
    EXPECT_EQ(NextTic(GetParam().axis, GetParam().ref, false), GetParam().back);
}

INSTANTIATE_TEST_SUITE_P(
    Grid, NextTicTest,
    ::testing::Values(TicCase{"OnTic", {0, 100, 2}, 4, 6, 2}, TicCase{"BetweenTics", {0, 100, 2}, 5, 6, 4},
                      TicCase{"OffByAQuarterStaysOff", {0, 100, 2}, 4.25f, 6.25f, 4},
                      TicCase{"OffByAHalfStaysOff", {0, 100, 2}, 4.5f, 6.5f, 4},
                      TicCase{"OffByMoreComesOntoTheGrid", {0, 100, 2}, 4.75f, 6, 4},
                      TicCase{"AFixedHalfSecondNotHalfATic", {0, 100, 1}, 3.5f, 4.5f, 3},
                      TicCase{"FineGridIsNeverReachedForward", {0, 100, 0.5f}, 1.125f, 1.625f, 1},
                      TicCase{"FirstFrame", {0, 100, kFrame}, 0, kFrame, -kFrame},
                      TicCase{"SecondFrame", {0, 100, kFrame}, 2 * kFrame, 3 * kFrame, kFrame},
                      // 1 / 0.0333333351 is 29.9999984: the tic at or before 1 second is the 29th.
                      TicCase{"ThirtiethFrame", {0, 100, kFrame}, 1, 1.0f + kFrame, 29 * kFrame},
                      TicCase{"GridBeginsAtTheAxis", {1, 100, 2}, 4, 5, 3},
                      TicCase{"NotClamped", {1, 100, 2}, 1, 3, -1},
                      TicCase{"BeforeTheAxisTowardsIt", {0, 100, 2}, -1, 2, 0}),
    NameOf<TicCase>);

INSTANTIATE_TEST_SUITE_P(NoGrid, NextTicTest,
                         ::testing::Values(TicCase{"Zero", {0, 100, 0}, 4, 4, 4},
                                           TicCase{"ZeroAtTheStart", {0, 100, 0}, 0, 0, 0},
                                           TicCase{"NoNumber", {0, 100, kNaN}, 4, 4, 4},
                                           TicCase{"TooSmallToCount", {0, 100, 1e-30f}, 4, 4, 4},
                                           TicCase{"SmallestOfAll", {0, 100, 1e-45f}, 4, 4, 4},
                                           TicCase{"Endless", {0, 100, kInfinity}, 4, kInfinity, -kInfinity},
                                           TicCase{"Negative", {0, 100, -1}, 4, 3, 5}),
                         NameOf<TicCase>);

TEST(ClampToAxisTest, ClampsAtTheStartFirst) {
    EXPECT_EQ(ClampToAxis(5, kAxis), 5);
    EXPECT_EQ(ClampToAxis(-1, kAxis), 0);
    EXPECT_EQ(ClampToAxis(101, kAxis), 100);
    EXPECT_EQ(ClampToAxis(kInfinity, kAxis), 100);
    EXPECT_EQ(ClampToAxis(-kInfinity, kAxis), 0);
    EXPECT_EQ(ClampToAxis(kNaN, kAxis), 0);
    EXPECT_EQ(ClampToAxis(4, {5, 3, 1}), 3);
}

struct FollowCase {
    const char* name;
    KeySpan key;
    KeyLimits limits;
    float mouse;
    bool forward;
    float expected;
};

class FollowMouseTest : public ::testing::TestWithParam<FollowCase> {};

TEST_P(FollowMouseTest, StopsAtNeighbours) {
    const FollowCase& given = GetParam();
    EXPECT_EQ(FollowMouse(given.key, given.limits, given.mouse, given.forward), given.expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, FollowMouseTest,
    ::testing::Values(FollowCase{"ForwardInTheGap", {4, 2}, {3, 8}, 5, true, 5},
                      FollowCase{"BackInTheGap", {4, 2}, {3, 8}, 3.5f, false, 3.5f},
                      FollowCase{"MousePastANeighbourNotYetReached", {4, 2}, {3, 8}, 9, true, 9},
                      FollowCase{"EndAtTheNeighbour", {6, 2}, {3, 8}, 9, true, 8},
                      FollowCase{"StartAtTheNeighbour", {3, 2}, {3, 8}, 1, false, 3},
                      FollowCase{"EndIsNoMatterOnTheWayBack", {6, 2}, {3, 8}, 5, false, 5},
                      FollowCase{"BarPassesItsNeighbours", {8, 0}, {3, 8}, 9, true, 9},
                      FollowCase{"HopsOverTheVeryTimeForward", {4, 0}, {3, 8}, 8, true, 8 + kFrame},
                      FollowCase{"HopsOverTheVeryTimeBack", {4, 0}, {3, 8}, 3, false, 3 - kFrame},
                      FollowCase{"HopsAlsoWhenItTouches", {6, 2}, {3, 8}, 8, true, 8 + kFrame},
                      FollowCase{"NoLimitForward", {6, 2}, {3, -1}, 9, true, 9},
                      FollowCase{"NoLimitBack", {6, 2}, {-1, 8}, -1, false, -1}),
    NameOf<FollowCase>);

TEST(IsFreeAmongTest, StartAndEndOfAnotherAreTaken) {
    const std::vector<KeySpan> others{{3, 2}, {9, 0}};
    EXPECT_TRUE(IsFreeAmong(others, std::nextafter(3.0f, 0.0f)));
    EXPECT_FALSE(IsFreeAmong(others, 3));
    EXPECT_FALSE(IsFreeAmong(others, 4));
    EXPECT_FALSE(IsFreeAmong(others, 5));
    EXPECT_TRUE(IsFreeAmong(others, std::nextafter(5.0f, 6.0f)));
    EXPECT_FALSE(IsFreeAmong(others, 9));
}

TEST(RoomBehindTest, UpToTheNextKeyOrTheEndOfTheAxis) {
    const std::vector<KeySpan> others{{30, 2}, {10, 2}, {120, 1}};
    EXPECT_EQ(RoomBehind(others, 4, kAxis), 6);
    EXPECT_EQ(RoomBehind(others, 10, kAxis), 20); // one that starts there doesn't lie behind
    EXPECT_EQ(RoomBehind(others, 40, kAxis), 60);
    EXPECT_EQ(RoomBehind({}, 103, kAxis), 3); // required: no sign
}

TEST(IsSameMomentTest, NearerThanAHundredthOfAMillisecond) {
    EXPECT_TRUE(IsSameMoment(0, 0.0000099f));
    EXPECT_FALSE(IsSameMoment(0, 0.00001f));
    EXPECT_FALSE(IsSameMoment(0.00001f, 0));
    EXPECT_FALSE(IsSameMoment(kNaN, kNaN));
    EXPECT_FALSE(IsSameMoment(kInfinity, kInfinity));
}

TEST(IsNearMarkTest, StartOrEndStrictlyWithinATenth) {
    EXPECT_TRUE(IsNearMark({5.05f, 0}, 5));
    EXPECT_TRUE(IsNearMark({4.95f, 3}, 5));
    EXPECT_TRUE(IsNearMark({1, 4}, 5));
    EXPECT_FALSE(IsNearMark({4, 2}, 5));
    // 5 + 0.1 is 5.1 and 5 - 0.1 is 4.9 as floats: both are outside.
    EXPECT_FALSE(IsNearMark({5.1f, 0}, 5));
    EXPECT_FALSE(IsNearMark({4.9f, 0}, 5));
    EXPECT_FALSE(IsNearMark({kNaN, 0}, 5));
    EXPECT_FALSE(IsNearMark({5, 0}, kNaN));
}

} // namespace

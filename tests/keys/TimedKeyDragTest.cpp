#include "keys/rules/TimedKeyDrag.h"
#include "keys/views/TimedTrackKey.h"

#include <gtest/gtest.h>
#include <string>

namespace {

constexpr int kNone = CTimedTrackKey::kDragNone;
constexpr int kMove = CTimedTrackKey::kDragMove;
constexpr int kLeft = CTimedTrackKey::kDragLeft;
constexpr int kRight = CTimedTrackKey::kDragRight;

/// A step over the key from 4 to 7 seconds.
TimedKeyDrag Drag(int mode, float from, float to) {
    return {mode, {4, 3}, from, to};
}

TEST(TimedKeyDragTest, EdgeFollowsModeAndDirection) {
    EXPECT_EQ(Drag(kMove, 5, 6).Edge(), 7);
    EXPECT_EQ(Drag(kMove, 5, 4).Edge(), 4);
    EXPECT_EQ(Drag(kMove, 5, 5).Edge(), 4); // a mouse that stands still counts as going back
    EXPECT_EQ(Drag(kLeft, 5, 6).Edge(), 4);
    EXPECT_EQ(Drag(kRight, 5, 4).Edge(), 7);
    EXPECT_EQ(Drag(kNone, 5, 6).Edge(), 0);
}

TEST(TimedKeyDragTest, ProposesByMode) {
    const auto expect = [](const TimedKeyDrag& drag, float target, float start, float duration) {
        const KeySpan proposed = drag.Propose(target);
        EXPECT_EQ(proposed.start, start);
        EXPECT_EQ(proposed.duration, duration);
    };
    expect(Drag(kMove, 5, 6), 9, 6, 3);
    expect(Drag(kMove, 5, 4), 3, 3, 3);
    expect(Drag(kLeft, 5, 6), 5, 5, 2);
    expect(Drag(kLeft, 5, 4), 2, 2, 5);
    expect(Drag(kLeft, 5, 9), 8, 8, 0); // never shorter than nothing
    expect(Drag(kRight, 5, 6), 9, 4, 5);
    expect(Drag(kRight, 5, 3), 3, 4, 0);
    expect(Drag(kNone, 5, 6), 9, 4, 3);
}

TEST(TimedKeyDragTest, HalfTheWayIsNotPastIt) {
    EXPECT_FALSE(IsPastHalfWay(4, 6, 5));
    EXPECT_TRUE(IsPastHalfWay(4, 6, 5.25f));
    EXPECT_TRUE(IsPastHalfWay(4, 6, 6.75f)); // also beyond the target
    EXPECT_FALSE(IsPastHalfWay(4, 6, 7));
    EXPECT_FALSE(IsPastHalfWay(6, 6, 6));
    EXPECT_TRUE(IsPastHalfWay(6, 4, 4.75f));
}

struct HoldCase {
    const char* name;
    TimedKeyDrag drag;
    float target;
    float expected;
};

std::string NameOf(const ::testing::TestParamInfo<HoldCase>& info) {
    return info.param.name;
}

class HoldBackTest : public ::testing::TestWithParam<HoldCase> {};

TEST_P(HoldBackTest, TargetDoesntRunAheadOfTheMouse) {
    EXPECT_EQ(GetParam().drag.HoldBack(GetParam().target), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Move, HoldBackTest,
    ::testing::Values(HoldCase{"ForwardByTheWayOfTheMouse", Drag(kMove, 5, 5.5f), 9, 7.5f},
                      HoldCase{"BackByTheWayOfTheMouse", Drag(kMove, 5, 4.5f), 1, 3.5f},
                      // The distance counts, not its side: a target behind the edge pushes it ahead as well.
                      HoldCase{"TargetBehindTheEdge", Drag(kMove, 5, 5.5f), 5.5f, 7.5f},
                      HoldCase{"NearTargetStays", Drag(kMove, 5, 6), 7.25f, 7.25f},
                      HoldCase{"TargetAsFarAsTheMouseStays", Drag(kMove, 5, 6), 6, 6},
                      HoldCase{"StandingMouseHoldsTheKey", Drag(kMove, 5, 5), 1, 4},
                      HoldCase{"NoModeNoHold", Drag(kNone, 5, 6), 9, 9}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    LeftGrip, HoldBackTest,
    ::testing::Values(HoldCase{"StaysOnTarget", Drag(kLeft, 4, 3), 3.5f, 3.5f},
                      HoldCase{"TargetFartherThanTheMouse", Drag(kLeft, 4, 3), 2, 3},
                      HoldCase{"AsFarAsTheMouse", Drag(kLeft, 4, 3), 5, 5},
                      HoldCase{"MousePastTheEnd", Drag(kLeft, 4, 8), 8, 7},
                      HoldCase{"MouseAtTheEnd", Drag(kLeft, 4, 7), 7, 7},
                      HoldCase{"NoDurationAndMouseAhead", TimedKeyDrag{kLeft, {4, 0.000009f}, 4, 5}, 5, 4},
                      HoldCase{"NoDurationAndMouseBefore", TimedKeyDrag{kLeft, {4, 0.0f}, 4, 3}, 3, 3},
                      HoldCase{"BarelyADuration", TimedKeyDrag{kLeft, {0, 0.00001f}, 0, 5}, 5, 0.00001f}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(RightGrip, HoldBackTest,
                         ::testing::Values(HoldCase{"ForwardWithTheMouse", Drag(kRight, 7, 8), 9, 8},
                                           HoldCase{"ForwardToANearerTarget", Drag(kRight, 7, 8), 7.5f, 7.5f},
                                           HoldCase{"BackButMouseAhead", Drag(kRight, 9, 8), 6, 7},
                                           HoldCase{"BackWithTheMouse", Drag(kRight, 7, 6), 1, 6},
                                           HoldCase{"BackToATargetNearerThanTheStart", Drag(kRight, 7, 6),
                                                    5.5f, 5.5f},
                                           HoldCase{"BackAsFarAsTheStart", Drag(kRight, 7, 6), 9, 6}),
                         NameOf);

TEST(TimedKeyDragTest, WithoutAltOnlyAnEmptyKeysLeftGripIsHeld) {
    const KeySpan empty{4, 0};
    EXPECT_EQ((TimedKeyDrag{kLeft, empty, 4, 5}.HoldAtStart(6)), 4);
    EXPECT_EQ((TimedKeyDrag{kLeft, empty, 4, 3}.HoldAtStart(2)), 2);
    EXPECT_EQ((TimedKeyDrag{kRight, empty, 4, 5}.HoldAtStart(6)), 6);
    EXPECT_EQ(Drag(kLeft, 4, 5).HoldAtStart(6), 6);
}

} // namespace

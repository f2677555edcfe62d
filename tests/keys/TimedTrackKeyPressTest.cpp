#include "keys/views/TimedTrackKey.h"
#include "tests/keys/KeyFixture.h"

#include <limits>

namespace {

/// A key of 5 seconds at 10 pixels a second, its left top at (100, 5): from x 100 to 150, 15 pixels high.
class TimedTrackKeyPressTest : public KeyTest {
protected:
    TimedTrackKeyPressTest() {
        view.duration = 5.0f;
        view.context = &timeline;
    }
    int ModeAt(int x, int y) {
        view.dragMode = -1;
        view.OnLButtonDown(100, 5, 10.0f, {x, y}, 2.5f);
        return view.dragMode;
    }

    CTimedTrackKey view;
};

TEST_F(TimedTrackKeyPressTest, LeftGripEndsThreePixelsBeforeTheKey) {
    EXPECT_EQ(ModeAt(82, 5), CTimedTrackKey::kDragLeft);
    EXPECT_EQ(ModeAt(96, 19), CTimedTrackKey::kDragLeft);
    EXPECT_EQ(ModeAt(81, 10), CTimedTrackKey::kDragMove);
    EXPECT_EQ(ModeAt(90, 4), CTimedTrackKey::kDragMove);
    EXPECT_EQ(ModeAt(90, 20), CTimedTrackKey::kDragMove);
}

TEST_F(TimedTrackKeyPressTest, RightGripBeginsThreePixelsBehindTheKey) {
    EXPECT_EQ(ModeAt(153, 5), CTimedTrackKey::kDragRight);
    EXPECT_EQ(ModeAt(167, 19), CTimedTrackKey::kDragRight);
    EXPECT_EQ(ModeAt(152, 10), CTimedTrackKey::kDragMove);
    EXPECT_EQ(ModeAt(168, 10), CTimedTrackKey::kDragMove);
    EXPECT_EQ(ModeAt(160, 20), CTimedTrackKey::kDragMove);
}

TEST_F(TimedTrackKeyPressTest, OuterPixelIsHitAsAGripButMoves) {
    EXPECT_TRUE(view.HitGrip(97, 100, 10.0f));
    EXPECT_EQ(ModeAt(97, 10), CTimedTrackKey::kDragMove);
    EXPECT_TRUE(view.HitGrip(168, 100, 10.0f));
    EXPECT_EQ(ModeAt(168, 10), CTimedTrackKey::kDragMove);
}

TEST_F(TimedTrackKeyPressTest, EndLeftOfTheWindowIsCutTowardsZeroAsASum) {
    view.duration = 0.75f; // -10 + 7.5 is -2.5, cut to -2; HitGrip has -10 + 7
    view.OnLButtonDown(-10, 5, 10.0f, {0, 10}, 0.0f);
    EXPECT_EQ(view.dragMode, CTimedTrackKey::kDragMove);
    EXPECT_TRUE(view.HitGrip(0, -10, 10.0f));
    view.OnLButtonDown(-10, 5, 10.0f, {1, 10}, 0.0f);
    EXPECT_EQ(view.dragMode, CTimedTrackKey::kDragRight);
}

TEST_F(TimedTrackKeyPressTest, NotesTheMouseAndBecomesActive) {
    EXPECT_EQ(ModeAt(120, 10), CTimedTrackKey::kDragMove);
    EXPECT_EQ(view.lastMouseTime, 2.5f);
    EXPECT_EQ(timeline.activeKey, &view);
    EXPECT_FALSE(view.marked);
    EXPECT_TRUE(timeline.log.empty());
}

TEST_F(TimedTrackKeyPressTest, HiddenKeyIsntPressed) {
    view.state = CTrackKey::kHidden;
    view.lastMouseTime = 1.0f;
    EXPECT_EQ(ModeAt(120, 10), -1);
    EXPECT_EQ(view.lastMouseTime, 1.0f);
    EXPECT_EQ(timeline.activeKey, nullptr);
}

TEST_F(TimedTrackKeyPressTest, NumbersThatFitNoPixelDoNoHarm) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr int kMost = std::numeric_limits<int>::max();
    for (const float scale : {kNaN, kInfinity, 1e30f, -1e30f}) {
        view.dragMode = -1;
        view.OnLButtonDown(kMost, -kMost, scale, {0, 0}, kNaN);
        EXPECT_EQ(view.dragMode, CTimedTrackKey::kDragMove);
    }
}

} // namespace

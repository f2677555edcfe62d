#include "tests/timeline/KeyDragFixture.h"

#include <limits>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

namespace {

using BarDragTest = KeyDragTest;

} // namespace

TEST_F(BarDragTest, GoesToTheTicWhenTheMouseIsNearerThanHalfOfItsLastWay) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    Take(key, 4.0f);
    Follow(key, row, {{5.25f, 6}, {6, 6}, {5, 6}, {4.25f, 4}});
}

TEST_F(BarDragTest, SlowMouseTakesItOnlyFromTicToTic) {
    CTrackCtrl& row = BarRow(1.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    Take(key, 4.0f);
    Follow(key, row, {{4.25f, 4}, {4.5f, 4}, {4.75f, 4}, {5, 5}, {5.25f, 5}, {5.5f, 5}, {5.75f, 5}, {6, 6}});
}

TEST_F(BarDragTest, MouseThatJumpsOverTheTicLeavesItBehind) {
    CTrackCtrl& row = BarRow(1.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    Take(key, 4.0f);
    Follow(key, row, {{20, 4}, {21, 4}, {22, 4}, {19, 4}});
    EXPECT_EQ(key.lastMouseTime, 19.0f);
}

TEST_F(BarDragTest, FrameTicsAreFollowedFrameByFrame) {
    CTrackCtrl& row = BarRow(kFrame);
    CNullTimeTrackKey& key = *AddBar(row, 2 * kFrame);
    Take(key, 2 * kFrame);
    Follow(key, row, {{kFrame, kFrame}, {0, 0}, {-1, 0}, {kFrame, kFrame}, {2 * kFrame, 2 * kFrame}});
}

TEST_F(BarDragTest, OffTheGridItGoesOnByWholeTicsAndComesBackOntoIt) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.25f);
    Take(key, 4.25f);
    Follow(key, row, {{6.25f, 6.25f}, {8.25f, 8.25f}, {8, 8}, {6, 6}});
}

TEST_F(BarDragTest, StepsOverARunOfKeys) {
    CTrackCtrl& row = BarRow(1.0f);
    AddBar(row, 2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 0.0f);
    AddBar(row, 1.0f);
    AddBar(row, 3.0f);
    Take(key, 0.0f);
    Follow(key, row, {{2.75f, 4}});
    Take(key, 4.0f);
    Follow(key, row, {{1.25f, 0}});
}

TEST_F(BarDragTest, LandsOnTheLastKeyOfARunThatReachesTheEndOfTheAxis) {
    CTrackCtrl& row = BarRow(1.0f);
    CNullTimeTrackKey& key = *AddBar(row, 3.0f);
    for (const float time : {2.0f, 1.0f, 0.0f}) {
        AddBar(row, time);
    }
    Take(key, 3.0f);
    Follow(key, row, {{1.25f, 0}});
}

TEST_F(BarDragTest, NoTicsNoDrag) {
    for (const float tic : {0.0f, std::numeric_limits<float>::quiet_NaN(), 1e-30f}) {
        CTrackCtrl& row = BarRow(tic);
        CNullTimeTrackKey& key = *AddBar(row, 4.0f);
        AddBar(row, 4.0f); // a limit at the very time
        Take(key, 5.0f);
        Follow(key, row, {{6, 4}, {4.25f, 4}, {2, 4}, {0, 4}});
    }
}

TEST_F(BarDragTest, OddTicsStayOnTheAxis) {
    for (const float tic : {-1.0f, 1e30f, std::numeric_limits<float>::infinity()}) {
        CTrackCtrl& row = BarRow(tic);
        CNullTimeTrackKey& key = *AddBar(row, 4.0f);
        AddBar(row, 5.0f);
        Take(key, 4.0f);
        for (const float mouse : {5.0f, 99.0f, 100.0f, 3.0f, 0.0f}) {
            Drag(key, row, mouse);
            EXPECT_GE(key.time, 0.0f);
            EXPECT_LE(key.time, 100.0f);
        }
    }
}

TEST_F(BarDragTest, WithAltItIsWhereTheMouseIs) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    AddBar(row, 6.0f);
    Take(key, 4.0f);
    alt = true;
    Follow(key, row, {{4.5f, 4.5f}, {5.75f, 5.75f}, {7, 7}, {2.25f, 2.25f}, {120, 100}, {-3, 0}});
    EXPECT_EQ(timeline.mouseTime, 0.0f);
}

TEST_F(BarDragTest, WithAltItHopsOverTheVeryTimeOfANeighbour) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    AddBar(row, 8.0f);
    Take(key, 4.0f);
    alt = true;
    Follow(key, row, {{8, 8 + kFrame}});
    EXPECT_EQ(timeline.mouseTime, 8 + kFrame);
    EXPECT_EQ(key.lastMouseTime, 8.0f);
    Follow(key, row, {{9, 9}, {8, 8 - kFrame}});
}

TEST_F(BarDragTest, WithAltMouseTimeFollowsEvenWhenTheGroupIsHeld) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    AddBar(row, 6.5f);
    CNullTimeTrackKey& last = *AddBar(row, 98.0f);
    key.marked = last.marked = true;
    Take(key, 4.0f);
    alt = true;
    Follow(key, row, {{6.5f, 4}});
    EXPECT_EQ(timeline.mouseTime, 6.5f + kFrame);
    EXPECT_EQ(key.lastMouseTime, 4.0f);
}

TEST_F(BarDragTest, StaysUntilPressed) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    key.lastMouseTime = 4.0f;
    Follow(key, row, {{6, 4}});
    EXPECT_EQ(key.lastMouseTime, 4.0f);
}

TEST_F(BarDragTest, StaysInARowWithoutRoot) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    row.ticDistance = 2.0f;
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    Take(key, 4.0f);
    Follow(key, row, {{6, 4}});
    EXPECT_EQ(key.lastMouseTime, 4.0f);
    EXPECT_FALSE(key.CheckGroupMove(&row, 6.0f));
    EXPECT_FALSE(key.CheckGroupMove(nullptr, 6.0f));
}

TEST_F(BarDragTest, NothingMovesWithoutRowOrTime) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    Take(key, 4.0f);
    key.OnMouseMove(0, 6.0f, nullptr);
    Drag(key, row, std::numeric_limits<float>::quiet_NaN());
    Drag(key, row, std::numeric_limits<float>::infinity());
    EXPECT_EQ(key.time, 4.0f);
    EXPECT_EQ(key.lastMouseTime, 4.0f);
}

TEST_F(BarDragTest, WithoutARecordOrMainControlItOnlySnaps) {
    CTrackCtrl& row = BarRow(2.0f);
    AddBar(row, 6.0f);
    CNullTimeTrackKey key;
    key.time = 4.0f;
    Take(key, 4.0f);
    Follow(key, row, {{5.5f, 6}}); // no limits: the neighbour at 6 is not stepped over
    window.timeline = nullptr;
    alt = true;
    Follow(key, row, {{7, 7}});
    window.timeline = &timeline;
}

TEST_F(BarDragTest, KeyThatMayOverlapGoesOntoItsNeighbour) {
    CTrackCtrl& row = BarRow(2.0f);
    AddBar(row, 6.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    key.record->flags |= KeyFlag::MayOverlap;
    Take(key, 4.0f);
    Follow(key, row, {{5.5f, 6}});
}

TEST_F(BarDragTest, PressTakesHoldAndShowsTheMark) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    windowLog.clear();
    key.OnLButtonDown(100, 2, 50.0f, {101, 5}, 4.5f);
    EXPECT_TRUE(key.dragging);
    EXPECT_FALSE(key.marked);
    EXPECT_EQ(key.lastMouseTime, 4.5f);
    EXPECT_EQ(timeline.activeKey, &key);
    EXPECT_THAT(timeline.log, ElementsAre("InvalidateControl false"));
    EXPECT_THAT(windowLog, ElementsAre("PressButton 36865 up"));
}

TEST_F(BarDragTest, PressWithCtrlFlipsTheMark) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    windowLog.clear();
    ctrl = true;
    key.OnLButtonDown(100, 2, 50.0f, {101, 5}, 4.0f);
    EXPECT_TRUE(key.marked);
    ctrl = false;
    key.OnLButtonDown(100, 2, 50.0f, {101, 5}, 4.0f);
    EXPECT_TRUE(key.marked);
    ctrl = true;
    key.OnLButtonDown(100, 2, 50.0f, {101, 5}, 4.0f);
    EXPECT_FALSE(key.marked);
    EXPECT_THAT(windowLog,
                ElementsAre("PressButton 36865 down", "PressButton 36865 down", "PressButton 36865 up"));
}

TEST_F(BarDragTest, PressOnAHiddenKeyDoesNothing) {
    CTrackCtrl& row = BarRow(2.0f);
    CNullTimeTrackKey& key = *AddBar(row, 4.0f);
    windowLog.clear();
    key.state = CTrackKey::kHidden;
    ctrl = true;
    key.OnLButtonDown(100, 2, 50.0f, {101, 5}, 4.0f);
    EXPECT_FALSE(key.dragging);
    EXPECT_FALSE(key.marked);
    EXPECT_EQ(timeline.activeKey, nullptr);
    EXPECT_THAT(windowLog, ElementsAre());
}

TEST_F(BarDragTest, PressWithoutWindowsOnlyTakesHold) {
    plugin.scenarioDlg = nullptr;
    CNullTimeTrackKey key;
    key.OnLButtonDown(100, 2, 50.0f, {101, 5}, 4.0f);
    EXPECT_TRUE(key.dragging);
    plugin.scenarioDlg = &window;
}

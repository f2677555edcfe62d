#include "tests/timeline/KeyDragFixture.h"

#include <cmath>
#include <limits>

namespace {

using BoxDragTest = KeyDragTest;

} // namespace

TEST_F(BoxDragTest, MovesByTicsOnceTheMouseIsPastHalfWayToTheEdgesTarget) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 3.0f);
    Take(key, kMove, 5.0f);
    // The end stands at 7, so it is taken to 8: half of 3 against the distance of the mouse to 8.
    Follow(key, row, {{5.5f, 4, 3}, {6.5f, 4, 3}, {6.75f, 5, 3}});
    // The end at 8 goes to 10; from 6.75 half of the way is 1.625.
    Follow(key, row, {{7, 5, 3}, {8.25f, 5, 3}, {8.5f, 7, 3}});
    // Back: the start at 7 goes to 6; from 8.5 half of the way is 1.25.
    Follow(key, row, {{8, 7, 3}, {7.25f, 7, 3}, {7, 6, 3}});
}

TEST_F(BoxDragTest, HeldKeyRemembersTheMouseOfTheLastMove) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 3.0f);
    Take(key, kMove, 5.0f);
    Drag(key, row, 6.5f);
    EXPECT_EQ(key.lastMouseTime, 5.0f);
    Drag(key, row, 6.75f);
    EXPECT_EQ(key.lastMouseTime, 6.75f);
}

TEST_F(BoxDragTest, EndOffTheGridByHalfASecondStaysOffIt) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 4.25f);
    Take(key, kMove, 8.25f);
    Follow(key, row, {{9.5f, 6, 4.25f}, {11.5f, 8, 4.25f}});
}

TEST_F(BoxDragTest, KeyOnATicGoesBackByAWholeTic) {
    CTrackCtrl& row = BoxRow(kFrame);
    CTimedTrackKey& key = *AddBox(row, 30 * kFrame, 2.0f);
    Take(key, kMove, 1.0f);
    Follow(key, row, {{29 * kFrame, 29 * kFrame, 2}});
}

TEST_F(BoxDragTest, StopsAtTheEndsOfTheAxis) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& late = *AddBox(row, 94.0f, 4.0f);
    Take(late, kMove, 96.0f);
    Follow(late, row, {{98.5f, 96, 4}, {101, 96, 4}, {100.25f, 96, 4}, {103, 96, 4}});
    row.RemoveKey(&late, true, false, true);
    CTimedTrackKey& early = *AddBox(row, 2.0f, 4.0f);
    Take(early, kMove, 3.0f);
    Follow(early, row, {{1.5f, 2, 4}, {1.25f, 0, 4}, {0.25f, 0, 4}, {-3, 0, 4}});
}

TEST_F(BoxDragTest, MayLandExactlyOnAKeyOfTheSameStart) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 6.0f, 2.0f);
    AddBox(row, 10.0f, 2.0f);
    Take(key, kMove, 7.0f);
    // The end at 8 would go to 10, where a key stands: it goes on to 12.
    Follow(key, row, {{9.5f, 6, 2}, {10, 10, 2}});
}

TEST_F(BoxDragTest, IsPutInFrontOfALongerKey) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 6.0f, 2.0f);
    AddBox(row, 10.0f, 4.0f);
    Take(key, kMove, 7.0f);
    Follow(key, row, {{10, 8, 2}, {10.5f, 8, 2}, {11.5f, 8, 2}, {13, 8, 2}});
}

TEST_F(BoxDragTest, GoesBehindAKeyThatItsStartFallsInto) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 0.5f, 0.5f);
    AddBox(row, 2.0f, 4.0f);
    Take(key, kMove, 1.0f);
    // The end at 1 goes to 2, which is taken, and on to 3: a start of 2.5 lies inside.
    Follow(key, row, {{2, 0.5f, 0.5f}, {2.25f, 6, 0.5f}});
}

TEST_F(BoxDragTest, ThatWouldSwallowAnotherStaysAndRemembersTheMouse) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 0.0f, 6.0f);
    AddBox(row, 9.0f, 0.5f);
    Take(key, kMove, 3.0f);
    Follow(key, row, {{6, 2, 6}, {8.5f, 2, 6}}); // the end at 8 would go to 10
    EXPECT_EQ(key.lastMouseTime, 8.5f);
}

TEST_F(BoxDragTest, LeftGripMovesTheStart) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 3.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{4.5f, 4, 3}, {4.75f, 5, 2}, {5.75f, 6, 1}, {5.5f, 6, 1}, {5.125f, 5, 2}, {4, 4, 3}});
}

TEST_F(BoxDragTest, LeftGripPulledToTheEndMovesTheKey) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 1.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{4.75f, 5, 1}, {5.75f, 6, 1}});
}

TEST_F(BoxDragTest, LeftGripOfAnEmptyKeyOnlyGoesBack) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 0.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{4.75f, 4, 0}, {6, 4, 0}});
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{3.25f, 3, 1}});
}

TEST_F(BoxDragTest, RightGripMovesTheEnd) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 3.0f);
    Take(key, kRight, 7.0f);
    Follow(key, row, {{7.5f, 4, 3}, {7.75f, 4, 4}, {7.5f, 4, 4}, {7.25f, 4, 3}, {6, 4, 2}, {5, 4, 1}});
}

TEST_F(BoxDragTest, RightGripDoesntPullTheKeyShut) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 1.0f);
    Take(key, kRight, 5.0f);
    Follow(key, row, {{4.25f, 4, 1}});
    EXPECT_EQ(key.lastMouseTime, 4.25f);
}

TEST_F(BoxDragTest, ResizeOverAKeyOfOneTicIsRefused) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 0.0f, 2.0f);
    AddBox(row, 3.0f, 1.0f);
    Take(key, kRight, 2.0f);
    Follow(key, row, {{3, 0, 2}, {3.25f, 0, 2}});
    EXPECT_EQ(key.lastMouseTime, 3.25f);
}

TEST_F(BoxDragTest, ResizeIntoAKeyOfTwoTicsIsCutToTouch) {
    CTrackCtrl& row = BoxRow(1.0f);
    CTimedTrackKey& key = *AddBox(row, 0.0f, 2.0f);
    AddBox(row, 3.0f, 2.0f);
    Take(key, kRight, 2.0f);
    Follow(key, row, {{3, 0, 2}, {3.25f, 0, 3}});
}

TEST_F(BoxDragTest, NoTicsNoDrag) {
    CTrackCtrl& row = BoxRow(0.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 3.0f);
    Take(key, kMove, 5.0f);
    Follow(key, row, {{6, 4, 3}, {6.5f, 4, 3}, {8, 4, 3}, {3, 4, 3}, {0, 4, 3}});
}

TEST_F(BoxDragTest, KeyThatMayOverlapIsOnlySnappedAndClamped) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    key.record->flags |= KeyFlag::MayOverlap;
    AddBox(row, 7.0f, 4.0f);
    Take(key, kMove, 5.0f);
    Follow(key, row, {{7, 6, 2}, {8.75f, 8, 2}});
    Take(key, kMove, 8.5f);
    alt = true;
    Follow(key, row, {{9, 8.5f, 2}});
}

TEST_F(BoxDragTest, KeyOfAnotherRowIsDraggedByTheRulesOfTheRowUnderTheMouse) {
    CTrackCtrl& own = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(own, 4.0f, 2.0f);
    AddBox(own, 7.0f, 4.0f); // no matter
    CTrackCtrl& row = MakeRow(KeyKind::FxBlind);
    row.ticDistance = 4.0f;
    AddBox(row, 8.0f, 4.0f); // of another kind
    Take(key, kMove, 5.0f);
    Follow(key, row, {{6.75f, 6, 2}});
}

TEST_F(BoxDragTest, KeyOfNoRowIsDraggedToo) {
    CTrackCtrl& row = BoxRow(2.0f);
    const std::unique_ptr<CTrackKey> view = MakeView(KeyKind::FxRain, 4.0f, 2.0f);
    auto& key = static_cast<CTimedTrackKey&>(*view);
    Take(key, kMove, 5.0f);
    Follow(key, row, {{7, 6, 2}});
}

TEST_F(BoxDragTest, NothingMovesWithoutRowRecordOrTime) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey key;
    key.time = 4.0f;
    key.duration = 2.0f;
    Take(key, kMove, 5.0f);
    Follow(key, row, {{7, 4, 2}});
    CTimedTrackKey& placed = *AddBox(row, 4.0f, 2.0f);
    Take(placed, kMove, 5.0f);
    placed.OnMouseMove(0, 7.0f, nullptr);
    Drag(placed, row, std::numeric_limits<float>::quiet_NaN());
    Drag(placed, row, std::numeric_limits<float>::infinity());
    EXPECT_EQ(placed.time, 4.0f);
    EXPECT_EQ(placed.lastMouseTime, 5.0f);
}

TEST_F(BoxDragTest, KeyWithoutAModeStays) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, CTimedTrackKey::kDragNone, 1.0f);
    Follow(key, row, {{7, 4, 2}, {2, 4, 2}, {1, 4, 2}});
}

TEST_F(BoxDragTest, KeyThatIsNoNumberDoesNoHarm) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    AddBox(row, std::numeric_limits<float>::quiet_NaN(), 2.0f);
    AddBox(row, 8.0f, std::numeric_limits<float>::infinity());
    for (const bool free : {false, true}) {
        alt = free;
        for (const int mode : {kMove, kLeft, kRight}) {
            Take(key, mode, 5.0f);
            for (const float mouse : {7.0f, 9.0f, 2.0f, -1.0f}) {
                Drag(key, row, mouse);
                EXPECT_TRUE(std::isfinite(key.time)) << mouse;
            }
        }
    }
}

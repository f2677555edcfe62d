// Drags of keys from the press to the release, through the messages of the mouse.
#include "tests/support/MouseScript.h"
#include "tests/timeline/GestureFixture.h"

#include <limits>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TrackCtrlGestureTest : public GestureTest {};

} // namespace

TEST_F(TrackCtrlGestureTest, BarIsDraggedToTheNextTic) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    DragTo(bars, 5.5f); // half a second from the tic at 6, and half of the way there is one
    EXPECT_EQ(key->time, 6.0f);
    EXPECT_EQ(key->record->time, 6.0f);
    ReleaseAt(bars, 5.5f);
    EXPECT_EQ(key->time, 6.0f);
    EXPECT_TRUE(key->selected);
    EXPECT_EQ(bars.dragKey, nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(TrackCtrlGestureTest, BarAtHalfTheWayStaysAndMeasuresAnewFromThere) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    DragTo(bars, 5.0f);
    EXPECT_EQ(key->time, 4.0f);
    DragTo(bars, 5.5f); // again half the way from 5 to 6
    EXPECT_EQ(key->time, 4.0f);
    DragTo(bars, 6.0f);
    EXPECT_EQ(key->time, 6.0f);
}

TEST_F(TrackCtrlGestureTest, BarWhoseMouseJumpsOverTheTicStaysBehind) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    DragTo(bars, 9.0f); // three seconds behind 6, and half of the way is one
    DragTo(bars, 9.5f);
    EXPECT_EQ(key->time, 4.0f);
}

TEST_F(TrackCtrlGestureTest, BoxGrippedInItsMiddleLagsBehindTheMouse) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 2.0f);
    EXPECT_EQ(key->dragMode, CTimedTrackKey::kDragMove);
    DragTo(sounds, 3.0f); // its end goes from 3 to 4, and half of the way from 2 to 4 is not enough
    ExpectBox(*key, 1.0f, 2.0f);
    EXPECT_EQ(key->lastMouseTime, 2.0f); // held boxes measure on from the press
    DragTo(sounds, 3.5f);
    ExpectBox(*key, 2.0f, 2.0f);
    EXPECT_EQ(key->lastMouseTime, 3.5f);
}

TEST_F(TrackCtrlGestureTest, LeftGripMovesTheStart) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    Press(sounds, 250, kMiddle);
    Release(sounds, 250, kMiddle);
    Press(sounds, 190, kMiddle); // 0.8 s, in the grip from 182 to 197
    EXPECT_EQ(key->dragMode, CTimedTrackKey::kDragLeft);
    Move(sounds, 160, kMiddle, MK_LBUTTON); // 0.2 s: half of the way from 0.8 to the tic at 0 is 0.4
    ExpectBox(*key, 0.0f, 3.0f);
    Release(sounds, 160, kMiddle);
    ASSERT_NE(TheChange(), nullptr);
    EXPECT_EQ(TheChange()->start, 1.0f);
    EXPECT_EQ(TheChange()->end, 3.0f);
}

TEST_F(TrackCtrlGestureTest, RightGripMovesTheEnd) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    Press(sounds, 250, kMiddle);
    Release(sounds, 250, kMiddle);
    Press(sounds, 310, kMiddle); // 3.2 s, in the grip from 303 to 318
    EXPECT_EQ(key->dragMode, CTimedTrackKey::kDragRight);
    Move(sounds, 340, kMiddle, MK_LBUTTON); // 3.8 s: half of the way from 3.2 to the tic at 4 is 0.4
    ExpectBox(*key, 1.0f, 3.0f);
    Release(sounds, 340, kMiddle);
    ASSERT_NE(TheChange(), nullptr);
    EXPECT_EQ(TheChange()->start, 1.0f);
    EXPECT_EQ(TheChange()->end, 3.0f);
}

TEST_F(TrackCtrlGestureTest, GripsAreNoneBeforeTheKeyIsCurrent) {
    PutBox(1.0f, 2.0f);
    Press(sounds, 190, kMiddle);
    EXPECT_EQ(sounds.dragKey, nullptr);
}

// Required: the grip's height counts only for what the drag does.
TEST_F(TrackCtrlGestureTest, GripAboveTheBoxMovesIt) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 2.0f);
    ReleaseAt(sounds, 2.0f);
    Press(sounds, 190, 0);
    EXPECT_EQ(sounds.dragKey, key);
    EXPECT_EQ(key->dragMode, CTimedTrackKey::kDragMove);
}

TEST_F(TrackCtrlGestureTest, GripTakenInAnotherRowIsThatRowsDrag) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 2.0f);
    ReleaseAt(sounds, 2.0f);
    StartWatching();
    Press(turns, 310, kMiddle);
    EXPECT_EQ(turns.dragKey, key);
    EXPECT_EQ(sounds.dragKey, nullptr);
    EXPECT_EQ(CWnd::GetCapture(), &turns);
    EXPECT_FALSE(WantsPaint(sounds)); // Required: the row of the mouse alone is repainted
    Move(turns, 340, kMiddle, MK_LBUTTON);
    ExpectBox(*key, 1.0f, 3.0f);
    Release(turns, 340, kMiddle);
    ASSERT_NE(TheChange(), nullptr);
    EXPECT_EQ(TheChange()->trackCtrl, &turns);
    EXPECT_EQ(TheChange()->key, key);
}

TEST_F(TrackCtrlGestureTest, GripsFollowTheScaleOfTheRowUnderTheMouse) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    CurrentKey() = key;
    turns.SetView(0.0f, 20.0f); // 25 pixels a second: the box lies from 175 to 225
    RenderRow(turns);
    Press(turns, 190, kMiddle);
    EXPECT_EQ(turns.dragKey, nullptr);
    CurrentKey() = key;
    Press(turns, 235, kMiddle);
    EXPECT_EQ(turns.dragKey, key);
}

TEST_F(TrackCtrlGestureTest, WithAltABarIsWhereTheMouseIs) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    alt = true;
    DragTo(bars, 4.5f);
    EXPECT_EQ(key->time, 4.5f);
    EXPECT_EQ(timeline.mouseTime, 4.5f);
    alt = false;
    // Required: half a second off the grid it stays off it, so its next place is 6.5.
    DragTo(bars, 5.0f);
    EXPECT_EQ(key->time, 4.5f);
    DragTo(bars, 6.0f);
    EXPECT_EQ(key->time, 6.5f);
}

TEST_F(TrackCtrlGestureTest, WithAltABoxGoesAsFarAsTheMouse) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    PressAt(sounds, 1.5f);
    alt = true;
    DragTo(sounds, 2.0f);
    ExpectBox(*key, 1.5f, 2.0f);
}

TEST_F(TrackCtrlGestureTest, MouseFarOutsideTakesABarToTheEndsOfTheAxis) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    alt = true;
    DragTo(bars, -20.0f);
    EXPECT_EQ(key->time, 0.0f);
    EXPECT_EQ(timeline.mouseTime, 0.0f); // the bar's drag writes where it went
    DragTo(bars, 200.0f);
    EXPECT_EQ(key->time, 100.0f);
    ReleaseAt(bars, 200.0f);
    EXPECT_EQ(key->record->time, 100.0f);
}

TEST_F(TrackCtrlGestureTest, MouseAboveAndBelowTheRowStillDrags) {
    CTrackKey* key = PutBar(bars, 4.0f);
    PressAt(bars, 4.0f);
    Move(bars, X(5.5f), -300, MK_LBUTTON);
    EXPECT_EQ(key->time, 6.0f);
    EXPECT_EQ(bars.lastPoint, CPoint(X(5.5f), -300));
    Move(bars, X(4.5f), 900, MK_LBUTTON);
    EXPECT_EQ(key->time, 4.0f);
}

TEST_F(TrackCtrlGestureTest, UserDragsOutOfTheWindowAndLetsGoThere) {
    CTrackKey* key = PutBar(bars, 4.0f);
    ShowForMouse(timeline);
    MouseScript(bars).Press(X(4.0f), kMiddle).Move(X(5.5f), -100).Release(X(5.5f), -100);
    EXPECT_EQ(key->time, 6.0f);
    EXPECT_EQ(bars.dragKey, nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    ASSERT_NE(TheChange(), nullptr);
}

TEST_F(TrackCtrlGestureTest, UserDragsOverAnotherRowWithoutTouchingIt) {
    CTrackKey* key = PutBar(bars, 4.0f);
    CTrackKey* below = PutBar(turns, 6.0f);
    ShowForMouse(timeline);
    MouseScript(bars)
        .Press(X(4.0f), kMiddle)
        .Move(X(5.5f), kMiddle + kHeight)
        .Release(X(6.0f), kMiddle + kHeight);
    EXPECT_EQ(key->time, 6.0f);
    EXPECT_EQ(below->time, 6.0f);
    EXPECT_FALSE(below->selected);
    EXPECT_THAT(TimesOf(bars), ElementsAre(6.0f));
}

TEST_F(TrackCtrlGestureTest, CtrlPressMarksTheBarAndDragsIt) {
    CTrackKey* key = PutBar(bars, 4.0f);
    ctrl = true;
    PressAt(bars, 4.0f, MK_CONTROL);
    EXPECT_TRUE(key->marked);
    EXPECT_THAT(windowLog, Contains("PressButton 36865 down"));
    DragTo(bars, 5.5f, MK_CONTROL);
    EXPECT_EQ(key->time, 6.0f);
    ReleaseAt(bars, 5.5f);
    PressAt(bars, 6.0f, MK_CONTROL);
    EXPECT_FALSE(key->marked);
    EXPECT_THAT(windowLog, Contains("PressButton 36865 up"));
}

TEST_F(TrackCtrlGestureTest, CtrlPressOnABoxOnlyTakesHoldOfIt) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    ctrl = true;
    PressAt(sounds, 2.0f, MK_CONTROL);
    EXPECT_FALSE(key->marked);
    EXPECT_EQ(sounds.dragKey, key);
    EXPECT_THAT(windowLog, IsEmpty());
}

TEST_F(TrackCtrlGestureTest, MarkedKeysOfAllRowsGoAlong) {
    CTrackKey* dragged = PutBar(bars, 4.0f);
    CTrackKey* turn = PutBar(turns, 4.0f);
    CTrackKey* later = PutBar(turns, 8.0f);
    CTrackKey* unmarked = PutBar(bars, 8.0f);
    ctrl = true;
    for (const auto& [row, time] :
         {std::pair{&turns, 8.0f}, std::pair{&turns, 4.0f}, std::pair{&bars, 4.0f}}) {
        PressAt(*row, time, MK_CONTROL);
        ReleaseAt(*row, time);
    }
    ctrl = false;
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(dragged)); // marks are no selection
    PressAt(bars, 4.0f);
    StartWatching();
    DragTo(bars, 5.5f);
    EXPECT_EQ(dragged->time, 6.0f);
    EXPECT_EQ(turn->time, 6.0f);
    EXPECT_EQ(later->time, 10.0f);
    EXPECT_EQ(unmarked->time, 8.0f);
    EXPECT_TRUE(WantsPaint(turns));
    EXPECT_FALSE(WantsPaint(sounds));
    ReleaseAt(bars, 5.5f);
    EXPECT_TRUE(later->marked);
    ASSERT_NE(TheChange(), nullptr); // Required: of the key under the mouse alone
    EXPECT_EQ(TheChange()->key, dragged);
}

TEST_F(TrackCtrlGestureTest, GroupThatWouldLeaveTheAxisStaysWhole) {
    CTrackKey* dragged = PutBar(bars, 4.0f);
    CTrackKey* last = PutBar(turns, 99.0f);
    dragged->marked = last->marked = true;
    PressAt(bars, 4.0f);
    DragTo(bars, 5.5f);
    ReleaseAt(bars, 5.5f);
    EXPECT_EQ(dragged->time, 4.0f);
    EXPECT_EQ(last->time, 99.0f);
    EXPECT_THAT(Edits(), IsEmpty());
}

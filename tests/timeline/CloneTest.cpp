// Where the release leaves a clone, and where none.
#include "tests/support/MouseScript.h"
#include "tests/timeline/CloneFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(CloneTest, ReleaseLeavesACloneWhereTheGhostStands) {
    CTrackKey* key = PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f);
    StartWatching();
    ReleaseAt(bars, 5.5f);
    EXPECT_THAT(TimesOf(bars), ElementsAre(4.0f, 5.5f));
    CTrackKey* clone = KeyAt(bars, 5.5f);
    ASSERT_NE(clone, nullptr);
    EXPECT_NE(clone->record, key->record);
    EXPECT_EQ(clone->record->track, boxTrack);
    EXPECT_EQ(clone->record->time, 5.5f);
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(clone));
    EXPECT_EQ(CurrentKey(), clone);
    EXPECT_TRUE(WantsPaint(bars));
    EXPECT_THAT(Frames(bars), IsEmpty());
    ASSERT_EQ(Edits().size(), 1U);
    const auto* edit = dynamic_cast<CFUACloneKey*>(Edits().front());
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->trackCtrl, &bars);
}

TEST_F(CloneTest, PlacedCloneLeavesTheDuplicatorEmpty) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f);
    ReleaseAt(bars, 5.5f);
    EXPECT_EQ(duplicator.sourceKey, nullptr);
    EXPECT_EQ(duplicator.sourceRow, nullptr);
    EXPECT_EQ(duplicator.sourceTime, -1.0f);
    EXPECT_FALSE(duplicator.cloneMode);
    DragTo(bars, 8.0f);
    EXPECT_EQ(duplicator.sourceTime, -1.0f);
    ReleaseAt(bars, 8.0f);
    EXPECT_EQ(bars.keys.size(), 2U);
}

// Required: only a dragged key's release lets go of the mouse; the window system does it for a clone's.
TEST_F(CloneTest, ReleaseDoesntReleaseTheMouse) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f);
    ReleaseAt(bars, 5.5f);
    EXPECT_EQ(CWnd::GetCapture(), &bars);
}

TEST_F(CloneTest, UsersReleaseLeavesNoCapture) {
    PutBar(bars, 4.0f);
    ShowForMouse(timeline);
    MouseScript(bars)
        .Move(X(4.0f), kMiddle)
        .Shift(true)
        .Press(X(4.0f), kMiddle)
        .Move(X(5.5f), -90)
        .Release(X(5.5f), -90);
    EXPECT_THAT(TimesOf(bars), ElementsAre(4.0f, 5.5f));
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(CloneTest, ShiftCountsAtThePressAlone) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f); // Shift is up
    ReleaseAt(bars, 5.5f);
    EXPECT_THAT(TimesOf(bars), ElementsAre(4.0f, 5.5f));
    PressAt(bars, 4.0f);
    DragTo(bars, 3.0f, MK_SHIFT);
    EXPECT_FALSE(duplicator.HasSource());
}

TEST_F(CloneTest, BoxIsClonedWithItsLengthAndShortenedBeforeTheNext) {
    PutBox(1.0f, 2.0f);
    PutBox(8.0f, 1.0f);
    TakeClone(sounds, 2.0f);
    DragTo(sounds, 5.0f); // the ghost goes as far as the mouse: to 4
    ReleaseAt(sounds, 5.0f);
    ASSERT_NE(KeyAt(sounds, 4.0f), nullptr);
    EXPECT_EQ(KeyAt(sounds, 4.0f)->GetDuration(), 2.0f);
    TakeClone(sounds, 2.0f);
    DragTo(sounds, 8.0f);
    ReleaseAt(sounds, 8.0f); // at 7, a second before the next
    ASSERT_NE(KeyAt(sounds, 7.0f), nullptr);
    EXPECT_EQ(KeyAt(sounds, 7.0f)->GetDuration(), 1.0f);
    EXPECT_EQ(KeyAt(sounds, 7.0f)->record->endTime, 8.0f);
}

TEST_F(CloneTest, TakenPlaceGetsNoClone) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    ReleaseAt(bars, 4.0f); // onto the key itself
    ExpectNoClone(bars, 4.0f);
    EXPECT_TRUE(WantsPaint(bars));
}

// Required: a clone may not even touch another key, while a dragged one may.
TEST_F(CloneTest, EndOfABoxIsTaken) {
    PutBox(1.0f, 2.0f);
    TakeClone(sounds, 1.0f);
    DragTo(sounds, 3.0f);
    ReleaseAt(sounds, 3.0f);
    ExpectNoClone(sounds, 1.0f);
}

// Required: the view decides about the clone, the film about its ghost.
TEST_F(CloneTest, ReleaseOutOfTheViewMakesNone) {
    PutBar(bars, 4.0f);
    timeline.viewStart = 2.0f;
    timeline.viewEnd = 8.0f;
    for (const float time : {1.5f, 8.0f}) {
        TakeClone(bars, 4.0f);
        DragTo(bars, time);
        EXPECT_THAT(Frames(bars), ElementsAre(GhostFrame(X(time))));
        ReleaseAt(bars, time);
        ExpectNoClone(bars, 4.0f);
    }
    TakeClone(bars, 4.0f);
    DragTo(bars, 2.0f);
    ReleaseAt(bars, 2.0f);
    EXPECT_THAT(TimesOf(bars), ElementsAre(2.0f, 4.0f));
}

TEST_F(CloneTest, RefusedCloneDoesntComeBackWithTheNextRelease) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    ReleaseAt(bars, 4.0f);
    EXPECT_EQ(duplicator.sourceTime, 4.0f); // only the key is forgotten
    EXPECT_THAT(Frames(bars), IsEmpty());
    DragTo(bars, 6.0f);
    ReleaseAt(bars, 6.0f);
    ExpectNoClone(bars, 4.0f);
}

TEST_F(CloneTest, ReleaseOverAnotherRowClonesInTheKeysOwn) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    Move(bars, X(5.5f), kMiddle + kHeight);
    Release(bars, X(5.5f), kMiddle + kHeight);
    EXPECT_THAT(TimesOf(bars), ElementsAre(4.0f, 5.5f));
    EXPECT_THAT(turns.keys, IsEmpty());
}

TEST_F(CloneTest, GripTakenInARowOfAnotherKindClonesNothing) {
    CTimedTrackKey* key = PutBox(1.0f, 2.0f);
    CurrentKey() = key;
    timeline.mouseTime = 3.5f;
    Press(turns, 310, kMiddle, MK_LBUTTON | MK_SHIFT);
    EXPECT_EQ(duplicator.sourceRow, &turns);
    DragTo(turns, 6.0f);
    EXPECT_EQ(duplicator.sourceTime, 3.5f);
    ReleaseAt(turns, 6.0f);
    EXPECT_THAT(turns.keys, IsEmpty());
    ExpectNoClone(sounds, 1.0f);
}

TEST_F(CloneTest, MarkedKeyIsClonedWithoutItsGroup) {
    CTrackKey* key = PutBar(bars, 4.0f);
    CTrackKey* other = PutBar(turns, 4.0f);
    key->marked = other->marked = true;
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f);
    ReleaseAt(bars, 5.5f);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_THAT(TimesOf(turns), ElementsAre(4.0f));
}

TEST_F(CloneTest, RowsThatGoWhenTheCloneIsSelectedTakeItAlong) {
    PutBar(bars, 4.0f);
    TakeClone(bars, 4.0f);
    DragTo(bars, 5.5f);
    timeline.onSelect = [this] {
        timeline.onSelect = nullptr;
        timeline.rows.clear();
    };
    ReleaseAt(bars, 5.5f);
    EXPECT_THAT(timeline.rows, IsEmpty());
}

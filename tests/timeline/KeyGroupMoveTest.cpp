#include "tests/timeline/KeyDragFixture.h"

namespace {

/// Two rows of one track with bars at 4 and 10 and at 4 and 20 seconds, and a row of another track.
class KeyGroupMoveTest : public KeyDragTest {
protected:
    KeyGroupMoveTest() {
        dragged = AddBar(row, 4.0f);
        later = AddBar(row, 10.0f);
        sameTime = AddBar(sibling, 4.0f);
        last = AddBar(sibling, 20.0f);
        foreign = AddBar(BarRow(2.0f), 4.0f);
        SettleAll();
        Take(*dragged, 4.0f);
    }
    static void Mark(const std::vector<CTrackKey*>& keys) {
        for (CTrackKey* key : keys) {
            key->marked = true;
        }
    }
    void ExpectTimes(float draggedTime, float laterTime, float sameTimeTime, float lastTime) const {
        EXPECT_EQ(dragged->time, draggedTime);
        EXPECT_EQ(later->time, laterTime);
        EXPECT_EQ(sameTime->time, sameTimeTime);
        EXPECT_EQ(last->time, lastTime);
    }

    CTrackCtrl& root = MakeRow(KeyKind::None);
    CTrackCtrl& row = AddBarRow(root, KeyKind::Position, 2.0f);
    CTrackCtrl& sibling = AddBarRow(root, KeyKind::Rotation, 2.0f);
    CNullTimeTrackKey* dragged = nullptr;
    CNullTimeTrackKey* later = nullptr;
    CNullTimeTrackKey* sameTime = nullptr;
    CNullTimeTrackKey* last = nullptr;
    CNullTimeTrackKey* foreign = nullptr;
};

} // namespace

TEST_F(KeyGroupMoveTest, MarkedKeysOfTheTrackGoAlong) {
    Mark({dragged, later, sameTime, foreign});
    Drag(*dragged, row, 5.25f);
    ExpectTimes(6, 12, 6, 20);
    EXPECT_EQ(later->record->time, 12.0f);
    EXPECT_EQ(later->record->endTime, 12.0f);
    EXPECT_EQ(foreign->time, 4.0f); // of another track
    EXPECT_EQ(later->lastMouseTime, 5.25f);
    EXPECT_TRUE(WantsPaint(sibling));
}

TEST_F(KeyGroupMoveTest, UnmarkedKeyMovesAlone) {
    Mark({later, sameTime, last});
    Drag(*dragged, row, 5.25f);
    ExpectTimes(6, 10, 4, 20);
    EXPECT_FALSE(WantsPaint(sibling));
}

TEST_F(KeyGroupMoveTest, MarkedKeyWithoutOthersMovesAlone) {
    Mark({dragged});
    Drag(*dragged, row, 5.25f);
    ExpectTimes(6, 10, 4, 20);
    EXPECT_FALSE(WantsPaint(sibling));
}

TEST_F(KeyGroupMoveTest, HeldKeyHoldsTheGroup) {
    Mark({dragged, later});
    Drag(*dragged, row, 5.0f);
    ExpectTimes(4, 10, 4, 20);
    EXPECT_EQ(later->lastMouseTime, 0.0f);
}

TEST_F(KeyGroupMoveTest, GroupStopsAtTheFirstKeyThatReachesTheEndOfTheAxis) {
    last->SetPosition(99.0f, false);
    Mark({dragged, later, last});
    Drag(*dragged, row, 6.0f);
    ExpectTimes(4, 10, 4, 99);
    EXPECT_EQ(dragged->lastMouseTime, 4.0f);
    last->SetPosition(98.0f, false);
    Drag(*dragged, row, 6.0f);
    ExpectTimes(6, 12, 4, 100);
}

TEST_F(KeyGroupMoveTest, GroupStopsAtTheStartOfTheAxis) {
    last->SetPosition(1.0f, false);
    Mark({dragged, later, last});
    Drag(*dragged, row, 2.0f);
    ExpectTimes(4, 10, 4, 1);
    last->SetPosition(2.0f, false);
    Drag(*dragged, row, 2.0f);
    ExpectTimes(2, 8, 4, 0);
}

TEST_F(KeyGroupMoveTest, NeighboursOfTheGroupPlayNoPart) {
    CTrackKey* unmarked = AddBar(sibling, 22.0f);
    Mark({dragged, last});
    Drag(*dragged, row, 6.0f);
    EXPECT_EQ(last->time, 22.0f);
    EXPECT_EQ(unmarked->time, 22.0f);
}

TEST_F(KeyGroupMoveTest, KeyAtTheSameTimeGoesExactlyToTheTarget) {
    // As floats 64.1 + (0.1 - 64.1) isn't 0.1: keys that stood together stay together.
    for (CNullTimeTrackKey* key : {dragged, sameTime}) {
        key->SetPosition(64.1f, false);
    }
    Mark({dragged, sameTime});
    alt = true;
    Take(*dragged, 64.1f);
    Drag(*dragged, row, 0.1f);
    EXPECT_EQ(dragged->time, 0.1f);
    EXPECT_EQ(sameTime->time, 0.1f);
}

TEST_F(KeyGroupMoveTest, TimedKeysGoAlongWithTheirLength) {
    CTrackCtrl& timedRow = AddBarRow(root, KeyKind::FxRain, 2.0f);
    CTimedTrackKey* timed = AddBox(timedRow, 8.0f, 3.0f);
    Mark({dragged, timed});
    Drag(*dragged, row, 6.0f);
    EXPECT_EQ(timed->time, 10.0f);
    EXPECT_EQ(timed->duration, 3.0f);
    EXPECT_EQ(timed->record->endTime, 13.0f);
    EXPECT_EQ(timed->lastMouseTime, 6.0f);
}

TEST_F(KeyGroupMoveTest, DragInTheRowOfAnotherTrackTakesThatTracksMarksAlong) {
    CTrackCtrl& other = BarRow(2.0f);
    CNullTimeTrackKey* marked = AddBar(other, 30.0f);
    Mark({dragged, later, marked});
    Drag(*dragged, other, 6.0f);
    ExpectTimes(6, 10, 4, 20);
    EXPECT_EQ(marked->time, 32.0f);
}

TEST_F(KeyGroupMoveTest, CheckLooksAtTheTargetFirst) {
    EXPECT_TRUE(dragged->CheckGroupMove(&row, 200.0f)); // unmarked keys aren't looked at
    Mark({dragged});
    EXPECT_TRUE(dragged->CheckGroupMove(&row, 100.0f));
    EXPECT_TRUE(dragged->CheckGroupMove(&row, 0.0f));
    EXPECT_FALSE(dragged->CheckGroupMove(&row, 100.25f));
    EXPECT_FALSE(dragged->CheckGroupMove(&row, -0.25f));
}

TEST_F(KeyGroupMoveTest, ClearMarksTakesAllMarksOfTheTrack) {
    Mark({dragged, later, sameTime, foreign});
    last->ClearMarks(&sibling); // itself not marked
    EXPECT_TRUE(later->marked);
    timeline.log.clear();
    dragged->ClearMarks(&row);
    EXPECT_FALSE(dragged->marked || later->marked || sameTime->marked);
    EXPECT_TRUE(foreign->marked);
    EXPECT_THAT(timeline.log, ::testing::ElementsAre("InvalidateControl false"));
}

TEST_F(KeyGroupMoveTest, ClearMarksNeedsARowWithARoot) {
    Mark({dragged, later});
    dragged->ClearMarks(nullptr);
    dragged->ClearMarks(&root);
    EXPECT_TRUE(dragged->marked);
    EXPECT_TRUE(later->marked);
}

TEST_F(KeyGroupMoveTest, TimedKeyClearsNoMarks) {
    CTrackCtrl& timedRow = AddBarRow(root, KeyKind::FxRain, 2.0f);
    CTimedTrackKey* timed = AddBox(timedRow, 8.0f, 3.0f);
    Mark({timed, later});
    timed->ClearMarks(&timedRow);
    EXPECT_TRUE(timed->marked);
    EXPECT_TRUE(later->marked);
}

// The drags of a row and of the ruler, without windows.
#include "helpers/FilmKeyDuplicator.h"
#include "keys/views/TimedTrackKey.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/FakeTimeline.h"
#include "timeline/rows/CloneDrag.h"
#include "timeline/rows/KeyDrag.h"
#include "timeline/rows/MarkDrag.h"
#include "timeline/rows/MarkedGridCtrl.h"
#include "timeline/rows/TrackCtrl.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A box from 2 to 5 seconds.
class KeyDragStateTest : public ::testing::Test {
protected:
    KeyDragStateTest() {
        key.time = 2.0f;
        key.duration = 3.0f;
        drag.Hold(&key);
        drag.Begin();
    }

    CTimedTrackKey key;
    KeyDrag drag;
};

TEST_F(KeyDragStateTest, BeginNotesPlaceAndLengthAndHighlights) {
    EXPECT_EQ(drag.dragTime, 2.0f);
    EXPECT_EQ(drag.dragDuration, 3.0f);
    EXPECT_EQ(key.state, CTrackKey::kHighlighted);
}

TEST_F(KeyDragStateTest, WhatIsLetGoIsToldOnce) {
    EXPECT_EQ(drag.LetGo(), &key);
    EXPECT_EQ(drag.dragKey, nullptr);
    EXPECT_EQ(drag.LetGo(), nullptr);
}

TEST_F(KeyDragStateTest, MoreThanAMillionthOfASecondIsAMove) {
    EXPECT_FALSE(drag.HasMoved(key));
    key.time = 2.0000005f; // the next floats are about 0.00000024 apart
    EXPECT_FALSE(drag.HasMoved(key));
    key.time = 2.00001f;
    EXPECT_TRUE(drag.HasMoved(key));
    key.time = 2.0f;
    key.duration = 2.5f;
    EXPECT_TRUE(drag.HasMoved(key));
}

TEST_F(KeyDragStateTest, OnlyAKeyThatHadALengthIsShut) {
    key.duration = 0.0f;
    EXPECT_TRUE(drag.IsShut(key));
    drag.Begin();
    EXPECT_FALSE(drag.IsShut(key));
}

TEST_F(KeyDragStateTest, PlaceGoesBackToTheKey) {
    key.time = 7.0f;
    key.duration = 1.0f;
    drag.GetStart().GiveTo(key);
    EXPECT_EQ(key.time, 2.0f);
    EXPECT_EQ(key.duration, 3.0f);
}

class CloneDragTest : public PluginTest {
protected:
    CloneDragTest() {
        key.time = 2.0f;
        drag.Begin(duplicator, key, row);
    }

    CTrackCtrl row;
    CTimedTrackKey key;
    CFilmKeyDuplicator duplicator{nullptr};
    CloneDrag drag;
};

TEST_F(CloneDragTest, GhostStartsAtTheKeyAndFollowsTheMouse) {
    EXPECT_EQ(duplicator.sourceKey, &key);
    EXPECT_EQ(duplicator.sourceTime, 2.0f);
    EXPECT_TRUE(CloneDrag::Update(duplicator, 4.0f, 5.5f));
    EXPECT_EQ(duplicator.sourceTime, 3.5f);
    EXPECT_EQ(key.time, 2.0f);
}

TEST_F(CloneDragTest, LostCloneIsForgottenOnce) {
    EXPECT_TRUE(drag.Lose(duplicator));
    EXPECT_FALSE(duplicator.HasSource());
    EXPECT_FALSE(CloneDrag::Update(duplicator, 4.0f, 5.0f));
    EXPECT_FALSE(drag.Lose(duplicator));
}

TEST_F(CloneDragTest, EndedGestureLeavesTheGhostToTheDuplicator) {
    drag.End();
    EXPECT_FALSE(drag.Lose(duplicator));
    EXPECT_TRUE(CloneDrag::Update(duplicator, 4.0f, 5.0f));
}

TEST_F(CloneDragTest, CopiedAttributesDoNotFollowTheMouse) {
    duplicator.cloneMode = false;
    EXPECT_FALSE(CloneDrag::Update(duplicator, 4.0f, 5.0f));
    EXPECT_FALSE(drag.Lose(duplicator));
    EXPECT_TRUE(duplicator.HasSource());
}

/// A mark at 3 seconds over a timeline without a window.
class MarkDragTest : public PluginTest {
protected:
    ~MarkDragTest() override { timeline.undoMgr.Clear(); }

    FakeTimeline timeline{plugin};
    CMark mark{3.0f};
    MarkDrag drag;
};

TEST_F(MarkDragTest, CarriesTheKeysAlong) {
    drag.Hold(mark);
    EXPECT_EQ(drag.dragMark, &mark);
    EXPECT_EQ(drag.dragMarkTime, 3.0f);
    EXPECT_THAT(timeline.log, IsEmpty());
    drag.Begin(timeline);
    drag.Update(timeline, 4.5f);
    EXPECT_EQ(mark.time, 4.5f);
    EXPECT_THAT(timeline.log, ElementsAre("SaveKeyTimes", "ShiftKeysAtMark 3.000000 4.500000"));
}

TEST_F(MarkDragTest, EndGivesTheMarkBack) {
    drag.Hold(mark);
    EXPECT_EQ(drag.End(timeline, /*keep*/ false), &mark);
    EXPECT_EQ(drag.dragMark, nullptr);
    EXPECT_EQ(drag.dragMarkTime, -1.0f);
    EXPECT_THAT(timeline.log, ElementsAre("RestoreKeyTimes false"));
}

TEST_F(MarkDragTest, DroppedMarkIsLetGoWithoutAWord) {
    drag.Hold(mark);
    drag.Drop();
    EXPECT_EQ(drag.dragMark, nullptr);
    EXPECT_EQ(drag.dragMarkTime, -1.0f);
    EXPECT_THAT(timeline.log, IsEmpty());
}

} // namespace

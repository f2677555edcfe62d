// A clone that is left at another time.
#include "keys/views/LooseKeys.h"
#include "tests/undo/DuplicatorFixture.h"

#include <cmath>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class PasteCloneTest : public DuplicatorTest {
protected:
    /// The source as the gesture leaves it: remembered where it stands, then dragged to a time.
    void Drag(CTrackKey* source, CTrackCtrl& row, float time) {
        EXPECT_TRUE(duplicator.Set(source, &row, /*clone*/ true));
        duplicator.sourceTime = time;
        StartWatching();
        records = RecordCount();
    }
    /// The view of the row that isn't the source.
    static CTrackKey* CloneIn(const CTrackCtrl& row, const CTrackKey* source) {
        EXPECT_EQ(row.keys.size(), 2U);
        return row.keys.front() == source ? row.keys.back() : row.keys.front();
    }
    void ExpectForgotten() {
        EXPECT_EQ(duplicator.sourceKey, nullptr);
        EXPECT_EQ(duplicator.sourceRow, nullptr);
        EXPECT_EQ(duplicator.sourceTime, -1.0f);
        EXPECT_FALSE(duplicator.cloneMode);
    }
    void ExpectRemembered(CTrackKey* source, CTrackCtrl& row, float time) {
        EXPECT_EQ(duplicator.sourceKey, source);
        EXPECT_EQ(duplicator.sourceRow, &row);
        EXPECT_EQ(duplicator.sourceTime, time);
        EXPECT_TRUE(duplicator.cloneMode);
    }

    std::size_t records = 0;
};

} // namespace

TEST_F(PasteCloneTest, ABarIsClonedAtTheTimeOfTheGhost) {
    CTrackKey* source = PutKey(bars, 2.0f);
    RecordAs<CFilmVectorKey>(*source).value = {1.0f, 2.0f, 3.0f};
    source->name = "bar";
    Drag(source, bars, 6.5f);
    EXPECT_TRUE(duplicator.Paste(nullptr));
    const CTrackKey* clone = CloneIn(bars, source);
    EXPECT_EQ(clone->time, 6.5f);
    EXPECT_EQ(clone->record->time, 6.5f);
    EXPECT_EQ(clone->record->endTime, 6.5f);
    EXPECT_EQ(clone->name, "bar");
    EXPECT_EQ(RecordAs<CFilmVectorKey>(*clone).value, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_NE(clone->record, source->record);
    EXPECT_TRUE(IsListed(*boxTrack, clone->record));
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(clone));
    EXPECT_EQ(source->time, 2.0f);
    EXPECT_TRUE(WantsPaint(bars));
    ExpectForgotten();
}

TEST_F(PasteCloneTest, ABoxKeepsTheLengthOfTheSourcesRecord) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    RecordAs<CFilmSoundKey>(*source).wavPath = "a.wav";
    source->SetDuration(4.0f, /*viewOnly*/ true);
    Drag(source, boxes, 7.0f);
    EXPECT_TRUE(duplicator.Paste(nullptr));
    const CTrackKey* clone = CloneIn(boxes, source);
    EXPECT_EQ(clone->time, 7.0f);
    EXPECT_EQ(clone->GetDuration(), 1.5f);
    EXPECT_EQ(clone->record->time, 7.0f);
    EXPECT_EQ(clone->record->endTime, 8.5f);
    EXPECT_EQ(RecordAs<CFilmSoundKey>(*clone).wavPath, "a.wav");
    ExpectForgotten();
}

TEST_F(PasteCloneTest, ABoxThatWouldRunIntoTheNextIsShortened) {
    CTimedTrackKey* source = PutBox(boxes, 5.0f, 2.0f);
    Drag(source, boxes, 4.0f);
    EXPECT_TRUE(duplicator.Paste(nullptr));
    EXPECT_EQ(CloneIn(boxes, source)->GetDuration(), 1.0f);
    EXPECT_EQ(CloneIn(boxes, source)->record->endTime, 5.0f);
}

TEST_F(PasteCloneTest, TheFlagOfTheSourceDecidesAboutTheLength) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    source->record->flags |= KeyFlag::NoDuration;
    Drag(source, boxes, 7.0f);
    EXPECT_TRUE(duplicator.Paste(nullptr));
    // A new box is 5 seconds long, and nothing is copied; the clone's own flag is clear.
    EXPECT_EQ(CloneIn(boxes, source)->GetDuration(), 5.0f);
}

TEST_F(PasteCloneTest, ACameraKeyStaysInItsRow) {
    CTimedTrackKey* source = PutBox(cameras, 2.0f, 1.5f);
    Drag(source, cameras, 7.0f);
    EXPECT_TRUE(duplicator.Paste(nullptr));
    EXPECT_EQ(RecordAs<CFilmCameraKey>(*CloneIn(cameras, source)).priority, 2);
}

TEST_F(PasteCloneTest, TheActionHoldsAFurtherCopyOfTheClone) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    RecordAs<CFilmSoundKey>(*source).wavPath = "a.wav";
    Drag(source, boxes, 7.0f);
    duplicator.Paste(nullptr);
    const CTrackKey* clone = CloneIn(boxes, source);
    auto* action = TheAction<CFUACloneKey>();
    ASSERT_NE(action, nullptr);
    EXPECT_NE(action->key, clone);
    EXPECT_NE(action->key, source);
    EXPECT_EQ(action->trackCtrl, &boxes);
    EXPECT_TRUE(action->ownsKey);
    EXPECT_TRUE(action->key->Equals(clone, true));
    EXPECT_EQ(action->key->time, 7.0f);
    EXPECT_EQ(action->key->GetDuration(), 1.5f);
    EXPECT_EQ(RecordAs<CFilmSoundKey>(*action->key).wavPath, "a.wav");
    EXPECT_EQ(action->key->record->track, nullptr);
    EXPECT_FALSE(boxes.FindKeyView(action->key, /*byValue*/ false));
}

TEST_F(PasteCloneTest, RecordsAreMadeAndDestroyedInOrder) {
    CTrackKey* source = PutKey(bars, 2.0f);
    Drag(source, bars, 6.0f);
    duplicator.Paste(nullptr);
    // The clone's, the saved one, that of the action's copy.
    EXPECT_THAT(factory.log, ElementsAre("Create 10", "Create 10", "Create 10", "Destroy 10"));
    EXPECT_EQ(RecordCount(), records + 2);
    timeline.undoMgr.Clear();
    EXPECT_EQ(RecordCount(), records + 1);
}

TEST_F(PasteCloneTest, TheClonesActionTakesItBack) {
    CTrackKey* source = PutKey(bars, 2.0f);
    Drag(source, bars, 6.0f);
    duplicator.Paste(nullptr);
    auto* action = TheAction<CFUACloneKey>();
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(bars), ElementsAre(source));
    EXPECT_TRUE(action->Redo());
    EXPECT_EQ(CloneIn(bars, source)->time, 6.0f);
}

TEST_F(PasteCloneTest, TheStartOfTheViewIsInItAndItsEndIsNot) {
    timeline.viewStart = 1.0f;
    timeline.viewEnd = 9.0f;
    CTrackKey* source = PutKey(bars, 2.0f);
    for (const float outside : {9.0f, 9.5f, std::nextafter(1.0f, 0.0f), -1.0f, std::nanf("")}) {
        Drag(source, bars, outside);
        EXPECT_FALSE(duplicator.Paste(nullptr)) << outside;
        EXPECT_THAT(factory.log, IsEmpty());
        EXPECT_TRUE(duplicator.HasSource());
    }
    for (const float inside : {1.0f, std::nextafter(9.0f, 0.0f)}) {
        Drag(source, bars, inside);
        EXPECT_TRUE(duplicator.Paste(nullptr)) << inside;
    }
    EXPECT_THAT(Views(bars), SizeIs(3));
}

TEST_F(PasteCloneTest, NothingIsLeftIfNoViewIsMade) {
    CTrackKey* source = PutKey(bars, 2.0f);
    Drag(source, bars, 6.0f);
    timeline.refuseViews = true;
    EXPECT_FALSE(duplicator.Paste(nullptr));
    EXPECT_EQ(RecordCount(), records);
    ExpectRemembered(source, bars, 6.0f);
}

TEST_F(PasteCloneTest, TheNewViewGoesIfNoRecordCanBeSaved) {
    CTrackKey* source = PutKey(bars, 2.0f);
    Drag(source, bars, 6.0f);
    factory.granted = 1;
    EXPECT_FALSE(duplicator.Paste(nullptr));
    EXPECT_EQ(RecordCount(), records);
    EXPECT_THAT(timeline.forgottenViews, SizeIs(1));
    ExpectRemembered(source, bars, 6.0f);
}

TEST_F(PasteCloneTest, WhereThereIsNoPlaceCloneAndSavedRecordStayAliveForNow) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    RecordAs<CFilmSoundKey>(*source).wavPath = "a.wav";
    Drag(source, boxes, 3.0f); // inside the source
    EXPECT_FALSE(duplicator.Paste(nullptr));
    EXPECT_THAT(Views(boxes), ElementsAre(source));
    ASSERT_THAT(Retired().Views(), SizeIs(1));
    EXPECT_EQ(Retired().Views().front()->time, 3.0f);
    EXPECT_EQ(Retired().Views().front()->GetDuration(), 1.5f);
    ASSERT_THAT(Retired().Records(), SizeIs(1));
    EXPECT_EQ(static_cast<CFilmSoundKey*>(Retired().Records().front())->wavPath, "a.wav");
    EXPECT_THAT(Retired().Actions(), IsEmpty());
    EXPECT_EQ(RecordCount(), records + 2);
    ExpectRemembered(source, boxes, 3.0f);
    timeline.undoMgr.Clear();
    EXPECT_EQ(RecordCount(), records);
}

TEST_F(PasteCloneTest, WhatTheRowRefusesIsDestroyed) {
    CTrackKey* source = PutKey(bars, 2.0f);
    CTrackCtrl& rotations = MakeRow(KeyKind::Rotation, boxTrack);
    Drag(source, rotations, 6.0f);
    std::vector<std::size_t> viewsGone; // at each record's end
    factory.onDestroy = [&] { viewsGone.push_back(timeline.forgottenViews.size()); };
    EXPECT_FALSE(duplicator.Paste(nullptr));
    EXPECT_THAT(viewsGone, ElementsAre(1, 1)); // the clone's, then the saved one
    EXPECT_TRUE(rotations.keys.empty());
    EXPECT_EQ(RecordCount(), records);
    EXPECT_THAT(factory.log, ElementsAre("Create 10", "Create 10", "Destroy 10", "Destroy 10"));
    EXPECT_THAT(timeline.forgottenViews, SizeIs(1));
    EXPECT_THAT(Retired().Actions(), IsEmpty());
    EXPECT_THAT(Retired().Views(), IsEmpty());
    EXPECT_THAT(Retired().Records(), IsEmpty());
    ExpectRemembered(source, rotations, 6.0f);
}

TEST_F(PasteCloneTest, RowsThatGoWhileTheCloneIsSelectedTakeItAlong) {
    CTrackKey* source = PutKey(bars, 2.0f);
    Drag(source, bars, 6.0f);
    timeline.onSelect = [this] { timeline.rows.clear(); };
    EXPECT_TRUE(duplicator.Paste(nullptr));
    timeline.onSelect = nullptr;
    EXPECT_THAT(Retired().Actions(), IsEmpty());
    EXPECT_EQ(RecordCount(), records + 1); // the track keeps the clone's
}

TEST_F(PasteCloneTest, WithoutACopyForTheActionTheCloneStandsAllTheSame) {
    CTrackKey* source = PutKey(bars, 2.0f);
    Drag(source, bars, 6.0f);
    factory.granted = 2;
    EXPECT_TRUE(duplicator.Paste(nullptr));
    EXPECT_EQ(CloneIn(bars, source)->time, 6.0f);
    EXPECT_THAT(Retired().Actions(), IsEmpty());
    ExpectForgotten();
    EXPECT_EQ(RecordCount(), records + 1);
}

TEST_F(PasteCloneTest, AViewInNoRowBecomesTheClone) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    CTrackKey* target = NewView(KeyKind::Sound, 0.0f, 5.0f);
    Drag(source, boxes, 7.0f);
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(CloneIn(boxes, source), target);
    EXPECT_EQ(target->time, 7.0f);
    EXPECT_EQ(target->GetDuration(), 1.5f);
    ExpectForgotten();
}

TEST_F(PasteCloneTest, TheViewIsNotAskedWhereItMayStand) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    CTrackKey* target = NewView(KeyKind::Sound, 0.0f, 5.0f);
    Drag(source, boxes, 50.0f); // beyond what is drawn, within the axis
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(CloneIn(boxes, source)->time, 50.0f);
    EXPECT_FALSE(WantsPaint(boxes));
}

TEST_F(PasteCloneTest, ARefusedTargetStaysTheCallers) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    CTrackKey* target = NewView(KeyKind::Sound, 0.0f, 5.0f);
    Drag(source, boxes, 3.0f); // no place
    EXPECT_FALSE(duplicator.Paste(target));
    EXPECT_THAT(Retired().Views(), IsEmpty());
    Drag(source, bars, 3.0f); // no row
    EXPECT_FALSE(duplicator.Paste(target));
    EXPECT_THAT(timeline.forgottenViews, IsEmpty());
    EXPECT_EQ(target->record->kind, KeyKind::Sound);
    DestroyLooseView(&timeline, target);
}

TEST_F(PasteCloneTest, AKeyThatStandsInATrackBecomesNoClone) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    CTimedTrackKey* other = PutBox(boxes, 5.0f, 1.0f);
    Drag(source, boxes, 7.0f);
    EXPECT_FALSE(duplicator.Paste(other));
    EXPECT_FALSE(duplicator.Paste(source));
    EXPECT_EQ(other->time, 5.0f);
    EXPECT_EQ(source->time, 2.0f);
    EXPECT_EQ(boxes.keys.size(), 2U);
    EXPECT_THAT(factory.log, IsEmpty());
    ExpectRemembered(source, boxes, 7.0f);
}

TEST_F(PasteCloneTest, ARemovedSourceIsClonedButDoesNotComeBackItself) {
    CTimedTrackKey* source = PutBox(boxes, 2.0f, 1.5f);
    boxes.RemoveKey(source, /*destroy*/ false, /*redraw*/ false, /*noUndo*/ true);
    Retired().KeepView(source);
    Drag(source, boxes, 7.0f);
    EXPECT_FALSE(duplicator.Paste(source));
    EXPECT_TRUE(boxes.keys.empty());
    EXPECT_TRUE(duplicator.Paste(nullptr));
    ASSERT_THAT(Views(boxes), SizeIs(1));
    EXPECT_EQ(boxes.keys.front()->time, 7.0f);
}

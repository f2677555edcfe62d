// Keys that come and go: the actions of adding, deleting and cloning a key.
#include "tests/undo/UndoFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class KeyActionsTest : public UndoTest {
protected:
    KeyActionsTest() : row(MakeRow(KeyKind::Position, boxTrack)) { StartWatching(); }

    CTrackCtrl& row;
};

} // namespace

TEST_F(KeyActionsTest, SettersGiveBackWhatTheyTake) {
    CFUAAddKey action(&timeline);
    EXPECT_EQ(action.key, nullptr);
    EXPECT_EQ(action.trackCtrl, nullptr);
    CTrackKey* view = PutKey(row, 2.0f);
    EXPECT_EQ(action.SetKey(view), view);
    EXPECT_EQ(action.SetTrackCtrl(&row), &row);
    EXPECT_EQ(action.key, view);
    EXPECT_EQ(action.trackCtrl, &row);
    EXPECT_EQ(action.SetKey(nullptr), nullptr);
    EXPECT_EQ(action.SetTrackCtrl(nullptr), nullptr);
}

TEST_F(KeyActionsTest, AddUndoneTakesTheKeyOutAndKeepsItAlive) {
    CTrackKey* other = PutKey(row, 5.0f);
    CTrackKey* view = PutKey(row, 2.0f);
    IFilmKey* record = view->record;
    const std::size_t records = RecordCount();
    const auto action = Make<CFUAAddKey>(view, &row);
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(row), ElementsAre(other));
    EXPECT_FALSE(IsListed(*boxTrack, record));
    EXPECT_EQ(record->track, nullptr);
    EXPECT_EQ(view->record, record);
    EXPECT_EQ(RecordCount(), records);
    EXPECT_THAT(factory.log, IsEmpty());
    EXPECT_THAT(timeline.forgottenViews, IsEmpty());
    EXPECT_THAT(Retired().Views(), ElementsAre(view));
    EXPECT_THAT(Retired().Actions(), IsEmpty());
    EXPECT_TRUE(WantsPaint(row));
}

TEST_F(KeyActionsTest, ATakenOutKeyIsNoLongerSelected) {
    CTrackKey* view = PutKey(row, 2.0f);
    timeline.SelectOnly(view);
    Make<CFUAAddKey>(view, &row)->Undo();
    EXPECT_THAT(timeline.selectedKeys, IsEmpty());
    EXPECT_FALSE(view->selected);
}

TEST_F(KeyActionsTest, AKeyOutOfViewIsTakenOutWithoutARepaint) {
    CTrackKey* view = PutKey(row, 50.0f);
    EXPECT_TRUE(Make<CFUAAddKey>(view, &row)->Undo());
    EXPECT_THAT(Views(row), IsEmpty());
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(KeyActionsTest, AddUndoneWithoutATwinChangesNothing) {
    CTrackKey* other = PutKey(row, 5.0f);
    const std::unique_ptr<CFUADeleteKey> owner = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), &row);
    const auto action = Make<CFUAAddKey>(owner->key, &row);
    StartWatching();
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(row), ElementsAre(other));
    EXPECT_THAT(Retired().Views(), IsEmpty());
    EXPECT_THAT(timeline.log, IsEmpty());
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(KeyActionsTest, AddRedonePutsACopyIn) {
    CTrackKey* view = PutKey(row, 2.0f);
    RecordAs<CFilmVectorKey>(*view).value = {1.0f, 2.0f, 3.0f};
    view->name = "first";
    const auto action = Make<CFUAAddKey>(view, &row);
    action->Undo();
    StartWatching();
    EXPECT_TRUE(action->Redo());
    ASSERT_THAT(Views(row), SizeIs(1));
    CTrackKey* copy = row.keys.front();
    EXPECT_NE(copy, view);
    EXPECT_NE(copy->record, view->record);
    EXPECT_TRUE(view->Equals(copy, true));
    EXPECT_EQ(copy->name, "first");
    EXPECT_EQ(copy->time, 2.0f);
    EXPECT_EQ(copy->record->time, 2.0f);
    EXPECT_EQ(copy->record->endTime, 2.0f);
    EXPECT_EQ(RecordAs<CFilmVectorKey>(*copy).value, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_TRUE(IsListed(*boxTrack, copy->record));
    EXPECT_THAT(factory.log, ElementsAre("Create 10"));
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(copy));
    EXPECT_EQ(CurrentKey(), copy);
    EXPECT_THAT(Retired().Actions(), IsEmpty()); // neither way builds a further action
    EXPECT_TRUE(WantsPaint(row));
    EXPECT_EQ(action->key, view);
}

TEST_F(KeyActionsTest, AddGoesBackAndForthAsOftenAsWanted) {
    CTrackKey* view = PutKey(row, 2.0f);
    const std::size_t records = RecordCount();
    const auto action = Make<CFUAAddKey>(view, &row);
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(action->Undo());
        EXPECT_THAT(Views(row), IsEmpty());
        EXPECT_TRUE(action->Redo());
        EXPECT_THAT(Views(row), SizeIs(1));
    }
    EXPECT_THAT(Retired().Views(), SizeIs(3)); // the first and two copies
    EXPECT_EQ(RecordCount(), records + 3);
    timeline.undoMgr.Clear();
    EXPECT_EQ(RecordCount(), records);
}

TEST_F(KeyActionsTest, DeleteUndonePutsTimedKeyBackWithItsLength) {
    CTrackCtrl& sounds = MakeRow(KeyKind::Sound, boxTrack);
    CTrackKey* view = NewView(KeyKind::Sound, 2.0f, 1.5f);
    RecordAs<CFilmSoundKey>(*view).wavPath = "steps.wav";
    const auto action = Make<CFUADeleteKey>(view, &sounds);
    StartWatching();
    EXPECT_TRUE(action->Undo());
    ASSERT_THAT(Views(sounds), SizeIs(1));
    const CTrackKey* copy = sounds.keys.front();
    EXPECT_EQ(copy->time, 2.0f);
    EXPECT_EQ(copy->GetDuration(), 1.5f);
    EXPECT_EQ(copy->record->time, 2.0f);
    EXPECT_EQ(copy->record->endTime, 3.5f);
    EXPECT_EQ(RecordAs<CFilmSoundKey>(*copy).wavPath, "steps.wav");
    EXPECT_TRUE(IsListed(*boxTrack, copy->record));
    EXPECT_EQ(action->key, view);
}

TEST_F(KeyActionsTest, DeleteRedoneTakesTheTwinOut) {
    const auto action = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), &row);
    action->Undo();
    CTrackKey* twin = row.keys.front();
    EXPECT_TRUE(action->Redo());
    EXPECT_THAT(Views(row), IsEmpty());
    EXPECT_THAT(Retired().Views(), ElementsAre(twin));
    EXPECT_EQ(twin->record->track, nullptr);
    EXPECT_TRUE(action->Redo()); // without a twin
    EXPECT_THAT(Retired().Views(), ElementsAre(twin));
}

TEST_F(KeyActionsTest, ATwinMustStandAtTheSameTime) {
    CTrackKey* later = PutKey(row, 2.5f);
    const auto action = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), &row);
    EXPECT_TRUE(action->Redo());
    EXPECT_THAT(Views(row), ElementsAre(later));
}

TEST_F(KeyActionsTest, ReinsertionStopsWithoutAView) {
    const auto action = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), &row);
    timeline.refuseViews = true;
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(row), IsEmpty());
}

TEST_F(KeyActionsTest, ACopyThatTheRowRefusesIsDestroyed) {
    const auto action = Make<CFUADeleteKey>(NewView(KeyKind::Rotation, 2.0f), &row);
    StartWatching();
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(row), IsEmpty());
    EXPECT_THAT(factory.log, ElementsAre("Create 11", "Destroy 11"));
    EXPECT_THAT(timeline.forgottenViews, SizeIs(1));
}

TEST_F(KeyActionsTest, ACameraKeyOnlyComesBackInTheFirstCameraRow) {
    // Required: a copy of the record doesn't take the camera index.
    for (int index : {0, 1}) {
        CTrackCtrl& cameras = MakeRow(KeyKind::Camera, film->mainTrack);
        cameras.subIndex = index;
        CTrackKey* view = NewView(KeyKind::Camera, 2.0f);
        RecordAs<CFilmCameraKey>(*view).priority = index;
        const auto action = Make<CFUADeleteKey>(view, &cameras);
        EXPECT_TRUE(action->Undo());
        EXPECT_THAT(Views(cameras), SizeIs(index == 0 ? 1 : 0));
    }
}

TEST_F(KeyActionsTest, CloneUndoneDestroysTheTwin) {
    CTrackKey* twin = PutKey(row, 2.0f);
    const IFilmKey* record = twin->record;
    const auto action = Make<CFUACloneKey>(NewView(KeyKind::Position, 2.0f), &row);
    const std::size_t records = RecordCount();
    StartWatching();
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(row), IsEmpty());
    EXPECT_FALSE(IsListed(*boxTrack, record));
    EXPECT_EQ(RecordCount(), records - 1);
    EXPECT_THAT(timeline.forgottenViews, ElementsAre(twin));
    EXPECT_THAT(Retired().Views(), IsEmpty());
    EXPECT_TRUE(WantsPaint(row));
    EXPECT_FALSE(action->Undo()); // there is none any more
}

TEST_F(KeyActionsTest, CloneRedonePutsACopyIn) {
    const auto action = Make<CFUACloneKey>(NewView(KeyKind::Position, 2.0f), &row);
    StartWatching();
    EXPECT_TRUE(action->Redo());
    ASSERT_THAT(Views(row), SizeIs(1));
    EXPECT_NE(row.keys.front(), action->key);
    EXPECT_EQ(row.keys.front()->record->time, 2.0f);
    EXPECT_TRUE(IsListed(*boxTrack, row.keys.front()->record));
    EXPECT_TRUE(WantsPaint(row));
}

TEST_F(KeyActionsTest, CloneAnswersFalseWithoutAMainControl) {
    CTrackKey* twin = PutKey(row, 2.0f);
    const auto action = Make<CFUACloneKey>(NewView(KeyKind::Position, 2.0f), &row);
    window.hasControl = false;
    EXPECT_FALSE(action->Undo());
    EXPECT_FALSE(action->Redo());
    EXPECT_THAT(Views(row), ElementsAre(twin));
    window.hasControl = true;
}

TEST_F(KeyActionsTest, CloneAnswersFalseWithoutAView) {
    const auto action = Make<CFUACloneKey>(NewView(KeyKind::Position, 2.0f), &row);
    timeline.refuseViews = true;
    EXPECT_FALSE(action->Redo());
    EXPECT_THAT(Views(row), IsEmpty());
}

TEST_F(KeyActionsTest, CloneAnswersFalseIfTheCopyFails) {
    CTrackKey* view = NewView(KeyKind::Position, 2.0f);
    view->record->flags = 0; // a bar whose record has a length
    const auto action = Make<CFUACloneKey>(view, &row);
    StartWatching();
    EXPECT_FALSE(action->Redo());
    EXPECT_THAT(Views(row), IsEmpty());
    EXPECT_THAT(factory.log, ElementsAre("Create 10", "Destroy 10"));
}

TEST_F(KeyActionsTest, ReinsertionDoesNotAskWhetherTheCopyWorked) {
    CTrackKey* view = NewView(KeyKind::Position, 2.0f);
    view->record->flags = 0;
    const auto action = Make<CFUADeleteKey>(view, &row);
    EXPECT_TRUE(action->Undo());
    EXPECT_THAT(Views(row), SizeIs(1));
}

TEST_F(KeyActionsTest, CloneUndoneMayTakeItsOwnKey) {
    CTrackKey* view = PutKey(row, 2.0f);
    const auto action = Make<CFUACloneKey>(view, &row);
    EXPECT_TRUE(action->Undo());
    EXPECT_EQ(action->key, nullptr);
    EXPECT_FALSE(action->Undo());
    EXPECT_FALSE(action->Redo());
}

TEST_F(KeyActionsTest, NothingHappensWithoutARow) {
    CTrackKey* view = PutKey(row, 2.0f);
    const auto add = Make<CFUAAddKey>(view, nullptr);
    EXPECT_TRUE(add->Undo());
    EXPECT_TRUE(add->Redo());
    const auto removal = Make<CFUADeleteKey>(view, nullptr);
    removal->ownsKey = false;
    EXPECT_TRUE(removal->Undo());
    EXPECT_TRUE(removal->Redo());
    const auto clone = Make<CFUACloneKey>(view, nullptr);
    clone->ownsKey = false;
    EXPECT_FALSE(clone->Undo());
    EXPECT_FALSE(clone->Redo());
    EXPECT_THAT(Views(row), ElementsAre(view));
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(KeyActionsTest, NothingHappensWithoutAKeyOrItsRecord) {
    CTrackKey* view = PutKey(row, 2.0f);
    CNullTimeTrackKey bare;
    bare.time = 7.0f;
    for (CTrackKey* key : {static_cast<CTrackKey*>(nullptr), static_cast<CTrackKey*>(&bare)}) {
        const auto add = Make<CFUAAddKey>(key, &row);
        EXPECT_TRUE(add->Undo());
        EXPECT_TRUE(add->Redo());
        const auto removal = Make<CFUADeleteKey>(key, &row);
        removal->ownsKey = false;
        EXPECT_TRUE(removal->Undo());
        EXPECT_TRUE(removal->Redo());
        const auto clone = Make<CFUACloneKey>(key, &row);
        clone->ownsKey = false;
        EXPECT_FALSE(clone->Undo());
        EXPECT_FALSE(clone->Redo());
    }
    EXPECT_THAT(Views(row), ElementsAre(view));
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(KeyActionsTest, AddAndDeletePutNothingInWithoutAMainControl) {
    const auto removal = Make<CFUADeleteKey>(NewView(KeyKind::Position, 2.0f), &row);
    const auto add = Make<CFUAAddKey>(removal->key, &row);
    window.hasControl = false;
    EXPECT_TRUE(add->Redo());
    EXPECT_TRUE(removal->Undo());
    EXPECT_THAT(Views(row), IsEmpty());
    window.hasControl = true;
}

TEST_F(KeyActionsTest, ARowOutsideAMainControlKeepsItsKeys) {
    CTrackCtrl orphan;
    orphan.kind = KeyKind::Position;
    CTrackKey* view = NewView(KeyKind::Position, 2.0f);
    EXPECT_TRUE(orphan.AddKeyView(view, false, /*existing*/ true, /*noUndo*/ true));
    EXPECT_TRUE(Make<CFUAAddKey>(view, &orphan)->Undo());
    const auto clone = Make<CFUACloneKey>(view, &orphan);
    clone->ownsKey = false;
    EXPECT_FALSE(clone->Undo());
    EXPECT_THAT(Views(orphan), ElementsAre(view));
    EXPECT_THAT(Retired().Views(), IsEmpty());
    loose.push_back(view->record);
}

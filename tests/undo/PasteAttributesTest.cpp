// The key duplicator's memory, and attributes pasted onto another key.
#include "tests/undo/DuplicatorFixture.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class PasteAttributesTest : public DuplicatorTest {
protected:
    CTimedTrackKey* PutSound(float time, float duration, const std::string& path) {
        CTimedTrackKey* view = PutBox(boxes, time, duration);
        RecordAs<CFilmSoundKey>(*view).wavPath = path;
        return view;
    }
    static const std::string& PathOf(const CTrackKey& view) { return RecordAs<CFilmSoundKey>(view).wavPath; }
};

} // namespace

TEST_F(PasteAttributesTest, StartsWithoutASource) {
    const CFilmKeyDuplicator fresh(&timeline);
    EXPECT_FALSE(fresh.HasSource());
    EXPECT_EQ(fresh.sourceKey, nullptr);
    EXPECT_EQ(fresh.sourceRow, nullptr);
    EXPECT_EQ(fresh.sourceTime, -1.0f);
    EXPECT_EQ(fresh.mainCtrl, &timeline);
    EXPECT_FALSE(fresh.cloneMode);
}

TEST_F(PasteAttributesTest, SetRemembersKeyRowAndTheTimeOfTheView) {
    CTimedTrackKey* view = PutSound(2.0f, 1.0f, "a.wav");
    view->SetPosition(3.0f, /*viewOnly*/ true);
    EXPECT_TRUE(duplicator.Set(view, &boxes, true));
    EXPECT_TRUE(duplicator.HasSource());
    EXPECT_EQ(duplicator.sourceKey, view);
    EXPECT_EQ(duplicator.sourceRow, &boxes);
    EXPECT_EQ(duplicator.sourceTime, 3.0f);
    EXPECT_TRUE(duplicator.cloneMode);
    EXPECT_TRUE(duplicator.Set(view, &bars, false));
    EXPECT_EQ(duplicator.sourceRow, &bars);
    EXPECT_FALSE(duplicator.cloneMode);
}

TEST_F(PasteAttributesTest, SetWithoutKeyOrRowChangesNothing) {
    CTimedTrackKey* view = PutSound(2.0f, 1.0f, "a.wav");
    duplicator.Set(view, &boxes, true);
    EXPECT_FALSE(duplicator.Set(nullptr, &bars, false));
    EXPECT_FALSE(duplicator.Set(view, nullptr, false));
    EXPECT_EQ(duplicator.sourceKey, view);
    EXPECT_EQ(duplicator.sourceRow, &boxes);
    EXPECT_EQ(duplicator.sourceTime, 2.0f);
    EXPECT_TRUE(duplicator.cloneMode);
}

TEST_F(PasteAttributesTest, ClearSourceForgetsTheKeyAndNothingElse) {
    CTimedTrackKey* view = PutSound(2.0f, 1.0f, "a.wav");
    duplicator.Set(view, &boxes, true);
    duplicator.ClearSource();
    EXPECT_FALSE(duplicator.HasSource());
    EXPECT_EQ(duplicator.sourceRow, &boxes);
    EXPECT_EQ(duplicator.sourceTime, 2.0f);
    EXPECT_TRUE(duplicator.cloneMode);
    StartWatching();
    EXPECT_FALSE(duplicator.Paste(nullptr));
    EXPECT_FALSE(duplicator.Paste(view));
    EXPECT_THAT(factory.log, IsEmpty());
}

TEST_F(PasteAttributesTest, ContentComesOverAndTimesStay) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    CTimedTrackKey* target = PutSound(5.0f, 3.0f, "b.wav");
    source->name = "source";
    duplicator.Set(source, &boxes, false);
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(PathOf(*target), "a.wav");
    EXPECT_EQ(target->record->time, 5.0f);
    EXPECT_EQ(target->record->endTime, 8.0f);
    EXPECT_EQ(target->duration, 3.0f);
    EXPECT_EQ(target->name, ""); // the view's own fields stay
    EXPECT_EQ(PathOf(*source), "a.wav");
    EXPECT_EQ(boxes.keys.size(), 2U);
}

TEST_F(PasteAttributesTest, BarsTakeValuesAndMethods) {
    CTrackKey* source = PutKey(bars, 2.0f);
    CTrackKey* target = PutKey(bars, 5.0f);
    RecordAs<CFilmVectorKey>(*source).value = {1.0f, 2.0f, 3.0f};
    RecordAs<CFilmVectorKey>(*source).inMethod = BezierMethod::Linear;
    duplicator.Set(source, &bars, false);
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(RecordAs<CFilmVectorKey>(*target).value, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(RecordAs<CFilmVectorKey>(*target).inMethod, BezierMethod::Linear);
    EXPECT_EQ(target->record->time, 5.0f);
}

TEST_F(PasteAttributesTest, CameraKeysTakeTheLengthTooButNotTheRow) {
    CTimedTrackKey* source = PutBox(cameras, 2.0f, 1.5f);
    RecordAs<CFilmCameraKey>(*source).cameraName = "Close";
    CTimedTrackKey* target = PutBox(cameras, 5.0f, 3.0f);
    RecordAs<CFilmCameraKey>(*target).priority = 7;
    duplicator.Set(source, &cameras, false);
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(RecordAs<CFilmCameraKey>(*target).cameraName, "Close");
    EXPECT_EQ(RecordAs<CFilmCameraKey>(*target).priority, 7);
    EXPECT_EQ(target->duration, 1.5f);
    EXPECT_EQ(target->record->time, 5.0f);
    EXPECT_EQ(target->record->endTime, 6.5f);
}

TEST_F(PasteAttributesTest, TheLengthIsThatOfTheSourcesRecord) {
    CTimedTrackKey* source = PutBox(cameras, 2.0f, 1.5f);
    source->SetDuration(4.0f, /*viewOnly*/ true);
    CTimedTrackKey* target = PutBox(cameras, 5.0f, 3.0f);
    duplicator.Set(source, &cameras, false);
    duplicator.Paste(target);
    EXPECT_EQ(target->duration, 1.5f);
}

TEST_F(PasteAttributesTest, TheActionHoldsACopyOfTheSourcesRecord) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    CTimedTrackKey* target = PutSound(5.0f, 3.0f, "b.wav");
    duplicator.Set(source, &boxes, false);
    duplicator.Paste(target);
    auto* action = TheAction<CFUAChangeAttribs>();
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->key, target);
    EXPECT_EQ(action->trackCtrl, &boxes);
    ASSERT_NE(action->savedRecord, nullptr);
    EXPECT_NE(action->savedRecord, source->record);
    EXPECT_NE(action->savedRecord, target->record);
    // Required: not what the target had before.
    EXPECT_EQ(static_cast<CFilmSoundKey*>(action->savedRecord)->wavPath, "a.wav");
    EXPECT_EQ(action->savedRecord->track, nullptr);
    EXPECT_THAT(timeline.undoMgr.actions, IsEmpty());
}

TEST_F(PasteAttributesTest, TheActionNamesTheRowOfTheSource) {
    CTrackCtrl& others = MakeRow(KeyKind::Sound, boxTrack);
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    CTrackKey* target = PutKey(others, 5.0f);
    duplicator.Set(source, &boxes, false);
    duplicator.Paste(target);
    ASSERT_NE(TheAction<CFUAChangeAttribs>(), nullptr);
    EXPECT_EQ(TheAction<CFUAChangeAttribs>()->trackCtrl, &boxes);
}

TEST_F(PasteAttributesTest, TheSourceIsPastedAsOftenAsWanted) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    duplicator.Set(source, &boxes, false);
    for (const float time : {4.0f, 6.0f, 8.0f}) {
        CTimedTrackKey* target = PutSound(time, 1.0f, "");
        EXPECT_TRUE(duplicator.Paste(target));
        EXPECT_EQ(PathOf(*target), "a.wav");
    }
    EXPECT_EQ(duplicator.sourceKey, source);
    EXPECT_EQ(duplicator.sourceTime, 2.0f);
    EXPECT_THAT(Retired().Actions(), SizeIs(3));
}

TEST_F(PasteAttributesTest, ASourceMayBePastedOntoItself) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    duplicator.Set(source, &boxes, false);
    EXPECT_TRUE(duplicator.Paste(source));
    EXPECT_EQ(PathOf(*source), "a.wav");
    EXPECT_EQ(source->duration, 1.0f);
}

TEST_F(PasteAttributesTest, ARemovedSourceIsStillGood) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    CTimedTrackKey* target = PutSound(5.0f, 1.0f, "b.wav");
    duplicator.Set(source, &boxes, false);
    boxes.RemoveKey(source, /*destroy*/ false, /*redraw*/ false, /*noUndo*/ true);
    Retired().KeepView(source);
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(PathOf(*target), "a.wav");
}

TEST_F(PasteAttributesTest, AKeyOfAnotherKindKeepsItsContent) {
    CTrackKey* source = PutKey(bars, 2.0f);
    CTimedTrackKey* target = PutSound(5.0f, 3.0f, "b.wav");
    duplicator.Set(source, &bars, false);
    EXPECT_TRUE(duplicator.Paste(target));
    EXPECT_EQ(PathOf(*target), "b.wav");
    EXPECT_EQ(target->duration, 3.0f);
}

TEST_F(PasteAttributesTest, PasteWithoutATargetMakesNothing) {
    duplicator.Set(PutSound(2.0f, 1.0f, "a.wav"), &boxes, false);
    StartWatching();
    EXPECT_FALSE(duplicator.Paste(nullptr));
    EXPECT_THAT(factory.log, IsEmpty());
    EXPECT_THAT(Retired().Actions(), IsEmpty());
    EXPECT_TRUE(duplicator.HasSource());
}

TEST_F(PasteAttributesTest, PasteFailsWithoutRowRecordOrMainControl) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    CTimedTrackKey* target = PutSound(5.0f, 3.0f, "b.wav");
    CTimedTrackKey bare;
    StartWatching();
    EXPECT_TRUE(duplicator.Set(&bare, &boxes, false));
    EXPECT_FALSE(duplicator.Paste(target)); // the source has no record
    duplicator.Set(source, &boxes, false);
    EXPECT_FALSE(duplicator.Paste(&bare)); // the target has none
    duplicator.sourceRow = nullptr;
    EXPECT_FALSE(duplicator.Paste(target));
    CFilmKeyDuplicator alone(nullptr);
    alone.Set(source, &boxes, false);
    EXPECT_FALSE(alone.Paste(target));
    EXPECT_FALSE(alone.Paste(nullptr));
    EXPECT_EQ(PathOf(*target), "b.wav");
    EXPECT_THAT(factory.log, IsEmpty());
    EXPECT_THAT(Retired().Actions(), IsEmpty());
}

TEST_F(PasteAttributesTest, PasteFailsIfNoRecordCanBeSaved) {
    CTimedTrackKey* source = PutSound(2.0f, 1.0f, "a.wav");
    CTimedTrackKey* target = PutSound(5.0f, 3.0f, "b.wav");
    duplicator.Set(source, &boxes, false);
    factory.granted = 0;
    EXPECT_FALSE(duplicator.Paste(target));
    Films().keyFactory = nullptr;
    EXPECT_FALSE(duplicator.Paste(target));
    Films().keyFactory = &factory;
    EXPECT_EQ(PathOf(*target), "b.wav");
    EXPECT_THAT(Retired().Actions(), IsEmpty());
}

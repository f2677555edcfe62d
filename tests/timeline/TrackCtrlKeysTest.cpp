#include "tests/support/FakeAttributes.h"
#include "tests/timeline/TrackCtrlFixture.h"

#include <algorithm>
#include <cmath>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TrackCtrlKeysTest : public TrackCtrlTest {
protected:
    CTrackCtrl& Child(CTrackCtrl& root, int kind, int index = -2) { return *root.FindChild(kind, index); }
    /// A view in no row, for AddKeyView. What no row takes is deleted at the end.
    CTrackKey* NewView(int kind, float time = 1.0f, float duration = 0.0f) {
        return made.emplace_back(MakeView(kind, time, duration)).get();
    }
    bool Add(CTrackCtrl& row, CTrackKey* view, bool redraw = false, bool existing = false) {
        const bool taken = row.AddKeyView(view, redraw, existing, /*noUndo*/ true);
        for (auto& owned : made) {
            if (taken && owned.get() == view) {
                static_cast<void>(owned.release()); // the row owns it now
            }
        }
        return taken;
    }
    CTrackKey* AddNew(CTrackCtrl& row, int kind, float time = 1.0f, float duration = 0.0f) {
        CTrackKey* view = NewView(kind, time, duration);
        EXPECT_TRUE(Add(row, view));
        return view;
    }
    static std::vector<CTrackKey*> Views(const CTrackCtrl& row) { return {row.keys.begin(), row.keys.end()}; }
    static std::size_t Records(CFilmTrack& track, int kind) { return KeysOf(track, kind).size(); }

    std::vector<std::unique_ptr<CTrackKey>> made;
};

} // namespace

TEST_F(TrackCtrlKeysTest, ViewsWithoutARecordAreRefused) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CNullTimeTrackKey bare;
    EXPECT_FALSE(row.AddKeyView(nullptr, true, false, true));
    EXPECT_FALSE(row.AddKeyView(&bare, true, false, true));
    EXPECT_TRUE(row.keys.empty());
}

TEST_F(TrackCtrlKeysTest, RootHandsAKeyToTheRowOfItsKind) {
    CTrackCtrl& root = MakeTree(boxTrack);
    const std::size_t before = Records(*boxTrack, KeyKind::Rotation);
    CTrackKey* view = AddNew(root, KeyKind::Rotation);
    EXPECT_THAT(Views(Child(root, KeyKind::Rotation)), ElementsAre(view));
    EXPECT_EQ(Records(*boxTrack, KeyKind::Rotation), before + 1);
    EXPECT_EQ(view->record->track, boxTrack);
    EXPECT_TRUE(root.keys.empty());
}

TEST_F(TrackCtrlKeysTest, KindsWithoutARowAreRefused) {
    CTrackCtrl& root = MakeTree(boxTrack);
    EXPECT_FALSE(Add(root, NewView(KeyKind::Camera)));
    EXPECT_FALSE(Add(Child(root, KeyKind::Position), NewView(KeyKind::Rotation)));
    CTrackKey* odd = NewView(KeyKind::Position);
    odd->record->kind = KeyKind::None; // not even the root takes it
    EXPECT_FALSE(Add(root, odd));
    odd->record->kind = KeyKind::Position;
}

TEST_F(TrackCtrlKeysTest, CameraKeysGoToTheRowOfTheirPriority) {
    CTrackCtrl& root = MakeTree(film->mainTrack, 3);
    CTrackKey* view = NewView(KeyKind::Camera, 1.0f, 1.0f);
    static_cast<CFilmCameraKey*>(view->record)->priority = 2;
    EXPECT_TRUE(Add(root, view));
    EXPECT_THAT(Views(Child(root, KeyKind::Camera, 2)), ElementsAre(view));
    CTrackKey* beyond = NewView(KeyKind::Camera, 1.0f, 1.0f);
    static_cast<CFilmCameraKey*>(beyond->record)->priority = 3;
    EXPECT_FALSE(Add(root, beyond));
}

TEST_F(TrackCtrlKeysTest, AnimationKeysGoToTheRowOfTheirElement) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackCtrl& hips = MakeRow(KeyKind::Animation, boxTrack);
    hips.name = "Hips";
    root.InsertBeforeLastAnimationRow(&hips);
    CTrackKey* whole = AddNew(root, KeyKind::Animation, 1.0f, 1.0f);
    CTrackKey* part = NewView(KeyKind::Animation, 1.0f, 1.0f);
    Animation(*part).meshElement = "Hips";
    EXPECT_TRUE(Add(root, part));
    CTrackKey* lost = NewView(KeyKind::Animation, 1.0f, 1.0f);
    Animation(*lost).meshElement = "Tail";
    EXPECT_FALSE(Add(root, lost));
    EXPECT_EQ(lost->record->track, nullptr);
    EXPECT_THAT(Views(hips), ElementsAre(part));
    EXPECT_THAT(Views(*root.FindLastAnimationRow()), ElementsAre(whole));
}

TEST_F(TrackCtrlKeysTest, ViewTakesColoursHeightAndFilterOfItsKind) {
    timeline.keyParams[KeyKind::Position] = {"Position keys", 0x112233, 0x445566, 11, false};
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    const CTrackKey* view = AddNew(row, KeyKind::Position);
    EXPECT_EQ(view->normalColor, 0x112233U);
    EXPECT_EQ(view->highlightColor, 0x445566U);
    EXPECT_EQ(view->rectHeight, 11);
    EXPECT_EQ(view->state, CTrackKey::kHidden);
}

TEST_F(TrackCtrlKeysTest, KeysStandTallBeforeShortAndLongBeforeShort) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* two = AddNew(row, KeyKind::FxRain, 5.0f, 2.0f);
    CTrackKey* three = AddNew(row, KeyKind::FxRain, 1.0f, 3.0f);
    CTrackKey* one = AddNew(row, KeyKind::FxRain, 0.0f, 1.0f);
    CTrackKey* alsoTwo = AddNew(row, KeyKind::FxRain, 0.0f, 2.0f);
    EXPECT_THAT(Views(row), ElementsAre(three, two, alsoTwo, one));
}

TEST_F(TrackCtrlKeysTest, ExistingRecordsAreNotAddedAgain) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackKey* view = NewView(KeyKind::Scale);
    EXPECT_TRUE(Add(root, view, false, /*existing*/ true));
    EXPECT_EQ(view->record->track, nullptr);
}

TEST_F(TrackCtrlKeysTest, AddedKeyIsSelectedAloneAndCurrent) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackKey* first = AddNew(root, KeyKind::Scale);
    CTrackKey* second = NewView(KeyKind::Rotation);
    EXPECT_TRUE(Add(root, second, false, /*existing*/ true));
    EXPECT_FALSE(first->selected);
    EXPECT_TRUE(second->selected);
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(second));
    EXPECT_EQ(CurrentKey(), second);
}

TEST_F(TrackCtrlKeysTest, RowIsRepaintedWhenAnEndOfTheKeyIsInTheView) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.SetView(10.0f, 20.0f);
    const auto repaints = [&](float time, float duration) {
        row.ValidateRect();
        EXPECT_TRUE(Add(row, NewView(KeyKind::FxRain, time, duration), /*redraw*/ true));
        return WantsPaint(row);
    };
    EXPECT_TRUE(repaints(20.0f, 5.0f));
    EXPECT_TRUE(repaints(5.0f, 5.0f));
    EXPECT_FALSE(repaints(5.0f, 4.0f));
    EXPECT_FALSE(repaints(21.0f, 1.0f));
    EXPECT_FALSE(repaints(5.0f, 20.0f)); // Required: it reaches over the view, but has no end in it.
    row.ValidateRect();
    EXPECT_TRUE(Add(row, NewView(KeyKind::FxRain, 15.0f, 1.0f), /*redraw*/ false));
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(TrackCtrlKeysTest, AnimationAndSpeechBringTheObjectBackIntoTheEngine) {
    CTrackCtrl& root = MakeTree(boxTrack);
    for (const int kind : {KeyKind::Animation, KeyKind::Speech}) {
        box->SetFlags(box->GetFlags() | 4U);
        EXPECT_TRUE(Add(root, NewView(kind, 1.0f, 1.0f), false, /*existing*/ true));
        EXPECT_EQ(box->GetFlags() & 4U, 0U) << kind;
    }
    box->SetFlags(box->GetFlags() | 4U);
    AddNew(root, KeyKind::Sound, 1.0f, 1.0f);
    EXPECT_EQ(box->GetFlags() & 4U, 4U);
    box->SetFlags(box->GetFlags() & ~4U);
}

TEST_F(TrackCtrlKeysTest, NewEffectsOnAnObjectStartAtItsPlace) {
    CTrackCtrl& root = MakeTree(boxTrack);
    for (const int kind : {2, 3, 4, 7}) {
        CTrackKey* view = NewView(kind, 1.0f, 1.0f);
        auto& record = static_cast<CFilmFxKey&>(*view->record);
        record.position = {1.0f, 2.0f, 3.0f};
        EXPECT_TRUE(Add(root, view));
        EXPECT_EQ(record.position, Vector3{}) << kind;
    }
}

TEST_F(TrackCtrlKeysTest, EffectsThatExistOrStandInTheLevelKeepTheirPlace) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackKey* existing = NewView(KeyKind::FxTrace, 1.0f, 1.0f);
    auto& record = static_cast<CFilmFxKey&>(*existing->record);
    record.position = {1.0f, 2.0f, 3.0f};
    EXPECT_TRUE(Add(root, existing, false, /*existing*/ true));
    EXPECT_EQ(record.position, (Vector3{1.0f, 2.0f, 3.0f}));
    CTrackCtrl& level = MakeTree(film->mainTrack);
    CTrackKey* inLevel = NewView(KeyKind::FxTrace, 1.0f, 1.0f);
    auto& levelRecord = static_cast<CFilmFxKey&>(*inLevel->record);
    levelRecord.position = {1.0f, 2.0f, 3.0f};
    EXPECT_TRUE(Add(level, inLevel));
    EXPECT_EQ(levelRecord.position, (Vector3{1.0f, 2.0f, 3.0f}));
}

TEST_F(TrackCtrlKeysTest, RowWithoutAMainControlTakesKeys) {
    CTrackCtrl row;
    row.kind = KeyKind::Position;
    CTrackKey* view = AddNew(row, KeyKind::Position);
    EXPECT_THAT(Views(row), ElementsAre(view));
    EXPECT_EQ(CurrentKey(), view);
    row.RemoveKey(view, true, true, true); // needs a main control
    EXPECT_THAT(Views(row), ElementsAre(view));
    row.DeleteAllKeys(true);
    EXPECT_TRUE(row.keys.empty());
    EXPECT_EQ(CurrentKey(), nullptr);
}

TEST_F(TrackCtrlKeysTest, RemovedForGoodTakesRecordAndView) {
    CTrackCtrl& root = MakeTree(boxTrack);
    const std::size_t before = Records(*boxTrack, KeyKind::Rotation);
    CTrackKey* view = AddNew(root, KeyKind::Rotation);
    std::erase(loose, view->record); // its track destroys it
    CTrackCtrl& row = Child(root, KeyKind::Rotation);
    row.dragKey = view;
    row.ValidateRect();
    row.RemoveKey(view, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ true);
    EXPECT_TRUE(row.keys.empty());
    EXPECT_EQ(Records(*boxTrack, KeyKind::Rotation), before);
    EXPECT_THAT(timeline.selectedKeys, IsEmpty());
    EXPECT_THAT(timeline.forgottenViews, ElementsAre(view));
    EXPECT_EQ(CurrentKey(), nullptr);
    EXPECT_EQ(row.dragKey, nullptr);
    EXPECT_TRUE(WantsPaint(row));
}

TEST_F(TrackCtrlKeysTest, RemovedKeyThatMayComeBackLivesOn) {
    for (const bool destroy : {false, true}) {
        CTrackCtrl& root = MakeTree(boxTrack);
        CTrackCtrl& row = Child(root, KeyKind::Rotation);
        CTrackKey* view = AddNew(root, KeyKind::Rotation);
        const bool noted = destroy; // with its record it is the undo action's then
        const std::unique_ptr<CTrackKey> owned(noted ? nullptr : view);
        if (noted) {
            std::erase(loose, view->record);
        }
        row.RemoveKey(view, destroy, /*redraw*/ false, /*noUndo*/ !noted);
        EXPECT_TRUE(row.keys.empty());
        EXPECT_FALSE(view->selected);
        EXPECT_EQ(view->record->track, nullptr); // out of the track, but not destroyed
        EXPECT_EQ(view->record->time, 1.0f);
        EXPECT_EQ(CurrentKey(), view); // Required: nobody looks for it.
        EXPECT_THAT(timeline.forgottenViews, IsEmpty());
        CurrentKey() = nullptr;
    }
}

TEST_F(TrackCtrlKeysTest, RemovingNullDoesNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    AddBar(row, 1.0f);
    row.RemoveKey(nullptr, true, true, true);
    EXPECT_EQ(row.keys.size(), 1U);
}

TEST_F(TrackCtrlKeysTest, RemovingAKeyOutOfViewRepaintsNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CTrackKey* view = AddBar(row, 50.0f);
    row.ValidateRect();
    row.RemoveKey(view, true, /*redraw*/ true, true);
    EXPECT_FALSE(WantsPaint(row));
}

TEST_F(TrackCtrlKeysTest, KeyOnShowThatIsRemovedWithUndoLeavesTheAttributesWindow) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CTrackKey* view = AddBar(row, 5.0f);
    Unselect();
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.key = view;
    row.RemoveKey(view, /*destroy*/ true, /*redraw*/ false, /*noUndo*/ false);
    EXPECT_THAT(dialog.log, ElementsAre("Reset"));
}

TEST_F(TrackCtrlKeysTest, RemovingWithoutARedrawRepaintsNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CTrackKey* first = AddBar(row, 5.0f);
    CTrackKey* second = AddBar(row, 6.0f);
    Unselect();
    row.ValidateRect();
    row.RemoveKey(first, /*destroy*/ true, /*redraw*/ false, /*noUndo*/ true);
    EXPECT_FALSE(WantsPaint(row));
    row.RemoveKey(second, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ true);
    EXPECT_TRUE(WantsPaint(row));
}

TEST_F(TrackCtrlKeysTest, DeleteAllKeysTakesRecordsToo) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackCtrl& row = Child(root, KeyKind::Rotation);
    const std::size_t before = Records(*boxTrack, KeyKind::Rotation);
    for (int i = 0; i < 5; ++i) {
        std::erase(loose, AddNew(root, KeyKind::Rotation, static_cast<float>(i))->record);
    }
    timeline.log.clear();
    row.ValidateRect();
    row.DeleteAllKeys(/*redraw*/ false);
    EXPECT_FALSE(WantsPaint(row));
    EXPECT_TRUE(row.keys.empty());
    EXPECT_EQ(Records(*boxTrack, KeyKind::Rotation), before);
    EXPECT_THAT(timeline.log, ElementsAre("ClearSelection"));
    EXPECT_EQ(timeline.forgottenViews.size(), 5U);
    row.DeleteAllKeys(/*redraw*/ true);
    EXPECT_TRUE(WantsPaint(row));
}

TEST_F(TrackCtrlKeysTest, DestroyedRowTakesItsViewsAndLeavesTheRecords) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackKey* view = AddNew(root, KeyKind::Rotation);
    const IFilmKey* record = view->record;
    timeline.rows.clear();
    EXPECT_THAT(timeline.forgottenViews, Contains(view));
    EXPECT_THAT(timeline.selectedKeys, IsEmpty());
    EXPECT_EQ(CurrentKey(), nullptr);
    EXPECT_THAT(KeysOf(*boxTrack, KeyKind::Rotation), Contains(record));
}

TEST_F(TrackCtrlKeysTest, DroppedTrackLeavesARowWithoutKeys) {
    CTrackCtrl& root = MakeTree(boxTrack);
    const IFilmKey* record = AddNew(root, KeyKind::Rotation)->record;
    CTrackCtrl& row = Child(root, KeyKind::Rotation);
    row.DropTrack();
    EXPECT_EQ(row.track, nullptr);
    EXPECT_TRUE(row.keys.empty());
    EXPECT_THAT(KeysOf(*boxTrack, KeyKind::Rotation), Contains(record));
}

TEST_F(TrackCtrlKeysTest, ShorterRangeDropsViewsNotRecords) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackCtrl& row = Child(root, KeyKind::Rotation);
    CTrackKey* kept = AddNew(root, KeyKind::Rotation, 4.0f);
    CTrackKey* gone = AddNew(root, KeyKind::Rotation, 4.1f);
    const IFilmKey* record = gone->record;
    row.SetTimeRange(4.0f, 1.0f); // the ends may come either way round
    EXPECT_EQ(row.rangeStart, 1.0f);
    EXPECT_THAT(Views(row), ElementsAre(kept));
    EXPECT_THAT(timeline.forgottenViews, ElementsAre(gone));
    EXPECT_THAT(KeysOf(*boxTrack, KeyKind::Rotation), Contains(record));
    EXPECT_EQ(row.viewEnd, 4.0f);
}

TEST_F(TrackCtrlKeysTest, ShorterRangeCutsLongKeysWithTheirRecords) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTimedTrackKey* key = AddBox(row, 2.0f, 6.0f);
    row.SetTimeRange(0.0f, 5.0f);
    EXPECT_EQ(key->duration, 3.0f);
    EXPECT_EQ(key->record->endTime, 5.0f);
}

TEST_F(TrackCtrlKeysTest, KeyThatStartsAtTheRangesEndStaysLong) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTimedTrackKey* key = AddBox(row, 5.0f, 6.0f);
    row.SetTimeRange(0.0f, 5.0f);
    EXPECT_THAT(Views(row), ElementsAre(key));
    EXPECT_EQ(key->duration, 6.0f);
    EXPECT_EQ(key->record->endTime, 11.0f);
}

TEST_F(TrackCtrlKeysTest, ManyDroppedViewsLeaveTheOthersInOrder) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    for (int i = 0; i < 400; ++i) {
        AddBox(row, i % 2 == 0 ? 1.0f : 50.0f, static_cast<float>(i % 7));
    }
    std::vector<CTrackKey*> expected = Views(row);
    std::erase_if(expected, [](const CTrackKey* key) { return key->time > 10.0f; });
    row.SetTimeRange(0.0f, 10.0f);
    EXPECT_EQ(Views(row), expected);
    EXPECT_EQ(row.keys.size(), 200U);
    std::vector<CTrackKey*> found;
    row.keys.Overlapping(0.0f, 10.0f, found);
    EXPECT_EQ(found, expected);
}

TEST_F(TrackCtrlKeysTest, DroppedViewsLeaveAnOrderThatDurationsNoLongerTell) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    for (int i = 0; i < 400; ++i) {
        AddBox(row, i % 2 == 0 ? 1.0f : 50.0f, 5.0f);
    }
    static_cast<CTimedTrackKey*>(row.keys[0])->SetDuration(0.5f, false);
    std::vector<CTrackKey*> expected = Views(row);
    std::erase_if(expected, [](const CTrackKey* key) { return key->time > 10.0f; });
    row.SetTimeRange(0.0f, 10.0f);
    EXPECT_EQ(Views(row), expected);
}

TEST_F(TrackCtrlKeysTest, SavedTimesComeBackUnlessKept) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTimedTrackKey* key = AddBox(row, 2.0f, 3.0f);
    row.SaveKeyTimes();
    EXPECT_EQ(key->savedTime, 2.0f);
    key->SetPosition(4.0f, false);
    row.RestoreKeyTimes(/*keep*/ true);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_EQ(key->savedTime, -1.0f);
    row.SaveKeyTimes();
    key->SetPosition(7.0f, false);
    row.RestoreKeyTimes(/*keep*/ false);
    EXPECT_EQ(key->time, 4.0f);
    EXPECT_EQ(key->record->time, 4.0f);
    EXPECT_EQ(key->record->endTime, 7.0f);
}

TEST_F(TrackCtrlKeysTest, NothingSavedIsNothingToGoBackTo) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    const CTrackKey* key = AddBar(row, 2.0f);
    row.RestoreKeyTimes(/*keep*/ false); // the rows were rebuilt since the drag began
    EXPECT_EQ(key->time, 2.0f);
}

TEST_F(TrackCtrlKeysTest, MarkShiftsKeysWithAnEndNearIt) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* starts = AddBox(row, 5.05f, 4.0f);
    CTrackKey* ends = AddBox(row, 1.0f, 4.05f);
    CTrackKey* around = AddBox(row, 4.0f, 2.0f);
    CTrackKey* beside = AddBox(row, 5.15f, 1.0f);
    row.ShiftKeysNear(5.0f, 6.5f);
    EXPECT_FLOAT_EQ(starts->time, 6.55f);
    EXPECT_FLOAT_EQ(starts->record->endTime, 10.55f);
    EXPECT_FLOAT_EQ(ends->time, 2.5f);
    EXPECT_EQ(around->time, 4.0f);
    EXPECT_EQ(beside->time, 5.15f);
}

TEST_F(TrackCtrlKeysTest, MarkLeavesKeysAtTheEndsOfItsReach) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    // The float 0.1 is 0.1 + 1.5e-9 and the float 0.2 is 0.2 + 3e-9: the reach is from 1.5e-9 to 0.2
    // + 1.5e-9.
    CTrackKey* before = AddBar(row, 0.0f);
    CTrackKey* inside = AddBar(row, std::nextafter(0.2f, 0.0f));
    CTrackKey* behind = AddBar(row, 0.2f);
    row.ShiftKeysNear(0.1f, 1.1f);
    EXPECT_EQ(before->time, 0.0f);
    EXPECT_NEAR(inside->time, 1.2f, 1e-6f);
    EXPECT_EQ(behind->time, 0.2f);
}

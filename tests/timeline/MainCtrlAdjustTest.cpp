#include "keys/views/TrackKey.h"
#include "tests/timeline/CommandFixture.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Times = std::pair<float, float>;

/// Insert and Static of the control, on its rows and on the film. The actor's first keys stand at 0.
class MainCtrlAdjustTest : public CommandTest {
protected:
    static Times TimesOfRecord(const IFilmKey* record) { return {record->time, record->endTime}; }
    const FilmViewSettings& Stored() const {
        return plugin.filmViewSettings[static_cast<std::size_t>(film->index)];
    }
    /// All ends of film and axis, the stored one too.
    void ExpectEnd(float seconds) const {
        EXPECT_EQ(film->length, seconds);
        EXPECT_EQ(control->movieEnd, seconds);
        EXPECT_EQ(Stored().movieEnd, seconds);
    }
    IFilmKey* AddAnimation(float time, float end) {
        IFilmKey* record = AddKey(track, KeyKind::Animation, time);
        record->SetEndTime(end);
        return record;
    }
};

} // namespace

TEST_F(MainCtrlAdjustTest, InsertMovesTheKeysOfAllRowsAndTheEnd) {
    const IFilmKey* before = Put(Row(KeyKind::Position), 4.0f)->record;
    const IFilmKey* at = Put(Row(KeyKind::Position), 5.0f)->record;
    const IFilmKey* speech = PutTimed(Row(KeyKind::Speech), 6.0f, 1.0f)->record;
    const IFilmKey* cut = PutTimed(LevelRow(KeyKind::Camera), 4.0f, 2.0f)->record;
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(before->time, 4.0f);
    EXPECT_EQ(at->time, 7.0f);
    EXPECT_EQ(TimesOfRecord(speech), Times(8.0f, 9.0f));
    EXPECT_EQ(TimesOfRecord(cut), Times(4.0f, 6.0f)); // it starts before the cursor
    ExpectEnd(12.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f, 4.0f, 7.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Speech)), ElementsAre(8.0f));
}

TEST_F(MainCtrlAdjustTest, FilmIsShownWithItsNewAxis) {
    control->InsertTime(5.0f, 2.5f);
    EXPECT_EQ(control->grid->rangeEnd, 12.5f);
    EXPECT_EQ(control->hScroll->rangeEnd, 12.5f);
    EXPECT_EQ(Row(KeyKind::Position)->rangeEnd, 12.5f);
    EXPECT_EQ(control->menuRow, nullptr);
    ExpectNothingDangles();
}

TEST_F(MainCtrlAdjustTest, ShownPartOfTheAxisStays) {
    control->InsertTime(10.0f, 14.0f);
    control->SetViewRange(3.0f, 20.0f, /*redraw*/ false); // as by the scrollbar: nothing of it is stored
    control->CalcSecondsPerPixel();
    const float scale = control->secondsPerPixel;
    control->InsertTime(5.0f, 2.0f);
    ExpectEnd(26.0f);
    EXPECT_EQ(control->viewStart, 3.0f);
    EXPECT_EQ(control->viewEnd, 20.0f);
    EXPECT_EQ(control->secondsPerPixel, scale);
    control->InsertTime(5.0f, -8.0f);
    ExpectEnd(18.0f);
    EXPECT_EQ(control->viewStart, 3.0f);
    EXPECT_EQ(control->viewEnd, 18.0f);
}

TEST_F(MainCtrlAdjustTest, StoredPartIsShownOnceTheFilmEndsBeforeTheShownOne) {
    control->InsertTime(10.0f, 14.0f);
    control->SetViewRange(12.0f, 20.0f, /*redraw*/ false);
    control->InsertTime(5.0f, -14.0f);
    ExpectEnd(10.0f);
    EXPECT_EQ(control->viewStart, 0.0f);
    EXPECT_EQ(control->viewEnd, 10.0f);
}

TEST_F(MainCtrlAdjustTest, OnlyTheMovieRangeOfTheStoredSettingsChanges) {
    FilmViewSettings& stored = plugin.filmViewSettings[static_cast<std::size_t>(film->index)];
    stored.viewStart = 1.0f;
    stored.viewEnd = 3.0f;
    stored.leftWidth = 170;
    stored.ticsDistance = 0.5f;
    stored.bigTics = 7;
    stored.cursorTime = 2.0f;
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(stored.movieStart, 0.0f);
    EXPECT_EQ(stored.movieEnd, 12.0f);
    EXPECT_EQ(stored.viewStart, 1.0f);
    EXPECT_EQ(stored.viewEnd, 3.0f);
    EXPECT_EQ(stored.leftWidth, 170);
    EXPECT_EQ(stored.ticsDistance, 0.5f);
    EXPECT_EQ(stored.bigTics, 7);
    EXPECT_EQ(stored.cursorTime, 2.0f);
    EXPECT_EQ(stored.mask, 0xFFFFFFFFu);
}

TEST_F(MainCtrlAdjustTest, AxisThatBeginsElsewhereKeepsItsBegin) {
    control->SetMovieRange(-3.0f, 10.0f);
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(Stored().movieStart, -3.0f);
    EXPECT_EQ(control->movieStart, -3.0f);
    ExpectEnd(12.0f);
}

TEST_F(MainCtrlAdjustTest, EndIsTheFilmsLengthAndMoreNotTheAxisAndMore) {
    control->SetMovieRange(0.0f, 40.0f);
    control->InsertTime(5.0f, 2.0f);
    ExpectEnd(12.0f);
    control->SetMovieRange(0.0f, 40.0f);
    control->StretchTime(5.0f, 1.0f, 2.5f);
    ExpectEnd(13.5f);
}

TEST_F(MainCtrlAdjustTest, OneRowMovesAloneYetTheFilmGetsLonger) {
    const IFilmKey* position = Put(Row(KeyKind::Position), 6.0f)->record;
    const IFilmKey* rotation = Put(Row(KeyKind::Rotation), 6.0f)->record;
    control->menuRow = Row(KeyKind::Position);
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(position->time, 8.0f);
    EXPECT_EQ(rotation->time, 6.0f);
    ExpectEnd(12.0f);
}

TEST_F(MainCtrlAdjustTest, RootRowMovesItsTrackAlone) {
    const IFilmKey* position = Put(Row(KeyKind::Position), 6.0f)->record;
    const IFilmKey* rotation = Put(Row(KeyKind::Rotation), 6.0f)->record;
    const IFilmKey* cut = PutTimed(LevelRow(KeyKind::Camera), 6.0f, 2.0f)->record;
    control->menuRow = RowOf("Crate");
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(position->time, 8.0f);
    EXPECT_EQ(rotation->time, 8.0f);
    EXPECT_EQ(cut->time, 6.0f);
}

TEST_F(MainCtrlAdjustTest, EveryCameraRowMovesItsKeysOnce) {
    std::vector<const CFilmCameraKey*> cuts;
    for (const int priority : {0, 1, 2}) {
        cuts.push_back(AddCut(film, "", 6.0f, 7.0f, priority));
    }
    control->ShowFilm(film, true);
    ASSERT_NE(RowOf("Level", KeyKind::Camera, 2), nullptr);
    control->InsertTime(5.0f, 2.0f);
    for (const CFilmCameraKey* cut : cuts) {
        EXPECT_EQ(TimesOfRecord(cut), Times(8.0f, 9.0f));
    }
    control->menuRow = RowOf("Level", KeyKind::Camera, 1);
    control->InsertTime(5.0f, 1.0f);
    EXPECT_EQ(cuts[0]->time, 8.0f);
    EXPECT_EQ(cuts[1]->time, 9.0f);
    EXPECT_EQ(cuts[2]->time, 8.0f);
}

TEST_F(MainCtrlAdjustTest, EveryCameraRowStretchesAllCameraKeys) {
    // Required: a row stretches the track's records of its kind, so three rows do it three times.
    const IFilmKey* first = AddCut(film, "", 8.0f, 9.0f, 0);
    const IFilmKey* third = AddCut(film, "", 20.0f, 21.0f, 2);
    control->ShowFilm(film, true);
    control->StretchTime(2.0f, 4.0f, 5.0f); // what starts behind 6 moves by 1
    EXPECT_EQ(TimesOfRecord(first), Times(11.0f, 12.0f));
    EXPECT_EQ(TimesOfRecord(third), Times(23.0f, 24.0f));
    control->menuRow = RowOf("Level", KeyKind::Camera, 1);
    control->StretchTime(2.0f, 4.0f, 5.0f);
    EXPECT_EQ(TimesOfRecord(first), Times(12.0f, 13.0f));
    EXPECT_EQ(TimesOfRecord(third), Times(24.0f, 25.0f));
}

TEST_F(MainCtrlAdjustTest, CameraRowCutsItsKeysToThoseOfOtherCameraRows) {
    // Required: the neighbour of each of the track's records is looked for in the row that stretches.
    const IFilmKey* first = AddCut(film, "", 8.0f, 12.0f, 0);
    const IFilmKey* second = AddCut(film, "", 9.0f, 10.0f, 1);
    control->ShowFilm(film, true);
    control->menuRow = RowOf("Level", KeyKind::Camera, 0);
    control->StretchTime(2.0f, 4.0f, 5.0f);
    EXPECT_EQ(TimesOfRecord(first), Times(9.0f, 10.0f)); // not to 13
    EXPECT_EQ(TimesOfRecord(second), Times(10.0f, 11.0f));
}

TEST_F(MainCtrlAdjustTest, EveryAnimationRowStretchesAllAnimationsButInsertMovesThemOnce) {
    const IFilmKey* stretched = AddAnimation(8.0f, 9.0f);
    control->ShowFilm(film, true);
    CTrackCtrl* part = control->AddTrackCtrl(/*redraw*/ false);
    part->kind = KeyKind::Animation;
    part->name = "Hips";
    part->track = track;
    part->parent = RowOf("Crate");
    part->parent->InsertBeforeLastAnimationRow(part);
    control->StretchTime(2.0f, 4.0f, 5.0f); // Required: once for each of the two rows.
    EXPECT_EQ(TimesOfRecord(stretched), Times(10.0f, 11.0f));
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(TimesOfRecord(stretched), Times(12.0f, 13.0f));
}

TEST_F(MainCtrlAdjustTest, StretchMakesTheFilmLongerButNeverShorter) {
    const IFilmKey* inside = Put(Row(KeyKind::Position), 4.0f)->record;
    const IFilmKey* behind = Put(Row(KeyKind::Position), 6.0f)->record;
    control->StretchTime(2.0f, 4.0f, 6.0f);
    EXPECT_EQ(inside->time, 5.0f); // 2 + 2 * 1.5
    EXPECT_EQ(behind->time, 8.0f);
    ExpectEnd(12.0f);
    control->StretchTime(2.0f, 6.0f, 3.0f);
    EXPECT_EQ(inside->time, 3.5f);
    EXPECT_EQ(behind->time, 5.0f);
    ExpectEnd(12.0f);
}

TEST_F(MainCtrlAdjustTest, StretchToTheSameLengthLeavesTheAxis) {
    control->SetMovieRange(0.0f, 20.0f);
    control->StretchTime(2.0f, 4.0f, 4.0f);
    EXPECT_EQ(control->movieEnd, 20.0f);
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(MainCtrlAdjustTest, StretchWorksInFloat32) {
    // The factor 0.9 / 0.3 is 3 - 2^-22 in float32. What lies 0.1 behind 1.1 comes 0.3 behind it, and the sum
    // is the float32 next above 1.4.
    const IFilmKey* inside = Put(Row(KeyKind::Position), 1.2f)->record;
    control->StretchTime(1.1f, 0.3f, 0.9f);
    EXPECT_EQ(inside->time, std::nextafter(1.4f, 2.0f));
}

TEST_F(MainCtrlAdjustTest, StretchOfOneRowLeavesTheOthers) {
    const IFilmKey* position = Put(Row(KeyKind::Position), 6.0f)->record;
    const IFilmKey* rotation = Put(Row(KeyKind::Rotation), 6.0f)->record;
    CTrackCtrl* row = Row(KeyKind::Position);
    control->menuRow = row;
    control->StretchTime(2.0f, 4.0f, 6.0f);
    EXPECT_EQ(position->time, 8.0f);
    EXPECT_EQ(rotation->time, 6.0f);
    ExpectEnd(12.0f);
    EXPECT_EQ(control->adjustRow, row);
}

TEST_F(MainCtrlAdjustTest, StretchDoesntShowTheFilmAnew) {
    const CTrackKey* view = Put(Row(KeyKind::Position), 6.0f);
    control->StretchTime(2.0f, 4.0f, 6.0f);
    EXPECT_EQ(view->time, 6.0f);
    EXPECT_EQ(view->record->time, 8.0f);
}

TEST_F(MainCtrlAdjustTest, StraddlingKeysByTheirKind) {
    // From 2 on, 4 seconds become 8: the interval ended at 6. Each key starts before it and ends in it;
    // speech keeps its length, the camera cut doesn't.
    const IFilmKey* speech = PutTimed(Row(KeyKind::Speech), 1.0f, 3.0f)->record;
    const IFilmKey* cut = PutTimed(LevelRow(KeyKind::Camera), 1.0f, 3.0f)->record;
    control->StretchTime(2.0f, 4.0f, 8.0f);
    EXPECT_EQ(TimesOfRecord(speech), Times(1.0f, 4.0f));
    EXPECT_EQ(TimesOfRecord(cut), Times(1.0f, 6.0f)); // 2 + 2 * 2
}

TEST_F(MainCtrlAdjustTest, DeletedTimeTakesKeysAwayAndCutsOthers) {
    const IFilmKey* speech = PutTimed(Row(KeyKind::Speech), 1.0f, 3.0f)->record;
    PutTimed(Row(KeyKind::Speech), 0.5f, 0.5f);
    Put(Row(KeyKind::Rotation), 2.0f);
    control->InsertTime(0.25f, -2.0f);
    EXPECT_EQ(TimesOfRecord(speech), Times(0.0f, 2.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Speech)), ElementsAre(0.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Rotation)), ElementsAre(0.0f)); // the first one, before the cursor
    EXPECT_EQ(KeysOf(*track, KeyKind::Rotation).size(), 1u);
    ExpectEnd(8.0f);
    ExpectNothingDangles();
}

TEST_F(MainCtrlAdjustTest, NoLengthShowsTheFilmAnew) {
    CTrackKey* key = Put(Row(KeyKind::Position), 6.0f);
    key->SetPosition(7.0f, /*viewOnly*/ true);
    control->InsertTime(5.0f, 0.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f, 6.0f));
    ExpectEnd(10.0f);
}

TEST_F(MainCtrlAdjustTest, NoLengthAtTheBeginTakesTheFirstKeysAway) {
    // Required: a key without length that ends at 0 behind the shift has fallen out.
    ASSERT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f));
    control->InsertTime(0.0f, 0.0f);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), IsEmpty());
    EXPECT_THAT(KeysOf(*track, KeyKind::Position), IsEmpty());
}

TEST_F(MainCtrlAdjustTest, FilmMayEndBeforeItBegins) {
    // Required: nothing limits the length that is deleted.
    control->InsertTime(5.0f, -15.0f);
    EXPECT_EQ(film->length, -5.0f);
    EXPECT_EQ(Stored().movieEnd, -5.0f);
    EXPECT_EQ(control->movieStart, -5.0f); // an axis runs forward
    EXPECT_EQ(control->movieEnd, 0.0f);
    control->InsertTime(5.0f, 15.0f);
    ExpectEnd(10.0f);
    Settle();
}

TEST_F(MainCtrlAdjustTest, NumbersThatArentFiniteChangeNothing) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kMost = std::numeric_limits<float>::max();
    const IFilmKey* key = Put(Row(KeyKind::Position), 6.0f)->record;
    film->length = kMost;
    control->InsertTime(0.5f, kMost);
    control->InsertTime(kNaN, 1.0f);
    control->InsertTime(0.5f, kNaN);
    control->StretchTime(0.5f, 1.0f, kMost);
    control->StretchTime(kNaN, 1.0f, 2.0f);
    EXPECT_EQ(film->length, kMost);
    EXPECT_EQ(key->time, 6.0f);
}

TEST_F(MainCtrlAdjustTest, NothingWithoutAFilm) {
    plugin.SetCurrentFilm(nullptr);
    control->InsertTime(0.0f, 2.0f);
    control->StretchTime(0.0f, 2.0f, 4.0f);
    EXPECT_EQ(film->length, 10.0f);
    EXPECT_THAT(control->tracks, IsEmpty());
}

TEST_F(MainCtrlAdjustTest, AttributesWindowComesBackToItsKey) {
    const IFilmKey* record = Put(Row(KeyKind::Position), 6.0f)->record;
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    control->SelectOnly(control->FindRowOfKey(record)->KeyAtTime(6.0f));
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(attributes.record, record);
    EXPECT_EQ(attributes.key, Row(KeyKind::Position)->KeyAtTime(8.0f));
    EXPECT_EQ(record->time, 8.0f);
}

TEST_F(MainCtrlAdjustTest, RowThatGoesWhileTheAttributesAskIsNotTakenForAll) {
    const IFilmKey* record = Put(Row(KeyKind::Position), 6.0f)->record;
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    control->SelectOnly(Row(KeyKind::Position)->KeyAtTime(6.0f));
    ASSERT_EQ(attributes.record, record);
    control->menuRow = Row(KeyKind::Rotation);
    attributes.onApplyPending = [&] {
        attributes.onApplyPending = nullptr;
        control->ShowFilm(film, true);
    };
    control->InsertTime(5.0f, 2.0f);
    EXPECT_EQ(record->time, 6.0f);
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(MainCtrlAdjustTest, AttributesWindowLetsGoOfAKeyThatFellOut) {
    Put(Row(KeyKind::Position), 6.0f);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    control->SelectOnly(Row(KeyKind::Position)->KeyAtTime(6.0f));
    control->InsertTime(5.0f, -8.0f);
    EXPECT_EQ(attributes.record, nullptr);
    EXPECT_EQ(attributes.key, nullptr);
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(0.0f));
    ExpectNothingDangles();
}

TEST_F(MainCtrlAdjustTest, EveryHolderLetsGoOfKeysThatFellOut) {
    CTrackKey* key = Put(Row(KeyKind::Position), 6.0f);
    control->menuKey = key;
    control->hoverKey = key;
    control->activeKey = key;
    CurrentKey() = key;
    control->keyDuplicator.Set(key, Row(KeyKind::Position), false);
    control->SelectOnly(key);
    control->InsertTime(5.0f, -8.0f);
    ExpectNothingDangles();
    EXPECT_EQ(control->keyDuplicator.sourceKey, nullptr);
    EXPECT_THAT(control->selectedKeys, IsEmpty());
}

#include "tests/support/FakeAttributes.h"
#include "tests/timeline/TrackCtrlFixture.h"
#include "undo/KeyActions.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Times = std::pair<float, float>;

struct Shift {
    Times from;
    std::optional<Times> to; ///< nothing: the key has fallen out
};

class TrackCtrlShiftTest : public TrackCtrlTest {
protected:
    /// A track that can hold a kind.
    CFilmTrack* TrackFor(int kind) {
        switch (kind) {
        case KeyKind::Camera:
        case KeyKind::FxRain:
        case KeyKind::FxBlind:
        case KeyKind::Sound:
            return film->mainTrack;
        case KeyKind::CameraPosition:
        case KeyKind::CameraTarget:
        case KeyKind::Roll:
        case KeyKind::FieldOfView:
            return AddCamera(film, "Eye");
        case KeyKind::Color: {
            CFilmTrack* light = film->CreateGLLightTrack();
            film->AddTrack(light);
            return light;
        }
        default:
            return boxTrack;
        }
    }
    CTrackCtrl& RowFor(int kind) {
        CTrackCtrl& row = MakeRow(kind, TrackFor(kind));
        row.name = "Animation keys"; // those of the whole object
        row.subIndex = 0;
        return row;
    }
    /// A key in the row's track with its view.
    CTrackKey* Put(CTrackCtrl& row, float time, float end) {
        IFilmKey* record = AddKey(row.track, row.kind, time);
        record->SetEndTime(end);
        std::unique_ptr<CTrackKey> view;
        if ((record->flags & KeyFlag::NoDuration) != 0) {
            view = std::make_unique<CNullTimeTrackKey>();
        } else {
            view = std::make_unique<CTimedTrackKey>();
        }
        view->SetRecord(record, /*takeTimes*/ true);
        EXPECT_TRUE(row.AddKeyView(view.get(), /*redraw*/ false, /*existing*/ true, /*noUndo*/ true));
        Unselect();
        return view.release();
    }
    /// Puts the keys into a row of the kind, shifts it and looks at each.
    void ExpectShifts(int kind, float time, float delta, const std::vector<Shift>& shifts) {
        CTrackCtrl& row = RowFor(kind);
        std::vector<CTrackKey*> views;
        views.reserve(shifts.size());
        for (const Shift& shift : shifts) {
            views.push_back(Put(row, shift.from.first, shift.from.second));
        }
        row.ShiftKeys(time, delta);
        for (std::size_t i = 0; i < shifts.size(); ++i) {
            const IFilmKey& record = *views[i]->record;
            EXPECT_EQ(Times(record.time, record.endTime), shifts[i].to.value_or(shifts[i].from)) << i;
            EXPECT_EQ(row.keys.Contains(views[i]), shifts[i].to.has_value()) << i;
            EXPECT_EQ(record.track, shifts[i].to ? row.track : nullptr) << i;
        }
    }
    std::vector<const CFUADeleteKey*> Deletions() const {
        std::vector<const CFUADeleteKey*> found;
        for (CFilmsUndoAction* action : timeline.undoMgr.retired.Actions()) {
            if (const auto* deletion = dynamic_cast<const CFUADeleteKey*>(action)) {
                found.push_back(deletion);
            }
        }
        return found;
    }
};

class TimedKindShiftTest : public TrackCtrlShiftTest, public ::testing::WithParamInterface<int> {};
class MomentKindShiftTest : public TrackCtrlShiftTest, public ::testing::WithParamInterface<int> {};

} // namespace

TEST_P(TimedKindShiftTest, InsertedTimeMovesWhatStartsAtItOrLater) {
    ExpectShifts(GetParam(), 4.0f, 1.5f,
                 {{{1, 2}, Times{1, 2}},
                  {{2, 4}, Times{2, 4}},           // up to the cursor
                  {{3, 5}, Times{3, 5}},           // across it
                  {{3.999f, 9}, Times{3.999f, 9}}, // just before it
                  {{4, 4.5f}, Times{5.5f, 6}},     // at it
                  {{7, 9}, Times{8.5f, 10.5f}},
                  {{7, 7}, Times{8.5f, 8.5f}}});
}

TEST_P(TimedKindShiftTest, DeletedTimeCutsAndDrops) {
    ExpectShifts(GetParam(), 4.0f, -5.0f,
                 {{{3, 9}, Times{3, 9}}, // reaches into the deleted time, and stays
                  {{4, 4.5f}, std::nullopt},
                  {{4.5f, 5}, std::nullopt}, // would end at 0
                  {{4.25f, 7}, Times{0, 2}},
                  {{4.75f, 5.0005f}, Times{0, 0.001f}},
                  {{5, 6}, Times{0, 1}},
                  {{5.5f, 6}, Times{0.5f, 1}}});
}

INSTANTIATE_TEST_SUITE_P(Kinds, TimedKindShiftTest, ::testing::Range(0, 10));

TEST_P(MomentKindShiftTest, InsertedTimeMovesWhatStandsAtItOrLater) {
    // Their records' ends may say anything, and follow.
    ExpectShifts(GetParam(), 4.0f, 1.5f,
                 {{{2, 9}, Times{2, 9}}, {{4, 0}, Times{5.5f, 5.5f}}, {{7, 99}, Times{8.5f, 8.5f}}});
}

TEST_P(MomentKindShiftTest, DeletedTimeDropsWhatComesToTheBegin) {
    ExpectShifts(GetParam(), 4.0f, -5.0f,
                 {{{3, 3}, Times{3, 3}},
                  {{4, 4}, std::nullopt},
                  {{4.5f, 99}, std::nullopt}, // the end says otherwise
                  {{5, 5}, std::nullopt},     // Required: 0 is behind the begin only for what has a length.
                  {{5.5f, 0}, Times{0.5f, 0.5f}}});
}

INSTANTIATE_TEST_SUITE_P(Kinds, MomentKindShiftTest, ::testing::Range(10, 20));

TEST_F(TrackCtrlShiftTest, TimesAreFloat32) {
    ExpectShifts(KeyKind::Speech, 2.1f, 0.7f, {{{2.1f, 3.3f}, Times{2.8f, 4.0f}}});
}

TEST_F(TrackCtrlShiftTest, KeyAtTheBeginThatIsntMovedFallsOutToo) {
    // Required: as with any other shift by which it ends at 0.
    ExpectShifts(KeyKind::Position, 0.0f, 0.0f, {{{0, 0}, std::nullopt}, {{1, 1}, Times{1, 1}}});
}

TEST_F(TrackCtrlShiftTest, ViewsKeepTheirTimesUntilTheFilmIsShownAgain) {
    CTrackCtrl& row = RowFor(KeyKind::Speech);
    const CTrackKey* view = Put(row, 4, 5);
    row.ShiftKeys(0.0f, 2.0f);
    EXPECT_EQ(view->time, 4.0f);
    EXPECT_EQ(view->record->time, 6.0f);
}

TEST_F(TrackCtrlShiftTest, RecordsNotViewsTellWhatIsShifted) {
    CTrackCtrl& row = RowFor(KeyKind::Speech);
    const CTrackKey* view = Put(row, 4, 5);
    view->record->SetTime(2.0f);
    view->record->SetEndTime(3.0f);
    row.ShiftKeys(3.0f, 2.0f);
    EXPECT_EQ(view->record->time, 2.0f);
}

TEST_F(TrackCtrlShiftTest, KeysOfAnotherKindAndWithoutARecordStay) {
    CTrackCtrl& row = RowFor(KeyKind::Speech);
    IFilmKey* foreign = AddKey(boxTrack, KeyKind::Animation, 4.0f);
    auto view = std::make_unique<CTimedTrackKey>();
    view->SetRecord(foreign, /*takeTimes*/ true);
    row.keys.Insert(view.release());
    row.keys.Insert(new CTimedTrackKey);
    row.ShiftKeys(0.0f, 2.0f);
    EXPECT_EQ(foreign->time, 4.0f);
    EXPECT_EQ(row.keys.size(), 2u);
}

TEST_F(TrackCtrlShiftTest, OnlyTheRowsOwnKeysMove) {
    CTrackCtrl& first = RowFor(KeyKind::Camera);
    CTrackCtrl& second = RowFor(KeyKind::Camera);
    second.subIndex = 1;
    const CTrackKey* inFirst = Put(first, 4, 5);
    IFilmKey* record = AddCut(film, "", 4, 5, /*priority*/ 1);
    auto view = std::make_unique<CTimedTrackKey>();
    view->SetRecord(record, /*takeTimes*/ true);
    ASSERT_TRUE(second.AddKeyView(view.release(), false, /*existing*/ true, true));
    first.ShiftKeys(0.0f, 2.0f);
    EXPECT_EQ(inFirst->record->time, 6.0f);
    EXPECT_EQ(record->time, 4.0f);
}

TEST_F(TrackCtrlShiftTest, RootRowAsksItsChildren) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackCtrl* position = root.FindChild(KeyKind::Position, -2);
    CTrackCtrl* speech = root.FindChild(KeyKind::Speech, -2);
    const CTrackKey* bar = Put(*position, 4, 4);
    const CTrackKey* voice = Put(*speech, 4, 5);
    root.ShiftKeys(0.0f, 2.0f);
    EXPECT_EQ(bar->record->time, 6.0f);
    EXPECT_EQ(voice->record->time, 6.0f);
    EXPECT_EQ(voice->record->endTime, 7.0f);
}

TEST_F(TrackCtrlShiftTest, KeyThatFallsOutIsRemovedWithUndo) {
    CTrackCtrl& row = RowFor(KeyKind::Position);
    CTrackKey* gone = Put(row, 5, 5);
    CTrackKey* staying = Put(row, 8, 8);
    row.ShiftKeys(5.0f, -6.0f);
    EXPECT_THAT(std::vector<CTrackKey*>(row.keys.begin(), row.keys.end()), ElementsAre(staying));
    const std::vector<const CFUADeleteKey*> deletions = Deletions();
    ASSERT_EQ(deletions.size(), 1u);
    EXPECT_EQ(deletions[0]->key, gone);
    EXPECT_EQ(deletions[0]->trackCtrl, &row);
    EXPECT_EQ(deletions[0]->type, UndoCode::DeleteKey);
    EXPECT_TRUE(deletions[0]->ownsKey);
    EXPECT_EQ(gone->record->time, 5.0f); // as it was
}

TEST_F(TrackCtrlShiftTest, SelectedKeyThatFallsOutIsDeselected) {
    CTrackCtrl& row = RowFor(KeyKind::Position);
    CTrackKey* gone = Put(row, 5, 5);
    CTrackKey* staying = Put(row, 8, 8);
    for (CTrackKey* key : {gone, staying}) {
        key->SetSelected(true);
        timeline.selectedKeys.push_back(key);
    }
    row.ShiftKeys(5.0f, -6.0f);
    EXPECT_THAT(timeline.selectedKeys, ElementsAre(staying));
    EXPECT_FALSE(gone->selected);
    EXPECT_TRUE(staying->selected);
}

TEST_F(TrackCtrlShiftTest, RowsThatGoWhileAKeyIsDeselectedAreLeftAlone) {
    CTrackCtrl& row = RowFor(KeyKind::Position);
    CTrackKey* first = Put(row, 5, 5);
    Put(row, 5.5f, 5.5f);
    first->SetSelected(true);
    timeline.selectedKeys.push_back(first);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    attributes.onSetKey = [&] {
        attributes.onSetKey = nullptr;
        attributes.key = nullptr;
        attributes.record = nullptr;
        timeline.selectedKeys.clear();
        timeline.rows.clear();
    };
    row.ShiftKeys(5.0f, -6.0f);
    EXPECT_TRUE(timeline.rows.empty());
    EXPECT_THAT(Deletions(), IsEmpty());
}

TEST_F(TrackCtrlShiftTest, WrittenRecordIsTold) {
    CTrackCtrl& row = RowFor(KeyKind::Speech);
    const CTrackKey* moved = Put(row, 5, 6);
    const CTrackKey* before = Put(row, 1, 2);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.record = moved->record;
    row.ShiftKeys(3.0f, 1.0f);
    EXPECT_THAT(attributes.log, ElementsAre("Refresh"));
    attributes.log.clear();
    attributes.record = before->record;
    row.ShiftKeys(3.0f, 1.0f);
    EXPECT_THAT(attributes.log, IsEmpty());
}

TEST_F(TrackCtrlShiftTest, TimesThatWouldntBeFiniteStay) {
    constexpr float kMost = std::numeric_limits<float>::max();
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    CTrackCtrl& row = RowFor(KeyKind::Speech);
    const CTrackKey* key = Put(row, kMost, kMost);
    for (const float delta : {kMost, kNaN, -std::numeric_limits<float>::infinity()}) {
        row.ShiftKeys(0.0f, delta);
        EXPECT_EQ(key->record->time, kMost);
        EXPECT_EQ(key->record->endTime, kMost);
    }
    row.ShiftKeys(kNaN, -1.0f);
    EXPECT_EQ(key->record->time, kMost);
    EXPECT_EQ(row.keys.size(), 1u);
}

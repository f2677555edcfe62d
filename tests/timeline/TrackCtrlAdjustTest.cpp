#include "tests/support/FakeAttributes.h"
#include "tests/timeline/TrackCtrlFixture.h"

#include <limits>
#include <utility>

namespace {

using Times = std::vector<std::pair<float, float>>;

/// An interval of 8 seconds from 10 on that becomes 4 seconds long.
class TrackCtrlAdjustTest : public TrackCtrlTest {
protected:
    IFilmKey* AddRecord(CFilmTrack* track, int kind, float time, float end) {
        IFilmKey* record = AddKey(track, kind, time);
        record->SetTime(time);
        record->SetEndTime(end);
        return record;
    }
    /// A row of the kind with the records' views.
    CTrackCtrl& RowWith(int kind, const std::vector<IFilmKey*>& records) {
        CTrackCtrl& row = MakeRow(kind, boxTrack);
        row.name = "Animation keys";
        for (IFilmKey* record : records) {
            auto view = std::make_unique<CTimedTrackKey>();
            view->SetRecord(record, /*takeTimes*/ true);
            EXPECT_TRUE(row.AddKeyView(view.release(), false, true, true));
        }
        return row;
    }
    static Times TimesOf(const std::vector<IFilmKey*>& records) {
        Times times;
        for (const IFilmKey* record : records) {
            times.emplace_back(record->time, record->endTime);
        }
        return times;
    }
};

} // namespace

TEST_F(TrackCtrlAdjustTest, EffectsAreScaled) {
    const std::vector<IFilmKey*> records{
        AddRecord(boxTrack, KeyKind::FxSequence, 2, 14), AddRecord(boxTrack, KeyKind::FxSequence, 14, 16),
        AddRecord(boxTrack, KeyKind::FxSequence, 17, 20), AddRecord(boxTrack, KeyKind::FxSequence, 30, 31)};
    CTrackCtrl& row = RowWith(KeyKind::FxSequence, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{2, 12}, {12, 13}, {13.5f, 16}, {26, 27}}));
    EXPECT_EQ(row.keys.front()->time, 2.0f);
    EXPECT_EQ(row.keys.front()->GetDuration(), 12.0f); // views wait until the film is shown again
}

TEST_F(TrackCtrlAdjustTest, RecordsThatTouchALimitAreNeitherInsideNorOutside) {
    const std::pair<Times::value_type, Times::value_type> cases[] = {
        {{2, 18}, {2, 18}},   {{14, 18}, {14, 18}}, {{10, 15}, {10, 15}},
        {{10, 18}, {10, 18}}, {{10, 20}, {10, 20}}, {{18, 20}, {14, 16}},
    };
    CTrackCtrl& row = RowWith(KeyKind::FxSequence, {});
    for (const auto& [before, after] : cases) {
        IFilmKey* record = AddRecord(boxTrack, KeyKind::FxSequence, before.first, before.second);
        row.AdjustKeys(10.0f, 8.0f, 4.0f);
        EXPECT_EQ(TimesOf({record}), Times{after}) << before.first << " to " << before.second;
        boxTrack->RemoveKey(record, /*destroy*/ true);
    }
}

TEST_F(TrackCtrlAdjustTest, MomentAtTheEndOfTheIntervalMovesAndOneAtItsStartStays) {
    IFilmKey* start = AddRecord(boxTrack, KeyKind::Flags, 10, 10);
    IFilmKey* end = AddRecord(boxTrack, KeyKind::Flags, 18, 18);
    RowWith(KeyKind::Flags, {}).AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(start->time, 10.0f);
    EXPECT_EQ(end->time, 14.0f);
}

TEST_F(TrackCtrlAdjustTest, WhatPlaysKeepsItsLength) {
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::Animation, 14, 15),
                                         AddRecord(boxTrack, KeyKind::Animation, 17, 20)};
    CTrackCtrl& row = RowWith(KeyKind::Animation, {});
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{12, 13}, {13.5f, 16.5f}}));
}

TEST_F(TrackCtrlAdjustTest, KindsChooseTheRule) {
    // 14 to 16 inside the interval: scaled to 1 second, kept at 2, or a moment whose end stays.
    const auto endOf = [this](int kind) {
        const bool isFilmWide = kind == KeyKind::Camera || kind == KeyKind::FxRain ||
                                kind == KeyKind::FxBlind || kind == KeyKind::Sound;
        CFilmTrack* track = isFilmWide ? film->mainTrack : boxTrack;
        if (kind >= KeyKind::CameraPosition) {
            track = AddCamera(film, "Eye" + std::to_string(kind));
        }
        IFilmKey* record = Films().keyFactory->CreateKey(kind);
        EXPECT_TRUE(track->AddKey(record)) << kind;
        record->SetTime(14.0f);
        record->SetEndTime(16.0f);
        CTrackCtrl& row = MakeRow(kind, track);
        row.AdjustKeys(10.0f, 8.0f, 4.0f);
        EXPECT_EQ(record->time, 12.0f) << kind;
        return record->endTime;
    };
    for (const int kind : {0, 2, 3, 4, 5, 6, 7}) {
        EXPECT_EQ(endOf(kind), 13.0f) << kind;
    }
    for (const int kind : {1, 8, 9}) {
        EXPECT_EQ(endOf(kind), 14.0f) << kind;
    }
    for (const int kind : {10, 11, 12, 13, 15, 16, 17, 18, 19}) {
        EXPECT_EQ(endOf(kind), 16.0f) << kind;
    }
}

TEST_F(TrackCtrlAdjustTest, OnlyRecordsOfTheRowsKindChange) {
    const IFilmKey* sequence = AddRecord(boxTrack, KeyKind::FxSequence, 30, 31);
    const IFilmKey* particle = AddRecord(boxTrack, KeyKind::FxParticle, 30, 31);
    MakeRow(KeyKind::FxSequence, boxTrack).AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(sequence->time, 26.0f);
    EXPECT_EQ(particle->time, 30.0f);
}

TEST_F(TrackCtrlAdjustTest, RootRowAsksItsChildren) {
    CTrackCtrl& root = MakeTree(boxTrack);
    const IFilmKey* rotation = AddRecord(boxTrack, KeyKind::Rotation, 30, 30);
    const IFilmKey* speech = AddRecord(boxTrack, KeyKind::Speech, 30, 31);
    root.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(rotation->time, 26.0f);
    EXPECT_EQ(rotation->endTime, 30.0f); // a moment's end isn't set
    EXPECT_EQ(speech->time, 26.0f);
    EXPECT_EQ(speech->endTime, 27.0f);
}

TEST_F(TrackCtrlAdjustTest, RowsOfOneKindAdjustTheTracksRecordsOnceEach) {
    CTrackCtrl& root = MakeTree(boxTrack);
    CTrackCtrl& second = MakeRow(KeyKind::Animation);
    second.name = "Arm";
    second.track = boxTrack;
    root.children.push_back(&second);
    const IFilmKey* record = AddRecord(boxTrack, KeyKind::Animation, 40, 41);
    root.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(record->time, 32.0f);
}

TEST_F(TrackCtrlAdjustTest, NeighbourBeforeIsCutToTheRecord) {
    // The first one's end isn't moved, since it starts where the interval does.
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::Animation, 10, 14),
                                         AddRecord(boxTrack, KeyKind::Animation, 14, 15)};
    CTrackCtrl& row = RowWith(KeyKind::Animation, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{10, 12}, {12, 13}}));
}

TEST_F(TrackCtrlAdjustTest, KeyThatMayOverlapCutsNoNeighbour) {
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::Animation, 10, 14),
                                         AddRecord(boxTrack, KeyKind::Animation, 14, 15)};
    records[1]->flags |= KeyFlag::MayOverlap;
    CTrackCtrl& row = RowWith(KeyKind::Animation, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{10, 14}, {12, 13}}));
}

TEST_F(TrackCtrlAdjustTest, NeighbourIsTheOneThatTheViewsTellByTheirOldTimes) {
    // The last record comes to 13. Its neighbour by the views is the second, which stood at 12 and now
    // stands at 11, and not itself or the third, whose view stands at 14.
    const std::vector<IFilmKey*> records{
        AddRecord(boxTrack, KeyKind::Animation, 2, 3), AddRecord(boxTrack, KeyKind::Animation, 12, 15),
        AddRecord(boxTrack, KeyKind::Animation, 14, 15), AddRecord(boxTrack, KeyKind::Animation, 16, 17)};
    CTrackCtrl& row = RowWith(KeyKind::Animation, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    // The second: 11 to 14; the third, at 12 now, finds none but the first; the fourth cuts the second to 13.
    EXPECT_EQ(TimesOf(records), (Times{{2, 3}, {11, 13}, {12, 13}, {13, 14}}));
}

TEST_F(TrackCtrlAdjustTest, NeighbourIsCutWhenAllHaveMoved) {
    // 8 seconds become 16, a factor of 2. The first comes to 16 and its neighbour by the views is the second,
    // whose view stands at 14. That one has gone on to 18, behind it, and keeps its length.
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::Animation, 13, 13.5f),
                                         AddRecord(boxTrack, KeyKind::Animation, 14, 17)};
    CTrackCtrl& row = RowWith(KeyKind::Animation, records);
    row.AdjustKeys(10.0f, 8.0f, 16.0f);
    EXPECT_EQ(TimesOf(records), (Times{{16, 16.5f}, {18, 21}}));
}

TEST_F(TrackCtrlAdjustTest, NoNeighbourEndsBeforeItStarts) {
    // Behind the interval all move by 8. The first comes to 38; the nearest view before that is the third's,
    // at 37, which stands at 45 now.
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::FxSequence, 30, 31),
                                         AddRecord(boxTrack, KeyKind::FxSequence, 33, 36),
                                         AddRecord(boxTrack, KeyKind::FxSequence, 37, 39)};
    CTrackCtrl& row = RowWith(KeyKind::FxSequence, records);
    row.AdjustKeys(10.0f, 8.0f, 16.0f);
    EXPECT_EQ(TimesOf(records), (Times{{38, 39}, {41, 44}, {45, 47}}));
}

TEST_F(TrackCtrlAdjustTest, KeyWithoutADurationEndsWhereItStands) {
    // The end of the first is stale: it lies before the interval and stays, and is no neighbour that reaches
    // on.
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::FxSequence, 2, 40),
                                         AddRecord(boxTrack, KeyKind::FxSequence, 14, 0)};
    for (IFilmKey* record : records) {
        record->flags |= KeyFlag::NoDuration;
    }
    CTrackCtrl& row = RowWith(KeyKind::FxSequence, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{2, 40}, {12, 12}}));
}

TEST_F(TrackCtrlAdjustTest, SumsRunFromLeftToRight) {
    // From 2 to the power 24 on a float32 knows every second number; half way between it takes the one whose
    // half is even.
    const IFilmKey* across = AddRecord(boxTrack, KeyKind::Animation, 16777218, 16777224);
    MakeRow(KeyKind::Animation, boxTrack).AdjustKeys(16777216.0f, 4.0f, 2.0f);
    EXPECT_EQ(across->time, 16777216.0f);    // 1 + 16777216
    EXPECT_EQ(across->endTime, 16777224.0f); // 1 + 6 + 16777216, where 1 + 16777216 + 6 is 16777222
    const IFilmKey* behind = AddRecord(boxTrack, KeyKind::FxSequence, 16777220, 16777228);
    MakeRow(KeyKind::FxSequence, boxTrack).AdjustKeys(0.0f, 3.0f, 1.0f);
    EXPECT_EQ(behind->time, 16777216.0f); // 16777221 is 16777220, and that less 3 is 16777216
    EXPECT_EQ(behind->endTime, 16777224.0f);
}

TEST_F(TrackCtrlAdjustTest, WrittenRecordIsTold) {
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    for (const int kind : {KeyKind::Speech, KeyKind::Rotation}) {
        attributes.record = AddRecord(boxTrack, kind, 30, 31);
        attributes.log.clear();
        MakeRow(kind, boxTrack).AdjustKeys(10.0f, 8.0f, 4.0f);
        EXPECT_EQ(attributes.log, std::vector<std::string>{"Refresh"}) << kind;
    }
}

TEST_F(TrackCtrlAdjustTest, RecordBeforeTheIntervalCutsNoNeighbour) {
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::Animation, 2, 6),
                                         AddRecord(boxTrack, KeyKind::Animation, 4, 5)};
    CTrackCtrl& row = RowWith(KeyKind::Animation, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{2, 6}, {4, 5}}));
}

TEST_F(TrackCtrlAdjustTest, RecordUpToTheIntervalCutsItsNeighbour) {
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::Animation, 2, 6),
                                         AddRecord(boxTrack, KeyKind::Animation, 4, 10)};
    CTrackCtrl& row = RowWith(KeyKind::Animation, records);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{2, 4}, {4, 10}}));
}

TEST_F(TrackCtrlAdjustTest, ViewsWithoutARecordAreNoNeighbours) {
    IFilmKey* record = AddRecord(boxTrack, KeyKind::Animation, 14, 15);
    CTrackCtrl& row = RowWith(KeyKind::Animation, {record});
    row.keys.Insert(new CTimedTrackKey); // at 0 seconds
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(record->time, 12.0f);
}

TEST_F(TrackCtrlAdjustTest, IntervalOfNoLengthPushesWhatLiesBehind) {
    const std::vector<IFilmKey*> records{AddRecord(boxTrack, KeyKind::FxSequence, 10, 11),
                                         AddRecord(boxTrack, KeyKind::FxSequence, 12, 13)};
    MakeRow(KeyKind::FxSequence, boxTrack).AdjustKeys(10.0f, 0.0f, 4.0f);
    EXPECT_EQ(TimesOf(records), (Times{{10, 11}, {16, 17}}));
}

TEST_F(TrackCtrlAdjustTest, NumbersThatArentFiniteChangeNothing) {
    const IFilmKey* record = AddRecord(boxTrack, KeyKind::FxSequence, 12, 13);
    CTrackCtrl& row = MakeRow(KeyKind::FxSequence, boxTrack);
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    row.AdjustKeys(kNaN, 8.0f, 4.0f);
    row.AdjustKeys(10.0f, kInfinity, 4.0f);
    row.AdjustKeys(10.0f, 8.0f, kNaN);
    EXPECT_EQ(record->time, 12.0f);
    EXPECT_EQ(record->endTime, 13.0f);
}

TEST_F(TrackCtrlAdjustTest, RowWithoutATrackDoesNothing) {
    CTrackCtrl& row = MakeRow(KeyKind::FxSequence);
    const CTrackKey* key = AddBox(row, 20.0f, 1.0f);
    row.AdjustKeys(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(key->record->time, 20.0f);
}

#include "keys/views/TrackKey.h"

#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "tests/keys/KeyFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What both kinds of view have in common, on one without a duration.
class TrackKeyTest : public KeyTest {
protected:
    TrackKeyTest() {
        view.time = 3.0f;
        view.context = &timeline;
    }

    CNullTimeTrackKey view;
    LoggingKey record;
};

TEST_F(TrackKeyTest, SelectionShowsInTheState) {
    view.SetSelected(true);
    EXPECT_TRUE(view.selected);
    EXPECT_EQ(view.state, CTrackKey::kHighlighted);
    view.SetSelected(false);
    EXPECT_FALSE(view.selected);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
}

TEST_F(TrackKeyTest, HiddenViewStaysHiddenThroughSelection) {
    OpenAttributes();
    view.state = CTrackKey::kHidden;
    view.SetSelected(true);
    EXPECT_TRUE(view.selected);
    EXPECT_EQ(view.state, CTrackKey::kHidden);
    view.SetSelected(false);
    EXPECT_FALSE(view.selected);
    EXPECT_EQ(view.state, CTrackKey::kHidden);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TrackKeyTest, VisibleAttributesWindowIsToldOfEachSelectionChange) {
    FakeAttributes& dialog = OpenAttributes();
    view.SetSelected(true);
    EXPECT_EQ(dialog.key, &view);
    view.SetSelected(false);
    EXPECT_THAT(calls, ElementsAre("SetKey key", "SetKey key"));
}

TEST_F(TrackKeyTest, HiddenAttributesWindowIsNotTold) {
    OpenAttributes().visible = false;
    view.SetSelected(true);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TrackKeyTest, AttributesWindowIsNotToldWhileRowsAreRebuilt) {
    OpenAttributes();
    timeline.rebuilding = true;
    view.SetSelected(true);
    EXPECT_TRUE(view.selected);
    EXPECT_EQ(view.state, CTrackKey::kHighlighted);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TrackKeyTest, SelectionMakesNoAttributesWindow) {
    plugin.makeKeyAttributesDlg = [](IPluginImpl&) -> std::unique_ptr<IKeyAttributesDlg> {
        ADD_FAILURE() << "made";
        return nullptr;
    };
    view.SetSelected(true);
    view.OnDoubleClick();
    EXPECT_EQ(plugin.keyAttributesDlg, nullptr);
}

TEST_F(TrackKeyTest, DoubleClickOpensTheAttributes) {
    FakeAttributes& dialog = OpenAttributes();
    dialog.visible = false;
    view.OnDoubleClick();
    EXPECT_EQ(dialog.key, &view);
    EXPECT_THAT(calls, ElementsAre("SetKey key", "Show 5"));
}

TEST_F(TrackKeyTest, DoubleClickLeavesALockedAttributesWindow) {
    OpenAttributes().locked = true;
    view.OnDoubleClick();
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TrackKeyTest, OnlyATimedKeyBecomesActiveByADoubleClick) {
    OpenAttributes().locked = true;
    view.OnDoubleClick();
    EXPECT_EQ(timeline.activeKey, nullptr);
    CTimedTrackKey timed;
    timed.context = &timeline;
    timed.OnDoubleClick();
    EXPECT_EQ(timeline.activeKey, &timed);
}

TEST_F(TrackKeyTest, PressMakesTheKeyActive) {
    view.OnLButtonDown(10, 20, 30.0f, CPoint(11, 22), 3.5f);
    EXPECT_EQ(timeline.activeKey, &view);
}

TEST_F(TrackKeyTest, ViewWorksWithoutAMainControl) {
    view.context = nullptr;
    view.SetSelected(true);
    view.OnDoubleClick();
    view.OnLButtonDown(10, 20, 30.0f, CPoint(11, 22), 3.5f);
    EXPECT_EQ(view.state, CTrackKey::kHighlighted);
}

TEST_F(TrackKeyTest, MoveGoesToTheRecordToo) {
    view.record = &record;
    view.SetPosition(4.0f, /*viewOnly*/ false);
    EXPECT_EQ(view.time, 4.0f);
    EXPECT_THAT(record.log, ElementsAre("SetTime 4", "SetEndTime 4"));
}

TEST_F(TrackKeyTest, MoveOfTheViewAloneLeavesTheRecord) {
    view.record = &record;
    view.SetPosition(4.0f, /*viewOnly*/ true);
    EXPECT_EQ(view.time, 4.0f);
    EXPECT_THAT(record.log, IsEmpty());
}

TEST_F(TrackKeyTest, ViewWithoutARecordMoves) {
    view.SetPosition(4.0f, /*viewOnly*/ false);
    EXPECT_EQ(view.time, 4.0f);
}

TEST_F(TrackKeyTest, HiddenViewMoves) {
    view.state = CTrackKey::kHidden;
    view.record = &record;
    view.SetPosition(4.0f, /*viewOnly*/ false);
    EXPECT_THAT(record.log, ElementsAre("SetTime 4", "SetEndTime 4"));
}

TEST_F(TrackKeyTest, SavedTimeComesBack) {
    view.record = &record;
    view.SaveTime();
    EXPECT_EQ(view.savedTime, 3.0f);
    view.SetPosition(9.0f, /*viewOnly*/ true);
    view.RestoreTime(/*keep*/ false);
    EXPECT_EQ(view.time, 3.0f);
    EXPECT_EQ(view.savedTime, -1.0f);
    EXPECT_THAT(record.log, ElementsAre("SetTime 3", "SetEndTime 3"));
}

TEST_F(TrackKeyTest, KeptTimeForgetsTheSavedOne) {
    view.record = &record;
    view.SaveTime();
    view.SetPosition(9.0f, /*viewOnly*/ true);
    view.RestoreTime(/*keep*/ true);
    EXPECT_EQ(view.time, 9.0f);
    EXPECT_EQ(view.savedTime, -1.0f);
    EXPECT_THAT(record.log, IsEmpty());
}

// Odd, but the text of the contract: nothing saved is a time like any other.
TEST_F(TrackKeyTest, RestoreWithoutASavedTimeMovesToMinusOne) {
    view.record = &record;
    view.RestoreTime(/*keep*/ false);
    EXPECT_EQ(view.time, -1.0f);
    EXPECT_THAT(record.log, ElementsAre("SetTime -1", "SetEndTime -1"));
}

KeyKindParams Params(int height, bool visible) {
    KeyKindParams params;
    params.normalColor = 0x111111;
    params.highlightColor = 0x222222;
    params.rectHeight = height;
    params.visible = visible;
    return params;
}

TEST_F(TrackKeyTest, ParametersGiveColoursAndHeight) {
    const KeyKindParams params = Params(9, true);
    view.ApplyKeyParams(&params);
    EXPECT_EQ(view.normalColor, 0x111111u);
    EXPECT_EQ(view.highlightColor, 0x222222u);
    EXPECT_EQ(view.rectHeight, 9);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
}

TEST_F(TrackKeyTest, ParametersWithANegativeHeightKeepTheOwn) {
    KeyKindParams params = Params(-1, true);
    view.ApplyKeyParams(&params);
    EXPECT_EQ(view.rectHeight, 15);
    params.rectHeight = 0;
    view.ApplyKeyParams(&params);
    EXPECT_EQ(view.rectHeight, 0);
}

TEST_F(TrackKeyTest, ParametersHideAndShowTheKey) {
    const KeyKindParams hidden = Params(9, false);
    view.SetSelected(true);
    view.ApplyKeyParams(&hidden);
    EXPECT_EQ(view.state, CTrackKey::kHidden);
    EXPECT_TRUE(view.selected);
    const KeyKindParams shown = Params(9, true);
    view.ApplyKeyParams(&shown);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
}

TEST_F(TrackKeyTest, ParametersTakeTheHighlightButNotTheSelection) {
    const KeyKindParams params = Params(9, true);
    view.SetSelected(true);
    view.ApplyKeyParams(&params);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
    EXPECT_TRUE(view.selected);
}

TEST_F(TrackKeyTest, NoParametersChangeNothing) {
    view.SetSelected(true);
    view.ApplyKeyParams(nullptr);
    EXPECT_EQ(view.state, CTrackKey::kHighlighted);
    EXPECT_EQ(view.rectHeight, 15);
}

TEST_F(TrackKeyTest, NaturalDurationIsTheRecords) {
    EXPECT_EQ(view.GetNaturalDuration(), -1.0f);
    record.natural = 2.5f;
    view.record = &record;
    EXPECT_EQ(view.GetNaturalDuration(), 2.5f);
}

TEST_F(TrackKeyTest, ShorterAndBrieferKeysAreDrawnBeforeInTheOrderOfInsertion) {
    CTimedTrackKey a;
    CTimedTrackKey b;
    a.rectHeight = 10;
    b.rectHeight = 15;
    a.duration = 9.0f;
    b.duration = 1.0f;
    EXPECT_TRUE(a.IsDrawnBefore(&b)); // the height goes first
    EXPECT_FALSE(b.IsDrawnBefore(&a));
    a.rectHeight = 15;
    EXPECT_FALSE(a.IsDrawnBefore(&b)); // then the duration
    EXPECT_TRUE(b.IsDrawnBefore(&a));
    b.duration = 9.0f;
    EXPECT_FALSE(a.IsDrawnBefore(&b));
    EXPECT_FALSE(b.IsDrawnBefore(&a));
    EXPECT_FALSE(a.IsDrawnBefore(nullptr));
}

TEST_F(TrackKeyTest, NullTimeKeyHasNeitherGripsNorMarksToLose) {
    EXPECT_FALSE(view.HitGrip(100, 103, 10.0f));
    EXPECT_EQ(view.GetDuration(), 0.0f);
    CTimedTrackKey timed;
    timed.marked = true;
    timed.ClearMarks(nullptr);
    EXPECT_TRUE(timed.marked);
}

// Copies and comparison.

class KeyCopyTest : public TrackKeyTest {
protected:
    KeyCopyTest() {
        source.name = "Name";
        source.normalColor = 1;
        source.highlightColor = 2;
        source.rectHeight = 8;
        source.time = 7.0f;
    }

    CNullTimeTrackKey source;
    LoggingKey sourceRecord;
};

TEST_F(KeyCopyTest, CopyTakesNameColoursAndHeight) {
    view.CopyFrom(&source, /*copyTime*/ false);
    EXPECT_EQ(view.name, "Name");
    EXPECT_EQ(view.normalColor, 1u);
    EXPECT_EQ(view.highlightColor, 2u);
    EXPECT_EQ(view.rectHeight, 8);
    EXPECT_EQ(view.time, 3.0f);
}

TEST_F(KeyCopyTest, CopyLeavesANegativeHeight) {
    source.rectHeight = -1;
    view.CopyFrom(&source, /*copyTime*/ false);
    EXPECT_EQ(view.rectHeight, 15);
}

TEST_F(KeyCopyTest, CopyLeavesStateAndSelection) {
    source.SetSelected(true);
    view.CopyFrom(&source, /*copyTime*/ false);
    EXPECT_FALSE(view.selected);
    EXPECT_EQ(view.state, CTrackKey::kNormal);
}

TEST_F(KeyCopyTest, CopyOfTheTimeMovesTheRecord) {
    view.record = &record;
    view.CopyFrom(&source, /*copyTime*/ true);
    EXPECT_EQ(view.time, 7.0f);
    EXPECT_THAT(record.log, ElementsAre("SetTime 7", "SetEndTime 7"));
}

TEST_F(KeyCopyTest, CopyGoesFromRecordToRecord) {
    view.record = &record;
    view.CopyFrom(&source, /*copyTime*/ false);
    EXPECT_THAT(record.log, IsEmpty());
    source.record = &sourceRecord;
    view.CopyFrom(&source, /*copyTime*/ false);
    EXPECT_THAT(record.log, ElementsAre("CopyFrom 0"));
}

TEST_F(KeyCopyTest, CopyOfRealRecordsTakesTheContentNotTheTimes) {
    auto* from = NewRecordOf<CFilmVectorKey>(KeyKind::Position);
    auto* to = NewRecordOf<CFilmVectorKey>(KeyKind::Position);
    from->value = {1.0f, 2.0f, 3.0f};
    from->SetTime(7.0f);
    to->SetTime(3.0f);
    source.record = from;
    view.record = to;
    EXPECT_TRUE(view.CopyFrom(&source, /*copyTime*/ false));
    EXPECT_EQ(to->value, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(to->time, 3.0f);
    EXPECT_TRUE(view.Equals(&source, /*compareTime*/ false));
    EXPECT_FALSE(view.Equals(&source, /*compareTime*/ true));
}

class KeyEqualsTest : public TrackKeyTest {
protected:
    KeyEqualsTest() { other.time = 3.0f; }
    bool Same(bool compareTime = true) { return view.Equals(&other, compareTime); }

    CNullTimeTrackKey other;
    LoggingKey otherRecord;
};

TEST_F(KeyEqualsTest, FreshViewsAtOneTimeAreEqual) {
    EXPECT_TRUE(Same());
    EXPECT_FALSE(view.Equals(nullptr, false));
}

TEST_F(KeyEqualsTest, EveryCommonFieldCounts) {
    other.name = "Name";
    EXPECT_FALSE(Same());
    other.name = "";
    other.normalColor = 1;
    EXPECT_FALSE(Same());
    other.normalColor = view.normalColor;
    other.highlightColor = 1;
    EXPECT_FALSE(Same());
    other.highlightColor = view.highlightColor;
    other.rectHeight = 14;
    EXPECT_FALSE(Same());
}

TEST_F(KeyEqualsTest, StateSelectionAndMarkDoNotCount) {
    other.SetSelected(true);
    other.marked = true;
    EXPECT_TRUE(Same());
}

TEST_F(KeyEqualsTest, TimesCountFromAMillionthOfASecondOn) {
    view.time = 0.0f;
    other.time = 0.0000009f;
    EXPECT_TRUE(Same());
    other.time = 0.000001f;
    EXPECT_FALSE(Same());
    EXPECT_TRUE(Same(/*compareTime*/ false));
}

TEST_F(KeyEqualsTest, RecordsAreComparedIfBothHaveOne) {
    view.record = &record;
    record.equal = false;
    EXPECT_TRUE(Same());
    other.record = &otherRecord;
    EXPECT_FALSE(Same());
    EXPECT_TRUE(record.lastCompareTime);
    record.equal = true;
    EXPECT_TRUE(Same(/*compareTime*/ false));
    EXPECT_FALSE(record.lastCompareTime);
}

TEST_F(KeyEqualsTest, ViewsOfTwoClassesDiffer) {
    const CTimedTrackKey timed;
    view.time = 0.0f;
    EXPECT_FALSE(view.Equals(&timed, true));
    EXPECT_FALSE(timed.Equals(&view, true));
}

} // namespace

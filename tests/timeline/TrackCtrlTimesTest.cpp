#include "tests/timeline/KeyDragFixture.h"

#include <cmath>
#include <limits>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class TrackCtrlTimesTest : public KeyDragTest {
protected:
    struct Gap {
        float lo = -5.0f; // as the caller had them
        float hi = -6.0f;
        bool operator==(const Gap&) const = default;
    };
    static Gap GapOf(const CTrackCtrl& row, const CTrackKey* key) {
        Gap gap;
        row.GetKeyLimits(key, gap.lo, gap.hi);
        return gap;
    }
};

} // namespace

TEST_F(TrackCtrlTimesTest, LimitsOfAKeyLeaveItOut) {
    CTrackCtrl& row = BarRow(2.0f);
    AddBar(row, 9.0f);
    const CTrackKey* key = AddBar(row, 4.0f);
    AddBar(row, 2.0f);
    EXPECT_EQ(GapOf(row, key), (Gap{2, 9}));
}

TEST_F(TrackCtrlTimesTest, LimitsStayForKeysWithoutThem) {
    CTrackCtrl& row = BarRow(2.0f);
    CTrackKey* key = AddBar(row, 4.0f);
    AddBar(row, 9.0f);
    EXPECT_EQ(GapOf(row, nullptr), Gap{});
    const CNullTimeTrackKey empty;
    EXPECT_EQ(GapOf(row, &empty), Gap{});
    key->record->flags |= KeyFlag::MayOverlap;
    EXPECT_EQ(GapOf(row, key), Gap{});
}

TEST_F(TrackCtrlTimesTest, KeysOfOtherKindsAndWithoutARecordDontCount) {
    CTrackCtrl& row = BarRow(2.0f);
    const CTrackKey* key = AddBar(row, 4.0f);
    AddBar(row, 5.0f)->record->kind = KeyKind::Scale;
    AddBar(row, 6.0f)->SetRecord(nullptr, false);
    AddBar(row, 9.0f)->record->flags |= KeyFlag::MayOverlap; // it limits others all the same
    EXPECT_EQ(GapOf(row, key), (Gap{0, 9}));
}

TEST_F(TrackCtrlTimesTest, SnapOfNoKeyIsBeforeTheAxis) {
    CTrackCtrl& row = BarRow(2.0f);
    row.SetTimeRange(3.0f, 50.0f);
    EXPECT_EQ(row.SnapTime(nullptr, 4.0f, true, false), 2.0f);
    EXPECT_EQ(row.SnapTime(nullptr, 4.0f, true, true), 2.0f);
}

TEST_F(TrackCtrlTimesTest, SnapStepsOverKeysAndClamps) {
    CTrackCtrl& row = BarRow(2.0f);
    CTrackKey* key = AddBar(row, 4.0f);
    AddBar(row, 6.0f);
    EXPECT_EQ(row.SnapTime(key, 4.0f, true, false), 8.0f);
    EXPECT_EQ(row.SnapTime(key, 4.0f, false, false), 2.0f);
    EXPECT_EQ(row.SnapTime(key, 100.0f, true, false), 100.0f);
    EXPECT_EQ(row.SnapTime(key, 0.0f, false, false), 0.0f);
    EXPECT_EQ(row.SnapTime(key, kNaN, true, false), 0.0f);
}

TEST_F(TrackCtrlTimesTest, RunStepsByTheLimitsOfTheKeysKinds) {
    CTrackCtrl& row = BarRow(2.0f);
    CTrackKey* key = AddBar(row, 4.0f);
    AddBar(row, 6.0f);
    AddBar(row, 8.0f)->record->kind = KeyKind::Scale; // no neighbour of the one at 6
    EXPECT_EQ(row.SnapTime(key, 4.0f, true, false), 8.0f);
}

TEST_F(TrackCtrlTimesTest, NoLimitIsTakenForMinusOneOnce) {
    CTrackCtrl& row = BarRow(1.0f);
    row.SetTimeRange(-10.0f, 50.0f);
    CTrackKey* key = AddBar(row, 0.0f);
    key->record->flags |= KeyFlag::MayOverlap;
    // The tic at -1 is the number that stands for "no limit".
    EXPECT_EQ(row.SnapTime(key, 0.0f, false, false), -2.0f);
    EXPECT_EQ(row.SnapTime(key, -3.0f, false, false), -4.0f);
}

TEST_F(TrackCtrlTimesTest, FreeSnapIsTheMouseTime) {
    CTrackCtrl& row = BarRow(2.0f);
    CTrackKey* key = AddBar(row, 4.0f);
    timeline.mouseTime = 5.25f;
    EXPECT_EQ(row.SnapTime(key, 4.0f, true, true), 5.25f);
    CTrackCtrl alone;
    alone.SetTimeRange(0.0f, 100.0f);
    EXPECT_EQ(alone.SnapTime(key, 7.0f, true, true), 7.0f); // no main control, no mouse
}

TEST_F(TrackCtrlTimesTest, KeyAtTimeIsTheFirstNearIt) {
    CTrackCtrl& row = BarRow(2.0f);
    const CTrackKey* near = AddBar(row, 4.000005f);
    AddBar(row, 4.0f);
    EXPECT_EQ(row.KeyAtTime(4.0f), near);
    EXPECT_EQ(row.KeyAtTime(4.1f), nullptr);
    EXPECT_EQ(row.KeyAtTime(kNaN), nullptr);
}

TEST_F(TrackCtrlTimesTest, NearestKeyMustBeAMicrosecondAway) {
    CTrackCtrl& row = BarRow(2.0f);
    const CTrackKey* key = AddBar(row, 0.0f);
    EXPECT_EQ(row.FindNearestKey(0.000001f, false), nullptr); // the float 0.000001 itself is passed over
    EXPECT_EQ(row.FindNearestKey(std::nextafter(0.000001f, 1.0f), false), key);
    EXPECT_EQ(row.FindNearestKey(kNaN, false), nullptr);
    EXPECT_EQ(row.FindNearestKey(kNaN, true), nullptr);
}

TEST_F(TrackCtrlTimesTest, StartAndEndOfAnotherKeyAreTaken) {
    CTrackCtrl& row = BoxRow(2.0f);
    const CTrackKey* key = AddBox(row, 10.0f, 2.0f);
    AddBox(row, 4.0f, 2.0f);
    EXPECT_TRUE(row.IsTimeFree(key, 3.75f));
    EXPECT_FALSE(row.IsTimeFree(key, 4.0f));
    EXPECT_FALSE(row.IsTimeFree(key, 6.0f)); // though it could be dragged there
    EXPECT_TRUE(row.IsTimeFree(key, 6.25f));
    EXPECT_TRUE(row.IsTimeFree(key, 11.0f)); // inside of itself
    EXPECT_TRUE(row.IsTimeFree(key, 0.0f));
    EXPECT_TRUE(row.IsTimeFree(key, 100.0f));
    EXPECT_FALSE(row.IsTimeFree(key, -0.25f));
    EXPECT_FALSE(row.IsTimeFree(key, 100.25f));
    EXPECT_FALSE(row.IsTimeFree(key, kNaN));
}

TEST_F(TrackCtrlTimesTest, KeyThatMayOverlapIsFreeOnTheWholeAxis) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTrackKey* key = AddBox(row, 10.0f, 2.0f);
    AddBox(row, 4.0f, 2.0f);
    key->record->flags |= KeyFlag::MayOverlap;
    EXPECT_TRUE(row.IsTimeFree(key, 5.0f));
    EXPECT_FALSE(row.IsTimeFree(key, 101.0f));
}

TEST_F(TrackCtrlTimesTest, NoKeyAndNoRecordHaveNoPlace) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey empty;
    EXPECT_FALSE(row.IsTimeFree(nullptr, 4.0f));
    EXPECT_FALSE(row.IsTimeFree(&empty, 4.0f));
    EXPECT_FALSE(row.CanPlaceKey(nullptr, 4.0f));
    EXPECT_FALSE(row.CanPlaceKey(&empty, 4.0f));
}

TEST_F(TrackCtrlTimesTest, PlacedKeyIsShortenedToTheNextOne) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey* key = AddBox(row, 10.0f, 5.0f);
    AddBox(row, 30.0f, 1.0f);
    AddBox(row, 7.0f, 1.0f);
    EXPECT_TRUE(row.CanPlaceKey(key, 4.0f));
    EXPECT_EQ(key->duration, 3.0f);
    EXPECT_EQ(key->time, 10.0f);
    EXPECT_EQ(key->record->endTime, 13.0f); // told from where it stands now
    EXPECT_TRUE(row.CanPlaceKey(key, 29.0f));
    EXPECT_EQ(key->duration, 1.0f);
}

TEST_F(TrackCtrlTimesTest, PlacedKeyIsShortenedToTheEndOfTheAxis) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey* key = AddBox(row, 10.0f, 5.0f);
    EXPECT_TRUE(row.CanPlaceKey(key, 98.0f));
    EXPECT_EQ(key->duration, 2.0f);
    EXPECT_TRUE(row.CanPlaceKey(key, 100.0f)); // no room at all: it stays as long as it was
    EXPECT_EQ(key->duration, 2.0f);
}

TEST_F(TrackCtrlTimesTest, PlaceThatIsTakenLeavesTheDuration) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey* key = AddBox(row, 10.0f, 5.0f);
    AddBox(row, 4.0f, 2.0f);
    AddBox(row, 7.0f, 1.0f);
    EXPECT_FALSE(row.CanPlaceKey(key, 5.0f));
    EXPECT_EQ(key->duration, 5.0f);
}

TEST_F(TrackCtrlTimesTest, KeyThatMayOverlapIsShortenedAllTheSame) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey* key = AddBox(row, 10.0f, 5.0f);
    key->record->flags |= KeyFlag::MayOverlap;
    AddBox(row, 4.0f, 2.0f);
    AddBox(row, 7.0f, 1.0f);
    EXPECT_TRUE(row.CanPlaceKey(key, 5.0f));
    EXPECT_EQ(key->duration, 2.0f);
}

TEST_F(TrackCtrlTimesTest, RecordWithoutDurationIsNotShortened) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey* key = AddBox(row, 10.0f, 5.0f);
    key->record->flags |= KeyFlag::NoDuration;
    AddBox(row, 7.0f, 1.0f);
    EXPECT_TRUE(row.CanPlaceKey(key, 4.0f));
    EXPECT_EQ(key->duration, 5.0f);
    CTrackCtrl& bars = BarRow(2.0f);
    CTrackKey* bar = AddBar(bars, 4.0f);
    AddBar(bars, 9.0f);
    EXPECT_TRUE(bars.CanPlaceKey(bar, 8.0f));
    EXPECT_FALSE(bars.CanPlaceKey(bar, 9.0f));
    bar->record->flags = 0;
    EXPECT_TRUE(bars.CanPlaceKey(bar, 8.0f));
}

TEST_F(TrackCtrlTimesTest, FitNeedsARecordAndALength) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey* key = AddBox(row, 10.0f, 2.0f);
    AddBox(row, 14.0f, 2.0f);
    float start = 15.0f;
    float duration = 2.0f;
    EXPECT_FALSE(row.FitTimedKey(nullptr, 0.0f, start, duration, 2.0f));
    CTimedTrackKey empty;
    EXPECT_FALSE(row.FitTimedKey(&empty, 0.0f, start, duration, 2.0f));
    key->duration = -1.0f;
    EXPECT_FALSE(row.FitTimedKey(key, 0.0f, start, duration, 2.0f));
    key->duration = 2.0f;
    EXPECT_EQ(start, 15.0f);
    EXPECT_TRUE(row.FitTimedKey(key, 0.0f, start, duration, 2.0f));
    EXPECT_EQ(start, 16.0f);
    start = 15.0f;
    key->record->flags |= KeyFlag::MayOverlap;
    EXPECT_TRUE(row.FitTimedKey(key, 0.0f, start, duration, 2.0f));
    EXPECT_EQ(start, 15.0f);
}

TEST_F(TrackCtrlTimesTest, MarkThatGoesNowhereShiftsNothing) {
    CTrackCtrl& row = BarRow(2.0f);
    const CTrackKey* key = AddBar(row, 4.0f);
    for (const float to : {kNaN, std::numeric_limits<float>::infinity()}) {
        row.ShiftKeysNear(4.0f, to);
        row.ShiftKeysNear(to, 4.0f);
    }
    EXPECT_EQ(key->time, 4.0f);
}

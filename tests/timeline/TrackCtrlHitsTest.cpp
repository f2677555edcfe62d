#include "tests/timeline/TrackCtrlFixture.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

class TrackCtrlHitsTest : public TrackCtrlTest {
protected:
    /// The walk over all keys, as it is told.
    static CTrackKey* WalkAt(const CTrackCtrl& row, CPoint point, int nameWidth, int width) {
        const auto s =
            static_cast<float>((static_cast<double>(row.viewEnd) - row.viewStart) / (width - nameWidth));
        const auto t = static_cast<float>(static_cast<double>(point.x - nameWidth) * s + row.viewStart);
        CTrackKey* hit = nullptr;
        for (CTrackKey* key : row.keys) {
            const int top = kHeight / 2 - key->rectHeight / 2;
            if (key->state != CTrackKey::kHidden && top != -1 && point.y >= top &&
                point.y <= top + key->rectHeight && key->HitTime(t, s)) {
                hit = key;
            }
        }
        return hit;
    }
};

} // namespace

TEST_F(TrackCtrlHitsTest, TimeComesFromTheAreaBehindTheNameColumn) {
    const CTrackCtrl& row = MakeRow(KeyKind::Position);
    CPoint point(400, 3);
    EXPECT_EQ(row.TimeFromPoint(&point), 5.0); // 10 s / 500 pixels * (400 - 150)
    point.x = 100;
    EXPECT_EQ(row.TimeFromPoint(&point), -1.0);
    EXPECT_EQ(row.TimeFromPoint(nullptr), -1.0);
}

TEST_F(TrackCtrlHitsTest, TimeOfARowAsWideAsItsNameIsTheViewsStart) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    row.SetView(2.0f, 4.0f);
    row.MoveWindow(0, 0, 150, 20);
    const CPoint point(400, 3);
    EXPECT_EQ(row.TimeFromPoint(&point), 2.0);
    row.MoveWindow(0, 0, 140, 20);
    EXPECT_EQ(row.TimeFromPoint(&point), 2.0 / -10.0 * 250.0 + 2.0); // the axis runs backwards
}

TEST_F(TrackCtrlHitsTest, BarIsHitWithinHalfItsWidth) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    row.SetView(0.0f, 7.8125f);         // 500 pixels: 1/64 second each, which a float holds exactly
    CTrackKey* key = AddBar(row, 2.0f); // at 150 + 128, from 3 to 18
    EXPECT_EQ(row.GetKeyAt({275, 10}), key);
    EXPECT_EQ(row.GetKeyAt({281, 10}), key);
    EXPECT_EQ(row.GetKeyAt({274, 10}), nullptr);
    EXPECT_EQ(row.GetKeyAt({282, 10}), nullptr);
    EXPECT_EQ(row.GetKeyAt({278, 2}), nullptr);
    EXPECT_EQ(row.GetKeyAt({278, 3}), key);
    EXPECT_EQ(row.GetKeyAt({278, 18}), key);
    EXPECT_EQ(row.GetKeyAt({278, 19}), nullptr);
}

TEST_F(TrackCtrlHitsTest, BoxIsHitFromStartToEnd) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* key = AddBox(row, 1.0f, 2.0f); // from 200 to 300
    EXPECT_EQ(row.GetKeyAt({199, 10}), nullptr);
    EXPECT_EQ(row.GetKeyAt({200, 10}), key);
    EXPECT_EQ(row.GetKeyAt({300, 10}), key);
    EXPECT_EQ(row.GetKeyAt({301, 10}), nullptr);
}

TEST_F(TrackCtrlHitsTest, KeyThatBeganBeforeTheViewIsHitThroughTheNameCell) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    row.SetView(10.0f, 20.0f);
    CTrackKey* key = AddBox(row, 8.0f, 4.0f); // from 50 on
    EXPECT_EQ(row.GetKeyAt({60, 10}), key);
    EXPECT_EQ(row.GetKeyAt({49, 10}), nullptr);
}

TEST_F(TrackCtrlHitsTest, LastOfSeveralIsHitAndHiddenOnesNever) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTrackKey* large = AddBox(row, 1.0f, 3.0f);
    CTrackKey* small = AddBox(row, 2.0f, 1.0f);
    EXPECT_EQ(row.GetKeyAt({260, 10}), small);
    EXPECT_EQ(row.GetKeyAt({320, 10}), large);
    small->state = CTrackKey::kHidden;
    EXPECT_EQ(row.GetKeyAt({260, 10}), large);
}

TEST_F(TrackCtrlHitsTest, NothingIsHitWithoutAViewOrAnArea) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    AddBar(row, 2.0f);
    row.SetAlignment(9);
    EXPECT_EQ(row.GetKeyAt({250, 10}), nullptr);
    row.SetAlignment(1);
    row.SetView(2.0f, 2.0f);
    EXPECT_EQ(row.GetKeyAt({250, 10}), nullptr);
    row.SetView(0.0f, 10.0f);
    for (const int width : {0, 150}) {
        row.MoveWindow(0, 0, width, 20);
        EXPECT_EQ(row.GetKeyAt({150, 10}), nullptr) << width;
    }
    row.MoveWindow(0, 0, 650, 0);
    EXPECT_EQ(row.GetKeyAt({250, 0}), nullptr);
}

TEST_F(TrackCtrlHitsTest, HitsEqualTheWalkOverAllKeys) {
    std::mt19937 random(11);
    const auto number = [&random](float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    };
    int hits = 0;
    for (int round = 0; round < 60; ++round) {
        CTrackCtrl& row = MakeRow(round % 2 == 0 ? KeyKind::Position : KeyKind::FxRain);
        const int width = round % 5 == 0 ? 100 : 650; // narrower than the name column: negative scale
        row.MoveWindow(0, 0, width, kHeight);
        const float scale = std::pow(10.0f, number(-4.0f, 6.0f));
        const float start = round % 3 == 0 ? 0.0f : scale * number(0.0f, 3.0f);
        row.SetTimeRange(0.0f, 10.0f * scale);
        row.SetView(start, start + scale);
        for (int i = 0; i < 400; ++i) {
            const float time = number(0.0f, 5.0f * scale);
            if (row.kind == KeyKind::Position) {
                std::unique_ptr<CTrackKey> view = MakeView(KeyKind::Position, time);
                static_cast<CNullTimeTrackKey&>(*view).width = static_cast<int>(random() % 24);
                ASSERT_TRUE(row.AddKeyView(view.release(), false, true, true));
            } else {
                AddBox(row, time, number(0.0f, scale));
            }
            Unselect();
            row.keys.back()->state = static_cast<int>(random() % 3);
            row.keys.front()->rectHeight = static_cast<int>(random() % 25);
        }
        for (int i = 0; i < 200; ++i) {
            const CPoint point(static_cast<int>(random() % 900) - 100, static_cast<int>(random() % 24) - 2);
            CTrackKey* expected = WalkAt(row, point, 150, width);
            ASSERT_EQ(row.GetKeyAt(point), expected) << "round " << round << " at " << point.x;
            hits += expected != nullptr ? 1 : 0;
        }
    }
    EXPECT_GT(hits, 1000); // the comparison is about something
}

TEST_F(TrackCtrlHitsTest, KeyWiderThanUsualIsHitOverItsWidth) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    std::unique_ptr<CTrackKey> view = MakeView(KeyKind::Position, 2.0f);
    CTrackKey* key = view.get();
    static_cast<CNullTimeTrackKey&>(*view).width = 100;
    ASSERT_TRUE(row.AddKeyView(view.release(), false, true, true));
    EXPECT_EQ(row.GetKeyAt({201, 10}), key);
    EXPECT_EQ(row.GetKeyAt({299, 10}), key);
    EXPECT_EQ(row.GetKeyAt({198, 10}), nullptr);
}

TEST_F(TrackCtrlHitsTest, UnendingTimesHitNothingByMistake) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    const float forever = std::numeric_limits<float>::infinity();
    CTrackKey* key = AddBox(row, 1.0f, forever);
    EXPECT_EQ(row.GetKeyAt({600, 10}), key);
    EXPECT_EQ(row.GetKeyAt({190, 10}), nullptr);
    AddBox(row, std::numeric_limits<float>::quiet_NaN(), 1.0f);
    EXPECT_EQ(row.GetKeyAt({600, 10}), key);
}

TEST_F(TrackCtrlHitsTest, ViewIsFoundByItselfOrByValue) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CTrackKey* first = AddBar(row, 2.0f);
    CTrackKey* twin = AddBar(row, 2.0f);
    EXPECT_EQ(row.FindKeyView(twin, /*byValue*/ false), twin);
    EXPECT_EQ(row.FindKeyView(twin, /*byValue*/ true), first);
    const std::unique_ptr<CTrackKey> later = MakeView(KeyKind::Position, 3.0f);
    EXPECT_EQ(row.FindKeyView(later.get(), true), nullptr); // the time counts
    const std::unique_ptr<CTrackKey> same = MakeView(KeyKind::Position, 2.0f);
    EXPECT_EQ(row.FindKeyView(same.get(), true), first);
    EXPECT_EQ(row.FindKeyView(same.get(), false), nullptr);
    EXPECT_EQ(row.FindKeyView(nullptr, true), nullptr);
}

TEST_F(TrackCtrlHitsTest, ViewsOfAnotherClassAreNeverEqual) {
    CTrackCtrl& row = MakeRow(KeyKind::FxRain);
    CTimedTrackKey* key = AddBox(row, 2.0f, 1.0f);
    CNullTimeTrackKey bar;
    bar.time = 2.0f;
    bar.record = key->record;
    EXPECT_EQ(row.FindKeyView(&bar, true), nullptr);
}

TEST_F(TrackCtrlHitsTest, NearestKeyLiesAheadOrBehind) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    CTrackKey* five = AddBar(row, 5.0f);
    CTrackKey* two = AddBar(row, 2.0f);
    CTrackKey* nine = AddBar(row, 9.0f);
    EXPECT_EQ(row.FindNearestKey(3.0f, /*after*/ true), five);
    EXPECT_EQ(row.FindNearestKey(3.0f, /*after*/ false), two);
    EXPECT_EQ(row.FindNearestKey(5.0f, true), nine); // one at the time is passed over
    EXPECT_EQ(row.FindNearestKey(5.0f, false), two);
    EXPECT_EQ(row.FindNearestKey(9.5f, true), nullptr);
    EXPECT_EQ(row.FindNearestKey(1.0f, false), nullptr);
}

TEST_F(TrackCtrlHitsTest, FirstOfTwoNearestKeysCountsAndFarOnesDont) {
    CTrackCtrl& row = MakeRow(KeyKind::Position);
    row.SetTimeRange(0.0f, 1e6f);
    CTrackKey* first = AddBar(row, 5.0f);
    AddBar(row, 5.0f);
    CTrackKey* far = AddBar(row, 200000.0f);
    EXPECT_EQ(row.FindNearestKey(3.0f, true), first);
    EXPECT_EQ(row.FindNearestKey(100000.0f, true), nullptr); // 100000 seconds ahead
    EXPECT_EQ(row.FindNearestKey(100001.0f, true), far);
}

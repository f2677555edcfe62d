#include "keys/rules/KeyStretch.h"
#include "tests/keys/KeyFixture.h"

#include <limits>

namespace {

using Calls = std::vector<std::string>;

struct StretchCase {
    const char* name;
    float start;
    float end;
    Calls kept;   ///< with the duration kept
    Calls scaled; ///< with the duration scaled
};

std::string NameOf(const ::testing::TestParamInfo<StretchCase>& info) {
    return info.param.name;
}

Calls CallsOf(const TimeStretch& stretch, float start, float end, bool scale) {
    LoggingKey record;
    record.time = start;
    record.endTime = end;
    stretch.ApplyToSpan(record, scale);
    return record.log;
}

/// From 10 on, 8 seconds become 4: the factor is 0.5, the end 18, and what lies behind moves by -4.
class StretchSpanTest : public ::testing::TestWithParam<StretchCase> {};

TEST_P(StretchSpanTest, SetsTimesInOrder) {
    const TimeStretch stretch(10.0f, 8.0f, 4.0f);
    EXPECT_EQ(CallsOf(stretch, GetParam().start, GetParam().end, false), GetParam().kept);
    EXPECT_EQ(CallsOf(stretch, GetParam().start, GetParam().end, true), GetParam().scaled);
}

INSTANTIATE_TEST_SUITE_P(
    Places, StretchSpanTest,
    ::testing::Values(
        StretchCase{"Before", 2, 9, {}, {}}, StretchCase{"UpToTheInterval", 2, 10, {}, {}},
        StretchCase{"IntoTheInterval", 2, 14, {}, {"SetEndTime 12"}},
        StretchCase{"FromBeforeToTheEnd", 2, 18, {}, {}},
        StretchCase{"AroundTheInterval", 2, 20, {}, {"SetEndTime 16"}},
        StretchCase{"FromTheStartIntoIt", 10, 14, {}, {}}, StretchCase{"ExactlyTheInterval", 10, 18, {}, {}},
        StretchCase{"FromTheStartBeyond", 10, 20, {}, {}},
        StretchCase{"Inside", 12, 16, {"SetTime 11", "SetEndTime 15"}, {"SetTime 11", "SetEndTime 13"}},
        StretchCase{"InsideUpToTheEnd", 12, 18, {}, {}},
        StretchCase{"AcrossTheEnd", 12, 20, {"SetTime 11", "SetEndTime 19"}, {"SetTime 11", "SetEndTime 16"}},
        StretchCase{"FromTheEnd", 18, 20, {"SetTime 14", "SetEndTime 16"}, {"SetTime 14", "SetEndTime 16"}},
        StretchCase{"Behind",
                    20,
                    24,
                    {"SetTime 15", "SetEndTime 19", "SetTime 16", "SetEndTime 20"},
                    {"SetTime 15", "SetEndTime 20", "SetTime 16", "SetEndTime 20"}}),
    NameOf);

TEST(StretchSpanTest, OnlyARecordThatEndsBeforeIsLeftOut) {
    const TimeStretch stretch(10.0f, 8.0f, 4.0f);
    const auto concerns = [&](float start, float end) {
        LoggingKey record;
        record.time = start;
        record.endTime = end;
        return stretch.ApplyToSpan(record, false);
    };
    EXPECT_FALSE(concerns(2, 9));
    EXPECT_TRUE(concerns(2, 10));
    EXPECT_TRUE(concerns(2, 14));
    EXPECT_TRUE(concerns(10, 14));
    EXPECT_TRUE(concerns(30, 31));
}

TEST(StretchSpanTest, IntervalOfNoLengthOnlyPushes) {
    const TimeStretch stretch(10.0f, 0.0f, 4.0f);
    EXPECT_EQ(CallsOf(stretch, 12, 16, true), (Calls{"SetTime 16", "SetEndTime 20"}));
    EXPECT_EQ(CallsOf(stretch, 12, 16, false), (Calls{"SetTime 16", "SetEndTime 20"}));
    EXPECT_EQ(CallsOf(stretch, 10, 16, true), Calls{});
    EXPECT_EQ(CallsOf(stretch, 8, 16, false), Calls{});
    EXPECT_EQ(CallsOf(stretch, 8, 16, true), Calls{"SetEndTime 20"});
}

TEST(StretchSpanTest, IntervalToNoLengthGathersAtItsStart) {
    const TimeStretch stretch(10.0f, 8.0f, 0.0f);
    EXPECT_EQ(CallsOf(stretch, 12, 16, true), (Calls{"SetTime 10", "SetEndTime 10"}));
    EXPECT_EQ(CallsOf(stretch, 12, 16, false), (Calls{"SetTime 10", "SetEndTime 14"}));
}

TEST(StretchSpanTest, NoTimeThatIsntFiniteReachesARecord) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kMost = std::numeric_limits<float>::max();
    EXPECT_FALSE(TimeStretch(kNaN, 1, 1).IsFinite());
    EXPECT_FALSE(TimeStretch(1, kNaN, 1).IsFinite());
    EXPECT_FALSE(TimeStretch(1, 1, std::numeric_limits<float>::infinity()).IsFinite());
    EXPECT_TRUE(TimeStretch(1, 0, 1).IsFinite());
    EXPECT_EQ(CallsOf(TimeStretch(0, 1e-40f, 10), 12, 16, true), (Calls{"SetTime 22", "SetEndTime 26"}));
    EXPECT_EQ(CallsOf(TimeStretch(0, 0.5f, kMost), 0.25f, 0.375f, true), Calls{});
    EXPECT_EQ(CallsOf(TimeStretch(0, 10, 20), kNaN, kNaN, true), Calls{});
}

TEST(StretchSpanTest, KeyWithoutADurationEndsWhereItStands) {
    const auto callsOf = [](float time, float staleEnd) {
        LoggingKey record;
        record.flags = KeyFlag::NoDuration;
        record.time = time;
        record.endTime = staleEnd;
        TimeStretch(10.0f, 8.0f, 4.0f).ApplyToSpan(record, true);
        return record.log;
    };
    EXPECT_EQ(callsOf(2, 14), Calls{});
    EXPECT_EQ(callsOf(12, 0), (Calls{"SetTime 11", "SetEndTime 11"}));
    EXPECT_EQ(callsOf(12, 99), (Calls{"SetTime 11", "SetEndTime 11"}));
    EXPECT_EQ(callsOf(20, 0), (Calls{"SetTime 15", "SetEndTime 16", "SetTime 16", "SetEndTime 16"}));
}

TEST(StretchSpanTest, NegativeLengthsPullAndPush) {
    // An interval of -2 seconds ends at 8: what starts behind 10 goes the way by the factor -2 first, then by
    // the difference of 6.
    const TimeStretch stretch(10.0f, -2.0f, 4.0f);
    EXPECT_EQ(CallsOf(stretch, 12, 14, true),
              (Calls{"SetTime 6", "SetEndTime 20", "SetTime 18", "SetEndTime 20"}));
    EXPECT_EQ(CallsOf(stretch, 9, 9.5f, true), Calls{});
    EXPECT_EQ(CallsOf(stretch, 9, 11, true), (Calls{"SetEndTime 17", "SetTime 15", "SetEndTime 17"}));
    // To -4 seconds, the factor is -0.5: what lay inside comes before the start.
    EXPECT_EQ(CallsOf(TimeStretch(10.0f, 8.0f, -4.0f), 12, 16, true), (Calls{"SetTime 9", "SetEndTime 7"}));
}

TEST(StretchMomentTest, InsideScalesAndFromTheEndOnMoves) {
    const auto callsOf = [](float time) {
        LoggingKey record;
        record.time = record.endTime = time;
        TimeStretch(10.0f, 8.0f, 4.0f).ApplyToMoment(record);
        return record.log;
    };
    EXPECT_EQ(callsOf(2), Calls{});
    EXPECT_EQ(callsOf(10), Calls{});
    EXPECT_EQ(callsOf(14), Calls{"SetTime 12"}); // the end isn't set
    EXPECT_EQ(callsOf(18), Calls{"SetTime 14"});
    EXPECT_EQ(callsOf(30), Calls{"SetTime 26"});
}

TEST(StretchMomentTest, IntervalOfNoLengthPushesWhatStandsThere) {
    LoggingKey record;
    record.time = record.endTime = 10.0f;
    TimeStretch(10.0f, 0.0f, 4.0f).ApplyToMoment(record);
    EXPECT_EQ(record.log, Calls{"SetTime 14"});
}

} // namespace

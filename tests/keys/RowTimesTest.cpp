#include "keys/rules/RowTimes.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

constexpr int kKind = 10;
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr TimeAxis kAxis{0.0f, 100.0f, 1.0f};

RowKey Bar(float time) {
    return {{time, 0.0f}, kKind, true};
}

RowKey Box(float time, float duration) {
    return {{time, duration}, kKind, true};
}

std::vector<KeySpan> OthersOf(const std::vector<RowKey>& row, std::size_t place) {
    std::vector<KeySpan> others;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i != place && row[i].kind == row[place].kind) {
            others.push_back(row[i].span);
        }
    }
    return others;
}

/// The same answers by walks over all keys.
struct Walk {
    const std::vector<RowKey>& row;

    std::optional<std::size_t> KeyAt(float time) const {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (IsSameMoment(row[i].span.start, time)) {
                return i;
            }
        }
        return std::nullopt;
    }
    KeyLimits LimitsOf(std::size_t place, const TimeAxis& axis) const {
        return FindKeyLimits(row[place].span, OthersOf(row, place), axis);
    }
    std::optional<std::size_t> NearestBefore(float time) const {
        std::optional<std::size_t> nearest;
        double least = kFarthestSeconds;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const double distance = static_cast<double>(time) - row[i].span.start;
            if (distance > kPassedOverSeconds && distance < least) {
                nearest = i;
                least = distance;
            }
        }
        return nearest;
    }
    float StepOver(KeyLimits limits, float tic, bool forward, const TimeAxis& axis) const {
        while (limits.Ahead(forward) == tic) {
            const std::optional<std::size_t> key = KeyAt(limits.Ahead(forward));
            tic += forward ? axis.tic : -axis.tic;
            if (key && row[*key].bounded) {
                limits = LimitsOf(*key, axis);
            }
        }
        return tic;
    }
};

/// Keys on a coarse grid, so that many touch, overlap and stand on one time.
std::vector<RowKey> RandomRow(std::mt19937& random, bool boxes) {
    std::vector<RowKey> row(random() % 14);
    for (RowKey& key : row) {
        key.span.start = static_cast<float>(random() % 12);
        key.span.duration = boxes && random() % 4 != 0 ? static_cast<float>(random() % 4) : 0.0f;
        key.kind = random() % 8 == 0 ? kKind + 1 : kKind;
        key.bounded = random() % 8 != 0;
        if (random() % 10 == 0) {
            key.kind = RowKey::kForeign;
            key.bounded = false;
        }
        if (random() % 20 == 0) {
            (random() % 2 == 0 ? key.span.start : key.span.duration) = kNaN;
        }
    }
    return row;
}

/// Checks 300 rows, which are the same each time.
template <class Check> void ForRandomRows(Check check) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random{seed};
        check(RandomRow(random, seed % 2 == 0));
    }
}

TEST(RandomRowTest, AnswersAsAWalkDoes) {
    ForRandomRows([](const std::vector<RowKey>& row) {
        RowTimes times(row);
        const Walk walk{row};
        for (int half = -2; half < 32; ++half) {
            const float time = 0.5f * static_cast<float>(half);
            EXPECT_EQ(times.KeyAt(time), walk.KeyAt(time)) << time;
            EXPECT_EQ(times.NearestBefore(time), walk.NearestBefore(time)) << time;
        }
        const TimeAxis axis{1.0f, 10.0f, 1.0f};
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (row[i].bounded) {
                EXPECT_EQ(times.LimitsOf(i, axis).lo, walk.LimitsOf(i, axis).lo) << i;
                EXPECT_EQ(times.LimitsOf(i, axis).hi, walk.LimitsOf(i, axis).hi) << i;
            }
        }
    });
}

TEST(RandomRowTest, StepsOverRunsAsAWalkDoes) {
    ForRandomRows([](const std::vector<RowKey>& row) {
        const Walk walk{row};
        const TimeAxis axis{0.0f, 11.0f, 1.0f};
        for (int second = 0; second <= 12; ++second) {
            const auto tic = static_cast<float>(second);
            for (const bool forward : {true, false}) {
                const KeyLimits limits{tic, tic};
                EXPECT_EQ(StepOverKeys(row, limits, tic, forward, axis),
                          walk.StepOver(limits, tic, forward, axis))
                    << tic << forward;
            }
        }
    });
}

TEST(StepOverKeysTest, StaysWhereNoKeyStands) {
    const std::vector<RowKey> row{Bar(1), Bar(2)};
    EXPECT_EQ(StepOverKeys(row, {0, 1}, 3, true, kAxis), 3);
    EXPECT_EQ(StepOverKeys(row, {0, 1}, 1, true, kAxis), 3);
}

TEST(StepOverKeysTest, WholeRunIsSteppedOver) {
    const std::vector<RowKey> row{Bar(3), Bar(1), Bar(2), Bar(5)};
    EXPECT_EQ(StepOverKeys(row, {0, 1}, 1, true, kAxis), 4);
    EXPECT_EQ(StepOverKeys(row, {3, 5}, 3, false, {-50, 100, 1}), 0);
    EXPECT_EQ(StepOverKeys(row, {3, 5}, 3, false, kAxis), -1); // the start of the axis is a limit as well
}

TEST(StepOverKeysTest, RunUpToTheEndOfTheAxisIsLeftBehindIt) {
    const std::vector<RowKey> row{Bar(98), Bar(99), Bar(100)};
    EXPECT_EQ(StepOverKeys(row, {0, 98}, 98, true, kAxis), 101);
}

TEST(StepOverKeysTest, EndOfTheAxisAloneIsSteppedOverOnce) {
    EXPECT_EQ(StepOverKeys({}, {0, 100}, 100, true, kAxis), 101);
    EXPECT_EQ(StepOverKeys({}, {0, 100}, 0, false, kAxis), -1);
}

TEST(StepOverKeysTest, KeyWithoutLimitsEndsTheRun) {
    const std::vector<RowKey> row{{{1, 0}, kKind, false}, Bar(2)};
    EXPECT_EQ(StepOverKeys(row, {0, 1}, 1, true, kAxis), 2);
}

TEST(StepOverKeysTest, BoxBehindAnotherEndsTheRunByItsOddLimits) {
    // The limits of the box at 2 have the one at 0 as their upper end.
    const std::vector<RowKey> row{Box(0, 1), Box(2, 1), Box(3, 1)};
    EXPECT_EQ(StepOverKeys(row, {0, 2}, 2, true, kAxis), 3);
}

class OddTicTest : public ::testing::TestWithParam<float> {};

TEST_P(OddTicTest, RunEnds) {
    const std::vector<RowKey> row{Bar(1), Bar(1), Bar(2)};
    const TimeAxis axis{0.0f, 100.0f, GetParam()};
    for (const bool forward : {true, false}) {
        const float stepped = StepOverKeys(row, {1, 1}, 1, forward, axis);
        EXPECT_TRUE(stepped == 1.0f || !(std::fabs(stepped - 1.0f) <= 1.0f)) << stepped;
    }
}

INSTANTIATE_TEST_SUITE_P(Tics, OddTicTest,
                         ::testing::Values(0.0f, kNaN, 1e-30f, -1e-30f,
                                           std::numeric_limits<float>::infinity(),
                                           -std::numeric_limits<float>::infinity(), 1e30f));

TEST(StepOverKeysTest, NegativeTicEnds) {
    const std::vector<RowKey> row{Bar(1), Bar(2), Bar(3)};
    EXPECT_EQ(StepOverKeys(row, {0, 2}, 2, true, {0, 100, -1}), 1); // the limit of the key at 2 is 3
}

/// Quadratic steps would take minutes here.
TEST(StepOverKeysTest, RunOfManyKeysIsSteppedOverAtOnce) {
    constexpr int kKeys = 200'000;
    std::vector<RowKey> bars;
    std::vector<RowKey> boxes;
    for (int i = 0; i < kKeys; ++i) {
        bars.push_back(Bar(static_cast<float>(i)));
        boxes.push_back(Box(static_cast<float>(i), 1.5f)); // each has the next one's start as its limit
    }
    const TimeAxis axis{0.0f, static_cast<float>(2 * kKeys), 1.0f};
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(StepOverKeys(bars, {0, 1}, 1, true, axis), kKeys);
    EXPECT_GT(StepOverKeys(boxes, {0, 1}, 1, true, axis), kKeys / 2);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(RowTimesTest, FirstOfSeveralKeysAtATimeByDrawOrder) {
    const std::vector<RowKey> row{Bar(7), Bar(5.000005f), Bar(5), Bar(5)};
    const RowTimes times(row);
    EXPECT_EQ(times.KeyAt(5), 1U);
    EXPECT_EQ(times.KeyAt(6), std::nullopt);
    EXPECT_EQ(times.KeyAt(kNaN), std::nullopt);
    EXPECT_EQ(times.NearestBefore(6), 1U);
    EXPECT_EQ(times.NearestBefore(5), std::nullopt);
    EXPECT_EQ(times.NearestBefore(kNaN), std::nullopt);
}

TEST(RowTimesTest, NearestBeforeIsNearerThan100000Seconds) {
    const std::vector<RowKey> row{Bar(0)};
    const RowTimes times(row);
    EXPECT_EQ(times.NearestBefore(100000.0f), std::nullopt);
    EXPECT_EQ(times.NearestBefore(std::nextafter(100000.0f, 0.0f)), 0U);
    EXPECT_EQ(times.NearestBefore(0.000002f), 0U);
    EXPECT_EQ(times.NearestBefore(0.0000009f), std::nullopt);
}

} // namespace

#include "keys/rules/KeyTimeRules.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct FitCase {
    const char* name;
    KeySpan present;
    KeySpan proposed;
    std::vector<KeySpan> others;
    bool fits;
    KeySpan expected;
};

std::string NameOf(const ::testing::TestParamInfo<FitCase>& info) {
    return info.param.name;
}

class FitKeyTest : public ::testing::TestWithParam<FitCase> {};

TEST_P(FitKeyTest, FitsTheProposal) {
    const FitCase& given = GetParam();
    KeySpan proposed = given.proposed;
    EXPECT_EQ(FitAmong(given.others, given.present, proposed, given.present.duration), given.fits);
    EXPECT_EQ(proposed.start, given.expected.start);
    EXPECT_EQ(proposed.duration, given.expected.duration);
}

INSTANTIATE_TEST_SUITE_P(
    Move, FitKeyTest,
    ::testing::Values(FitCase{"FreePlace", {10, 2}, {14, 2}, {{20, 5}}, true, {14, 2}},
                      FitCase{"StartInsideGoesToTheEnd", {10, 2}, {14, 2}, {{13, 3}}, true, {16, 2}},
                      FitCase{"EndInsideGoesInFront", {10, 2}, {12, 2}, {{13, 3}}, true, {11, 2}},
                      FitCase{"BothInsideGoesToTheEnd", {10, 1}, {14, 1}, {{13, 3}}, true, {16, 1}},
                      FitCase{"MayTouchTheNext", {10, 2}, {11, 2}, {{13, 3}}, true, {11, 2}},
                      FitCase{"MayTouchTheOneBefore", {10, 2}, {16, 2}, {{13, 3}}, true, {16, 2}},
                      FitCase{"WouldSwallow", {0, 5}, {9, 5}, {{11, 1}}, false, {9, 5}},
                      FitCase{"WouldSwallowOneThatEndsWithIt", {0, 5}, {9, 5}, {{12, 2}}, false, {9, 5}},
                      FitCase{"SameStartIsNoOverlap", {10, 2}, {14, 2}, {{14, 2}}, true, {14, 2}},
                      FitCase{"SameStartSwallowsUnseen", {10, 3}, {14, 3}, {{14, 1}}, true, {14, 3}},
                      FitCase{"SameStartAsALongerOne", {10, 2}, {14, 2}, {{14, 6}}, true, {12, 2}},
                      FitCase{"StuckInAnOverlap", {10, 2}, {30, 2}, {{9, 6}}, false, {30, 2}},
                      FitCase{"ThrownForwardNearTheStart", {6, 5}, {0, 5}, {{2, 8}}, true, {3, 5}},
                      FitCase{"OnlyTheFirstHitCounts", {10, 2}, {14, 2}, {{13, 3}, {15, 9}}, true, {16, 2}},
                      FitCase{"FirstHitOfTheOtherOrder", {10, 2}, {14, 2}, {{15, 9}, {13, 3}}, true, {13, 2}},
                      FitCase{"RefusalBeforeAHit", {0, 5}, {9, 5}, {{11, 1}, {13, 9}}, false, {9, 5}},
                      FitCase{"HitBeforeARefusal", {0, 5}, {9, 5}, {{13, 9}, {11, 1}}, true, {8, 5}}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    Resize, FitKeyTest,
    ::testing::Values(FitCase{"RightGripIntoTheNext", {10, 2}, {10, 4}, {{13, 3}}, true, {10, 3}},
                      FitCase{"RightGripToTheNext", {10, 2}, {10, 3}, {{13, 3}}, true, {10, 3}},
                      FitCase{"RightGripOverTheNext", {10, 2}, {10, 7}, {{13, 3}}, false, {10, 7}},
                      FitCase{"RightGripToTheEndOfTheNext", {10, 2}, {10, 6}, {{13, 3}}, false, {10, 6}},
                      FitCase{"LeftGripIntoTheOneBefore", {10, 2}, {8, 4}, {{6, 3}}, true, {9, 3}},
                      FitCase{"LeftGripToTheOneBefore", {10, 2}, {9, 3}, {{6, 3}}, true, {9, 3}},
                      FitCase{"LeftGripOverTheOneBefore", {10, 2}, {5, 7}, {{6, 3}}, false, {5, 7}},
                      FitCase{"ShrinksFreely", {10, 2}, {10, 1}, {{13, 3}}, true, {10, 1}}),
    NameOf);

} // namespace

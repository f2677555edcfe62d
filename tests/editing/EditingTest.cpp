#include "tests/editing/Runner.h"

#include <chrono>
#include <gtest/gtest.h>

namespace editing {

namespace {

/// So many steps take about ten seconds in a debug build.
constexpr int kSteps = 3000;

TEST(EditingTest, NothingIsLostAndNothingDangles) {
    EXPECT_TRUE(RunManySteps(20261121, kSteps));
}

TEST(EditingTest, NorWithStepsThatNobodyTriedBefore) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_TRUE(RunManySteps(static_cast<std::uint64_t>(now.count()), kSteps));
}

} // namespace

} // namespace editing

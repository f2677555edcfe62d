#include "tests/editing/Shrinker.h"

#include "tests/editing/Operations.h"
#include "tests/editing/Runner.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;

namespace editing {

namespace {

Step Named(const char* name, int number = 0) {
    Step step;
    step.operation = FindOperation(name);
    step.numbers[0] = number;
    return step;
}

bool Has(const std::vector<Step>& steps, const Step& wanted) {
    return std::ranges::find(steps, wanted) != steps.end();
}

TEST(StepTest, TextAndBack) {
    for (const Step& step : RandomSteps(1, 200)) {
        EXPECT_EQ(StepFromText(ToText(step)), step);
    }
}

TEST(StepTest, LinesThatAreNoStepGiveNone) {
    EXPECT_EQ(StepFromText(""), std::nullopt);
    EXPECT_EQ(StepFromText("no-such-thing 1 2 3 4"), std::nullopt);
    EXPECT_EQ(StepFromText("drag 1 2"), std::nullopt);
}

TEST(StepTest, SameSeedGivesTheSameSteps) {
    EXPECT_EQ(RandomSteps(7, 100), RandomSteps(7, 100));
    EXPECT_NE(RandomSteps(7, 100), RandomSteps(8, 100));
}

TEST(StepTest, EveryOperationIsDrawn) {
    std::vector<int> drawn;
    for (const Step& step : RandomSteps(3, 20000)) {
        drawn.push_back(step.operation);
    }
    for (int i = 0; i < static_cast<int>(Operations().size()); ++i) {
        if (Operations()[static_cast<std::size_t>(i)].weight == 0) {
            continue; // it happens behind a dialog alone
        }
        EXPECT_NE(std::ranges::find(drawn, i), drawn.end()) << Operations()[static_cast<std::size_t>(i)].name;
    }
}

TEST(ShrinkTest, KeepsWhatFailsInItsOrder) {
    std::vector<Step> steps = RandomSteps(5, 300);
    const Step first = Named("paint", -1);
    const Step second = Named("wheel", -2);
    const Step third = Named("fold", -3);
    steps.insert(steps.begin() + 250, third);
    steps.insert(steps.begin() + 120, second);
    steps.insert(steps.begin() + 10, first);
    int runs = 0;
    const auto shrunk = Shrink(steps, [&](const std::vector<Step>& part) {
        ++runs;
        return Has(part, first) && Has(part, second) && Has(part, third);
    });
    EXPECT_THAT(shrunk, ElementsAre(first, second, third));
    EXPECT_LT(runs, 150);
}

TEST(ShrinkTest, OneStepThatFailsAloneRemains) {
    const std::vector<Step> steps = RandomSteps(5, 64);
    EXPECT_EQ(Shrink(steps, [](const std::vector<Step>&) { return true; }).size(), 1u);
}

TEST(ShrinkTest, NeedsAllOfThem) {
    const std::vector<Step> steps = RandomSteps(5, 9);
    EXPECT_EQ(Shrink(steps, [&](const std::vector<Step>& part) { return part == steps; }), steps);
}

TEST(ShrinkTest, NumbersThatDoNotMatterBecomeZero) {
    Step step = Named("drag", 12);
    step.numbers = {12, 13, 14};
    step.luck = 15;
    const auto simple =
        Simplify({step}, [](const std::vector<Step>& part) { return part[0].numbers[1] == 13; });
    EXPECT_EQ(simple[0].numbers, (std::array<int, 3>{0, 13, 0}));
    EXPECT_EQ(simple[0].luck, 0u);
}

TEST(ShrinkTest, PlantedFaultInFiveHundredStepsShrinksToItsTwo) {
    std::vector<Step> steps = RandomSteps(11, 500);
    std::erase_if(steps, [](const Step& step) { return step.operation == FindOperation("undo"); });
    const Step stop = Named("stop");
    const Step undo = Named("undo");
    steps.resize(498, Named("paint"));
    steps.insert(steps.begin() + 100, stop);
    steps.insert(steps.begin() + 420, undo);
    const Children children(/*planted*/ true);
    const Outcome outcome = children.Run(steps);
    EXPECT_EQ(outcome.kind, "planted");
    EXPECT_EQ(outcome.step, 420);
    EXPECT_THAT(children.ShrinkFailing(steps, outcome), ElementsAre(stop, undo));
}

} // namespace

} // namespace editing

#include "tests/editing/Operations.h"
#include "tests/editing/Runner.h"
#include "tests/editing/World.h"

#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <utility>

namespace editing {

namespace {

/// So many steps take about ten seconds in a debug build.
constexpr int kSteps = 3000;

using Times = std::map<const IFilmKey*, std::pair<float, float>>;

Times TimesOf(const World& world) {
    Times times;
    for (const CFilmTrack* track : world.Tracks()) {
        for (const IFilmKey* key : track->keys) {
            times[key] = {key->time, key->endTime};
        }
    }
    return times;
}

/// What the steps of one kind did to keys.
struct Effect {
    int added = 0;
    int removed = 0;
    int moved = 0;
};

Effect Compare(const Times& before, const Times& after) {
    Effect effect;
    for (const auto& [key, times] : before) {
        const auto now = after.find(key);
        effect.removed += now == after.end() ? 1 : 0;
        effect.moved += now != after.end() && now->second != times ? 1 : 0;
    }
    effect.added =
        static_cast<int>(after.size() - (before.size() - static_cast<std::size_t>(effect.removed)));
    return effect;
}

std::map<std::string, Effect> EffectsOf(const std::vector<Step>& steps) {
    World world;
    std::map<std::string, Effect> effects;
    for (const Step& step : steps) {
        const Times before = TimesOf(world);
        world.Execute(step);
        const Effect effect = Compare(before, TimesOf(world));
        Effect& sum = effects[Operations()[static_cast<std::size_t>(step.operation)].name];
        sum.added += effect.added;
        sum.removed += effect.removed;
        sum.moved += effect.moved;
    }
    return effects;
}

/// A run that edits nothing would find nothing.
TEST(EditingTest, RunsReachTheEdits) {
    auto effects = EffectsOf(RandomSteps(4, 4000));
    EXPECT_GT(effects["drag"].moved, 20);
    EXPECT_GT(effects["release"].added, 2); // clones
    EXPECT_GT(effects["key-menu"].removed, 5);
    EXPECT_GT(effects["key-menu"].moved, 5);
    EXPECT_GT(effects["row-menu"].added, 5);
    EXPECT_GT(effects["main-menu"].added, 3); // cameras, actors
    EXPECT_GT(effects["move-object"].added, 3);
    EXPECT_GT(effects["adjust-time"].moved, 3);
    EXPECT_GT(effects["load-level"].removed, 100);
}

TEST(EditingTest, NothingIsLostAndNothingDangles) {
    EXPECT_TRUE(RunManySteps(20261121, kSteps));
}

TEST(EditingTest, NorWithStepsThatNobodyTriedBefore) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_TRUE(RunManySteps(static_cast<std::uint64_t>(now.count()), kSteps));
}

} // namespace

} // namespace editing

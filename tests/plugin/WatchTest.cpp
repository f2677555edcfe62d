#include "plugin/base/Watch.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <vector>

namespace {

struct Thing : Watched {
    explicit Thing(int newValue = 0) : value(newValue) {}
    ~Thing() {
        if (endsEarly) {
            EndWatches();
        }
        if (asked != nullptr) {
            wasAliveInside = asked->IsAlive();
        }
    }

    int value;
    bool endsEarly = false;
    const Watch<Thing>* asked = nullptr;
    inline static bool wasAliveInside = false;
};

TEST(WatchTest, FollowsNothingByDefault) {
    const Watch<Thing> watch;
    EXPECT_EQ(watch.Get(), nullptr);
    EXPECT_FALSE(watch);
}

TEST(WatchTest, GivesItsObjectWhileThatLives) {
    auto thing = std::make_unique<Thing>(7);
    const Watch<Thing> watch(thing.get());
    EXPECT_EQ(watch.Get(), thing.get());
    EXPECT_EQ(watch->value, 7);
    thing.reset();
    EXPECT_EQ(watch.Get(), nullptr);
    EXPECT_FALSE(watch.IsAlive());
}

TEST(WatchTest, EveryWatchHearsOfTheEnd) {
    auto thing = std::make_unique<Thing>();
    Thing other;
    const std::vector<Watch<Thing>> watches(5, Watch<Thing>(thing.get()));
    const Watch<Thing> another(&other);
    thing.reset();
    for (const Watch<Thing>& watch : watches) {
        EXPECT_FALSE(watch);
    }
    EXPECT_TRUE(another);
}

TEST(WatchTest, WatchesGoInAnyOrder) {
    auto thing = std::make_unique<Thing>();
    std::optional<Watch<Thing>> first(std::in_place, thing.get());
    std::optional<Watch<Thing>> second(std::in_place, thing.get());
    std::optional<Watch<Thing>> third(std::in_place, thing.get());
    second.reset();
    third.reset();
    const Watch<Thing> last(thing.get());
    first.reset();
    EXPECT_EQ(last.Get(), thing.get());
    thing.reset();
    EXPECT_FALSE(last);
}

TEST(WatchTest, AssignedWatchFollowsTheOther) {
    auto one = std::make_unique<Thing>(1);
    auto two = std::make_unique<Thing>(2);
    Watch<Thing> watch(one.get());
    const Watch<Thing> source(two.get());
    watch = source;
    one.reset();
    EXPECT_EQ(watch->value, 2);
    two.reset();
    EXPECT_FALSE(watch);
    watch = Watch<Thing>();
    EXPECT_FALSE(watch);
}

TEST(WatchTest, DestructorMayEndItsWatchesFirst) {
    auto thing = std::make_unique<Thing>();
    const Watch<Thing> watch(thing.get());
    thing->asked = &watch;
    thing.reset();
    EXPECT_TRUE(Thing::wasAliveInside) << "the base class ends last";

    thing = std::make_unique<Thing>();
    thing->endsEarly = true;
    const Watch<Thing> early(thing.get());
    thing->asked = &early;
    thing.reset();
    EXPECT_FALSE(Thing::wasAliveInside);
}

} // namespace

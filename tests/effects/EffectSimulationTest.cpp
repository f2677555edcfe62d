#include "host/stage/effects/EffectSimulation.h"

#include "host/engine/Math.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using stage::EffectSimulation;
using stage::EffectSprite;

template <class Looks> EffectSimulation Simulate(const Looks& looks, std::uint32_t seed = 1) {
    stage::Effect effect;
    effect.looks = looks;
    return {effect, seed};
}

/// Two particles a second that live for two, straight up.
stage::ParticleEffect Fountain() {
    stage::ParticleEffect looks;
    looks.rate = 2.0f;
    looks.life = 2.0f;
    looks.variation = 0.0f;
    looks.speed = 100.0f;
    looks.spread = 0.0f;
    looks.gravity = 50.0f;
    looks.sizeBegin = 10.0f;
    looks.sizeEnd = 30.0f;
    return looks;
}

std::vector<float> Heights(const std::vector<EffectSprite>& sprites) {
    std::vector<float> heights;
    heights.reserve(sprites.size());
    for (const EffectSprite& sprite : sprites) {
        heights.push_back(sprite.place.y);
    }
    return heights;
}

TEST(EffectSimulationTest, ParticlesFlyFallGrowAndFade) {
    const auto sprites = Simulate(Fountain()).At(1.25f);
    // Born at 0, 0.5 and 1: 1.25, 0.75 and 0.25 seconds old. 100 * age - 25 * age * age.
    EXPECT_EQ(Heights(sprites), (std::vector<float>{85.9375f, 60.9375f, 23.4375f}));
    EXPECT_EQ(sprites[0].size, 22.5f) << "10 + 20 * 1.25 / 2";
    EXPECT_EQ(sprites[2].size, 12.5f);
    EXPECT_EQ(sprites[0].color.a, 0.375f);
    EXPECT_EQ(sprites[2].color.a, 0.875f);
    EXPECT_EQ(sprites[0].place.x, 0.0f);
    EXPECT_EQ(sprites[0].place.z, 0.0f);
}

TEST(EffectSimulationTest, AParticleIsGoneWhenItsLifeIsOver) {
    // Born at 0, 0.5, 1, 1.5 and 2; the first is two seconds old.
    EXPECT_EQ(Simulate(Fountain()).At(2.0f).size(), 4u);
    EXPECT_EQ(Simulate(Fountain()).At(1.99f).size(), 4u);
    EXPECT_EQ(Simulate(Fountain()).At(100.0f).size(), 4u);
}

TEST(EffectSimulationTest, AfterTheStopNoParticleIsBorn) {
    EXPECT_EQ(Heights(Simulate(Fountain()).At(1.25f, 1.0f)), (std::vector<float>{85.9375f, 60.9375f}));
    EXPECT_TRUE(Simulate(Fountain()).At(3.0f, 1.0f).empty());
}

TEST(EffectSimulationTest, ParticlesKeepToTheirConeAndDisc) {
    stage::ParticleEffect looks = Fountain();
    looks.rate = 500.0f;
    looks.gravity = 0.0f;
    looks.spread = 30.0f;
    float widest = 1.0f;
    for (const EffectSprite& sprite : Simulate(looks).At(1.9f)) {
        const float length = engine::Length(sprite.place);
        if (length > 1.0f) {
            widest = std::min(widest, sprite.place.y / length);
        }
    }
    EXPECT_GE(widest, 0.86602f) << "the cosine of 30 degrees";
    EXPECT_LT(widest, 0.88f) << "and the cone is filled";
    looks.spread = 0.0f;
    looks.radius = 40.0f;
    float farthest = 0.0f;
    for (const EffectSprite& sprite : Simulate(looks).At(1.9f)) {
        farthest = std::max(farthest, std::hypot(sprite.place.x, sprite.place.z));
    }
    EXPECT_LE(farthest, 40.001f);
    EXPECT_GT(farthest, 38.0f);
}

TEST(EffectSimulationTest, VariationStaysWithinItsShare) {
    stage::ParticleEffect looks = Fountain();
    looks.gravity = 0.0f;
    looks.variation = 0.25f;
    looks.rate = 200.0f;
    for (const EffectSprite& sprite : Simulate(looks).At(1.0f)) {
        // The oldest is one second old and no faster than 125.
        EXPECT_LE(sprite.place.y, 125.0f);
    }
    // 200 a second live for at least 1.5 and at most 2.5 seconds.
    const std::size_t count = Simulate(looks).At(50.0f).size();
    EXPECT_GE(count, 300u);
    EXPECT_LE(count, 501u);
}

TEST(EffectSimulationTest, TheSameSeedAndTimeGiveTheSameInAnyOrder) {
    stage::ParticleEffect looks = Fountain();
    looks.spread = 60.0f;
    looks.variation = 0.5f;
    const EffectSimulation one = Simulate(looks, 7);
    const EffectSimulation two = Simulate(looks, 7);
    const auto late = Heights(one.At(5.0f));
    const auto early = Heights(one.At(1.0f));
    EXPECT_EQ(Heights(two.At(1.0f)), early);
    EXPECT_EQ(Heights(two.At(5.0f)), late);
    EXPECT_NE(Heights(Simulate(looks, 8).At(5.0f)), late);
}

TEST(EffectSimulationTest, ASequenceGoesThroughItsFramesOnce) {
    stage::SequenceEffect looks;
    looks.frames = {{0.5f, 100.0f, 0.0f, {1.0f, 1.0f, 1.0f, 1.0f}},
                    {0.5f, 200.0f, 90.0f, {0.0f, 0.0f, 0.0f, 0.0f}}};
    const EffectSimulation simulation = Simulate(looks);
    EXPECT_EQ(simulation.Seconds(), 1.0f);
    const auto between = simulation.At(0.25f);
    ASSERT_EQ(between.size(), 1u);
    EXPECT_EQ(between[0].size, 150.0f);
    EXPECT_EQ(between[0].turn, 45.0f);
    EXPECT_EQ(between[0].color, (stage::EffectColor{0.5f, 0.5f, 0.5f, 0.5f}));
    ASSERT_EQ(simulation.At(0.75f).size(), 1u);
    EXPECT_EQ(simulation.At(0.75f)[0].size, 200.0f) << "the last frame holds";
    EXPECT_TRUE(simulation.At(1.0f).empty());
}

TEST(EffectSimulationTest, ARibbonFollowsThePathAndThinsOut) {
    stage::TraceEffect looks;
    looks.length = 1.0f;
    looks.width = 10.0f;
    EffectSimulation simulation = Simulate(looks);
    simulation.SetPath([](float seconds) { return Vector3{100.0f * seconds, 0.0f, 0.0f}; });
    const auto whole = simulation.At(2.0f);
    ASSERT_GE(whole.size(), 60u);
    EXPECT_FLOAT_EQ(whole.front().place.x, 200.0f);
    EXPECT_NEAR(whole.back().tail.x, 100.0f, 0.01f);
    EXPECT_EQ(whole.front().size, 10.0f);
    EXPECT_EQ(whole.front().color.a, 1.0f);
    EXPECT_LT(whole.back().size, 0.2f);
    for (std::size_t i = 1; i < whole.size(); ++i) {
        EXPECT_EQ(whole[i].place, whole[i - 1].tail) << i;
    }
    // A quarter of a second after its start it is 25 units long.
    EXPECT_NEAR(simulation.At(0.25f).back().tail.x, 0.0f, 0.01f);
    EXPECT_FLOAT_EQ(simulation.At(0.25f).front().place.x, 25.0f);
}

TEST(EffectSimulationTest, MarksStayWhereTheyWereMadeLeftAndRight) {
    stage::TraceEffect looks;
    looks.length = 1.0f;
    looks.width = 10.0f;
    looks.step = 29.5f;
    EffectSimulation simulation = Simulate(looks);
    simulation.SetPath([](float seconds) { return Vector3{60.0f * seconds, 0.0f, 0.0f}; });
    // One unit each sixtieth of a second: marks at 0, 30, 60, 90, 120; those of the last second are 90 and
    // 120.
    const auto marks = simulation.At(2.1f);
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_NEAR(marks[0].place.x, 90.0f, 0.01f);
    EXPECT_FLOAT_EQ(marks[0].place.y, -10.0f);
    EXPECT_NEAR(marks[0].color.a, 0.4f, 0.001f) << "0.6 of its second are over";
    EXPECT_NEAR(marks[1].place.x, 120.0f, 0.01f);
    EXPECT_FLOAT_EQ(marks[1].place.y, 10.0f);
}

TEST(EffectSimulationTest, AFlarePulses) {
    stage::FlareEffect looks;
    looks.size = 80.0f;
    looks.halo = 2.0f;
    looks.rays = 6.0f;
    looks.pulse = 0.5f;
    looks.depth = 0.8f;
    const EffectSimulation simulation = Simulate(looks);
    const auto bright = simulation.At(0.0f);
    ASSERT_EQ(bright.size(), 3u);
    EXPECT_EQ(bright[0].size, 160.0f) << "the halo";
    EXPECT_FLOAT_EQ(bright[0].color.a, 0.25f);
    EXPECT_EQ(bright[1].size, 80.0f);
    EXPECT_FLOAT_EQ(bright[1].color.a, 1.0f);
    EXPECT_EQ(bright[2].shape, stage::EffectShape::Star);
    EXPECT_EQ(bright[2].rays, 6.0f);
    // Half a pulse of two seconds later a fifth of the light is left.
    EXPECT_NEAR(simulation.At(1.0f)[1].color.a, 0.2f, 1e-5f);
    EXPECT_NEAR(simulation.At(2.0f)[1].color.a, 1.0f, 1e-5f);
}

TEST(EffectSimulationTest, RainFallsThroughItsBoxAndComesAgain) {
    stage::RainEffect looks;
    looks.drops = 100.0f;
    looks.speed = 300.0f;
    looks.wind = 400.0f;
    looks.length = 50.0f;
    looks.area = 600.0f;
    looks.variation = 0.0f;
    const EffectSimulation simulation = Simulate(looks);
    const auto first = simulation.At(1.0f);
    const auto later = simulation.At(1.1f);
    // Two seconds of 300 are the box's height; its wind of 400 goes through the box 4/3 times meanwhile.
    const auto again = simulation.At(3.0f);
    ASSERT_EQ(first.size(), 100u);
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_LE(std::abs(first[i].place.x), 300.0f);
        EXPECT_LE(std::abs(first[i].place.y), 300.0f);
        EXPECT_LE(std::abs(first[i].place.z), 300.0f);
        const float fallen = first[i].place.y - later[i].place.y;
        EXPECT_NEAR(fallen < 0.0f ? fallen + 600.0f : fallen, 30.0f, 0.01f);
        EXPECT_NEAR(std::remainder(again[i].place.y - first[i].place.y, 600.0f), 0.0f, 0.01f);
        // A streak of 50 against the way of (400, -300): 40 back and 30 up.
        EXPECT_NEAR(first[i].tail.x - first[i].place.x, -40.0f, 0.001f);
        EXPECT_NEAR(first[i].tail.y - first[i].place.y, 30.0f, 0.001f);
    }
}

TEST(EffectSimulationTest, ABlindFadesInAndOut) {
    stage::BlindEffect looks;
    looks.color = {1.0f, 0.5f, 0.25f, 1.0f};
    looks.opacity = 0.5f;
    looks.fadeIn = 1.0f;
    looks.fadeOut = 2.0f;
    const EffectSimulation simulation = Simulate(looks);
    EXPECT_EQ(simulation.Screen(0.0f, 4.0f).a, 0.0f);
    EXPECT_EQ(simulation.Screen(0.5f, 4.0f).a, 0.25f);
    EXPECT_EQ(simulation.Screen(1.5f, 4.0f), (stage::EffectColor{1.0f, 0.5f, 0.25f, 0.5f}));
    EXPECT_EQ(simulation.Screen(3.0f, 4.0f).a, 0.25f);
    EXPECT_EQ(simulation.Screen(4.0f, 4.0f).a, 0.0f);
    EXPECT_EQ(simulation.Screen(-1.0f, 4.0f).a, 0.0f);
    EXPECT_EQ(simulation.Screen(5.0f, 4.0f).a, 0.0f);
    // A key shorter than its fades: half the fade in, a quarter of the fade out.
    EXPECT_EQ(simulation.Screen(0.5f, 1.0f).a, 0.0625f);
    EXPECT_TRUE(simulation.At(1.0f).empty());
}

TEST(EffectSimulationTest, ABlindWithoutFadesIsThereAtOnce) {
    stage::BlindEffect looks;
    looks.fadeIn = looks.fadeOut = 0.0f;
    EXPECT_EQ(Simulate(looks).Screen(0.0f, 1.0f).a, 1.0f);
    EXPECT_EQ(Simulate(looks).Screen(1.0f, 1.0f).a, 1.0f);
    EXPECT_EQ(Simulate(Fountain()).Screen(0.5f, 1.0f).a, 0.0f) << "no blind";
}

TEST(EffectSimulationTest, TimesThatAreNoneShowNothing) {
    const EffectSimulation simulation = Simulate(Fountain());
    for (const float time :
         {-0.1f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 1e30f}) {
        EXPECT_TRUE(simulation.At(time).empty()) << time;
        EXPECT_EQ(simulation.Screen(time, 1.0f).a, 0.0f) << time;
    }
}

} // namespace

#include "host/stage/render/SkyLight.h"

#include <gtest/gtest.h>
#include <limits>

using render::RenderSky;
using render::SkyForSun;
using render::SunLight;

namespace {

TEST(SkyLightTest, TheSkyDarkensAsTheSunSinks) {
    const glm::vec3 white(1.0f);
    const RenderSky noon = SkyForSun({0, 1, 0.2f}, white);
    const RenderSky evening = SkyForSun({1, 0.1f, 0}, white);
    const RenderSky night = SkyForSun({0, -1, 0}, white);
    EXPECT_GT(noon.zenith.b, evening.zenith.b);
    EXPECT_GT(evening.zenith.b, night.zenith.b);
    EXPECT_GT(evening.horizon.r, evening.horizon.b) << "evenings are warm";
    EXPECT_LT(noon.horizon.r, noon.horizon.b);
}

TEST(SkyLightTest, ASunBelowTheHorizonGivesNoLight) {
    EXPECT_EQ(SunLight({0, -1, 0}, {1, 1, 1}).color, glm::vec3(0));
    EXPECT_GT(SunLight({0, 1, 0}, {1, 1, 1}).color.r, 1.0f);
}

TEST(SkyLightTest, TheSunKeepsItsColour) {
    const render::RenderSun sun = SunLight({0, 1, 0}, {1.0f, 0.5f, 0.0f});
    EXPECT_FLOAT_EQ(sun.color.g, sun.color.r * 0.5f);
    EXPECT_EQ(sun.color.b, 0.0f);
}

TEST(SkyLightTest, LengthsDoNotMatter) {
    EXPECT_EQ(SunLight({0, 2, 2}, {1, 1, 1}).color, SunLight({0, 500, 500}, {1, 1, 1}).color);
}

TEST(SkyLightTest, DirectionsThatTellNothingGiveNoon) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(SunLight({0, 0, 0}, {1, 1, 1}).color, SunLight({0, 1, 0}, {1, 1, 1}).color);
    EXPECT_EQ(SkyForSun({kNan, 0, 0}, {1, 1, 1}).zenith, SkyForSun({0, 1, 0}, {1, 1, 1}).zenith);
}

} // namespace

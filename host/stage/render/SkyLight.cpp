#include "host/stage/render/SkyLight.h"

#include <array>
#include <cmath>

namespace render {

namespace {

struct Mood {
    float height; ///< sine of the sun's angle above the horizon
    glm::vec3 zenith;
    glm::vec3 horizon;
    glm::vec3 ground;
    float strength; ///< of the sun's light
    float fog;
};

constexpr std::array<Mood, 4> kMoods{{
    {-0.10f, {0.010f, 0.016f, 0.040f}, {0.030f, 0.042f, 0.075f}, {0.014f, 0.016f, 0.024f}, 0.0f, 0.004f},
    {0.02f, {0.060f, 0.090f, 0.200f}, {0.420f, 0.240f, 0.160f}, {0.060f, 0.050f, 0.050f}, 0.55f, 0.006f},
    {0.22f, {0.090f, 0.170f, 0.350f}, {0.460f, 0.400f, 0.340f}, {0.110f, 0.095f, 0.085f}, 1.35f, 0.005f},
    {0.55f, {0.085f, 0.200f, 0.430f}, {0.400f, 0.490f, 0.560f}, {0.130f, 0.120f, 0.110f}, 1.60f, 0.004f},
}};

float Height(const glm::vec3& direction) {
    const float length = glm::length(direction);
    return length > 0.0f && std::isfinite(length) ? direction.y / length : 1.0f;
}

Mood MoodAt(float height) {
    if (height <= kMoods.front().height) {
        return kMoods.front();
    }
    for (std::size_t i = 1; i < kMoods.size(); ++i) {
        const Mood& a = kMoods[i - 1];
        const Mood& b = kMoods[i];
        if (height < b.height) {
            const float u = (height - a.height) / (b.height - a.height);
            return {height,
                    glm::mix(a.zenith, b.zenith, u),
                    glm::mix(a.horizon, b.horizon, u),
                    glm::mix(a.ground, b.ground, u),
                    glm::mix(a.strength, b.strength, u),
                    glm::mix(a.fog, b.fog, u)};
        }
    }
    return kMoods.back();
}

} // namespace

RenderSky SkyForSun(const glm::vec3& direction, const glm::vec3& color) {
    const Mood mood = MoodAt(Height(direction));
    // A dim or tinted sun colours what the sky gives back, but a third of it stays the sky's own.
    const glm::vec3 share = glm::vec3(0.35f) + glm::clamp(color, glm::vec3(0.0f), glm::vec3(1.5f)) * 0.65f;
    RenderSky sky;
    sky.zenith = mood.zenith * share;
    sky.horizon = mood.horizon * share;
    sky.ground = mood.ground * share;
    sky.fog = mood.fog;
    return sky;
}

RenderSun SunLight(const glm::vec3& direction, const glm::vec3& color) {
    RenderSun sun;
    sun.direction = direction;
    sun.color = glm::max(color, glm::vec3(0.0f)) * MoodAt(Height(direction)).strength;
    return sun;
}

} // namespace render

#include "host/stage/render/GroundGrid.h"

#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

constexpr float kSquare = engine::Metres(1.0f);
constexpr int kReach = 60;                     ///< squares
constexpr float kLift = engine::Metres(0.01f); ///< above the ground, so that a floor at 0 does not swallow it

glm::vec4 LineColor(int place, bool alongX) {
    if (place == 0) {
        return alongX ? glm::vec4(0.85f, 0.30f, 0.28f, 0.9f) : glm::vec4(0.28f, 0.45f, 0.90f, 0.9f);
    }
    return place % 10 == 0 ? glm::vec4(0.10f, 0.11f, 0.13f, 0.45f) : glm::vec4(0.12f, 0.13f, 0.15f, 0.18f);
}

/// The square, a multiple of ten, under a place.
int Center(float place) {
    // Far from the origin the squares would lose their precision, and nobody sees them there.
    constexpr float kLimit = 100000.0f;
    return static_cast<int>(std::floor(std::clamp(place / kSquare, -kLimit, kLimit) / 10.0f)) * 10;
}

} // namespace

std::vector<RenderLine> GroundGrid(const glm::vec3& eye) {
    const int centerX = Center(eye.x);
    const int centerZ = Center(eye.z);
    std::vector<RenderLine> lines;
    lines.reserve(4 * kReach + 2);
    for (int i = -kReach; i <= kReach; ++i) {
        const float x = static_cast<float>(centerX + i) * kSquare;
        const float z = static_cast<float>(centerZ + i) * kSquare;
        const float reach = static_cast<float>(kReach) * kSquare;
        const float midX = static_cast<float>(centerX) * kSquare;
        const float midZ = static_cast<float>(centerZ) * kSquare;
        const float fade = 1.0f - 0.8f * static_cast<float>(std::abs(i)) / static_cast<float>(kReach);
        RenderLine alongX{
            {midX - reach, kLift, z}, {midX + reach, kLift, z}, LineColor(centerZ + i, true), 1.0f};
        RenderLine alongZ{
            {x, kLift, midZ - reach}, {x, kLift, midZ + reach}, LineColor(centerX + i, false), 1.0f};
        alongX.color.a *= fade;
        alongZ.color.a *= fade;
        lines.push_back(alongX);
        lines.push_back(alongZ);
    }
    return lines;
}

} // namespace render

#include "host/stage/render/GroundGrid.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kReach = 60;
constexpr float kLift = 0.01f; ///< metres above the ground, so that a floor at 0 does not swallow it

glm::vec4 LineColor(int place, bool alongX) {
    if (place == 0) {
        return alongX ? glm::vec4(0.85f, 0.30f, 0.28f, 0.9f) : glm::vec4(0.28f, 0.45f, 0.90f, 0.9f);
    }
    return place % 10 == 0 ? glm::vec4(0.10f, 0.11f, 0.13f, 0.45f) : glm::vec4(0.12f, 0.13f, 0.15f, 0.18f);
}

} // namespace

std::vector<RenderLine> GroundGrid(const glm::vec3& eye) {
    // Far from the origin the squares would lose their precision, and nobody sees them there.
    const float limit = 100000.0f;
    const int centerX = static_cast<int>(std::floor(std::clamp(eye.x, -limit, limit) / 10.0f)) * 10;
    const int centerZ = static_cast<int>(std::floor(std::clamp(eye.z, -limit, limit) / 10.0f)) * 10;
    std::vector<RenderLine> lines;
    lines.reserve(4 * kReach + 2);
    for (int i = -kReach; i <= kReach; ++i) {
        const auto x = static_cast<float>(centerX + i);
        const auto z = static_cast<float>(centerZ + i);
        const auto reach = static_cast<float>(kReach);
        const auto midX = static_cast<float>(centerX);
        const auto midZ = static_cast<float>(centerZ);
        const float fade = 1.0f - 0.8f * static_cast<float>(std::abs(i)) / reach;
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

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

constexpr glm::vec4 kAxisColors[] = {
    {0.85f, 0.30f, 0.28f, 0.9f}, {0.30f, 0.62f, 0.20f, 0.9f}, {0.28f, 0.45f, 0.90f, 0.9f}};

/// What a flat view shows, along two axes of the world.
struct FlatWindow {
    int right;
    int up;
    glm::vec3 middle;
    float wide; ///< units on each side of the middle
    float high;
};

/// Lines that stand across axis `across` and run along `along`.
void AddFlatLines(std::vector<RenderLine>& lines, const FlatWindow& window, int across, int along,
                  float step) {
    const float reach = across == window.right ? window.wide : window.high;
    const float length = along == window.right ? window.wide : window.high;
    const auto first = static_cast<long>(std::ceil((window.middle[across] - reach) / step));
    const auto last = static_cast<long>(std::floor((window.middle[across] + reach) / step));
    for (long line = first; line <= last; ++line) {
        RenderLine drawn{
            window.middle, window.middle, {0.12f, 0.13f, 0.15f, line % 10 == 0 ? 0.45f : 0.15f}, 1.0f};
        drawn.from[across] = drawn.to[across] = static_cast<float>(line) * step;
        drawn.from[along] -= length;
        drawn.to[along] += length;
        if (line == 0) {
            drawn.color = kAxisColors[along];
        }
        lines.push_back(drawn);
    }
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

std::vector<RenderLine> FlatGrid(RenderGrid grid, const RenderCamera& camera) {
    std::vector<RenderLine> lines;
    const bool isFlat = camera.projection[3][3] == 1.0f;
    if (!isFlat || grid == RenderGrid::None || grid == RenderGrid::Ground) {
        return lines;
    }
    const glm::vec3 eye(glm::inverse(camera.view)[3]);
    const FlatWindow window{grid == RenderGrid::Side ? 2 : 0, grid == RenderGrid::Top ? 2 : 1, eye,
                            1.0f / camera.projection[0][0], 1.0f / camera.projection[1][1]};
    // Far from the origin the lines would lose their precision.
    constexpr float kFarthest = 1e7f;
    const float farthest = std::max(std::abs(eye[window.right]), std::abs(eye[window.up]));
    if (!(farthest < kFarthest) || !std::isfinite(window.wide) || !(window.high > 0.0f)) {
        return lines;
    }
    const float step = std::pow(10.0f, std::floor(std::log10(window.high / 3.0f)));
    AddFlatLines(lines, window, window.right, window.up, step);
    AddFlatLines(lines, window, window.up, window.right, step);
    return lines;
}

} // namespace render

#include "host/stage/render/HelperShapes.h"

#include "host/engine/Units.h"

#include <cmath>
#include <glm/gtc/constants.hpp>

namespace render::HelperShapes {

namespace {

using engine::Metres;

constexpr float kRayStart = Metres(0.14f);
constexpr float kRayEnd = Metres(0.35f);

glm::vec3 Across(const glm::vec3& axis) {
    const glm::vec3 other = std::abs(axis.y) < 0.9f ? glm::vec3(0, 1, 0) : glm::vec3(1, 0, 0);
    return glm::normalize(glm::cross(axis, other));
}

glm::vec4 Shown(const glm::vec3& linear) {
    const float peak = std::max({linear.r, linear.g, linear.b, 0.001f});
    return glm::vec4(glm::sqrt(glm::max(linear, glm::vec3(0.0f)) / peak), 1.0f);
}

} // namespace

void AddCircle(std::vector<RenderLine>& lines, const glm::vec3& center, const glm::vec3& axis, float radius,
               const glm::vec4& color, float width) {
    constexpr int kSteps = 48;
    const glm::vec3 u = Across(axis) * radius;
    const glm::vec3 v = glm::cross(axis, u);
    glm::vec3 previous = center + u;
    for (int i = 1; i <= kSteps; ++i) {
        const float angle = glm::two_pi<float>() * static_cast<float>(i) / kSteps;
        const glm::vec3 next = center + u * std::cos(angle) + v * std::sin(angle);
        lines.push_back({previous, next, color, width});
        previous = next;
    }
}

void AddPointLight(std::vector<RenderLine>& lines, const RenderLight& light, bool showRange, float size) {
    const glm::vec4 color = Shown(light.color);
    for (int x = -1; x <= 1; ++x) {
        for (int y = -1; y <= 1; ++y) {
            for (int z = -1; z <= 1; ++z) {
                const glm::vec3 way(x, y, z);
                const float length = glm::length(way);
                if (length > 0.0f) {
                    const glm::vec3 unit = way * (size / length);
                    lines.push_back(
                        {light.position + unit * kRayStart, light.position + unit * kRayEnd, color});
                }
            }
        }
    }
    if (showRange) {
        const glm::vec4 faint(glm::vec3(color), 0.6f);
        AddCircle(lines, light.position, {1, 0, 0}, light.range, faint, 1.2f);
        AddCircle(lines, light.position, {0, 1, 0}, light.range, faint, 1.2f);
        AddCircle(lines, light.position, {0, 0, 1}, light.range, faint, 1.2f);
    }
}

void AddCamera(std::vector<RenderLine>& lines, const glm::mat4& world, float fieldOfView, float aspect,
               float depth, const glm::vec4& color) {
    const float half = std::tan(fieldOfView * 0.5f) * depth;
    const glm::vec3 eye(world[3]);
    glm::vec3 corners[4];
    for (int i = 0; i < 4; ++i) {
        const float x = i == 0 || i == 3 ? -half * aspect : half * aspect;
        const float y = i < 2 ? -half : half;
        corners[i] = glm::vec3(world * glm::vec4(x, y, -depth, 1.0f));
    }
    for (int i = 0; i < 4; ++i) {
        lines.push_back({eye, corners[i], color});
        lines.push_back({corners[i], corners[(i + 1) % 4], color});
    }
    const glm::vec3 up = glm::vec3(world[1]) * half * 0.45f;
    const glm::vec3 middle = (corners[2] + corners[3]) * 0.5f;
    lines.push_back({glm::mix(corners[3], middle, 0.4f), middle + up, color});
    lines.push_back({glm::mix(corners[2], middle, 0.4f), middle + up, color});
    mesh::MeshBox body;
    body.Add({Metres(-0.12f), Metres(-0.14f), 0.0f});
    body.Add({Metres(0.12f), Metres(0.14f), Metres(0.5f)});
    AddBox(lines, body, world, color);
}

void AddBox(std::vector<RenderLine>& lines, const mesh::MeshBox& box, const glm::mat4& world,
            const glm::vec4& color) {
    for (int corner = 0; corner < 8; ++corner) {
        for (int axis = 1; axis < 8; axis <<= 1) {
            if ((corner & axis) == 0) {
                lines.push_back({glm::vec3(world * glm::vec4(box.Corner(corner), 1.0f)),
                                 glm::vec3(world * glm::vec4(box.Corner(corner | axis), 1.0f)), color});
            }
        }
    }
}

} // namespace render::HelperShapes

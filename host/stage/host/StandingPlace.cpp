#include "host/stage/host/StandingPlace.h"

#include <algorithm>

namespace stage {

namespace {

constexpr float kClear = 1.0f;   ///< units between a side and what stands before it
constexpr float kCarried = 3.0f; ///< units that a look beside a place may meet lower, if it is no side
constexpr glm::vec3 kUp(0.0f, 1.0f, 0.0f);

/// The horizontal part of a direction, of length 1; none of one that goes up or down.
glm::vec3 Level(const glm::vec3& direction) {
    const glm::vec3 flat(direction.x, 0.0f, direction.z);
    constexpr float kLeast = 1e-4f;
    return glm::length(flat) > kLeast ? glm::normalize(flat) : glm::vec3(0.0f);
}

/// How far the room goes from its place along a horizontal direction.
float Reach(const Room& room, const glm::vec3& way) {
    const glm::vec3 far(way.x > 0.0f ? room.high.x : room.low.x, 0.0f,
                        way.z > 0.0f ? room.high.z : room.low.z);
    return std::max(0.0f, glm::dot(far, way));
}

} // namespace

glm::vec3 StandingPlace(const ScenePicker& picker, const render::ViewRay& ray, float fallbackDistance,
                        const Room& room) {
    const std::optional<glm::vec3> met = picker.Meet(ray);
    if (!met) {
        return ray.origin + ray.direction * fallbackDistance;
    }
    const glm::vec3 way = Level(ray.direction);
    const bool isSeenFromAbove = ray.direction.y < 0.0f;
    if (isSeenFromAbove) {
        const std::optional<glm::vec3> below = picker.Meet({*met - way * kClear + kUp * kClear, -kUp});
        if (below && below->y > met->y - kCarried) {
            return *met;
        }
    }
    const glm::vec3 before = *met - way * (Reach(room, way) + kClear);
    return picker.Meet({before + kUp * (isSeenFromAbove ? kClear : -kClear), -kUp}).value_or(before);
}

} // namespace stage

#include "host/stage/gizmo/GizmoGeometry.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/constants.hpp>

namespace gizmo::GizmoGeometry {

namespace {
/// Square of the length, in units, below which a segment shows as a point.
constexpr float kAlongTheSight = engine::Metres(1e-6f) * engine::Metres(1e-6f);
} // namespace

int AxisOf(GizmoPart part) {
    const int axis = static_cast<int>(part) - static_cast<int>(GizmoPart::AxisX);
    return axis >= 0 && axis < 3 ? axis : -1;
}

int NormalOf(GizmoPart part) {
    switch (part) {
    case GizmoPart::PlaneYZ:
        return 0;
    case GizmoPart::PlaneZX:
        return 1;
    case GizmoPart::PlaneXY:
        return 2;
    default:
        return -1;
    }
}

bool IsFinitePoint(const glm::vec3& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

glm::vec3 CirclePoint(const glm::mat4& frame, int axis, int step, float radius) {
    const float angle = glm::two_pi<float>() * static_cast<float>(step) / kCircleSteps;
    const glm::vec3 u(frame[(axis + 1) % 3]);
    const glm::vec3 v(frame[(axis + 2) % 3]);
    return glm::vec3(frame[3]) + (u * std::cos(angle) + v * std::sin(angle)) * radius;
}

float DistanceToPoint(const render::ViewRay& ray, const glm::vec3& point) {
    const float along = std::max(glm::dot(point - ray.origin, ray.direction), 0.0f);
    return glm::distance(point, ray.origin + ray.direction * along);
}

float DistanceToSegment(const render::ViewRay& ray, const glm::vec3& a, const glm::vec3& b) {
    const glm::vec3 edge = b - a;
    const glm::vec3 between = a - ray.origin;
    const float length = glm::dot(edge, edge);
    const float along = glm::dot(edge, ray.direction);
    const float square = length - along * along;
    float share = 0.0f;
    if (square > kAlongTheSight) {
        share = std::clamp((glm::dot(between, ray.direction) * along - glm::dot(between, edge)) / square,
                           0.0f, 1.0f);
    }
    return DistanceToPoint(ray, a + edge * share);
}

} // namespace gizmo::GizmoGeometry

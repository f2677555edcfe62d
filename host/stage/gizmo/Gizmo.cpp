#include "host/stage/gizmo/Gizmo.h"

#include "host/stage/gizmo/GizmoGeometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/gtc/constants.hpp>
#include <glm/gtc/matrix_transform.hpp>

namespace gizmo {

namespace {

constexpr std::array<GizmoPart, 7> kParts = {GizmoPart::Uniform, GizmoPart::PlaneXY, GizmoPart::PlaneYZ,
                                             GizmoPart::PlaneZX, GizmoPart::AxisX,   GizmoPart::AxisY,
                                             GizmoPart::AxisZ};
/// Sine of the angle between sight and plane below which the plane tells nothing.
constexpr float kEdgeOn = 0.02f;
/// Cosine of the angle between an axis and the sight above which a pull along it tells nothing.
constexpr float kAlongTheSight = 0.9998f;
/// Units. A camera nearer to the gizmo than this sees it as from there.
constexpr float kLeastDepth = engine::Metres(0.05f);
/// Units from the middle within which a pull has no ratio.
constexpr float kLeastPull = engine::Metres(1e-6f);

bool BelongsTo(GizmoPart part, GizmoMode mode) {
    switch (mode) {
    case GizmoMode::Translate:
        return part != GizmoPart::Uniform;
    case GizmoMode::Rotate:
        return GizmoGeometry::AxisOf(part) >= 0;
    default:
        return part == GizmoPart::Uniform || GizmoGeometry::AxisOf(part) >= 0;
    }
}

float Rounded(float value, float step) {
    return step > 0.0f ? std::round(value / step) * step : value;
}

} // namespace

void Gizmo::SetMode(GizmoMode newMode) {
    if (!IsDragging()) {
        mode = newMode;
    }
}

void Gizmo::Show(const glm::mat4& newFrame) {
    if (IsDragging()) {
        return;
    }
    glm::vec3 x(newFrame[0]);
    glm::vec3 y(newFrame[1]);
    const glm::vec3 square = glm::cross(x, y);
    if (!(glm::length(square) > 1e-12f) || !std::isfinite(glm::length(square))) {
        ShowAt(glm::vec3(newFrame[3]));
        return;
    }
    x = glm::normalize(x);
    const glm::vec3 z = glm::normalize(square);
    y = glm::cross(z, x);
    frame = glm::mat4(glm::vec4(x, 0.0f), glm::vec4(y, 0.0f), glm::vec4(z, 0.0f), newFrame[3]);
    shown = GizmoGeometry::IsFinitePoint(Place());
}

void Gizmo::ShowAt(const glm::vec3& place) {
    if (!IsDragging()) {
        frame = glm::translate(glm::mat4(1.0f), place);
        shown = GizmoGeometry::IsFinitePoint(place);
    }
}

void Gizmo::Hide() {
    CancelDrag();
    shown = false;
}

float Gizmo::Size(const render::RenderCamera& camera) const {
    constexpr float kShareOfHeight = 0.24f;
    const glm::vec3 seen(camera.view * glm::vec4(Place(), 1.0f));
    const float slope = camera.projection[1][1] != 0.0f ? 1.0f / std::abs(camera.projection[1][1]) : 1.0f;
    const bool isFlat = camera.projection[3][3] == 1.0f; // without perspective size is no matter of depth
    return (isFlat ? 1.0f : std::max(std::abs(seen.z), kLeastDepth)) * slope * kShareOfHeight;
}

float Gizmo::DistanceTo(GizmoPart part, const render::ViewRay& ray, float size) const {
    const int axis = GizmoGeometry::AxisOf(part);
    if (part == GizmoPart::Uniform) {
        return GizmoGeometry::DistanceToPoint(ray, Place()) - GizmoGeometry::kCenterSize * size;
    }
    if (axis < 0) {
        const int normal = GizmoGeometry::NormalOf(part);
        const std::optional<glm::vec3> point = OnPlane(ray, Axis(normal));
        if (!point) {
            return size;
        }
        const glm::vec3 local = (*point - Place()) / size;
        const float u = glm::dot(local, Axis((normal + 1) % 3));
        const float v = glm::dot(local, Axis((normal + 2) % 3));
        const bool inside =
            std::min(u, v) >= GizmoGeometry::kPlaneNear && std::max(u, v) <= GizmoGeometry::kPlaneFar;
        return inside ? -size : size;
    }
    if (mode != GizmoMode::Rotate) {
        if (std::abs(glm::dot(Axis(axis), ray.direction)) > kAlongTheSight) {
            return size; // nothing to grip: it is seen as a point
        }
        return GizmoGeometry::DistanceToSegment(
            ray, Place() + Axis(axis) * (size * GizmoGeometry::kAxisStart), Place() + Axis(axis) * size);
    }
    float nearest = size;
    for (int i = 0; i < GizmoGeometry::kCircleSteps; ++i) {
        nearest = std::min(
            nearest, GizmoGeometry::DistanceToSegment(ray, GizmoGeometry::CirclePoint(frame, axis, i, size),
                                                      GizmoGeometry::CirclePoint(frame, axis, i + 1, size)));
    }
    return nearest;
}

GizmoPart Gizmo::HitTest(const render::ViewRay& ray, const render::RenderCamera& camera) const {
    if (!shown || IsDragging()) {
        return GizmoPart::None;
    }
    const float size = Size(camera);
    GizmoPart best = GizmoPart::None;
    float nearest = size * GizmoGeometry::kGripReach;
    for (const GizmoPart part : kParts) {
        const float distance = BelongsTo(part, mode) ? DistanceTo(part, ray, size) : size;
        if (distance < nearest) {
            nearest = distance;
            best = part;
        }
    }
    return best;
}

std::optional<float> Gizmo::AlongAxis(const render::ViewRay& ray, int axis) const {
    const glm::vec3 a = Axis(axis);
    const float along = glm::dot(a, ray.direction);
    const float square = 1.0f - along * along;
    if (square < kEdgeOn * kEdgeOn) {
        return std::nullopt;
    }
    const glm::vec3 between = ray.origin - Place();
    return (glm::dot(between, a) - along * glm::dot(between, ray.direction)) / square;
}

std::optional<glm::vec3> Gizmo::OnPlane(const render::ViewRay& ray, const glm::vec3& normal) const {
    const float slope = glm::dot(ray.direction, normal);
    if (std::abs(slope) < kEdgeOn) {
        return std::nullopt;
    }
    const float distance = glm::dot(Place() - ray.origin, normal) / slope;
    return distance > 0.0f ? std::optional(ray.origin + ray.direction * distance) : std::nullopt;
}

std::optional<float> Gizmo::AngleAbout(const render::ViewRay& ray, int axis) const {
    const std::optional<glm::vec3> point = OnPlane(ray, Axis(axis));
    if (!point) {
        return std::nullopt;
    }
    const glm::vec3 local = *point - Place();
    return std::atan2(glm::dot(local, Axis((axis + 2) % 3)), glm::dot(local, Axis((axis + 1) % 3)));
}

bool Gizmo::BeginDrag(GizmoPart part, const render::ViewRay& ray, const render::RenderCamera& camera) {
    if (!shown || IsDragging() || part == GizmoPart::None || !BelongsTo(part, mode)) {
        return false;
    }
    startSize = Size(camera);
    const glm::mat4 world = glm::inverse(camera.view);
    startUp = glm::normalize(glm::vec3(world[0]) + glm::vec3(world[1]));
    startNormal = GizmoGeometry::AxisOf(part) < 0 && GizmoGeometry::NormalOf(part) >= 0
                      ? Axis(GizmoGeometry::NormalOf(part))
                      : glm::vec3(world[2]);
    if (GizmoGeometry::AxisOf(part) >= 0) {
        const std::optional<float> value = mode == GizmoMode::Rotate
                                               ? AngleAbout(ray, GizmoGeometry::AxisOf(part))
                                               : AlongAxis(ray, GizmoGeometry::AxisOf(part));
        if (!value) {
            return false;
        }
        startValue = *value;
    } else {
        const std::optional<glm::vec3> point = OnPlane(ray, startNormal);
        if (!point) {
            return false;
        }
        startPoint = *point;
    }
    dragged = part;
    delta = glm::mat4(1.0f);
    return true;
}

std::optional<glm::mat4> Gizmo::Moved(const render::ViewRay& ray, bool snap) const {
    glm::vec3 way(0.0f);
    if (const int axis = GizmoGeometry::AxisOf(dragged); axis >= 0) {
        const std::optional<float> value = AlongAxis(ray, axis);
        if (!value) {
            return std::nullopt;
        }
        const float distance = *value - startValue;
        way = Axis(axis) * (snap ? Rounded(distance, snapping.units) : distance);
    } else {
        const std::optional<glm::vec3> point = OnPlane(ray, startNormal);
        if (!point) {
            return std::nullopt;
        }
        for (const int side :
             {(GizmoGeometry::NormalOf(dragged) + 1) % 3, (GizmoGeometry::NormalOf(dragged) + 2) % 3}) {
            const float distance = glm::dot(*point - startPoint, Axis(side));
            way += Axis(side) * (snap ? Rounded(distance, snapping.units) : distance);
        }
    }
    return glm::translate(glm::mat4(1.0f), way);
}

std::optional<glm::mat4> Gizmo::Turned(const render::ViewRay& ray, bool snap) const {
    const std::optional<float> value = AngleAbout(ray, GizmoGeometry::AxisOf(dragged));
    if (!value) {
        return std::nullopt;
    }
    float angle = *value - startValue;
    angle = snap ? Rounded(angle, glm::radians(snapping.degrees)) : angle;
    const glm::mat4 there = glm::translate(glm::mat4(1.0f), Place());
    return glm::rotate(there, angle, Axis(GizmoGeometry::AxisOf(dragged))) *
           glm::translate(glm::mat4(1.0f), -Place());
}

std::optional<glm::mat4> Gizmo::Scaled(const render::ViewRay& ray, bool snap) const {
    constexpr float kSmallest = 0.01f;
    glm::vec3 factors(1.0f);
    if (const int axis = GizmoGeometry::AxisOf(dragged); axis >= 0) {
        const std::optional<float> value = AlongAxis(ray, axis);
        if (!value || std::abs(startValue) < kLeastPull) {
            return std::nullopt;
        }
        factors[axis] = *value / startValue;
    } else {
        const std::optional<glm::vec3> point = OnPlane(ray, startNormal);
        if (!point) {
            return std::nullopt;
        }
        factors = glm::vec3(1.0f + glm::dot(*point - startPoint, startUp) / startSize);
    }
    for (int i = 0; i < 3; ++i) {
        factors[i] = std::max(snap ? Rounded(factors[i], snapping.factor) : factors[i], kSmallest);
    }
    return frame * glm::scale(glm::mat4(1.0f), factors) * glm::inverse(frame);
}

const glm::mat4& Gizmo::UpdateDrag(const render::ViewRay& ray, bool snap) {
    if (IsDragging()) {
        const std::optional<glm::mat4> next = mode == GizmoMode::Translate ? Moved(ray, snap)
                                              : mode == GizmoMode::Rotate  ? Turned(ray, snap)
                                                                           : Scaled(ray, snap);
        delta = next.value_or(delta);
    }
    return delta;
}

void Gizmo::SetDelta(const glm::mat4& other) {
    if (IsDragging()) {
        delta = other;
    }
}

void Gizmo::EndDrag() {
    if (IsDragging()) {
        dragged = GizmoPart::None;
        if (mode != GizmoMode::Scale) {
            frame = delta * frame;
        }
        delta = glm::mat4(1.0f);
    }
}

void Gizmo::CancelDrag() {
    dragged = GizmoPart::None;
    delta = glm::mat4(1.0f);
}

} // namespace gizmo

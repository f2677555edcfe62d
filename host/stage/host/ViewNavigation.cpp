#include "host/stage/host/ViewNavigation.h"

#include "host/stage/render/CameraMath.h"

#include <algorithm>
#include <cmath>

namespace stage {

namespace {
constexpr float kRadiansPerPixel = 0.006f;
constexpr float kZoomPerStep = 0.88f;
constexpr float kMinDistance = engine::Metres(0.05f);
constexpr float kMaxDistance = engine::Metres(5000.0f);
constexpr float kLeastRadius = engine::Metres(0.25f); ///< of what is shown whole
// Short of straight up, where right and up would swap.
constexpr float kMaxPitch = 1.55f;
} // namespace

void ViewNavigation::ClampPitch() {
    pitch = std::clamp(pitch, -kMaxPitch, kMaxPitch);
}

glm::vec3 ViewNavigation::Forward() const {
    return {-std::sin(yaw) * std::cos(pitch), std::sin(pitch), -std::cos(yaw) * std::cos(pitch)};
}

glm::vec3 ViewNavigation::Right() const {
    return {std::cos(yaw), 0.0f, -std::sin(yaw)};
}

glm::vec3 ViewNavigation::Up() const {
    return glm::cross(Right(), Forward());
}

glm::vec3 ViewNavigation::Eye() const {
    return pivot - Forward() * distance;
}

glm::mat4 ViewNavigation::CameraMatrix() const {
    return {glm::vec4(Right(), 0.0f), glm::vec4(Up(), 0.0f), glm::vec4(-Forward(), 0.0f),
            glm::vec4(Eye(), 1.0f)};
}

void ViewNavigation::Orbit(float dx, float dy) {
    yaw -= dx * kRadiansPerPixel;
    pitch -= dy * kRadiansPerPixel;
    ClampPitch();
}

void ViewNavigation::OrbitAbout(const glm::vec3& point, float dx, float dy) {
    const glm::vec3 way = point - pivot;
    const glm::vec3 seen(glm::dot(way, Right()), glm::dot(way, Up()), glm::dot(way, Forward()));
    Orbit(dx, dy);
    pivot = point - (Right() * seen.x + Up() * seen.y + Forward() * seen.z);
}

void ViewNavigation::Look(float dx, float dy) {
    const glm::vec3 eye = Eye();
    Orbit(dx, dy);
    pivot = eye + Forward() * distance;
}

void ViewNavigation::Pan(float dx, float dy, int viewHeight) {
    if (viewHeight <= 0) {
        return;
    }
    pivot += (Up() * dy - Right() * dx) * render::UnitsPerPixel(distance, fieldOfView, viewHeight);
}

void ViewNavigation::Zoom(float steps) {
    distance = std::clamp(distance * std::pow(kZoomPerStep, steps), kMinDistance, kMaxDistance);
}

void ViewNavigation::Fly(const glm::vec3& move) {
    pivot += Right() * move.x + Up() * move.y + Forward() * move.z;
}

void ViewNavigation::Focus(const glm::vec3& center, float radius) {
    pivot = center;
    distance =
        std::clamp(std::max(radius, kLeastRadius) / std::sin(fieldOfView * 0.5f), kMinDistance, kMaxDistance);
}

void ViewNavigation::LookAt(const glm::vec3& eye, const glm::vec3& target) {
    const glm::vec3 way = target - eye;
    const float length = glm::length(way);
    if (!(length > 0.0f) || !std::isfinite(length)) {
        return;
    }
    distance = std::clamp(length, kMinDistance, kMaxDistance);
    pitch = std::asin(std::clamp(way.y / length, -1.0f, 1.0f));
    ClampPitch();
    yaw = std::atan2(-way.x, -way.z);
    pivot = eye + Forward() * distance;
}

} // namespace stage

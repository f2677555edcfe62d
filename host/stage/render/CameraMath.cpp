#include "host/stage/render/CameraMath.h"

#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <glm/gtc/matrix_transform.hpp>

namespace {

constexpr float kMinAngle = 0.01f;
constexpr float kMaxAngle = 3.10f;
// Units.
constexpr float kMinNear = engine::Metres(0.001f);
constexpr float kMaxNear = engine::Metres(1e6f);
constexpr float kMaxFar = engine::Metres(1e7f);
constexpr float kUsualNear = engine::Metres(0.1f);

float Limited(float value, float low, float high, float missing) {
    return std::isfinite(value) ? std::clamp(value, low, high) : missing;
}

} // namespace

RenderCamera MakeCamera(const float* cameraMatrix, float fieldOfView, float aspect, float nearPlane,
                        float farPlane) {
    glm::mat4 world;
    std::memcpy(&world[0][0], cameraMatrix, sizeof(world));
    const float angle = Limited(fieldOfView, kMinAngle, kMaxAngle, 1.0f);
    const float closest = Limited(nearPlane, kMinNear, kMaxNear, kUsualNear);
    const float farthest = Limited(farPlane, closest * 2.0f, kMaxFar, closest * 10000.0f);
    RenderCamera camera;
    camera.view = glm::inverse(world);
    camera.projection = glm::perspective(angle, Limited(aspect, 0.01f, 100.0f, 1.0f), closest, farthest);
    return camera;
}

ViewRay RayThroughPixel(const RenderCamera& camera, int width, int height, float x, float y) {
    const float u = x / static_cast<float>(std::max(width, 1)) * 2.0f - 1.0f;
    const float v = 1.0f - y / static_cast<float>(std::max(height, 1)) * 2.0f;
    const glm::mat4 inverse = glm::inverse(camera.projection * camera.view);
    const glm::vec4 closest = inverse * glm::vec4(u, v, -1.0f, 1.0f);
    const glm::vec4 farthest = inverse * glm::vec4(u, v, 1.0f, 1.0f);
    ViewRay ray;
    ray.origin = glm::vec3(closest) / closest.w;
    ray.direction = glm::normalize(glm::vec3(farthest) / farthest.w - ray.origin);
    return ray;
}

bool ProjectToPixel(const RenderCamera& camera, int width, int height, const glm::vec3& point,
                    glm::vec3& pixel) {
    const glm::vec4 clip = camera.projection * (camera.view * glm::vec4(point, 1.0f));
    if (!(clip.w > 1e-6f)) {
        return false;
    }
    const glm::vec3 place = glm::vec3(clip) / clip.w;
    pixel = {(place.x * 0.5f + 0.5f) * static_cast<float>(width),
             (0.5f - place.y * 0.5f) * static_cast<float>(height), place.z};
    return true;
}

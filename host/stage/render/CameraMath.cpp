#include "host/stage/render/CameraMath.h"

#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <glm/gtc/matrix_transform.hpp>

namespace render {

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

/// -1 to 1 from left to right and from bottom to top.
glm::vec2 PlaceInPicture(int width, int height, float x, float y) {
    return {2.0f * x / static_cast<float>(std::max(width, 1)) - 1.0f,
            1.0f - 2.0f * y / static_cast<float>(std::max(height, 1))};
}

/// The way from the eye through a place in the picture, as far as one unit ahead, in the camera's own space.
/// `tangent` is that of half the vertical angle.
glm::vec3 WayThrough(float tangent, float aspect, const glm::vec2& place) {
    return {place.x * tangent * aspect, place.y * tangent, -1.0f};
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

ViewRay RayFromEye(const glm::mat4& cameraMatrix, float fieldOfView, int width, int height, float x,
                   float y) {
    const float aspect = static_cast<float>(width) / static_cast<float>(std::max(height, 1));
    const glm::vec3 way =
        WayThrough(std::tan(fieldOfView * 0.5f), aspect, PlaceInPicture(width, height, x, y));
    return {glm::vec3(cameraMatrix[3]), glm::normalize(glm::vec3(cameraMatrix * glm::vec4(way, 0.0f)))};
}

ViewRay RayThroughPixel(const RenderCamera& camera, int width, int height, float x, float y) {
    const glm::mat4& lens = camera.projection;
    const glm::vec3 way =
        WayThrough(1.0f / lens[1][1], lens[1][1] / lens[0][0], PlaceInPicture(width, height, x, y));
    const float nearPlane = lens[3][2] / (lens[2][2] - 1.0f);
    const glm::mat4 world = glm::inverse(camera.view);
    const glm::vec3 sight(world * glm::vec4(way, 0.0f));
    return {glm::vec3(world[3]) + sight * nearPlane, glm::normalize(sight)};
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

float UnitsPerPixel(float depth, float fieldOfView, int height) {
    return 2.0f * std::max(depth, 0.0f) * std::tan(fieldOfView * 0.5f) /
           static_cast<float>(std::max(height, 1));
}

} // namespace render

#pragma once

#include <glm/glm.hpp>

namespace render {

/// A camera with GL clip space: right-handed view space that looks along its negative z.
struct RenderCamera {
    glm::mat4 view{1.0f};
    glm::mat4 projection{1.0f};
};

/// Half a line of sight: from `origin` along a unit direction.
struct ViewRay {
    glm::vec3 origin{0.0f};
    glm::vec3 direction{0.0f, 0.0f, -1.0f};
};

/// The camera of a camera matrix in the world (16 floats, row 2 backwards) with a vertical angle in
/// radians and planes in units. Angles and planes out of range are drawn in to what can be shown.
RenderCamera MakeCamera(const float* cameraMatrix, float fieldOfView, float aspect, float nearPlane,
                        float farPlane);

// Pixels of a picture are counted from the upper left, 0.5 in a pixel's middle.

/// The line of sight through a pixel, from the eye of a camera with square pixels: its matrix in the world
/// and its vertical angle in radians.
ViewRay RayFromEye(const glm::mat4& cameraMatrix, float fieldOfView, int width, int height, float x, float y);

/// The line of sight through a pixel from the near plane on, since what stands before it is not in the
/// picture. For a camera in perspective.
ViewRay RayThroughPixel(const RenderCamera& camera, int width, int height, float x, float y);

/// Where a world point stands in the picture; z is its depth, -1 to 1. False behind the camera.
bool ProjectToPixel(const RenderCamera& camera, int width, int height, const glm::vec3& point,
                    glm::vec3& pixel);

/// Units that a pixel covers at a depth in front of the eye, under a vertical angle in radians.
float UnitsPerPixel(float depth, float fieldOfView, int height);

} // namespace render

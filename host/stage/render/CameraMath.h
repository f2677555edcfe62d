#pragma once

#include "host/stage/render/RenderScene.h"

/// Half a line of sight: from `origin` along a unit direction.
struct ViewRay {
    glm::vec3 origin{0.0f};
    glm::vec3 direction{0.0f, 0.0f, -1.0f};
};

/// The camera of a camera matrix in the world (16 floats, row 2 backwards) with a vertical angle in
/// radians and planes in units. Angles and planes out of range are drawn in to what can be shown.
RenderCamera MakeCamera(const float* cameraMatrix, float fieldOfView, float aspect, float nearPlane,
                        float farPlane);

/// The line of sight through a pixel of a picture, counted from the upper left, 0.5 in a pixel's middle.
ViewRay RayThroughPixel(const RenderCamera& camera, int width, int height, float x, float y);

/// Where a world point stands in the picture; z is its depth, -1 to 1. False behind the camera.
bool ProjectToPixel(const RenderCamera& camera, int width, int height, const glm::vec3& point,
                    glm::vec3& pixel);

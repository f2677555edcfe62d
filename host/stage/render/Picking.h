#pragma once

#include "host/stage/render/CameraMath.h"

#include <optional>

struct PickHit {
    int objectId = 0;
    float distance = 0.0f; ///< units along the ray
    glm::vec3 point{0.0f}; ///< world
};

/// The nearest item that the ray meets, as posed.
std::optional<PickHit> PickItem(const RenderScene& scene, const ViewRay& ray);

/// The items of which some part shows inside a rectangle of the picture (corners in any order), whether or
/// not something stands in front; each id once, in the scene's order.
std::vector<int> PickRectangle(const RenderScene& scene, const RenderCamera& camera, int width, int height,
                               const glm::vec2& corner, const glm::vec2& opposite);

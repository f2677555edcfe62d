#pragma once

#include "host/stage/host/ScenePicker.h"

namespace stage {

/// Room that a body takes around its place, along the axes of the world; units.
struct Room {
    glm::vec3 low{0.0f};
    glm::vec3 high{0.0f};
};

/// Where something new stands whose place a line of sight leads to: on the mesh or the ground that it meets.
/// A side carries nothing: the body comes to stand before it, clear of it, on what is below. Where nothing is
/// met, it hangs `fallbackDistance` units on.
glm::vec3 StandingPlace(const ScenePicker& picker, const render::ViewRay& ray, float fallbackDistance,
                        const Room& room);

} // namespace stage

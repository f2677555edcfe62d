#pragma once

#include "host/stage/render/RenderScene.h"

namespace render {

/// The lines of the ground grid around a point: one each metre, stronger every ten, fading with distance.
/// The two axes through the origin are red (x) and blue (z).
std::vector<RenderLine> GroundGrid(const glm::vec3& eye);

} // namespace render

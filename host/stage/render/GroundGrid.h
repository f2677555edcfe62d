#pragma once

#include "host/stage/render/CameraMath.h"
#include "host/stage/render/RenderScene.h"

namespace render {

/// The lines of the ground grid around a point: one each metre, stronger every ten, fading with distance.
/// The two axes through the origin are red (x) and blue (z).
std::vector<RenderLine> GroundGrid(const glm::vec3& eye);

/// The lines of a flat view: as many units apart as a power of ten, so that there are some ten of them and
/// some hundred at most, with every tenth stronger and the axes of the world in their colours. Nothing for
/// other grids and for cameras with perspective.
std::vector<RenderLine> FlatGrid(RenderGrid grid, const RenderCamera& camera);

} // namespace render

#pragma once

#include "host/engine/mesh/Mesh.h"

#include <memory>

/// Small bodies for objects that have no mesh, so that they can be seen and picked.
namespace render::ShapeMeshes {

/// A box around the origin; linear colour, emission 0 to 1.
std::shared_ptr<const mesh::Mesh> MakeBox(float size, const glm::vec3& color, float emission);
/// An octahedron around the origin.
std::shared_ptr<const mesh::Mesh> MakeOctahedron(float radius, const glm::vec3& color, float emission);

} // namespace render::ShapeMeshes

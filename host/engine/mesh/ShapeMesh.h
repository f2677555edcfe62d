#pragma once

#include "host/engine/mesh/Mesh.h"
#include "host/engine/Shape.h"

#include <memory>

namespace mesh {

/// The mesh of a shape: one part without nodes, smooth where the body is round. Planes have two sides.
std::shared_ptr<const Mesh> MakeShapeMesh(const engine::Shape& shape);

} // namespace mesh

#pragma once

#include "host/engine/mesh/Mesh.h"

#include <memory>
#include <vector>

namespace stage {

/// How much of a mesh follows one of its elements.
namespace ElementShare {

/// 1 for the element itself, kBelow for what hangs below it, 0 for the rest; one a node.
std::vector<float> OfNodes(const mesh::Mesh& mesh, int element);
/// The same for the vertices, weighted by their joints; one a vertex. A bent part also follows the node that
/// it hangs on.
std::vector<float> OfVertices(const mesh::Mesh& mesh, int element);
/// The element that carries most of a triangle, counted in threes of `indices`; -1 if none does.
int OfTriangle(const mesh::Mesh& mesh, std::uint32_t triangle);

constexpr float kBelow = 0.25f;

} // namespace ElementShare

/// A copy of the mesh for pictures, with the element lit up and the rest toned down; as it is for an element
/// that the mesh hasn't, which stands for the whole object. It has no nodes, no animations and no tree for
/// rays.
std::shared_ptr<const mesh::Mesh> TintElement(const mesh::Mesh& mesh, int element);

} // namespace stage

#pragma once

#include <vector>

namespace tinygltf {
class Model;
}

namespace mesh {

class Mesh;

/// Makes the nodes, parents first, and returns the new index of each node of the file.
/// Throws MeshError for cycles, nodes with two parents and numbers out of range.
std::vector<int> BuildNodes(const tinygltf::Model& model, Mesh& mesh);
void BuildSkins(const tinygltf::Model& model, const std::vector<int>& order, Mesh& mesh);
void BuildClips(const tinygltf::Model& model, const std::vector<int>& order, Mesh& mesh);

/// For each node whether some clip moves it or a node above it.
std::vector<bool> MovedNodes(const Mesh& mesh);

} // namespace mesh

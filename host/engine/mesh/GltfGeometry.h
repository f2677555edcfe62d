#pragma once

namespace tinygltf {
class Model;
}

namespace mesh {

class Mesh;

/// Turns a parsed file into a mesh. Parts that nothing moves are baked into model space, so that a still
/// mesh is one draw. Throws MeshError without a path.
void BuildMesh(const tinygltf::Model& model, Mesh& mesh);

} // namespace mesh

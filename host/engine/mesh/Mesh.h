#pragma once

#include "host/engine/mesh/MeshBvh.h"
#include "host/engine/mesh/MeshData.h"

#include <stdexcept>

namespace mesh {

/// A mesh file could not be used; `what` names the file and the reason.
class MeshError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A loaded mesh file: never changed after loading and shared by all objects that show it.
class Mesh {
public:
    /// Index in `clips`, -1 for an unknown name. Of several clips of one name the first counts.
    int FindClip(const std::string& name) const;
    /// True when a pose can change the picture: some part hangs on a node or a skin.
    bool IsPosable() const;
    /// Fills what follows from nodes and vertices: rest matrices, box and tree.
    void Finish();

    std::vector<MeshNode> nodes;
    std::vector<MeshVertex> vertices;
    std::vector<MeshWeights> weights; ///< one a vertex, or empty without skins
    std::vector<std::uint32_t> indices;
    std::vector<MeshPart> parts;
    std::vector<MeshSource> sources; ///< by rising vertices
    std::vector<MeshSkin> skins;
    std::vector<MeshClip> clips;
    std::vector<glm::mat4> restNodes; ///< model space, one a node
    MeshBox box;                      ///< model space, rest pose
    MeshBvh bvh;                      ///< model space, rest pose; over `indices`
};

} // namespace mesh

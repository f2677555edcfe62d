#pragma once

#include "host/engine/mesh/MeshData.h"

#include <span>

namespace mesh {

class Mesh;

/// One clip laid over the nodes; layers are laid in order, later ones over earlier ones.
struct MeshLayer {
    int clip = -1;
    float seconds = 0.0f; ///< clamped to the clip
    int rootNode = -1;    ///< the layer moves this node and what hangs below; -1 moves all
    float weight = 1.0f;  ///< 0 keeps what lies below, 1 covers it
};

/// The nodes of a mesh at one moment, in model space. Cheap to reuse from frame to frame.
class MeshPose {
public:
    /// Poses the nodes: rest pose, then the layers. Layers with an unknown clip are left out.
    void Evaluate(const Mesh& mesh, std::span<const MeshLayer> layers);
    /// Writes `skinned`: the vertices of all skinned parts, bent, at the places they have in the mesh.
    /// Vertices of other parts are left as they were.
    void SkinVertices(const Mesh& mesh);
    /// All vertices in model space under this pose.
    std::vector<glm::vec3> ModelPositions(const Mesh& mesh) const;

    std::vector<glm::mat4> nodes;    ///< model space, one a node
    std::vector<MeshVertex> skinned; ///< empty until SkinVertices

private:
    void ApplyLayer(const Mesh& mesh, const MeshLayer& layer);
    std::vector<glm::mat4> JointMatrices(const Mesh& mesh, int skin) const;

    std::vector<MeshNode> local;
};

/// Parent-space matrices of all nodes at `seconds` of a clip; an unknown clip gives the rest pose. `locals`
/// has room for 16 floats a node, column by column. Allocates nothing.
void SampleLocals(const Mesh& mesh, int clip, float seconds, float* locals);

/// Value of a channel at a time: xyz for translation and scale, xyzw of a unit quaternion for rotation.
glm::vec4 SampleChannel(const MeshChannel& channel, float seconds);

} // namespace mesh

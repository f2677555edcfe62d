#pragma once

#include "host/stage/render/RenderScene.h"

#include <map>
#include <vector>

namespace render {

/// The graphics card's copies of meshes: still vertices once a mesh, skinned vertices once an item and
/// frame. Used and destroyed with its context current.
class MeshBuffers {
public:
    MeshBuffers() = default;
    ~MeshBuffers();
    MeshBuffers(const MeshBuffers&) = delete;
    MeshBuffers& operator=(const MeshBuffers&) = delete;

    /// Drops what no mesh stands behind any more and uploads what is new.
    void Prepare(const std::vector<const RenderItem*>& items);
    /// Draws one part of the item at this place of the list given to Prepare.
    void Draw(std::size_t item, const mesh::MeshPart& part) const;

private:
    struct Still {
        std::weak_ptr<const mesh::Mesh> mesh;
        unsigned array = 0;
        unsigned vertices = 0;
        unsigned indices = 0;
    };
    struct Bent {
        unsigned array = 0;
        unsigned vertices = 0;
        unsigned indices = 0; ///< of the mesh, not owned
    };
    struct Drawn {
        unsigned stillArray = 0;
        unsigned bentArray = 0;
    };

    void DropExpired();
    const Still& Upload(const std::shared_ptr<const mesh::Mesh>& mesh);
    unsigned UploadBent(std::size_t slot, const mesh::MeshPose& pose, unsigned indices);

    std::map<const mesh::Mesh*, Still> meshes;
    std::vector<Bent> bent;
    std::vector<Drawn> drawn;
};

} // namespace render

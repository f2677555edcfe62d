#pragma once

#include "host/engine/mesh/MeshData.h"

#include <functional>
#include <optional>
#include <span>

namespace mesh {

/// Where a ray meets a triangle.
struct MeshHit {
    float distance = 0.0f; ///< in lengths of the ray's direction
    std::uint32_t triangle = 0;
};

/// A tree of boxes over triangles for ray casts. Copies the positions it needs.
class MeshBvh {
public:
    /// `indices` come in threes; each must be below positions.size(). Triangles with points that are
    /// not finite are left out.
    void Build(std::span<const glm::vec3> positions, std::span<const std::uint32_t> indices);
    /// Nearest hit with 0 <= distance <= maximum, from either side of a triangle.
    std::optional<MeshHit> RayCast(const glm::vec3& origin, const glm::vec3& direction, float maximum) const;

private:
    struct Triangle {
        glm::vec3 points[3];
        std::uint32_t index;
    };
    struct Node {
        MeshBox box;
        std::uint32_t first = 0; ///< first triangle of a leaf, or the right child
        std::uint32_t count = 0; ///< triangles of a leaf, 0 for an inner node
    };

    std::uint32_t Split(std::uint32_t first, std::uint32_t count);

    std::vector<Triangle> triangles;
    std::vector<Node> tree; ///< a left child follows its parent
};

} // namespace mesh

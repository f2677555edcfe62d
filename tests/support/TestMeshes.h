#pragma once

#include "host/engine/mesh/Mesh.h"

#include <memory>

/// A box mesh of one colour (linear 0 to 255 each), triangles anticlockwise from outside.
inline std::shared_ptr<mesh::Mesh> MakeBoxMesh(const glm::vec3& low, const glm::vec3& high, std::uint8_t r,
                                               std::uint8_t g, std::uint8_t b) {
    auto mesh = std::make_shared<mesh::Mesh>();
    for (int axis = 0; axis < 3; ++axis) {
        for (int side = 0; side < 2; ++side) {
            const auto base = static_cast<std::uint32_t>(mesh->vertices.size());
            const int u = (axis + 1) % 3;
            const int v = (axis + 2) % 3;
            for (int corner = 0; corner < 4; ++corner) {
                mesh::MeshVertex vertex{};
                vertex.position[axis] = side != 0 ? high[axis] : low[axis];
                vertex.position[u] = corner == 1 || corner == 2 ? high[u] : low[u];
                vertex.position[v] = corner >= 2 ? high[v] : low[v];
                vertex.normal[axis] = side != 0 ? 1.0f : -1.0f;
                vertex.color[0] = r;
                vertex.color[1] = g;
                vertex.color[2] = b;
                vertex.color[3] = 255;
                vertex.surface[0] = 230;
                mesh->vertices.push_back(vertex);
            }
            const std::uint32_t turned[] = {0, 1, 2, 0, 2, 3, 0, 2, 1, 0, 3, 2};
            for (int i = 0; i < 6; ++i) {
                mesh->indices.push_back(base + turned[(side != 0 ? 0 : 6) + i]);
            }
        }
    }
    mesh::MeshPart part;
    part.vertexCount = static_cast<std::uint32_t>(mesh->vertices.size());
    part.indexCount = static_cast<std::uint32_t>(mesh->indices.size());
    mesh->parts.push_back(part);
    mesh->Finish();
    return mesh;
}

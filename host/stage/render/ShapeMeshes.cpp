#include "host/stage/render/ShapeMeshes.h"

#include <algorithm>
#include <cmath>

namespace render::ShapeMeshes {

namespace {

std::uint8_t ToByte(float value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
}

class FlatMesh {
public:
    FlatMesh(const glm::vec3& color, float emission) : mesh(std::make_shared<mesh::Mesh>()) {
        for (int i = 0; i < 3; ++i) {
            look.color[i] = ToByte(color[i]);
        }
        look.color[3] = 255;
        look.surface[0] = 255;
        look.surface[2] = ToByte(emission);
    }

    void AddTriangle(const glm::vec3& a, const glm::vec3& b, const glm::vec3& c) {
        look.normal = glm::normalize(glm::cross(b - a, c - a));
        for (const glm::vec3& point : {a, b, c}) {
            look.position = point;
            mesh->indices.push_back(static_cast<std::uint32_t>(mesh->vertices.size()));
            mesh->vertices.push_back(look);
        }
    }

    std::shared_ptr<const mesh::Mesh> Finish() {
        mesh::MeshPart part;
        part.vertexCount = static_cast<std::uint32_t>(mesh->vertices.size());
        part.indexCount = static_cast<std::uint32_t>(mesh->indices.size());
        mesh->parts.push_back(part);
        mesh->Finish();
        return mesh;
    }

private:
    std::shared_ptr<mesh::Mesh> mesh;
    mesh::MeshVertex look{};
};

} // namespace

std::shared_ptr<const mesh::Mesh> MakeBox(float size, const glm::vec3& color, float emission) {
    FlatMesh mesh(color, emission);
    const float h = size * 0.5f;
    for (int axis = 0; axis < 3; ++axis) {
        for (const float side : {-h, h}) {
            glm::vec3 p[4];
            for (int corner = 0; corner < 4; ++corner) {
                p[corner][axis] = side;
                p[corner][(axis + 1) % 3] = corner == 1 || corner == 2 ? h : -h;
                p[corner][(axis + 2) % 3] = corner >= 2 ? h : -h;
            }
            if (side < 0.0f) {
                std::swap(p[1], p[3]);
            }
            mesh.AddTriangle(p[0], p[1], p[2]);
            mesh.AddTriangle(p[0], p[2], p[3]);
        }
    }
    return mesh.Finish();
}

std::shared_ptr<const mesh::Mesh> MakeOctahedron(float radius, const glm::vec3& color, float emission) {
    FlatMesh mesh(color, emission);
    for (int corner = 0; corner < 8; ++corner) {
        const glm::vec3 x((corner & 1) != 0 ? radius : -radius, 0.0f, 0.0f);
        const glm::vec3 y(0.0f, (corner & 2) != 0 ? radius : -radius, 0.0f);
        const glm::vec3 z(0.0f, 0.0f, (corner & 4) != 0 ? radius : -radius);
        const bool mirrored = x.x * y.y * z.z < 0.0f;
        mirrored ? mesh.AddTriangle(x, z, y) : mesh.AddTriangle(x, y, z);
    }
    return mesh.Finish();
}

} // namespace render::ShapeMeshes

#include "host/engine/mesh/GltfGeometry.h"

#include "host/engine/mesh/GltfAccessor.h"
#include "host/engine/mesh/GltfNodes.h"
#include "host/engine/mesh/Mesh.h"
#include "host/engine/mesh/MeshPose.h"
#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>
#include <tiny_gltf.h>

namespace mesh {

namespace {

constexpr std::size_t kMaxVertices = 4'000'000;
constexpr std::size_t kMaxIndices = 24'000'000;

std::uint8_t ToByte(double value) {
    return static_cast<std::uint8_t>(
        std::lround(std::clamp(std::isfinite(value) ? value : 0.0, 0.0, 1.0) * 255.0));
}

struct Look {
    glm::vec3 color{0.8f};
    std::uint8_t surface[4] = {204, 0, 0, 0};

    /// Above this roughness a mirror image is too faint to be worth its price.
    bool IsGlossy() const { return surface[0] < 140 || surface[1] > 0 || surface[3] > 0; }
};

Look LookOf(const tinygltf::Model& model, int index) {
    Look look;
    if (index < 0 || static_cast<std::size_t>(index) >= model.materials.size()) {
        return look;
    }
    const tinygltf::Material& material = model.materials[static_cast<std::size_t>(index)];
    const tinygltf::PbrMetallicRoughness& pbr = material.pbrMetallicRoughness;
    for (int i = 0; i < 3 && i < static_cast<int>(pbr.baseColorFactor.size()); ++i) {
        look.color[i] = static_cast<float>(pbr.baseColorFactor[static_cast<std::size_t>(i)]);
    }
    look.surface[0] = ToByte(pbr.roughnessFactor);
    look.surface[1] = ToByte(pbr.metallicFactor);
    const std::vector<double>& emission = material.emissiveFactor;
    look.surface[2] = emission.empty() ? 0 : ToByte(*std::max_element(emission.begin(), emission.end()));
    if (material.extras.IsObject() && material.extras.Has("ripple")) {
        look.surface[3] = ToByte(material.extras.Get("ripple").GetNumberAsDouble());
    }
    return look;
}

int Attribute(const tinygltf::Primitive& primitive, const char* name) {
    const auto found = primitive.attributes.find(name);
    return found == primitive.attributes.end() ? -1 : found->second;
}

void RequireCount(std::size_t count, std::size_t expected, const char* name) {
    if (count != expected) {
        throw MeshError(std::string("a primitive has another number of ") + name + " than of positions");
    }
}

std::vector<std::uint32_t> PrimitiveIndices(const tinygltf::Model& model,
                                            const tinygltf::Primitive& primitive, std::size_t vertexCount) {
    std::vector<std::uint32_t> indices;
    if (primitive.indices >= 0) {
        indices = ReadIndices(model, primitive.indices, vertexCount);
    } else {
        indices.resize(vertexCount);
        for (std::size_t i = 0; i < vertexCount; ++i) {
            indices[i] = static_cast<std::uint32_t>(i);
        }
    }
    indices.resize(indices.size() / 3 * 3);
    return indices;
}

/// Area-weighted normals for primitives that bring none.
std::vector<glm::vec4> MakeNormals(const std::vector<glm::vec4>& positions,
                                   const std::vector<std::uint32_t>& indices) {
    std::vector<glm::vec4> normals(positions.size(), glm::vec4(0.0f));
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        const glm::vec3 a(positions[indices[i]]);
        const glm::vec3 across =
            glm::cross(glm::vec3(positions[indices[i + 1]]) - a, glm::vec3(positions[indices[i + 2]]) - a);
        for (std::size_t k = 0; k < 3; ++k) {
            normals[indices[i + k]] += glm::vec4(across, 0.0f);
        }
    }
    return normals;
}

glm::vec3 UnitNormal(const glm::vec3& normal) {
    const float length = glm::length(normal);
    return length > 0.0f && std::isfinite(length) ? normal / length : glm::vec3(0.0f, 1.0f, 0.0f);
}

class Builder {
public:
    Builder(const tinygltf::Model& source, Mesh& target) : model(source), mesh(target) {}

    void Build() {
        const std::vector<int> order = BuildNodes(model, mesh);
        BuildSkins(model, order, mesh);
        BuildClips(model, order, mesh);
        moved = MovedNodes(mesh);
        rest.Evaluate(mesh, {});
        // All plain surfaces first: a still mesh is then two draws at most.
        for (const bool glossy : {false, true}) {
            for (std::size_t i = 0; i < model.nodes.size(); ++i) {
                AddNodeMesh(model.nodes[i], order[i], glossy);
            }
        }
        mesh.Finish();
    }

private:
    void AddNodeMesh(const tinygltf::Node& node, int index, bool glossy) {
        if (node.mesh < 0) {
            return;
        }
        if (static_cast<std::size_t>(node.mesh) >= model.meshes.size()) {
            throw MeshError("node \"" + node.name + "\" names a mesh that does not exist");
        }
        const int skin = node.skin;
        if (skin >= static_cast<int>(mesh.skins.size())) {
            throw MeshError("node \"" + node.name + "\" names a skin that does not exist");
        }
        const int carrier = skin >= 0 || !moved[static_cast<std::size_t>(index)] ? -1 : index;
        for (const tinygltf::Primitive& primitive :
             model.meshes[static_cast<std::size_t>(node.mesh)].primitives) {
            const bool triangles = primitive.mode == TINYGLTF_MODE_TRIANGLES || primitive.mode == -1;
            const Look look = LookOf(model, primitive.material);
            if (triangles && look.IsGlossy() == glossy) {
                MeshPart& part = PartFor(carrier, std::max(skin, -1), glossy);
                AddPrimitive(primitive, look, part, index);
                part.vertexCount = static_cast<std::uint32_t>(mesh.vertices.size()) - part.firstVertex;
                part.indexCount = static_cast<std::uint32_t>(mesh.indices.size()) - part.firstIndex;
            }
        }
    }

    /// The last part if it moves in the same way, otherwise a new one behind it.
    MeshPart& PartFor(int node, int skin, bool glossy) {
        const MeshPart* last = mesh.parts.empty() ? nullptr : &mesh.parts.back();
        if (last == nullptr || last->node != node || last->skin != skin || last->glossy != glossy) {
            MeshPart part;
            part.node = node;
            part.skin = skin;
            part.glossy = glossy;
            part.firstVertex = static_cast<std::uint32_t>(mesh.vertices.size());
            part.firstIndex = static_cast<std::uint32_t>(mesh.indices.size());
            mesh.parts.push_back(part);
        }
        return mesh.parts.back();
    }

    void AddPrimitive(const tinygltf::Primitive& primitive, const Look& look, const MeshPart& part,
                      int node) {
        const std::vector<glm::vec4> positions = ReadVectors(model, Attribute(primitive, "POSITION"), 3);
        const std::vector<std::uint32_t> indices = PrimitiveIndices(model, primitive, positions.size());
        if (positions.size() > kMaxVertices - mesh.vertices.size() ||
            indices.size() > kMaxIndices - mesh.indices.size()) {
            throw MeshError("more than 4 million vertices");
        }
        const auto base = static_cast<std::uint32_t>(mesh.vertices.size());
        AddVertices(primitive, look, positions, indices,
                    part.node < 0 && part.skin < 0 ? rest.nodes[static_cast<std::size_t>(node)]
                                                   : glm::mat4(1.0f));
        AddWeights(primitive, positions.size(), part.skin);
        mesh.sources.push_back({node, base, static_cast<std::uint32_t>(positions.size())});
        for (const std::uint32_t index : indices) {
            mesh.indices.push_back(base + index);
        }
    }

    void AddVertices(const tinygltf::Primitive& primitive, const Look& look,
                     const std::vector<glm::vec4>& positions, const std::vector<std::uint32_t>& indices,
                     const glm::mat4& matrix) {
        const int normalIndex = Attribute(primitive, "NORMAL");
        const std::vector<glm::vec4> normals =
            normalIndex >= 0 ? ReadVectors(model, normalIndex, 3) : MakeNormals(positions, indices);
        RequireCount(normals.size(), positions.size(), "normals");
        const int colorIndex = Attribute(primitive, "COLOR_0");
        const std::vector<glm::vec4> colors = colorIndex >= 0
                                                  ? ReadVectors(model, colorIndex, 3)
                                                  : std::vector<glm::vec4>(positions.size(), glm::vec4(1.0f));
        RequireCount(colors.size(), positions.size(), "colours");
        const glm::mat3 normalMatrix = glm::transpose(glm::inverse(glm::mat3(matrix)));
        for (std::size_t i = 0; i < positions.size(); ++i) {
            MeshVertex vertex{};
            const glm::vec3 place = glm::vec3(positions[i]) * engine::kUnitsPerMetre;
            vertex.position = glm::vec3(matrix * glm::vec4(place, 1.0f));
            if (!std::isfinite(vertex.position.x + vertex.position.y + vertex.position.z)) {
                throw MeshError("a position is not a number");
            }
            vertex.normal = UnitNormal(normalMatrix * glm::vec3(normals[i]));
            for (int c = 0; c < 3; ++c) {
                vertex.color[c] = ToByte(static_cast<double>(colors[i][c] * look.color[c]));
            }
            vertex.color[3] = 255;
            std::copy(std::begin(look.surface), std::end(look.surface), vertex.surface);
            mesh.vertices.push_back(vertex);
        }
    }

    void AddWeights(const tinygltf::Primitive& primitive, std::size_t count, int skin) {
        if (mesh.skins.empty()) {
            return;
        }
        mesh.weights.resize(mesh.vertices.size());
        if (skin < 0) {
            return;
        }
        const std::vector<glm::vec4> joints = ReadVectors(model, Attribute(primitive, "JOINTS_0"), 4);
        const std::vector<glm::vec4> weights = ReadVectors(model, Attribute(primitive, "WEIGHTS_0"), 4);
        RequireCount(joints.size(), count, "joints");
        RequireCount(weights.size(), count, "weights");
        const auto jointCount = static_cast<float>(mesh.skins[static_cast<std::size_t>(skin)].joints.size());
        for (std::size_t i = 0; i < count; ++i) {
            MeshWeights& target = mesh.weights[mesh.weights.size() - count + i];
            const float total = weights[i].x + weights[i].y + weights[i].z + weights[i].w;
            if (!(total > 0.0f) || !std::isfinite(total)) {
                throw MeshError("a vertex hangs on no joint");
            }
            for (int k = 0; k < 4; ++k) {
                if (!(joints[i][k] >= 0.0f && joints[i][k] < jointCount)) {
                    throw MeshError("a vertex names a joint that does not exist");
                }
                target.joints[k] = static_cast<std::uint16_t>(joints[i][k]);
                target.weights[k] = weights[i][k] / total;
            }
        }
    }

    const tinygltf::Model& model;
    Mesh& mesh;
    MeshPose rest;
    std::vector<bool> moved;
};

} // namespace

void BuildMesh(const tinygltf::Model& model, Mesh& mesh) {
    Builder(model, mesh).Build();
}

} // namespace mesh

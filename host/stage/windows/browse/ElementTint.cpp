#include "host/stage/windows/browse/ElementTint.h"

#include <algorithm>
#include <map>

namespace stage {

namespace {

// Linear 0 to 255.
constexpr float kLit[3] = {255.0f, 76.0f, 5.0f};
constexpr float kToned = 45.0f;
constexpr float kTonedShare = 0.72f; ///< of what the element leaves alone
constexpr float kGlow = 55.0f;       ///< emission, so that the lit part shows in shadow too

bool IsElement(const mesh::Mesh& mesh, int element) {
    return element >= 0 && element < static_cast<int>(mesh.nodes.size());
}

/// The node that a vertex hangs on in the file, -1 if none does.
int SourceOf(const mesh::Mesh& mesh, std::size_t vertex) {
    const auto behind = std::ranges::upper_bound(mesh.sources, vertex, {}, &mesh::MeshSource::firstVertex);
    if (behind == mesh.sources.begin()) {
        return -1;
    }
    const mesh::MeshSource& source = *std::prev(behind);
    return vertex < source.firstVertex + std::size_t{source.vertexCount} ? source.node : -1;
}

float SkinShare(const mesh::Mesh& mesh, const mesh::MeshSkin& skin, std::size_t vertex,
                const std::vector<float>& nodes) {
    float share = 0.0f;
    for (int i = 0; i < 4; ++i) {
        const mesh::MeshWeights& weights = mesh.weights[vertex];
        share += weights.weights[i] * nodes[static_cast<std::size_t>(skin.joints[weights.joints[i]])];
    }
    return std::min(share, 1.0f);
}

std::uint8_t ToByte(float value) {
    return static_cast<std::uint8_t>(std::clamp(value + 0.5f, 0.0f, 255.0f));
}

void Light(mesh::MeshVertex& vertex, float share) {
    for (int i = 0; i < 3; ++i) {
        const auto own = static_cast<float>(vertex.color[i]);
        const float quiet = own + (kToned - own) * kTonedShare;
        vertex.color[i] = ToByte(quiet + (kLit[i] - quiet) * share);
    }
    vertex.surface[2] = ToByte(static_cast<float>(vertex.surface[2]) * (1.0f - kTonedShare) + kGlow * share);
}

} // namespace

std::vector<float> ElementShare::OfNodes(const mesh::Mesh& mesh, int element) {
    std::vector<float> shares(mesh.nodes.size(), 0.0f);
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const int parent = mesh.nodes[i].parent;
        if (static_cast<int>(i) == element) {
            shares[i] = 1.0f;
        } else if (parent >= 0 && shares[static_cast<std::size_t>(parent)] > 0.0f) {
            shares[i] = kBelow;
        }
    }
    return shares;
}

std::vector<float> ElementShare::OfVertices(const mesh::Mesh& mesh, int element) {
    const std::vector<float> nodes = OfNodes(mesh, element);
    std::vector<float> shares(mesh.vertices.size(), 0.0f);
    for (const mesh::MeshSource& source : mesh.sources) {
        std::fill_n(shares.begin() + source.firstVertex, source.vertexCount,
                    nodes[static_cast<std::size_t>(source.node)]);
    }
    for (const mesh::MeshPart& part : mesh.parts) {
        const std::size_t end = part.skin >= 0 ? part.firstVertex + std::size_t{part.vertexCount} : 0;
        for (std::size_t i = part.firstVertex; i < end; ++i) {
            const mesh::MeshSkin& skin = mesh.skins[static_cast<std::size_t>(part.skin)];
            shares[i] = std::max(shares[i], SkinShare(mesh, skin, i, nodes));
        }
    }
    return shares;
}

int ElementShare::OfTriangle(const mesh::Mesh& mesh, std::uint32_t triangle) {
    const std::size_t first = std::size_t{triangle} * 3;
    const auto part = std::ranges::find_if(mesh.parts, [&](const mesh::MeshPart& run) {
        return first >= run.firstIndex && first < run.firstIndex + std::size_t{run.indexCount};
    });
    if (part == mesh.parts.end()) {
        return -1;
    }
    if (part->skin < 0) {
        return SourceOf(mesh, mesh.indices[first]);
    }
    const mesh::MeshSkin& skin = mesh.skins[static_cast<std::size_t>(part->skin)];
    std::map<int, float> sums;
    for (std::size_t corner = first; corner < first + 3; ++corner) {
        const mesh::MeshWeights& weights = mesh.weights[mesh.indices[corner]];
        for (int i = 0; i < 4; ++i) {
            sums[skin.joints[weights.joints[i]]] += weights.weights[i];
        }
    }
    return std::ranges::max_element(sums, {}, [](const auto& entry) { return entry.second; })->first;
}

std::shared_ptr<const mesh::Mesh> TintElement(const mesh::Mesh& mesh, int element) {
    auto copy = std::make_shared<mesh::Mesh>();
    copy->vertices = mesh.vertices;
    copy->weights = mesh.weights;
    copy->indices = mesh.indices;
    copy->parts = mesh.parts;
    copy->skins = mesh.skins;
    copy->restNodes = mesh.restNodes;
    copy->box = mesh.box;
    if (IsElement(mesh, element)) {
        const std::vector<float> shares = ElementShare::OfVertices(mesh, element);
        for (std::size_t i = 0; i < shares.size(); ++i) {
            Light(copy->vertices[i], shares[i]);
        }
    }
    return copy;
}

} // namespace stage

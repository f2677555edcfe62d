#include "host/engine/mesh/MeshPose.h"

#include "host/engine/mesh/Mesh.h"

#include <algorithm>
#include <cstring>
#include <glm/gtc/matrix_transform.hpp>

namespace mesh {

namespace {

/// A node's place without its name, so that copying it allocates nothing.
struct Transform {
    glm::vec3 translation;
    glm::quat rotation;
    glm::vec3 scale;
};

template <class Placed> glm::mat4 LocalMatrix(const Placed& node) {
    glm::mat4 matrix = glm::mat4_cast(node.rotation);
    matrix[0] *= node.scale.x;
    matrix[1] *= node.scale.y;
    matrix[2] *= node.scale.z;
    matrix[3] = glm::vec4(node.translation, 1.0f);
    return matrix;
}

void Store(const glm::mat4& matrix, float* to) {
    std::memcpy(to, &matrix[0][0], sizeof(matrix));
}

glm::quat ToQuat(const glm::vec4& v) {
    return glm::quat(v.w, v.x, v.y, v.z);
}
glm::vec4 FromQuat(const glm::quat& q) {
    return glm::vec4(q.x, q.y, q.z, q.w);
}

glm::vec4 Unit(const glm::vec4& v) {
    const float length = glm::length(v);
    return length > 0.0f ? v / length : glm::vec4(0.0f, 0.0f, 0.0f, 1.0f);
}

glm::vec4 CubicValue(const MeshChannel& channel, std::size_t i, float u, float span) {
    const glm::vec4& p0 = channel.values[i * 3 + 1];
    const glm::vec4 m0 = channel.values[i * 3 + 2] * span;
    const glm::vec4& p1 = channel.values[(i + 1) * 3 + 1];
    const glm::vec4 m1 = channel.values[(i + 1) * 3] * span;
    const float u2 = u * u;
    const float u3 = u2 * u;
    return p0 * (2.0f * u3 - 3.0f * u2 + 1.0f) + m0 * (u3 - 2.0f * u2 + u) + p1 * (3.0f * u2 - 2.0f * u3) +
           m1 * (u3 - u2);
}

glm::vec4 Between(const MeshChannel& channel, std::size_t i, float seconds) {
    const float span = channel.times[i + 1] - channel.times[i];
    const float u = span > 0.0f ? (seconds - channel.times[i]) / span : 1.0f;
    if (channel.curve == MeshCurve::Cubic) {
        return CubicValue(channel, i, u, span);
    }
    if (channel.path == MeshPath::Rotation) {
        return FromQuat(glm::slerp(ToQuat(channel.values[i]), ToQuat(channel.values[i + 1]), u));
    }
    return glm::mix(channel.values[i], channel.values[i + 1], u);
}

bool IsBelow(const Mesh& mesh, int node, int root) {
    while (node >= 0 && node != root) {
        node = mesh.nodes[static_cast<std::size_t>(node)].parent;
    }
    return node == root;
}

template <class Placed> void Blend(Placed& node, MeshPath path, const glm::vec4& value, float weight) {
    switch (path) {
    case MeshPath::Translation:
        node.translation = glm::mix(node.translation, glm::vec3(value), weight);
        break;
    case MeshPath::Rotation:
        node.rotation = weight >= 1.0f ? ToQuat(value) : glm::slerp(node.rotation, ToQuat(value), weight);
        break;
    case MeshPath::Scale:
        node.scale = glm::mix(node.scale, glm::vec3(value), weight);
        break;
    }
}

MeshVertex SkinVertex(const MeshVertex& vertex, const MeshWeights& weights,
                      const std::vector<glm::mat4>& joints) {
    glm::mat4 matrix(0.0f);
    for (int i = 0; i < 4; ++i) {
        if (weights.weights[i] > 0.0f) {
            matrix += joints[weights.joints[i]] * weights.weights[i];
        }
    }
    MeshVertex result = vertex;
    result.position = glm::vec3(matrix * glm::vec4(vertex.position, 1.0f));
    const glm::vec3 normal = glm::mat3(matrix) * vertex.normal;
    const float length = glm::length(normal);
    result.normal = length > 0.0f ? normal / length : vertex.normal;
    return result;
}

} // namespace

glm::vec4 SampleChannel(const MeshChannel& channel, float seconds) {
    const std::size_t last = channel.times.size() - 1;
    const bool cubic = channel.curve == MeshCurve::Cubic;
    const auto keyValue = [&](std::size_t i) { return channel.values[cubic ? i * 3 + 1 : i]; };
    glm::vec4 value;
    if (!(seconds > channel.times.front())) {
        value = keyValue(0);
    } else if (seconds >= channel.times.back()) {
        value = keyValue(last);
    } else {
        const auto after = std::upper_bound(channel.times.begin(), channel.times.end(), seconds);
        const auto i = static_cast<std::size_t>(after - channel.times.begin()) - 1;
        value = channel.curve == MeshCurve::Step ? keyValue(i) : Between(channel, i, seconds);
    }
    return channel.path == MeshPath::Rotation ? Unit(value) : value;
}

void SampleLocals(const Mesh& mesh, int clip, float seconds, float* locals) {
    for (std::size_t i = 0; i < mesh.nodes.size(); ++i) {
        Store(LocalMatrix(mesh.nodes[i]), locals + 16 * i);
    }
    if (clip < 0 || clip >= static_cast<int>(mesh.clips.size())) {
        return;
    }
    const std::vector<MeshChannel>& channels = mesh.clips[static_cast<std::size_t>(clip)].channels;
    for (std::size_t i = 0; i < channels.size();) {
        const int index = channels[i].node;
        const MeshNode& rest = mesh.nodes[static_cast<std::size_t>(index)];
        Transform moved{rest.translation, rest.rotation, rest.scale};
        for (; i < channels.size() && channels[i].node == index; ++i) {
            Blend(moved, channels[i].path, SampleChannel(channels[i], seconds), 1.0f);
        }
        Store(LocalMatrix(moved), locals + 16 * static_cast<std::size_t>(index));
    }
}

void MeshPose::ApplyLayer(const Mesh& mesh, const MeshLayer& layer) {
    if (layer.clip < 0 || layer.clip >= static_cast<int>(mesh.clips.size())) {
        return;
    }
    for (const MeshChannel& channel : mesh.clips[static_cast<std::size_t>(layer.clip)].channels) {
        if (layer.rootNode < 0 || IsBelow(mesh, channel.node, layer.rootNode)) {
            Blend(local[static_cast<std::size_t>(channel.node)], channel.path,
                  SampleChannel(channel, layer.seconds), layer.weight);
        }
    }
}

void MeshPose::Evaluate(const Mesh& mesh, std::span<const MeshLayer> layers) {
    local = mesh.nodes;
    for (const MeshLayer& layer : layers) {
        ApplyLayer(mesh, layer);
    }
    nodes.resize(local.size());
    for (std::size_t i = 0; i < local.size(); ++i) {
        const glm::mat4 matrix = LocalMatrix(local[i]);
        const int parent = local[i].parent;
        nodes[i] = parent < 0 ? matrix : nodes[static_cast<std::size_t>(parent)] * matrix;
    }
}

std::vector<glm::mat4> MeshPose::JointMatrices(const Mesh& mesh, int skin) const {
    const MeshSkin& data = mesh.skins[static_cast<std::size_t>(skin)];
    std::vector<glm::mat4> joints(data.joints.size());
    for (std::size_t i = 0; i < joints.size(); ++i) {
        joints[i] = nodes[static_cast<std::size_t>(data.joints[i])] * data.inverseBind[i];
    }
    return joints;
}

void MeshPose::SkinVertices(const Mesh& mesh) {
    skinned.resize(mesh.weights.empty() ? 0 : mesh.vertices.size());
    for (const MeshPart& part : mesh.parts) {
        if (part.skin < 0) {
            continue;
        }
        const std::vector<glm::mat4> joints = JointMatrices(mesh, part.skin);
        for (std::size_t i = part.firstVertex; i < part.firstVertex + std::size_t{part.vertexCount}; ++i) {
            skinned[i] = SkinVertex(mesh.vertices[i], mesh.weights[i], joints);
        }
    }
}

std::vector<glm::vec3> MeshPose::ModelPositions(const Mesh& mesh) const {
    std::vector<glm::vec3> positions(mesh.vertices.size());
    for (const MeshPart& part : mesh.parts) {
        const std::vector<glm::mat4> joints =
            part.skin >= 0 ? JointMatrices(mesh, part.skin) : std::vector<glm::mat4>();
        const glm::mat4 matrix =
            part.node >= 0 ? nodes[static_cast<std::size_t>(part.node)] : glm::mat4(1.0f);
        for (std::size_t i = part.firstVertex; i < part.firstVertex + std::size_t{part.vertexCount}; ++i) {
            const MeshVertex& vertex = mesh.vertices[i];
            positions[i] = part.skin >= 0 ? SkinVertex(vertex, mesh.weights[i], joints).position
                                          : glm::vec3(matrix * glm::vec4(vertex.position, 1.0f));
        }
    }
    return positions;
}

} // namespace mesh

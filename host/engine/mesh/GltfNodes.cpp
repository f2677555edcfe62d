#include "host/engine/mesh/GltfNodes.h"

#include "host/engine/mesh/GltfAccessor.h"
#include "host/engine/mesh/Mesh.h"
#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>
#include <tiny_gltf.h>

namespace mesh {

namespace {

constexpr std::size_t kMaxNodes = 65536;
constexpr std::size_t kMaxKeys = 4'000'000;

int Renumbered(const std::vector<int>& order, int index, const char* what) {
    if (index < 0 || static_cast<std::size_t>(index) >= order.size()) {
        throw MeshError(std::string(what) + " names a node that does not exist");
    }
    return order[static_cast<std::size_t>(index)];
}

std::vector<int> FindParents(const tinygltf::Model& model) {
    std::vector<int> parents(model.nodes.size(), -1);
    for (std::size_t i = 0; i < model.nodes.size(); ++i) {
        for (const int child : model.nodes[i].children) {
            if (child < 0 || static_cast<std::size_t>(child) >= model.nodes.size()) {
                throw MeshError("a node names a child that does not exist");
            }
            if (parents[static_cast<std::size_t>(child)] >= 0) {
                throw MeshError("a node has two parents");
            }
            parents[static_cast<std::size_t>(child)] = static_cast<int>(i);
        }
    }
    return parents;
}

/// Nodes of the file in the order of a walk from the roots, children in the file's order.
std::vector<int> WalkOrder(const tinygltf::Model& model, const std::vector<int>& parents) {
    std::vector<int> walk;
    std::vector<int> open;
    for (std::size_t i = model.nodes.size(); i-- > 0;) {
        if (parents[i] < 0) {
            open.push_back(static_cast<int>(i));
        }
    }
    while (!open.empty()) {
        const int index = open.back();
        open.pop_back();
        walk.push_back(index);
        const std::vector<int>& children = model.nodes[static_cast<std::size_t>(index)].children;
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    if (walk.size() != model.nodes.size()) {
        throw MeshError("its nodes form a cycle");
    }
    return walk;
}

void TakeMatrix(const std::vector<double>& values, MeshNode& node) {
    glm::mat3 axes;
    for (int c = 0; c < 3; ++c) {
        const double* column = values.data() + static_cast<std::ptrdiff_t>(c) * 4;
        for (int r = 0; r < 3; ++r) {
            axes[c][r] = static_cast<float>(column[r]);
        }
        node.translation[c] = engine::Metres(static_cast<float>(values.data()[12 + c]));
        node.scale[c] = glm::length(axes[c]);
    }
    if (glm::determinant(axes) < 0.0f) {
        node.scale.x = -node.scale.x;
    }
    for (int c = 0; c < 3; ++c) {
        axes[c] = node.scale[c] != 0.0f ? axes[c] / node.scale[c] : glm::mat3(1.0f)[c];
    }
    node.rotation = glm::quat_cast(axes);
}

float At(const std::vector<double>& values, std::size_t i) {
    return static_cast<float>(values[i]);
}

bool IsFinite(const MeshNode& node) {
    const glm::vec3& t = node.translation;
    const glm::vec3& s = node.scale;
    const glm::quat& q = node.rotation;
    return std::isfinite(t.x + t.y + t.z) && std::isfinite(s.x + s.y + s.z) &&
           std::isfinite(q.x + q.y + q.z + q.w);
}

MeshNode ToNode(const tinygltf::Node& source, int number, int parent) {
    MeshNode node;
    node.name = source.name.empty() ? "node " + std::to_string(number) : source.name;
    node.parent = parent;
    if (source.matrix.size() == 16) {
        TakeMatrix(source.matrix, node);
    }
    if (source.translation.size() == 3) {
        node.translation =
            glm::vec3(At(source.translation, 0), At(source.translation, 1), At(source.translation, 2)) *
            engine::kUnitsPerMetre;
    }
    if (source.rotation.size() == 4) {
        const std::vector<double>& q = source.rotation;
        const glm::quat rotation(At(q, 3), At(q, 0), At(q, 1), At(q, 2));
        node.rotation = glm::length(rotation) > 0.0f ? glm::normalize(rotation) : node.rotation;
    }
    if (source.scale.size() == 3) {
        node.scale = {At(source.scale, 0), At(source.scale, 1), At(source.scale, 2)};
    }
    if (!IsFinite(node)) {
        throw MeshError("node \"" + node.name + "\" stands nowhere");
    }
    return node;
}

bool PathOf(const std::string& name, MeshPath& path) {
    if (name == "translation") {
        path = MeshPath::Translation;
    } else if (name == "rotation") {
        path = MeshPath::Rotation;
    } else if (name == "scale") {
        path = MeshPath::Scale;
    } else {
        return false; // morph weights
    }
    return true;
}

void CheckTimes(const std::vector<float>& times) {
    if (times.empty() || !std::isfinite(times.front()) || !std::isfinite(times.back()) ||
        std::adjacent_find(times.begin(), times.end(), [](float a, float b) { return !(a <= b); }) !=
            times.end()) {
        throw MeshError("the times of an animation do not rise");
    }
}

void CheckValues(const std::vector<glm::vec4>& values) {
    for (const glm::vec4& v : values) {
        if (!std::isfinite(v.x + v.y + v.z + v.w)) {
            throw MeshError("a value of an animation is not a number");
        }
    }
}

MeshChannel ToChannel(const tinygltf::Model& model, const tinygltf::AnimationSampler& sampler, MeshPath path,
                      int node) {
    MeshChannel channel;
    channel.node = node;
    channel.path = path;
    channel.curve = sampler.interpolation == "STEP"          ? MeshCurve::Step
                    : sampler.interpolation == "CUBICSPLINE" ? MeshCurve::Cubic
                                                             : MeshCurve::Linear;
    channel.times = ReadFloats(model, sampler.input);
    CheckTimes(channel.times);
    channel.values = ReadVectors(model, sampler.output, path == MeshPath::Rotation ? 4 : 3);
    if (path == MeshPath::Translation) {
        for (glm::vec4& value : channel.values) { // tangents are lengths too
            value *= engine::kUnitsPerMetre;
        }
    }
    CheckValues(channel.values);
    const std::size_t each = channel.curve == MeshCurve::Cubic ? 3 : 1;
    if (channel.values.size() != channel.times.size() * each) {
        throw MeshError("an animation has another number of values than of times");
    }
    return channel;
}

MeshClip ToClip(const tinygltf::Model& model, const tinygltf::Animation& source,
                const std::vector<int>& order, std::size_t& keys) {
    MeshClip clip;
    clip.name = source.name;
    for (const tinygltf::AnimationChannel& target : source.channels) {
        MeshPath path{};
        if (target.target_node < 0 || !PathOf(target.target_path, path)) {
            continue;
        }
        if (target.sampler < 0 || static_cast<std::size_t>(target.sampler) >= source.samplers.size()) {
            throw MeshError("animation \"" + clip.name + "\" names a sampler that does not exist");
        }
        clip.channels.push_back(ToChannel(model, source.samplers[static_cast<std::size_t>(target.sampler)],
                                          path, Renumbered(order, target.target_node, "an animation")));
        keys += clip.channels.back().times.size();
        if (keys > kMaxKeys) {
            throw MeshError("more than 4 million animation keys");
        }
        clip.duration = std::max(clip.duration, clip.channels.back().times.back());
    }
    // Channels of one node stand together, so that a node is composed once.
    std::stable_sort(clip.channels.begin(), clip.channels.end(),
                     [](const MeshChannel& a, const MeshChannel& b) { return a.node < b.node; });
    return clip;
}

} // namespace

std::vector<int> BuildNodes(const tinygltf::Model& model, Mesh& mesh) {
    if (model.nodes.size() > kMaxNodes) {
        throw MeshError("more than 65,536 nodes");
    }
    const std::vector<int> parents = FindParents(model);
    const std::vector<int> walk = WalkOrder(model, parents);
    std::vector<int> order(model.nodes.size(), -1);
    for (const int index : walk) {
        const auto i = static_cast<std::size_t>(index);
        const int parent = parents[i] < 0 ? -1 : order[static_cast<std::size_t>(parents[i])];
        order[i] = static_cast<int>(mesh.nodes.size());
        mesh.nodes.push_back(ToNode(model.nodes[i], index, parent));
    }
    return order;
}

void BuildSkins(const tinygltf::Model& model, const std::vector<int>& order, Mesh& mesh) {
    for (const tinygltf::Skin& source : model.skins) {
        MeshSkin skin;
        for (const int joint : source.joints) {
            skin.joints.push_back(Renumbered(order, joint, "a skin"));
        }
        if (skin.joints.empty() || skin.joints.size() > kMaxNodes - 1) {
            throw MeshError("a skin has no joints");
        }
        skin.inverseBind.assign(skin.joints.size(), glm::mat4(1.0f));
        if (source.inverseBindMatrices >= 0) {
            skin.inverseBind = ReadMatrices(model, source.inverseBindMatrices);
        }
        for (glm::mat4& matrix : skin.inverseBind) {
            matrix[3] = glm::vec4(glm::vec3(matrix[3]) * engine::kUnitsPerMetre, matrix[3].w);
        }
        if (skin.inverseBind.size() != skin.joints.size()) {
            throw MeshError("a skin has another number of matrices than of joints");
        }
        mesh.skins.push_back(std::move(skin));
    }
}

void BuildClips(const tinygltf::Model& model, const std::vector<int>& order, Mesh& mesh) {
    std::size_t keys = 0;
    for (const tinygltf::Animation& source : model.animations) {
        mesh.clips.push_back(ToClip(model, source, order, keys));
    }
}

std::vector<bool> MovedNodes(const Mesh& mesh) {
    std::vector<bool> moved(mesh.nodes.size(), false);
    for (const MeshClip& clip : mesh.clips) {
        for (const MeshChannel& channel : clip.channels) {
            moved[static_cast<std::size_t>(channel.node)] = true;
        }
    }
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const int parent = mesh.nodes[i].parent;
        moved[i] = moved[i] || (parent >= 0 && moved[static_cast<std::size_t>(parent)]);
    }
    return moved;
}

} // namespace mesh

#include "host/engine/mesh/GltfMeshLibrary.h"

#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/mesh/MeshPose.h"

#include <cstring>

namespace mesh {

class GltfMeshLibrary::Entry final : public engine::IMesh {
public:
    explicit Entry(std::shared_ptr<const Mesh> loaded) : mesh(std::move(loaded)) {
        restLocals.resize(mesh->nodes.size());
        SampleClip(-1, 0.0f, restLocals.data());
        for (const MeshNode& node : mesh->nodes) {
            elements.push_back({node.name, node.parent, /*type*/ 1});
        }
        for (const MeshClip& clip : mesh->clips) {
            clips.push_back({clip.name, clip.duration});
        }
    }

    const std::vector<MeshElement>& Elements() const override { return elements; }
    const std::vector<engine::Matrix4>& RestLocals() const override { return restLocals; }
    const std::vector<engine::MeshClip>& Clips() const override { return clips; }

    void Bounds(Vector3& low, Vector3& high) const override {
        low = mesh->box.IsEmpty() ? Vector3() : FromGlm(mesh->box.min);
        high = mesh->box.IsEmpty() ? Vector3() : FromGlm(mesh->box.max);
    }

    void SampleClip(int clip, float seconds, engine::Matrix4* locals) const override {
        if (!mesh->nodes.empty()) {
            SampleLocals(*mesh, clip, seconds, locals[0].m);
        }
    }

    bool RayCast(const Vector3& from, const Vector3& to, const engine::Matrix4* pose,
                 float& fraction) const override {
        const glm::vec3 origin = ToGlm(from);
        const glm::vec3 direction = ToGlm(to) - origin;
        std::optional<MeshHit> hit;
        if (pose == nullptr || !mesh->IsPosable()) {
            hit = mesh->bvh.RayCast(origin, direction, 1.0f);
        } else {
            hit = PosedTree(*mesh, pose[0].m).RayCast(origin, direction, 1.0f);
        }
        fraction = hit ? hit->distance : fraction;
        return hit.has_value();
    }

private:
    static MeshBvh PosedTree(const Mesh& mesh, const float* matrices) {
        MeshPose pose;
        pose.nodes.resize(mesh.nodes.size());
        std::memcpy(&pose.nodes[0][0][0], matrices, pose.nodes.size() * sizeof(glm::mat4));
        MeshBvh tree;
        tree.Build(pose.ModelPositions(mesh), mesh.indices);
        return tree;
    }

    std::shared_ptr<const Mesh> mesh;
    std::vector<MeshElement> elements;
    std::vector<engine::Matrix4> restLocals;
    std::vector<engine::MeshClip> clips;
};

GltfMeshLibrary::GltfMeshLibrary() = default;
GltfMeshLibrary::~GltfMeshLibrary() = default;

const engine::IMesh* GltfMeshLibrary::FindMesh(const std::string& meshName) {
    const auto [entry, isNew] = entries.try_emplace(meshName);
    if (isNew) {
        std::shared_ptr<const Mesh> mesh = store.Find(meshName);
        entry->second = mesh != nullptr ? std::make_unique<Entry>(std::move(mesh)) : nullptr;
    }
    return entry->second.get();
}

bool GltfMeshLibrary::Reload(const std::string& meshName, std::string& error) {
    if (!store.Reload(meshName, error)) {
        return false;
    }
    if (const auto entry = entries.find(meshName); entry != entries.end()) {
        if (entry->second != nullptr) {
            replaced.push_back(std::move(entry->second));
        }
        entries.erase(entry);
    }
    return true;
}

void GltfMeshLibrary::DropReplaced() {
    replaced.clear();
}

void GltfMeshLibrary::SetFolder(const std::string& path) {
    if (path != store.Folder()) {
        entries.clear();
        replaced.clear();
        store.SetFolder(path);
    }
}

} // namespace mesh

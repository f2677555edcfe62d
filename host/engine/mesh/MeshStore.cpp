#include "host/engine/mesh/MeshStore.h"

#include "host/engine/mesh/GltfLoader.h"
#include "host/engine/mesh/ShapeMesh.h"

#include <filesystem>

namespace mesh {

namespace {

std::string PathOf(const std::string& folder, const std::string& name) {
    std::filesystem::path path = std::filesystem::path(folder) / name;
    const std::string extension = path.extension().string();
    if (extension != ".glb" && extension != ".gltf") {
        path += ".glb";
    }
    return path.string();
}

} // namespace

void MeshStore::SetFolder(const std::string& path) {
    if (path != folder) {
        folder = path;
        Clear();
    }
}

std::shared_ptr<const Mesh> MeshStore::Find(const std::string& name) {
    if (name.empty()) {
        return nullptr;
    }
    const auto [entry, isNew] = entries.try_emplace(name);
    if (const std::optional<engine::Shape> shape = isNew ? engine::ShapeOf(name) : std::nullopt) {
        entry->second.mesh = MakeShapeMesh(*shape);
    } else if (isNew) {
        try {
            entry->second.mesh = LoadGltf(PathOf(folder, name), folder);
        } catch (const MeshError& error) {
            entry->second.error = error.what();
        }
    }
    return entry->second.mesh;
}

std::string MeshStore::ErrorOf(const std::string& name) const {
    const auto found = entries.find(name);
    return found == entries.end() ? std::string() : found->second.error;
}

} // namespace mesh

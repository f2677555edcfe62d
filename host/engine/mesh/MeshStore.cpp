#include "host/engine/mesh/MeshStore.h"

#include "host/engine/mesh/GltfLoader.h"
#include "host/engine/mesh/ShapeMesh.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

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
        entry->second.mesh = Load(name, entry->second);
    }
    return entry->second.mesh;
}

/// Null, and the reason in the entry, if the file can't be used.
std::shared_ptr<const Mesh> MeshStore::Load(const std::string& name, Entry& entry) {
    const std::string path = PathOf(folder, name);
    // Before it is read: what is written meanwhile counts as a change.
    const FileMark mark(path);
    std::vector<std::string> buffers;
    std::shared_ptr<const Mesh> mesh;
    entry.error.clear();
    try {
        mesh = LoadGltf(path, folder, &buffers);
    } catch (const MeshError& error) {
        entry.error = error.what();
    }
    entry.files = {mark};
    for (std::string& buffer : buffers) {
        entry.files.emplace_back(std::move(buffer));
    }
    return mesh;
}

std::vector<std::string> MeshStore::Files() const {
    std::vector<std::string> paths;
    for (const auto& [name, entry] : entries) {
        for (const FileMark& file : entry.files) {
            paths.push_back(file.path);
        }
    }
    return paths;
}

std::vector<std::string> MeshStore::Changed() const {
    std::vector<std::string> names;
    for (const auto& [name, entry] : entries) {
        const auto isOther = [](const FileMark& file) { return FileMark(file.path) != file; };
        if (std::ranges::any_of(entry.files, isOther)) {
            names.push_back(name);
        }
    }
    return names;
}

bool MeshStore::Reload(const std::string& name, std::string& error) {
    const auto found = entries.find(name);
    if (found == entries.end() || found->second.files.empty()) {
        return false;
    }
    Entry& entry = found->second;
    std::shared_ptr<const Mesh> mesh = Load(name, entry);
    if (mesh != nullptr) {
        entry.mesh = std::move(mesh);
        return true;
    }
    error = entry.error;
    if (entry.mesh != nullptr) {
        entry.error.clear(); // the name has a mesh
    }
    return false;
}

MeshStore::FileMark::FileMark(std::string filePath) : path(std::move(filePath)) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0) {
        inode = status.st_ino;
        size = status.st_size;
        changed = std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
    }
}

std::string MeshStore::ErrorOf(const std::string& name) const {
    const auto found = entries.find(name);
    return found == entries.end() ? std::string() : found->second.error;
}

} // namespace mesh

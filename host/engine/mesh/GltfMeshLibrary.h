#pragma once

#include "host/engine/mesh/MeshStore.h"
#include "host/engine/MeshLibrary.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mesh {

/// The engine's meshes from glTF files. One serves a level; the host installs it at the level and keeps it
/// longer than the level. SetFolder when the level's folder changes: meshes given out before are dropped.
class GltfMeshLibrary : public engine::IMeshLibrary {
public:
    GltfMeshLibrary();
    ~GltfMeshLibrary() override;
    const engine::IMesh* FindMesh(const std::string& meshName) override;
    /// The loaded file behind a mesh name, null if it can't be used.
    std::shared_ptr<const Mesh> FindFile(const std::string& meshName) { return store.Find(meshName); }
    void SetFolder(const std::string& path);
    /// Why a name has no mesh, for the host's messages; empty for good names.
    std::string ErrorOf(const std::string& meshName) const { return store.ErrorOf(meshName); }

    std::vector<std::string> Files() const { return store.Files(); }
    std::vector<std::string> Changed() const { return store.Changed(); }
    /// As MeshStore::Reload. The mesh given out before lives until DropReplaced: who holds it takes the new
    /// one before.
    bool Reload(const std::string& meshName, std::string& error);
    void DropReplaced();

private:
    class Entry;

    MeshStore store;
    std::map<std::string, std::unique_ptr<Entry>> entries;
    std::vector<std::unique_ptr<Entry>> replaced;
};

} // namespace mesh

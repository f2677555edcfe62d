#pragma once

#include "host/engine/mesh/Mesh.h"

#include <map>
#include <memory>

namespace mesh {

/// Meshes by the name that objects hold: a path relative to one folder, the level's own, or the name of a
/// shape. A file is loaded at its first use and kept; a file that failed is not tried again until Clear.
class MeshStore {
public:
    /// Another folder empties the store.
    void SetFolder(const std::string& path);
    const std::string& Folder() const { return folder; }
    /// The mesh, or null if the name is empty or the file can't be used; then `ErrorOf` tells why.
    /// A name without ".glb" or ".gltf" gets ".glb".
    std::shared_ptr<const Mesh> Find(const std::string& name);
    /// Why a name has no mesh; empty for names never asked for and for good ones.
    std::string ErrorOf(const std::string& name) const;
    void Clear() { entries.clear(); }

private:
    struct Entry {
        std::shared_ptr<const Mesh> mesh;
        std::string error;
    };

    std::string folder;
    std::map<std::string, Entry> entries;
};

} // namespace mesh

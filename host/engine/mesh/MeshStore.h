#pragma once

#include "host/engine/mesh/Mesh.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

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

    /// Files that the names asked for stand for, with their buffers; also those that are missing.
    std::vector<std::string> Files() const;
    /// The names whose files are others than when they were read: written, replaced, come or gone.
    std::vector<std::string> Changed() const;
    /// Reads the file of a name anew. If it can't be used, the reason is told and the mesh stays the one
    /// before; `Changed` gives the name no more until the file changes again.
    bool Reload(const std::string& name, std::string& error);

private:
    /// What a file was when it was read.
    struct FileMark {
        explicit FileMark(std::string filePath);
        bool operator==(const FileMark&) const = default;

        std::string path;
        std::uint64_t inode = 0;
        std::int64_t size = -1;   ///< bytes; negative for no file
        std::int64_t changed = 0; ///< nanoseconds since the epoch
    };
    struct Entry {
        std::shared_ptr<const Mesh> mesh;
        std::string error;
        std::vector<FileMark> files; ///< none of a shape
    };
    std::shared_ptr<const Mesh> Load(const std::string& name, Entry& entry);

    std::string folder;
    std::map<std::string, Entry> entries;
};

} // namespace mesh

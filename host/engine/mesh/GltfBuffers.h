#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <tiny_gltf.h>
#include <vector>

namespace mesh {

/// Opens the files with buffers that a model names, for the parser, and no others: pictures are drawn by
/// nobody. The files must lie in the model's folder or the level's, or below, and may have 256 MiB in all.
/// Lives as long as the parsing.
class GltfBuffers {
public:
    /// `json` must outlive this object. `level` may be empty.
    GltfBuffers(std::string_view json, std::string model, std::string level);
    tinygltf::FsCallbacks Callbacks();
    /// Why a buffer was not read; empty if none was refused.
    const std::string& Error() const { return error; }
    /// Paths of the buffers that were asked for, also of those that could not be read.
    const std::vector<std::string>& Paths() const { return paths; }

private:
    static bool Exists(const std::string& path, void* self);
    static bool Read(std::vector<unsigned char>* bytes, std::string* why, const std::string& path,
                     void* self);
    bool IsBuffer(const std::string& path);
    bool Refuse(const std::string& path, const std::string& why, std::string* told);
    void FindNames();

    std::string_view text;
    const std::string modelFolder;
    const std::string levelFolder;
    bool namesKnown = false;
    std::set<std::string> names; ///< of the buffers' files, as the model writes them, decoded
    std::vector<std::string> paths;
    std::uint64_t bytesLeft;
    std::string error;
};

} // namespace mesh

#include "host/stage/windows/MeshFiles.h"

#include <algorithm>
#include <filesystem>

namespace stage {

namespace {
constexpr int kMaxEntries = 5000;
constexpr int kMaxDepth = 4;

bool IsMesh(const std::filesystem::path& path) {
    return path.extension() == ".glb" || path.extension() == ".gltf";
}
} // namespace

std::vector<std::string> FindMeshFiles(const std::string& folder) {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    std::error_code error;
    if (folder.empty()) {
        return names;
    }
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (int seen = 0; !error && entry != fs::recursive_directory_iterator() && seen < kMaxEntries; ++seen) {
        if (entry.depth() >= kMaxDepth) {
            entry.disable_recursion_pending();
        }
        if (IsMesh(entry->path())) {
            names.push_back(entry->path().lexically_relative(folder).generic_string());
        }
        entry.increment(error);
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace stage

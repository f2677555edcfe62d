#include "host/stage/windows/MeshFiles.h"

#include <algorithm>
#include <filesystem>

namespace stage {

namespace {
constexpr int kMaxEntries = 5000;
constexpr int kMaxDepth = 4;

} // namespace

std::vector<std::string> FindLevelFiles(const std::string& folder, std::vector<std::string>& folders) {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    std::error_code error;
    if (folder.empty()) {
        return names;
    }
    folders.push_back(folder);
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (int seen = 0; !error && entry != fs::recursive_directory_iterator() && seen < kMaxEntries; ++seen) {
        if (entry.depth() >= kMaxDepth) {
            entry.disable_recursion_pending();
        }
        std::error_code unreadable;
        if (entry->is_directory(unreadable)) {
            folders.push_back(entry->path().string());
        } else {
            names.push_back(entry->path().lexically_relative(folder).generic_string());
        }
        entry.increment(error);
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool IsMeshName(const std::string& name) {
    return name.ends_with(".glb") || name.ends_with(".gltf");
}

std::vector<std::string> FindMeshFiles(const std::string& folder) {
    std::vector<std::string> folders;
    std::vector<std::string> names = FindLevelFiles(folder, folders);
    std::erase_if(names, [](const std::string& name) { return !IsMeshName(name); });
    return names;
}

} // namespace stage

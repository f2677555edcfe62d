#include "framework/Path.h"

#include <cctype>
#include <filesystem>
#include <vector>

namespace {

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

// The root, "/" or "C:/" or nothing, and the parts behind it.
struct Parts {
    std::string root;
    std::vector<std::string> names;
};

Parts Split(const std::string& path) {
    Parts parts;
    std::size_t at = 0;
    if (path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':') {
        parts.root =
            std::string(1, static_cast<char>(std::toupper(static_cast<unsigned char>(path[0])))) + ":/";
        at = 2;
    } else if (!path.empty() && IsSeparator(path[0])) {
        parts.root.push_back('/');
    }
    std::string name;
    for (; at <= path.size(); ++at) {
        if (at < path.size() && !IsSeparator(path[at])) {
            name += path[at];
        } else if (!name.empty()) {
            parts.names.push_back(std::move(name));
            name.clear();
        }
    }
    return parts;
}

std::string Join(const std::vector<std::string>& names, std::size_t first) {
    std::string text;
    for (std::size_t i = first; i < names.size(); ++i) {
        if (!text.empty()) {
            text.push_back('/');
        }
        text += names[i];
    }
    return text;
}

// The directory that a path names, or stands in when it names a file.
Parts DirectoryOf(const std::string& path, DWORD attributes) {
    Parts parts = Split(path);
    const bool endsOpen = !path.empty() && IsSeparator(path.back());
    if (!(attributes & FILE_ATTRIBUTE_DIRECTORY) && !endsOpen && !parts.names.empty()) {
        parts.names.pop_back();
    }
    return parts;
}

} // namespace

std::string PathCombine(const std::string& directory, const std::string& file) {
    Parts parts = Split(file);
    if (parts.root.empty()) {
        const Parts base = Split(directory);
        parts.root = base.root;
        parts.names.insert(parts.names.begin(), base.names.begin(), base.names.end());
    }
    std::vector<std::string> resolved;
    for (const std::string& name : parts.names) {
        if (name == "..") {
            if (!resolved.empty()) {
                resolved.pop_back();
            }
        } else if (name != ".") {
            resolved.push_back(name);
        }
    }
    return parts.root + Join(resolved, 0);
}

bool PathRelativePathTo(std::string& result, const std::string& from, DWORD fromAttributes,
                        const std::string& to, DWORD toAttributes) {
    result.clear();
    const Parts start = DirectoryOf(from, fromAttributes);
    const Parts target = DirectoryOf(to, toAttributes);
    const Parts whole = Split(to);
    std::size_t common = 0;
    while (common < start.names.size() && common < target.names.size() &&
           start.names[common] == target.names[common]) {
        ++common;
    }
    if (start.root != target.root || (start.root.empty() && common == 0)) {
        return false;
    }
    result.assign(start.names.size() == common ? 1 : 2, '.');
    for (std::size_t i = common + 1; i < start.names.size(); ++i) {
        result += "/..";
    }
    if (whole.names.size() > common) {
        result.push_back('/');
        result += Join(whole.names, common);
    }
    return true;
}

std::string GetModuleFileName() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string PathDirectory(const std::string& path) {
    const std::size_t end = path.find_last_of("/\\");
    return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

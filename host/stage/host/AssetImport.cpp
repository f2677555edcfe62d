#include "host/stage/host/AssetImport.h"

#include "host/engine/mesh/GltfLoader.h"
#include "host/engine/References.h"
#include "host/outside/OutsideFile.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <vector>

namespace stage {

namespace {

namespace stdfs = std::filesystem;

constexpr std::uint64_t kMaxBytes = 512 * OutsideFile::kMiB;

std::string EndingOf(const stdfs::path& path) {
    std::string ending = path.extension().string();
    std::ranges::transform(ending, ending.begin(), [](unsigned char c) { return std::tolower(c); });
    return ending;
}

int HexDigit(char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
}

/// Names in models write spaces and the like as %20.
std::string Decoded(const std::string& uri) {
    std::string name;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const bool isCode =
            uri[i] == '%' && i + 2 < uri.size() && HexDigit(uri[i + 1]) >= 0 && HexDigit(uri[i + 2]) >= 0;
        name += isCode ? static_cast<char>(HexDigit(uri[i + 1]) * 16 + HexDigit(uri[i + 2])) : uri[i];
        i += isCode ? 2 : 0;
    }
    return name;
}

/// Files that a .gltf names, relative to its folder. Throws for names that lead out of it.
std::vector<std::string> FilesNamedBy(const std::string& text) {
    const nlohmann::json model = nlohmann::json::parse(text);
    std::vector<std::string> names;
    for (const char* list : {"buffers", "images"}) {
        for (const nlohmann::json& entry : model.value(list, nlohmann::json::array())) {
            const std::string uri = entry.value("uri", std::string());
            if (uri.empty() || uri.starts_with("data:")) {
                continue;
            }
            const stdfs::path name = stdfs::path(Decoded(uri)).lexically_normal();
            if (name.is_absolute() || name.empty() || *name.begin() == ".." ||
                uri.find("://") != std::string::npos) {
                throw std::runtime_error("it names " + uri + ", which does not lie beside it");
            }
            names.push_back(name.string());
        }
    }
    return names;
}

std::string ReadOutside(const stdfs::path& path) {
    OutsideFile file(path.string(), kMaxBytes);
    std::string bytes;
    if (!file.IsOpen() || !file.ReadAll(bytes)) {
        throw std::runtime_error(path.filename().string() + ": " + file.Error());
    }
    return bytes;
}

/// The path, or one with a number that nothing has.
stdfs::path Free(const stdfs::path& folder, const std::string& stem, const std::string& ending) {
    stdfs::path path = folder / (stem + ending);
    for (int number = 2; stdfs::exists(stdfs::symlink_status(path)); ++number) {
        path = folder / std::string(stem).append("_").append(std::to_string(number)).append(ending);
    }
    return path;
}

/// Copies as read through the gate; never over a file that is there.
void CopyTo(const stdfs::path& source, const stdfs::path& target, std::vector<stdfs::path>& made) {
    OutsideFile file(source.string(), kMaxBytes);
    if (!file.IsOpen()) {
        throw std::runtime_error(source.filename().string() + ": " + file.Error());
    }
    stdfs::create_directories(target.parent_path());
    stdfs::copy_file(source, target, stdfs::copy_options::none);
    made.push_back(target);
}

stdfs::path CopyModel(const stdfs::path& source, const stdfs::path& folder, std::vector<stdfs::path>& made) {
    mesh::LoadGltf(source.string()); // throws with the reason
    if (EndingOf(source) == ".glb") {
        stdfs::path target = Free(folder, source.stem().string(), ".glb");
        CopyTo(source, target, made);
        return target;
    }
    const std::vector<std::string> named = FilesNamedBy(ReadOutside(source));
    const stdfs::path own = Free(folder, source.stem().string(), "");
    stdfs::path target = own / source.filename();
    CopyTo(source, target, made);
    for (const std::string& name : named) {
        if (!stdfs::exists(own / name)) { // a buffer may be named twice
            CopyTo(source.parent_path() / name, own / name, made);
        }
    }
    return target;
}

} // namespace

AssetKind AssetKindOf(const std::string& path) {
    const std::string ending = EndingOf(path);
    if (ending == ".glb" || ending == ".gltf") {
        return AssetKind::Model;
    }
    return ending == ".wav" || ending == ".ogg" || ending == ".flac" ? AssetKind::Sound : AssetKind::None;
}

ImportedAsset ImportAsset(const std::string& path, const std::string& levelFolder) {
    ImportedAsset asset{AssetKindOf(path), "", ""};
    const stdfs::path source = engine::AbsolutePath(path);
    if (asset.kind == AssetKind::None) {
        asset.error =
            source.filename().string() + " is neither a model (.glb, .gltf) nor a sound (.wav, .ogg, .flac)";
        return asset;
    }
    if (levelFolder.empty()) {
        asset.error = "save the level first: what is imported goes into its folder";
        return asset;
    }
    std::vector<stdfs::path> made;
    try {
        stdfs::path target = source;
        if (!IsInside(source.string(), levelFolder)) {
            const bool isModel = asset.kind == AssetKind::Model;
            const stdfs::path folder = stdfs::path(levelFolder) / (isModel ? "models" : "sounds");
            if (isModel) {
                target = CopyModel(source, folder, made);
                mesh::LoadGltf(target.string(),
                               levelFolder); // a .glb may name files that are not beside it now
            } else {
                target = Free(folder, source.stem().string(), source.extension().string());
                CopyTo(source, target, made);
            }
        }
        asset.name = stdfs::weakly_canonical(target)
                         .lexically_relative(stdfs::weakly_canonical(levelFolder))
                         .generic_string();
    } catch (const std::exception& failure) {
        asset.error = failure.what();
        std::error_code ignored;
        for (const stdfs::path& copy : made) {
            stdfs::remove(copy, ignored);
            stdfs::remove(copy.parent_path(), ignored); // only if it is empty
        }
    }
    return asset;
}

} // namespace stage

#include "host/stage/host/MissingAssets.h"

#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/References.h"
#include "host/outside/OutsideFile.h"
#include "host/stage/host/AssetUses.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace stage {

namespace {

namespace stdfs = std::filesystem;

constexpr int kMostEntries = 100000;
constexpr int kMostDepth = 12;

/// The models behind names may lack their endings there.
std::string WithEnding(const std::string& name) {
    return AssetKindOf(name) == AssetKind::None ? name + ".glb" : name;
}

/// Why a name leads to nothing, empty if it does not. A model whose file has gone is still shown, until the
/// level is opened the next time.
std::string ReasonOf(EditorHost& host, const AssetUse& use) {
    const bool isModel = use.kind == AssetKind::Model;
    if (isModel && host.meshes.FindMesh(use.name) == nullptr) {
        return host.meshes.ErrorOf(use.name);
    }
    std::error_code error;
    const std::string path =
        isModel ? (stdfs::path(host.level.Folder()) / WithEnding(use.name)).lexically_normal().string()
                : engine::ReferencePath(host.level.Folder(), use.name);
    return stdfs::is_regular_file(path, error) ? std::string() : path + ": no such file";
}

std::string Small(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/// The last part of a name, whose separator may be either.
std::string FileName(const MissingAsset& asset) {
    const std::size_t last = asset.name.find_last_of("/\\");
    const std::string name = last == std::string::npos ? asset.name : asset.name.substr(last + 1);
    return Small(asset.kind == AssetKind::Model ? WithEnding(name) : name);
}

std::string NameInLevel(const std::string& path, const std::string& folder) {
    if (folder.empty() || !IsInside(path, folder)) {
        return path;
    }
    return stdfs::weakly_canonical(path).lexically_relative(stdfs::weakly_canonical(folder)).generic_string();
}

bool IsFilmPlaying(const engine::LevelData& level) {
    const auto* film = static_cast<const engine::Film*>(level.filmManager->currentFilm);
    return film != nullptr && film->IsPlaying();
}

} // namespace

std::vector<MissingAsset> FindMissing(EditorHost& host) {
    std::vector<MissingAsset> missing;
    const engine::LevelData* level = host.level.Data();
    std::map<std::pair<AssetKind, std::string>, std::string> reasons; // empty for what is there
    for (const AssetUse& use : level != nullptr ? UsesOf(*level) : std::vector<AssetUse>()) {
        if (use.kind == AssetKind::Effect) {
            continue;
        }
        const auto [reason, isNew] = reasons.try_emplace({use.kind, use.name});
        if (isNew) {
            reason->second = ReasonOf(host, use);
            if (!reason->second.empty()) {
                missing.push_back({use.kind, use.name, reason->second, {}});
            }
        }
        if (!reason->second.empty()) {
            const auto isIt = [&](const MissingAsset& m) { return m.kind == use.kind && m.name == use.name; };
            std::ranges::find_if(missing, isIt)->users.push_back(use.user);
        }
    }
    return missing;
}

AssetPaths FindInFolder(const std::vector<MissingAsset>& missing, const std::string& folder) {
    std::map<std::string, std::vector<const MissingAsset*>> wanted;
    for (const MissingAsset& asset : missing) {
        wanted[FileName(asset)].push_back(&asset);
    }
    AssetPaths found;
    std::error_code error;
    stdfs::recursive_directory_iterator entry(folder, stdfs::directory_options::skip_permission_denied,
                                              error);
    for (int seen = 0; !error && entry != stdfs::recursive_directory_iterator() && seen < kMostEntries;
         ++seen) {
        if (entry.depth() >= kMostDepth) {
            entry.disable_recursion_pending();
        }
        const auto match = wanted.find(Small(entry->path().filename().string()));
        std::error_code unreadable;
        if (match != wanted.end() && entry->is_regular_file(unreadable)) {
            for (const MissingAsset* asset : match->second) {
                std::string& path = found[{asset->kind, asset->name}];
                const std::string other = entry->path().string();
                path = path.empty() ? other : std::min(path, other);
            }
        }
        entry.increment(error);
    }
    return found;
}

int PointTo(EditorHost& host, LevelSession& session, const AssetPaths& paths) {
    engine::LevelData* level = host.level.Data();
    if (level == nullptr || IsFilmPlaying(*level)) {
        return 0;
    }
    int count = 0;
    for (const AssetUse& use : UsesOf(*level)) {
        const auto found = paths.find({use.kind, use.name});
        if (found == paths.end()) {
            continue;
        }
        const std::string name = NameInLevel(found->second, host.level.Folder());
        if (use.key != nullptr) {
            use.key->SetValue(&name);
            use.track->NotifyKeysChanged(use.key->kind);
        } else if (engine::SceneObject* object = host.level.FindObject(use.objectId)) {
            object->SetMeshName(name);
        }
        ++count;
    }
    if (count > 0) {
        host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr);
        ObjectList none;
        host.plugins.SendEvent(EventCode::ObjectsChangedOutside, &none); // an open film poses new models
        session.MarkChanged();
        host.windows.ObjectsChanged();
        host.RedrawViews();
    }
    return count;
}

} // namespace stage

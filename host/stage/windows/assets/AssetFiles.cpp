#include "host/stage/windows/assets/AssetFiles.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/windows/MeshFiles.h"

namespace stage {

EffectLibrary EffectsOf(const EditorHost& host) {
    const std::string& own = host.level.Folder();
    return EffectLibrary({own.empty() ? "" : own + "effects", host.folders.data + "/effects",
                          host.folders.shipped.empty() ? "" : host.folders.shipped + "/effects"});
}

std::vector<Asset> FindAssets(const std::string& levelFolder, const EffectLibrary& effects,
                              std::vector<std::string>& folders) {
    std::vector<Asset> models;
    std::vector<Asset> sounds;
    for (const std::string& name : FindLevelFiles(levelFolder, folders)) {
        const AssetKind kind = AssetKindOf(name);
        if (kind == AssetKind::Sound || (kind == AssetKind::Model && IsMeshName(name))) {
            (kind == AssetKind::Model ? models : sounds).push_back({kind, name, levelFolder + name});
        }
    }
    std::vector<Asset> all = std::move(models);
    all.insert(all.end(), sounds.begin(), sounds.end());
    for (int code = 1; code <= kEffectKinds; ++code) {
        EffectKind kind{};
        if (!EffectKindOf(code, kind)) {
            continue;
        }
        for (const std::string& name : effects.Names(kind)) {
            all.push_back({AssetKind::Effect, name, effects.PathOf(kind, name), kind});
        }
    }
    return all;
}

} // namespace stage

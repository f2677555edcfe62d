#pragma once

#include "host/stage/effects/EffectLibrary.h"
#include "host/stage/host/AssetImport.h"

#include <string>
#include <vector>

namespace stage {

class EditorHost;

/// A file that levels and films can use.
struct Asset {
    AssetKind kind = AssetKind::None;
    std::string
        name; ///< as objects and keys carry it: from the level's folder, with '/'; of an effect its own
    std::string path;
    EffectKind effect = EffectKind::Sequence; ///< of an effect
    bool operator==(const Asset&) const = default;
};

/// The effects that the open level can show: its own, the user's and those that come with the program.
EffectLibrary EffectsOf(const EditorHost& host);

/// What a level's folder has, and the effects: models, sounds, effects, each in the order of their names. An
/// empty folder has effects alone. `folders` gets the folders that new files would lie in, to be watched.
std::vector<Asset> FindAssets(const std::string& levelFolder, const EffectLibrary& effects,
                              std::vector<std::string>& folders);

} // namespace stage

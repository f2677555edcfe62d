#pragma once

#include "host/stage/host/AssetImport.h"

#include <string>
#include <vector>

class CFilmFxKey;
class CFilmTrack;
class IFilmKey;
namespace engine {
class LevelData;
} // namespace engine

namespace stage {

/// A place in a level that names a file or an effect.
struct AssetUse {
    AssetKind kind = AssetKind::None;
    std::string name; ///< as it stands there
    std::string user; ///< for the user: "Sailor", or "Intro: Sailor at 2.50 s"
    int objectId = 0; ///< of an object with a mesh, 0 for a key
    CFilmTrack* track = nullptr;
    IFilmKey* key = nullptr; ///< of speech, a sound or an effect
};

/// Null for keys of other kinds than effects.
const CFilmFxKey* AsEffect(const IFilmKey& key);

/// All of them: meshes of objects, shapes left out, in the order of the level; then the films' keys. Good
/// until something in the level goes.
std::vector<AssetUse> UsesOf(const engine::LevelData& level);

/// Who a track is about, as in a film's rows; empty for the track of the whole film.
std::string TrackUser(const CFilmTrack& track);

} // namespace stage

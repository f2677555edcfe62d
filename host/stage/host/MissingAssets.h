#pragma once

#include "host/stage/host/AssetImport.h"

#include <map>
#include <string>
#include <vector>

namespace stage {

class EditorHost;
class LevelSession;

/// A file that a level names and that is not there, or can't be used.
struct MissingAsset {
    AssetKind kind = AssetKind::None; ///< a model or a sound
    std::string name;                 ///< as the level names it
    std::string reason;
    std::vector<std::string> users; ///< as AssetUse::user
};

/// Other files in their places: paths, by the names in the level.
using AssetPaths = std::map<std::pair<AssetKind, std::string>, std::string>;

/// Each file once, models first.
std::vector<MissingAsset> FindMissing(EditorHost& host);
/// Files below a folder that are called as missing ones are, whatever folders those lay in; small and capital
/// letters are alike. Of several the first in the order of their paths. Looks at a bounded number of files.
AssetPaths FindInFolder(const std::vector<MissingAsset>& missing, const std::string& folder);
/// Has objects and keys name these files, from the level's folder where they lie in it. The number of places
/// that name another one now; 0 while a film plays.
int PointTo(EditorHost& host, LevelSession& session, const AssetPaths& paths);

} // namespace stage

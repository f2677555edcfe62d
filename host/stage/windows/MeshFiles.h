#pragma once

#include <string>
#include <vector>

namespace stage {

/// The files below a level's folder, as names that objects and keys carry: relative, with '/', sorted. Looks
/// at a bounded number of entries, so that a level in a home folder does not hang the editor. The folders
/// that were looked into go behind `folders`, with the level's own.
std::vector<std::string> FindLevelFiles(const std::string& folder, std::vector<std::string>& folders);
/// Whether a name is that of a model as meshes are found: endings in small letters alone.
bool IsMeshName(const std::string& name);
/// Those of the files that are models.
std::vector<std::string> FindMeshFiles(const std::string& folder);

} // namespace stage

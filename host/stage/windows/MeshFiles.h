#pragma once

#include <string>
#include <vector>

namespace stage {

/// The mesh files below a level's folder, as names that objects carry: relative, with '/', sorted. Looks at
/// a bounded number of entries, so that a level in a home folder does not hang the editor.
std::vector<std::string> FindMeshFiles(const std::string& folder);

} // namespace stage

#pragma once

#include <string>
#include <vector>

namespace engine {

class SceneObject;

/// Objects that are selected and moved as one. Owned by the level data.
struct Group {
    std::string name;
    std::vector<SceneObject*> members;
    std::vector<int> missingIds; ///< of a file, for objects that are not there
};

} // namespace engine

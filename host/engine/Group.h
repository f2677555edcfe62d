#pragma once

#include <string>
#include <vector>

namespace engine {

class SceneObject;

/// Objects that are selected and moved as one. Owned by the level data; never empty.
struct Group {
    std::string name;
    std::vector<SceneObject*> members;
};

} // namespace engine

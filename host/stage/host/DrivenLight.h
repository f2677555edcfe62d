#pragma once

#include <string>

namespace engine {
class LevelData;
class SceneObject;
} // namespace engine

namespace stage {

/// What the open film sets of a light at each frame. Everything else of it is the user's.
struct DrivenLight {
    bool isDriven = false;  ///< then the switch belongs to the film in any case
    bool color = false;     ///< by keys
    bool direction = false; ///< of the sun, by keys
    std::string film;       ///< its name, which may be empty

    bool operator==(const DrivenLight&) const = default;
};

/// A null object is the level's sun.
DrivenLight DrivenLightOf(const engine::LevelData& data, const engine::SceneObject* object);

} // namespace stage

#pragma once

#include "host/engine/Math.h"

#include <vector>

namespace engine {
class LevelData;
class SceneObject;
} // namespace engine

namespace stage {

/// Where the open film has an object's rotation, from which a plug-in follows a move by small steps.
struct TurnStart {
    Vector3 angles;        ///< degrees, in `space`
    engine::Matrix4 space; ///< world matrix of what the object is attached to in the film, or the identity
};

/// Of an object without a track in the open film: from its own matrix, in the world.
TurnStart StartOfTurn(const engine::LevelData& data, const engine::SceneObject& object);

/// World matrices that take an object to a place, to be reported one after another. No angle changes by more
/// than 45 degrees from one to the next; place and scale are those of the end from the first on. The last is
/// the end, turned by 0.0001 degrees where its angles could not be told apart.
std::vector<engine::Matrix4> TurnSteps(const TurnStart& start, const engine::Matrix4& end);

} // namespace stage

#pragma once

#include "host/stage/host/history/PartStore.h"

#include <string>

namespace engine {
class LevelData;
}

namespace stage {

/// What a user calls it who has made these changes: "Move Sailor", "Edit Intro: 3 keys". `store` is the level
/// as it is after them.
std::string StepName(const PartChanges& changes, const PartStore& store, const engine::LevelData& data);

/// Whether nothing but looks changed, or what a plug-in adds to a film that is shown for the first time: the
/// track of the sun.
bool IsOnlyLook(const PartChanges& changes);

} // namespace stage

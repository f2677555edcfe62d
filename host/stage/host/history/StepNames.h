#pragma once

#include "host/stage/host/history/Deed.h"
#include "host/stage/host/history/PartStore.h"

#include <optional>
#include <string>

namespace engine {
class LevelData;
}

namespace stage {

/// What a user calls it who has made these changes: "Move Sailor", "Edit Intro: 3 keys". `store` is the level
/// as it is after them; `deed` what the user called for, which counts as far as it fits to the changes.
std::string StepName(const PartChanges& changes, const PartStore& store, const engine::LevelData& data,
                     const std::optional<Deed>& deed);

/// Whether nothing but looks changed, or what a plug-in adds to a film that is shown for the first time: the
/// track of the sun.
bool IsOnlyLook(const PartChanges& changes);

} // namespace stage

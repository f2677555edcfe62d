#pragma once

#include "plugin/contract/EditorObject.h"

#include <string>

namespace engine {
class LevelData;
} // namespace engine

namespace stage {

/// Where objects that are about to be deleted are used by what stays, in words: "Lamp is in Intro and
/// Harbour; Cart carries Barrel". What they use among each other does not count. Empty if nothing uses them.
std::string TellUses(const engine::LevelData& level, const ObjectList& objects);

} // namespace stage

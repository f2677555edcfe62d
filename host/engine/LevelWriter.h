#pragma once

#include "plugin/contract/HostObject.h"

#include <string>

namespace engine {

class Level;
class LevelData;

/// The data of the two chunks.
std::string GroupsBytes(const LevelData& data);
std::string SunBytes(const LevelData& data);
/// The plug-ins' chunks of an object, of the root or of the film manager.
std::string PluginBytes(Level& level, IHostObject* object);

/// The whole file of a level, the plug-ins' chunks by the level's chunk client included. Throws
/// std::length_error beyond 2 GiB, and what a plug-in throws.
std::string WriteLevelBytes(Level& level);

} // namespace engine

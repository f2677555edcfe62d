#pragma once

#include <string>

namespace engine {

class Level;

/// The whole file of a level, the plug-ins' chunks by the level's chunk client included. Throws
/// std::length_error beyond 2 GiB, and what a plug-in throws.
std::string WriteLevelBytes(Level& level);

} // namespace engine

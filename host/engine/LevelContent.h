#pragma once

#include <cstdint>
#include <string_view>

namespace engine {

/// A number of what a level file says, to tell whether a level has changed; good within one run of the
/// program. Left out is what mere looking changes: where the views look from, and how many ids were given
/// away, since bodies that live for the session take some.
std::uint64_t LevelContent(std::string_view bytes);

} // namespace engine

#pragma once

#include <cstdint>
#include <string>

namespace engine {

/// A chunk of a level file that nobody knew, kept to be written back where it stood.
struct RawChunk {
    std::uint16_t id = 0;
    int place = 0; ///< number of the part of the container that stood in front of it
    std::string bytes;
};

} // namespace engine

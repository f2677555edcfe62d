#pragma once

#include <cstdint>

namespace engine {

/// Counts what changes where films take their things: keys, attachments, meshes. For what is kept from frame
/// to frame. One count for the program, so that no number comes twice.
inline std::uint64_t changeCount = 1;

inline std::uint64_t NoteChange() {
    return ++changeCount;
}

} // namespace engine

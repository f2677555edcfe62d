#pragma once

#include "plugin/contract/File.h"

#include <cstdint>
#include <string>

/// Header of a chunk in the level file: 6 bytes, little-endian, in front of its data.
struct ChunkHeader {
    static constexpr int kBytes = 6;

    std::uint16_t id = 0;
    std::uint32_t size = 0; ///< bytes of data behind the header
};

/// Writes a header for `id` whose size is filled in by the matching ChunkSaveEnd. Chunks nest.
void ChunkSaveStart(fs::file& file, std::uint16_t id);
/// Closes the innermost open chunk, which must be `id`.
void ChunkSaveEnd(fs::file& file, std::uint16_t id);
/// Reads a header and returns the size of the data. A header cut short by the end of the file gives
/// id 0 and size 0.
std::uint32_t ChunkLoadHeader(fs::file& file, ChunkHeader& header);
/// Reads a string of 16-bit length. The whole string is consumed, cut to `bufferSize` - 1 and terminated.
/// Returns the length that the file states.
int freadstring2(fs::file& file, char* buffer, int bufferSize);
int freadstringstl2(fs::file& file, std::string& text);

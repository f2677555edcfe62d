#pragma once

#include "host/engine/FileReplace.h"
#include "host/engine/LowLevelFiles.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace engine {

/// Handles for the FS_ functions over memory. The bytes read are not copied and must outlive the handle.
std::uint32_t OpenMemoryForReading(std::string_view bytes);
std::uint32_t OpenMemoryForWriting();
/// Closes a handle of OpenMemoryForWriting and gives what was written; empty for any other handle.
std::string TakeWritten(std::uint32_t handle);
/// The bytes written so far, to append to; null if the handle does not write to memory. Good until the next
/// call with the handle.
std::string* WrittenBytes(std::uint32_t handle);

/// Bytes from the start of the file; 0 for a handle that is not open.
std::uint64_t FilePosition(std::uint32_t handle);
/// Bytes that are left to read; 0 for a handle that is not open for reading.
std::uint64_t BytesLeft(std::uint32_t handle);
/// Moves a handle that reads, no further than to the end. False for other handles.
bool SeekTo(std::uint32_t handle, std::uint64_t position);

/// Enters a chunk whose header was just written, or closes the innermost one by writing its size. False
/// if the handle does not write, the id is not the innermost chunk's or the size can't be written.
bool BeginChunk(std::uint32_t handle, std::uint16_t id);
bool EndChunk(std::uint32_t handle, std::uint16_t id);

} // namespace engine

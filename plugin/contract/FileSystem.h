#pragma once

#include <cstdint>

/// The host's file library. Handles are 32-bit and never 0; all calls on one thread.
extern "C" {

/// `mode` 0 reads an existing file, 1 creates or truncates for writing. 0 on failure.
std::uint32_t FS_open(const char* path, int mode);
/// Bytes read, fewer at the end of the file; negative on failure or a handle that is not open.
int FS_read(std::uint32_t handle, void* buffer, int size);
/// Bytes written; negative on failure. Writes are buffered by the host.
int FS_write(std::uint32_t handle, const void* buffer, int size);
/// 0 on success, negative if buffered bytes could not be written or the handle is not open.
int FS_close(std::uint32_t handle);
bool FS_exists(const char* path);
}

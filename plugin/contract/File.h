#pragma once

#include <cstdint>
#include <exception>

namespace fs {

/// Thrown by value when a file operation fails. `code` selects the text of `what`.
class __attribute__((visibility("default"))) file_exception : public std::exception {
public:
    static constexpr std::int32_t kOpen = 0;
    static constexpr std::int32_t kRead = 1;
    static constexpr std::int32_t kWrite = 2;
    static constexpr std::int32_t kNullString = 7;

    explicit file_exception(std::int32_t errorCode) : code(errorCode) {}
    const char* what() const noexcept override;

    std::int32_t code;
};

/// A thin file over the host's FS_ functions. It does not close itself: copies share the handle,
/// and whoever opened it calls `Close`.
class file {
public:
    /// Throws kOpen, after a debug print with the path.
    void Open(const char* path, int mode);
    /// The count that was read, which may be short at the end of the file; throws kRead on failure.
    int Read(void* buffer, int size);
    /// The count written; throws kWrite on failure.
    int Write(const void* buffer, int size);
    /// A 16-bit little-endian length and that many bytes, no terminator. Texts beyond 65535 bytes are cut
    /// to the low 16 bits of their length. Null throws kNullString, a failed write kWrite.
    file& WriteString(const char* text);
    /// What FS_close answered, 0 for a closed file. Closed afterwards in any case.
    int Close();

    /// Handle of the host's file library, 0 when closed.
    std::uint32_t handle = 0;
};

} // namespace fs

#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <sys/stat.h>
#include <sys/types.h>

namespace engine {

/// The operations of the system under the FS_ functions and under saving, replaceable so that tests can
/// make any of them fail. Not to be changed while files are open.
struct LowLevelFiles {
    int (*open)(const char* path, int flags, mode_t mode);
    int (*lookUp)(const char* path, struct stat* status); ///< stat: links are followed
    int (*status)(int descriptor, struct stat* status);
    int (*mayWrite)(const char* path); ///< 0 if this process may write to the file
    int (*lock)(int descriptor);       ///< exclusive, without waiting
    ssize_t (*write)(int descriptor, const void* bytes, std::size_t size);
    int (*setOwner)(int descriptor, uid_t owner, gid_t group);
    int (*setMode)(int descriptor, mode_t mode);
    int (*sync)(int descriptor);
    int (*close)(int descriptor);
    int (*rename)(const char* from, const char* to);
    int (*unlink)(const char* path);
};
/// The calls in use; tests put others in their place.
LowLevelFiles& LowLevel();

/// Mode of a new file, less what the user's mask takes.
constexpr mode_t kNewFileMode = 0666;
/// Sizes in level files and in the FS_ functions are 32-bit numbers with a sign.
constexpr std::uint64_t kMaxFileBytes = std::numeric_limits<std::int32_t>::max();

/// Calls again while a signal interrupts the call.
template <class Call> auto RetryInterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Writes all bytes, however few the system takes at a time. False with the reason in errno.
bool WriteFully(int descriptor, const char* bytes, std::size_t size);

} // namespace engine

#include "host/engine/LowLevelFiles.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace engine {

namespace {

int SystemOpen(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}

int SystemLookUp(const char* path, struct stat* status) {
    return ::stat(path, status);
}

int SystemStatus(int descriptor, struct stat* status) {
    return ::fstat(descriptor, status);
}

int SystemMayWrite(const char* path) {
    return ::faccessat(AT_FDCWD, path, W_OK, AT_EACCESS);
}

int SystemLock(int descriptor) {
    return ::flock(descriptor, LOCK_EX | LOCK_NB);
}

int SystemRename(const char* from, const char* to) {
    return std::rename(from, to);
}

} // namespace

LowLevelFiles& LowLevel() {
    static LowLevelFiles files{SystemOpen, SystemLookUp, SystemStatus, SystemMayWrite,
                               SystemLock, ::write,      ::fchown,     ::fchmod,
                               ::fsync,    ::close,      SystemRename, ::unlink};
    return files;
}

bool WriteFully(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = RetryInterrupted([&] { return LowLevel().write(descriptor, bytes, size); });
        if (count <= 0) {
            errno = count < 0 ? errno : EIO;
            return false;
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace engine

#include "host/engine/FileStamp.h"

#include "host/engine/FileReplace.h"

#include <functional>

namespace engine {

namespace {

std::int64_t Nanoseconds(const struct timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

FileStamp StampOf(const struct stat& status, std::string_view bytes) {
    return {true, Nanoseconds(status.st_mtim), static_cast<std::uint64_t>(status.st_size),
            std::hash<std::string_view>{}(bytes)};
}

bool HasChanged(const std::string& path, const FileStamp& known) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return false;
    }
    if (known.exists && Nanoseconds(status.st_mtim) == known.changed &&
        static_cast<std::uint64_t>(status.st_size) == known.size) {
        return false;
    }
    std::string bytes;
    std::string error;
    FileStamp found;
    return !ReadWholeFile(path, bytes, error, &found) || !known.exists || found.size != known.size ||
           found.hash != known.hash;
}

} // namespace engine

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace engine {

/// What a file was when it was read or written, to tell later whether somebody else has changed it.
struct FileStamp {
    bool exists = false;
    std::int64_t changed = 0; ///< nanoseconds since the epoch
    std::uint64_t size = 0;   ///< bytes
    std::size_t hash = 0;     ///< of the content; good within one run of the program
};

/// The stamp of a file that holds these bytes.
FileStamp StampOf(const struct stat& status, std::string_view bytes);
/// Whether the file differs from what was known of it. Time and size are looked at first; where they differ
/// the content decides, so that a file that was only touched counts as the same. A file that is gone has not
/// changed: there is nothing to be lost. One that can't be read any more has.
bool HasChanged(const std::string& path, const FileStamp& known);

} // namespace engine

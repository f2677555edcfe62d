#pragma once

#include "host/engine/FileStamp.h"

#include <string>
#include <string_view>
#include <vector>

namespace engine {

/// What came of a replacement.
struct Replaced {
    FileStamp stamp;                   ///< of the new file
    std::vector<std::string> messages; ///< what is in order but not as before, one sentence each
};

/// Writes a file beside `path`, flushes it to the disk and gives it the name; the folder is flushed then.
/// Links are followed: the file that they lead to is replaced, and keeps its mode and, where this user may,
/// its owner and group. A file that is write-protected, and whatever is no regular file, is refused.
///
/// The file beside is this call's own: its name is new, and it is locked, so that saves at the same time
/// don't meet. Such files that a crash has left are removed by the next replacement of the same file.
///
/// On failure the old file is as it was, nothing is left beside it, and `error` tells why.
bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& error,
                 Replaced* done = nullptr);
/// Whole regular file into memory; false with the reason in `error`.
bool ReadWholeFile(const std::string& path, std::string& bytes, std::string& error,
                   FileStamp* stamp = nullptr);
/// The file that a path leads to when links in its last part are followed, whether there is one or not.
std::string FollowLinks(const std::string& path);

} // namespace engine

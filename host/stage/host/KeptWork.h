#pragma once

#include "host/engine/FileStamp.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace stage {

/// Unsaved work, kept outside the level's file.
struct KeptWork {
    std::string path;          ///< absolute path of the level's file, empty for one that was never saved
    engine::FileStamp stamp{}; ///< of that file, as the session knew it
    bool openedInPart = false; ///< not all of that file could be read, and no save has kept it yet
    std::string bytes;         ///< the level; names of other files are relative to the folder of `path`
    std::int64_t when = 0;     ///< seconds since the epoch; set when the work is kept
    bool discarded = false;    ///< the user had chosen not to save it
};

/// One file of its own, with a sum over all of it.
std::string EncodeWork(const KeptWork& work);
/// False, with the reason, for what is no such file, or one that is cut short or damaged.
bool DecodeWork(std::string_view file, KeptWork& work, std::string& error);

} // namespace stage

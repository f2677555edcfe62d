#include "host/stage/host/Advice.h"

#include <filesystem>

namespace stage {

std::string AdviceForOpening(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        return "Has it been moved or renamed? Look for it with File > Open.";
    }
    const std::string older = path + ".bak";
    if (std::filesystem::exists(older, ignored)) {
        return "What was there before Stage first saved it is kept as \"" +
               std::filesystem::path(older).filename().string() +
               "\" beside it: give a copy of that the ending .level and open it.";
    }
    return "The open level is untouched. If this file was whole before, take it from a backup, or look under "
           "File > Recover work for what Stage has kept.";
}

std::string AdviceForSaving() {
    return "The file is as it was, and your work is still open. Make room or ask for the right to write "
           "there, or "
           "save it elsewhere with File > Save as.";
}

} // namespace stage

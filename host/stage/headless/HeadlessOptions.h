#pragma once

#include <optional>
#include <string>
#include <vector>

namespace headless {

/// What `stage --render` was asked for.
struct HeadlessOptions {
    std::string level;
    std::string film;
    std::string folder; ///< for PNG frames; empty for none
    std::string video;  ///< file that ffmpeg writes; empty for none
    int fps = 30;
    int width = 1280;
    int height = 720;
    int firstFrame = 0;
    int lastFrame = -1;  ///< inclusive; -1: the film's last
    bool draft = false;  ///< quicker, with rough edges
    bool strict = false; ///< nothing is written when something is missing
    bool help = false;
};

/// The text of `--help`.
extern const char* const kHeadlessUsage;

/// Reads the arguments behind the program's name. Null, with one sentence in `error`, if they make no sense.
/// Options may be written "--fps 30" or "--fps=30". An argument "--help" asks for help wherever it stands.
std::optional<HeadlessOptions> ParseHeadlessOptions(const std::vector<std::string>& arguments,
                                                    std::string& error);

} // namespace headless

#include "host/stage/headless/HeadlessOptions.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace headless {

const char* const kHeadlessUsage =
    "usage: stage --render LEVEL --film NAME (--out FOLDER | --video FILE) [options]\n"
    "\n"
    "Plays a film of a level without a window and writes what its cameras see.\n"
    "\n"
    "  --render LEVEL   the level file\n"
    "  --film NAME      the film's name in the level\n"
    "  --out FOLDER     write frame_0000.png and so on into this folder, which is made\n"
    "  --video FILE     write a video with sound through ffmpeg\n"
    "  --fps N          frames a second, 1 to 240 (30)\n"
    "  --size WxH       pixels, 16 to 8192 each (1280x720)\n"
    "  --frames A:B     only frames A to B, both included; either may be left out\n"
    "  --draft          quicker, with rough edges\n"
    "  --strict         write nothing if anything that the film needs is missing\n"
    "  --help           this text\n"
    "\n"
    "Models, sounds, animations and plug-ins that are missing are told, and what of the level\n"
    "could not be read. A picture or video has its name only when it is whole; Ctrl+C leaves\n"
    "the pictures made so far.\n"
    "\n"
    "Exit status: 0 done, 1 wrong arguments, 2 the level can't be read, 3 the level has no\n"
    "such film, 4 the output can't be made or, with --strict, something is missing, 128 + N\n"
    "stopped by signal N (130: Ctrl+C).\n";

namespace {

constexpr int kMaxFps = 240;
constexpr int kMinSide = 16;
constexpr int kMaxSide = 8192;
constexpr int kMaxFrame = 10'000'000;

bool ParseNumber(const std::string& text, int low, int high, int& number) {
    const char* end = text.data() + text.size();
    const auto [stop, code] = std::from_chars(text.data(), end, number);
    return code == std::errc() && stop == end && number >= low && number <= high;
}

bool ParseSize(const std::string& text, HeadlessOptions& options) {
    const std::size_t cross = text.find('x');
    return cross != std::string::npos &&
           ParseNumber(text.substr(0, cross), kMinSide, kMaxSide, options.width) &&
           ParseNumber(text.substr(cross + 1), kMinSide, kMaxSide, options.height);
}

bool ParseFrames(const std::string& text, HeadlessOptions& options) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) {
        return false;
    }
    const std::string first = text.substr(0, colon);
    const std::string last = text.substr(colon + 1);
    const bool good = (first.empty() || ParseNumber(first, 0, kMaxFrame, options.firstFrame)) &&
                      (last.empty() || ParseNumber(last, 0, kMaxFrame, options.lastFrame));
    return good && (options.lastFrame < 0 || options.firstFrame <= options.lastFrame);
}

bool TakeText(const std::string& text, std::string& field) {
    field = text;
    return !text.empty();
}

struct Option {
    const char* name;
    bool (*take)(const std::string& value, HeadlessOptions& options);
    const char* expects;
};

constexpr std::array<Option, 7> kOptions{{
    {"--render", [](const std::string& v, HeadlessOptions& o) { return TakeText(v, o.level); },
     "a level file"},
    {"--film", [](const std::string& v, HeadlessOptions& o) { return TakeText(v, o.film); }, "a film's name"},
    {"--out", [](const std::string& v, HeadlessOptions& o) { return TakeText(v, o.folder); }, "a folder"},
    {"--video", [](const std::string& v, HeadlessOptions& o) { return TakeText(v, o.video); }, "a file"},
    {"--fps", [](const std::string& v, HeadlessOptions& o) { return ParseNumber(v, 1, kMaxFps, o.fps); },
     "a number from 1 to 240"},
    {"--size", ParseSize, "WIDTHxHEIGHT, 16 to 8192 each"},
    {"--frames", ParseFrames, "FIRST:LAST"},
}};

std::string Needs(const std::string& name, const Option& option) {
    return name + " needs " + option.expects;
}

/// Takes one option with its value; `i` moves on over a value that stands apart.
bool TakeOption(const std::vector<std::string>& arguments, std::size_t& i, HeadlessOptions& options,
                std::string& error) {
    const std::string& argument = arguments[i];
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    for (const Option& option : kOptions) {
        if (name != option.name) {
            continue;
        }
        if (equals == std::string::npos && i + 1 >= arguments.size()) {
            error = Needs(name, option);
            return false;
        }
        const std::string value = equals != std::string::npos ? argument.substr(equals + 1) : arguments[++i];
        if (!option.take(value, options)) {
            error = Needs(name, option).append(", not \"").append(value).append("\"");
            return false;
        }
        return true;
    }
    error = "unknown option \"" + argument + "\"";
    return false;
}

bool Check(const HeadlessOptions& options, std::string& error) {
    if (options.help) {
        return true;
    }
    if (options.level.empty()) {
        error = "--render LEVEL is missing";
    } else if (options.film.empty()) {
        error = "--film NAME is missing";
    } else if (options.folder.empty() && options.video.empty()) {
        error = "--out FOLDER or --video FILE is missing";
    } else if (!options.video.empty() && (options.width % 2 != 0 || options.height % 2 != 0)) {
        error = "--size must be even numbers for a video";
    }
    return error.empty();
}

} // namespace

std::optional<HeadlessOptions> ParseHeadlessOptions(const std::vector<std::string>& arguments,
                                                    std::string& error) {
    error.clear();
    HeadlessOptions options;
    options.help = std::find(arguments.begin(), arguments.end(), "--help") != arguments.end();
    for (std::size_t i = 0; i < arguments.size() && !options.help; ++i) {
        if (arguments[i] == "--draft") {
            options.draft = true;
        } else if (arguments[i] == "--strict") {
            options.strict = true;
        } else if (!TakeOption(arguments, i, options, error)) {
            return std::nullopt;
        }
    }
    return Check(options, error) ? std::optional(options) : std::nullopt;
}

} // namespace headless

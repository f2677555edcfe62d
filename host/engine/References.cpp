#include "host/engine/References.h"

#include "host/engine/FileReplace.h"
#include "host/engine/Shape.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace engine {

namespace {

namespace stdfs = std::filesystem;

std::string Portable(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

bool IsAbsolute(const std::string& portable) {
    const bool hasDrive = portable.size() >= 2 && portable[1] == ':' &&
                          std::isalpha(static_cast<unsigned char>(portable[0])) != 0;
    return hasDrive || (!portable.empty() && portable.front() == '/');
}

/// Without links and without ".." as far as the folder exists; no separator at the end.
stdfs::path RealFolder(const stdfs::path& folder) {
    std::error_code failed;
    const stdfs::path absolute = stdfs::absolute(folder.empty() ? stdfs::path(".") : folder, failed);
    stdfs::path real = stdfs::weakly_canonical(absolute, failed);
    if (failed) {
        real = absolute.lexically_normal();
    }
    return real.has_filename() ? real : real.parent_path();
}

bool Exists(const stdfs::path& path) {
    std::error_code failed;
    return stdfs::exists(path, failed);
}

const stdfs::path& ProgramFolder() {
    static const stdfs::path folder = [] {
        std::error_code failed;
        return stdfs::read_symlink("/proc/self/exe", failed).parent_path();
    }();
    return folder;
}

} // namespace

std::string AbsolutePath(const std::string& path) {
    std::error_code failed;
    const stdfs::path file = stdfs::absolute(path, failed);
    if (path.empty() || failed) {
        return path;
    }
    // ".." behind a link leads to the parent of the link's target: not a matter of text.
    const stdfs::path folder = file.parent_path();
    const bool goesUp = std::find(folder.begin(), folder.end(), "..") != folder.end();
    return ((goesUp ? RealFolder(folder) : folder.lexically_normal()) / file.filename()).string();
}

std::string LevelFolder(const std::string& path) {
    const stdfs::path file = AbsolutePath(FollowLinks(AbsolutePath(path)));
    return (file.parent_path() / "").string();
}

std::string ReferencePath(const std::string& folder, const std::string& name) {
    std::string portable = Portable(name);
    if (portable.empty() || IsAbsolute(portable)) {
        return portable;
    }
    const stdfs::path inLevel = stdfs::path(folder) / portable;
    const stdfs::path inProgram = ProgramFolder() / portable;
    return !Exists(inLevel) && Exists(inProgram) ? inProgram.string() : inLevel.string();
}

std::string RebasedReference(const std::string& name, const std::string& from, const std::string& to) {
    if (name.empty() || to.empty() || IsAbsolute(Portable(name)) || ShapeOf(name)) {
        return name;
    }
    const stdfs::path file = ReferencePath(from, name);
    const bool isBesideLevel = IsSameFolder(from, to) && file == stdfs::path(from) / Portable(name);
    const bool isNowhere = from.empty() && !Exists(file);
    if (isBesideLevel || isNowhere || !file.has_filename()) {
        return name;
    }
    const stdfs::path target = RealFolder(file.parent_path()) / file.filename();
    const std::string moved = target.lexically_relative(RealFolder(to)).generic_string();
    return moved.empty() ? target.generic_string() : moved;
}

bool IsSameFolder(const std::string& first, const std::string& second) {
    return first == second || (!first.empty() && !second.empty() && RealFolder(first) == RealFolder(second));
}

} // namespace engine

#include "host/stage/headless/UnfinishedFile.h"

#include "host/engine/FileReplace.h"
#include "host/stage/headless/OutputError.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace headless {

namespace {

namespace stdfs = std::filesystem;

constexpr int kMostNames = 1000;
/// Of the wanted name in that of the file beside; the whole must stay within 255 bytes.
constexpr std::size_t kMostNameBytes = 200;
constexpr mode_t kModeBits = 07777;
constexpr mode_t kNewFileMode = 0666; // the process's mask applies

} // namespace

UnfinishedFile::UnfinishedFile(const std::string& wantedPath) : wanted(engine::FollowLinks(wantedPath)) {
    struct stat old = {};
    if (stat(wanted.c_str(), &old) == 0 && !S_ISREG(old.st_mode)) {
        throw OutputError(wanted + " is not a file");
    }
    const stdfs::path target(wanted);
    const std::string stem = "." + target.stem().string().substr(0, kMostNameBytes) + ".unfinished-";
    for (int i = 0; i < kMostNames; ++i) {
        const std::string name =
            stem + std::to_string(getpid()) + "-" + std::to_string(i) + target.extension().string();
        if (TryName((target.parent_path() / name).string())) {
            return;
        }
    }
    throw OutputError(wanted + ": no free name beside it");
}

UnfinishedFile::~UnfinishedFile() {
    if (!path.empty()) {
        unlink(path.c_str());
    }
}

bool UnfinishedFile::TryName(const std::string& name) {
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kNewFileMode);
    if (file < 0 && errno != EEXIST) {
        throw OutputError(wanted + ": the file can't be made: " + std::strerror(errno));
    }
    if (file < 0) {
        return false;
    }
    close(file);
    path = name;
    return true;
}

void UnfinishedFile::Publish() {
    struct stat old = {};
    if (stat(wanted.c_str(), &old) == 0) {
        chmod(path.c_str(), old.st_mode & kModeBits); // as far as this user may
    }
    if (rename(path.c_str(), wanted.c_str()) != 0) {
        throw OutputError(wanted + ": " + std::strerror(errno));
    }
    path.clear();
}

} // namespace headless

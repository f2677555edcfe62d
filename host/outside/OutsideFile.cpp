#include "host/outside/OutsideFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace {

constexpr const char* kNoFile = "not a file";

std::string SystemError() {
    return errno == ENOENT || errno == ENOTDIR ? "no such file" : std::strerror(errno);
}

std::string SizeText(std::uint64_t bytes) {
    const std::uint64_t mib = bytes / OutsideFile::kMiB;
    return mib >= 1024 ? std::to_string((mib + 1) / 1024) + " GiB" : std::to_string(mib) + " MiB";
}

std::filesystem::path Settled(const std::string& path) {
    std::error_code failed;
    const std::filesystem::path whole = std::filesystem::absolute(path, failed);
    std::filesystem::path real = std::filesystem::weakly_canonical(whole, failed);
    if (failed) {
        return {};
    }
    return real.has_filename() ? real : real.parent_path();
}

} // namespace

OutsideFile::OutsideFile(const std::string& path, std::uint64_t limit) {
    // Asked before it is opened, since opening a device may already do something.
    if (stat(path.c_str(), &status) != 0) {
        error = SystemError();
        return;
    }
    if (!S_ISREG(status.st_mode)) {
        error = kNoFile;
        return;
    }
    // Not to wait if a FIFO has taken its place by now.
    descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0 || fstat(descriptor, &status) != 0) {
        Close(SystemError());
    } else if (!S_ISREG(status.st_mode)) {
        Close(kNoFile);
    } else if (Size() > limit) {
        Close("larger than " + SizeText(limit));
    }
}

OutsideFile::~OutsideFile() {
    Close(error);
}

void OutsideFile::Close(const std::string& why) {
    if (descriptor >= 0) {
        close(descriptor);
    }
    descriptor = -1;
    error = why;
}

int OutsideFile::Release() {
    const int released = descriptor;
    descriptor = -1;
    return released;
}

bool OutsideFile::Read(void* target, std::size_t size, std::size_t& count) {
    auto* bytes = static_cast<char*>(target);
    ssize_t got = descriptor >= 0 ? 1 : -1;
    while (got > 0 && count < size) {
        got = read(descriptor, bytes + count, size - count);
        if (got < 0 && errno == EINTR) {
            got = 1;
        } else if (got < 0) {
            error = SystemError();
        } else {
            count += static_cast<std::size_t>(got);
        }
    }
    return got >= 0;
}

bool IsInside(const std::string& path, const std::string& folder) {
    const std::filesystem::path inner = Settled(path);
    const std::filesystem::path outer = Settled(folder);
    if (inner.empty() || outer.empty()) {
        return false;
    }
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

#include "host/engine/FileReplace.h"

#include "host/engine/LowLevelFiles.h"
#include "host/outside/OutsideFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace engine {

namespace {

namespace stdfs = std::filesystem;

/// As many as the system itself follows.
constexpr int kMostLinks = 40;
constexpr int kMostNames = 1000;
/// Of a file's own name in that of the file beside; the whole must stay within 255 bytes.
constexpr std::size_t kMostNameBytes = 200;
constexpr mode_t kModeBits = 07777;
constexpr mode_t kGroupBits = 0070;
constexpr mode_t kAllWriteBits = 0222;

class ReplaceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void Fail(const std::string& what) {
    const std::string reason = std::strerror(errno);
    throw ReplaceError(what + ": " + reason);
}

/// What the names of the files beside a file of this name begin with.
std::string PrefixFor(const std::string& name) {
    std::string prefix = ".";
    prefix.append(name, 0, kMostNameBytes);
    prefix.append(".saving-");
    return prefix;
}

/// One replacement of one file, from the temporary to its name.
class Replacement {
public:
    explicit Replacement(const std::string& path)
        : target(FollowLinks(path)), folder(stdfs::path(target).parent_path().string()),
          prefix(PrefixFor(stdfs::path(target).filename().string())) {
        folder = folder.empty() ? "." : folder;
    }
    ~Replacement() {
        if (!temporary.empty()) {
            LowLevel().unlink(temporary.c_str());
        }
        if (descriptor >= 0) {
            LowLevel().close(descriptor);
        }
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void Run(std::string_view bytes, Replaced& done) {
        LookAtTarget();
        RemoveLeftovers();
        MakeTemporary();
        if (!WriteFully(descriptor, bytes.data(), bytes.size())) {
            Fail("can't write " + temporary);
        }
        KeepOwnerAndMode(done);
        Flush(bytes, done);
        GiveName();
        FlushFolder(done);
        // What can go wrong in closing was told by the flush; the file has its name by now.
        LowLevel().close(descriptor);
        descriptor = -1;
    }

private:
    void LookAtTarget() {
        isNew = RetryInterrupted([&] { return LowLevel().lookUp(target.c_str(), &old); }) != 0;
        if (isNew && errno == ENOENT) {
            return;
        }
        if (isNew) {
            Fail("can't look at " + target);
        }
        if (!S_ISREG(old.st_mode)) {
            throw ReplaceError(target + " is not a file");
        }
        // Root may write anywhere, but a file without any write bit was protected on purpose.
        const bool isProtected = (old.st_mode & kAllWriteBits) == 0;
        if (isProtected || RetryInterrupted([&] { return LowLevel().mayWrite(target.c_str()); }) != 0) {
            errno = isProtected ? EACCES : errno;
            Fail(target + " is write-protected");
        }
    }

    /// Removes what crashed saves have left: those of saves under way are locked. None of it matters to this
    /// save.
    void RemoveLeftovers() const {
        std::error_code failed;
        stdfs::directory_iterator entry(folder, failed);
        for (; !failed && entry != stdfs::directory_iterator(); entry.increment(failed)) {
            if (entry->path().filename().string().starts_with(prefix)) {
                RemoveIfLeft(entry->path().string());
            }
        }
    }

    static void RemoveIfLeft(const std::string& path) {
        const int file = LowLevel().open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0);
        if (file < 0) {
            return;
        }
        struct stat status = {};
        if (LowLevel().status(file, &status) == 0 && S_ISREG(status.st_mode) && LowLevel().lock(file) == 0) {
            LowLevel().unlink(path.c_str());
        }
        LowLevel().close(file);
    }

    void MakeTemporary() {
        for (int i = 0; i < kMostNames && temporary.empty(); ++i) {
            TryName(folder + "/" + prefix + std::to_string(getpid()) + "-" + std::to_string(i));
        }
        if (temporary.empty()) {
            errno = EEXIST;
            Fail("can't create a file beside " + target);
        }
    }

    /// Leaves `temporary` empty if the name is taken.
    void TryName(const std::string& name) {
        // Nobody else may read what is not yet known to be readable for them.
        const mode_t mode = isNew ? kNewFileMode : S_IRUSR | S_IWUSR;
        descriptor = RetryInterrupted([&] {
            return LowLevel().open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        });
        if (descriptor < 0) {
            if (errno != EEXIST) {
                Fail("can't create " + name);
            }
            return;
        }
        temporary = name;
        // Another save may have taken it for a leftover before it was locked. A file system without locks
        // only lacks the tidying.
        const bool locked = RetryInterrupted([&] { return LowLevel().lock(descriptor); }) == 0;
        const bool isTaken = !locked && errno == EWOULDBLOCK;
        if (RetryInterrupted([&] { return LowLevel().status(descriptor, &own); }) != 0) {
            Fail("can't look at " + name);
        }
        if (isTaken || own.st_nlink == 0) {
            LowLevel().close(descriptor);
            descriptor = -1;
            temporary.clear();
        }
    }

    void KeepOwnerAndMode(Replaced& done) const {
        if (isNew) {
            return;
        }
        mode_t mode = old.st_mode & kModeBits;
        if ((own.st_uid != old.st_uid || own.st_gid != old.st_gid) && !SetOwner(old.st_uid, old.st_gid)) {
            const bool groupKept = own.st_gid == old.st_gid || SetOwner(static_cast<uid_t>(-1), old.st_gid);
            // What the old group could do is not for another one.
            mode = groupKept ? mode : mode & ~kGroupBits;
            done.messages.push_back(target + " belongs to you now: its " +
                                    (groupKept ? "owner" : "owner and group") + " can't be kept.");
        }
        if (RetryInterrupted([&] { return LowLevel().setMode(descriptor, mode); }) != 0) {
            Fail("can't set the mode of " + temporary);
        }
    }

    bool SetOwner(uid_t owner, gid_t group) const {
        return RetryInterrupted([&] { return LowLevel().setOwner(descriptor, owner, group); }) == 0;
    }

    void Flush(std::string_view bytes, Replaced& done) const {
        struct stat written = {};
        if (RetryInterrupted([&] { return LowLevel().sync(descriptor); }) != 0 ||
            RetryInterrupted([&] { return LowLevel().status(descriptor, &written); }) != 0) {
            Fail("can't write " + temporary);
        }
        done.stamp = StampOf(written, bytes);
    }

    void GiveName() {
        if (RetryInterrupted([&] { return LowLevel().rename(temporary.c_str(), target.c_str()); }) != 0) {
            Fail("can't give " + temporary + " its name");
        }
        temporary.clear();
    }

    /// The new name is in the folder; a power cut must not take it back.
    void FlushFolder(Replaced& done) const {
        const int file = RetryInterrupted(
            [&] { return LowLevel().open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); });
        // Some file systems have no way to flush a folder and say so.
        const bool flushed = file >= 0 && (RetryInterrupted([&] { return LowLevel().sync(file); }) == 0 ||
                                           errno == EINVAL || errno == ENOTSUP);
        if (!flushed) {
            const std::string reason = std::strerror(errno);
            done.messages.push_back(folder + " can't be flushed (" + reason +
                                    "): after a power cut the old file may be back.");
        }
        if (file >= 0) {
            LowLevel().close(file);
        }
    }

    const std::string target;
    std::string folder;
    const std::string prefix;
    std::string temporary; ///< empty while there is none
    int descriptor = -1;
    bool isNew = true;
    struct stat old = {}; ///< of the file that is replaced, unless it is new
    struct stat own = {}; ///< of the temporary
};

} // namespace

std::string FollowLinks(const std::string& path) {
    stdfs::path found = path;
    std::error_code failed;
    for (int i = 0; i < kMostLinks && stdfs::is_symlink(stdfs::symlink_status(found, failed)); ++i) {
        const stdfs::path link = stdfs::read_symlink(found, failed);
        if (failed) {
            break;
        }
        found = link.is_absolute() ? link : found.parent_path() / link;
    }
    return found.string();
}

bool ReplaceFile(const std::string& path, std::string_view bytes, std::string& error, Replaced* done) {
    Replaced unused;
    try {
        Replacement(path).Run(bytes, done != nullptr ? *done : unused);
        return true;
    } catch (const ReplaceError& failure) {
        error = failure.what();
        return false;
    }
}

bool ReadWholeFile(const std::string& path, std::string& bytes, std::string& error, FileStamp* stamp) {
    OutsideFile file(path, kMaxFileBytes);
    if (!file.IsOpen() || !file.ReadAll(bytes)) {
        error = file.Error();
        return false;
    }
    if (stamp != nullptr) {
        *stamp = StampOf(file.Status(), bytes);
    }
    return true;
}

} // namespace engine

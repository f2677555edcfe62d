#include "host/engine/FileReplace.h"

#include "host/engine/LowLevelFiles.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <sys/file.h>
#include <unistd.h>

namespace {

namespace stdfs = std::filesystem;
using engine::LowLevel;
using engine::LowLevelFiles;
using engine::ReplaceFile;

/// The system with one call that goes wrong. All its functions are counted together, in their order.
struct Injection {
    int call = 0;         ///< so far
    int failing = -1;     ///< number of the call that fails, from 0
    int reason = EIO;     ///< its errno
    std::size_t most = 0; ///< bytes that a write takes at the most, 0 for all
    std::vector<std::string> names;
    std::function<void()> atWrite; ///< runs once, before the first write
    LowLevelFiles system;

    bool Fails(const char* name) {
        names.emplace_back(name);
        errno = reason;
        return call++ == failing;
    }
};
Injection injection;

LowLevelFiles Injected() {
    LowLevelFiles files;
    files.open = [](const char* path, int flags, mode_t mode) {
        return injection.Fails("open") ? -1 : injection.system.open(path, flags, mode);
    };
    files.lookUp = [](const char* path, struct stat* status) {
        return injection.Fails("lookUp") ? -1 : injection.system.lookUp(path, status);
    };
    files.status = [](int file, struct stat* status) {
        return injection.Fails("status") ? -1 : injection.system.status(file, status);
    };
    files.mayWrite = [](const char* path) {
        return injection.Fails("mayWrite") ? -1 : injection.system.mayWrite(path);
    };
    files.lock = [](int file) { return injection.Fails("lock") ? -1 : injection.system.lock(file); };
    files.write = [](int file, const void* bytes, std::size_t size) -> ssize_t {
        if (const std::function<void()> action = std::exchange(injection.atWrite, nullptr)) {
            action();
        }
        if (injection.Fails("write")) {
            return -1;
        }
        return injection.system.write(file, bytes,
                                      injection.most > 0 ? std::min(size, injection.most) : size);
    };
    files.setOwner = [](int file, uid_t owner, gid_t group) {
        return injection.Fails("setOwner") ? -1 : injection.system.setOwner(file, owner, group);
    };
    files.setMode = [](int file, mode_t mode) {
        return injection.Fails("setMode") ? -1 : injection.system.setMode(file, mode);
    };
    files.sync = [](int file) { return injection.Fails("sync") ? -1 : injection.system.sync(file); };
    files.close = [](int file) {
        // Closed all the same, as the system does it.
        const bool fails = injection.Fails("close");
        const int result = injection.system.close(file);
        errno = injection.reason;
        return fails ? -1 : result;
    };
    files.rename = [](const char* from, const char* to) {
        return injection.Fails("rename") ? -1 : injection.system.rename(from, to);
    };
    files.unlink = [](const char* path) {
        return injection.Fails("unlink") ? -1 : injection.system.unlink(path);
    };
    return files;
}

class FileReplaceTest : public ::testing::Test {
protected:
    FileReplaceTest() {
        injection = {};
        injection.system = LowLevel();
        LowLevel() = Injected();
    }
    ~FileReplaceTest() override { LowLevel() = injection.system; }

    /// Replaces with this call going wrong.
    bool Replace(const std::string& bytes, int failing = -1, int reason = EIO) {
        injection.call = 0;
        injection.failing = failing;
        injection.reason = reason;
        injection.names.clear();
        error.clear();
        done = {};
        return ReplaceFile(path, bytes, error, &done);
    }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(std::distance(stdfs::directory_iterator(folder.Path()), {}));
    }
    mode_t ModeOf(const std::string& file) const { return StatusOf(file).st_mode & 07777u; }
    static struct stat StatusOf(const std::string& file) {
        struct stat status = {};
        EXPECT_EQ(stat(file.c_str(), &status), 0);
        return status;
    }
    /// As a crashed save leaves it: written, but with no process that holds it.
    std::string MakeLeftover(const std::string& bytes) const {
        std::string name = folder.File(".a.level.saving-" + std::to_string(getpid()) + "-0");
        WriteWholeFile(name, bytes);
        return name;
    }

    TempFolder folder;
    const std::string path = folder.File("a.level");
    std::string error;
    engine::Replaced done;
};

TEST_F(FileReplaceTest, AtEachCallThatFailsTheFileIsWholeAndNothingIsLeftBeside) {
    WriteWholeFile(path, "the old level");
    ASSERT_TRUE(Replace("the new level"));
    const int calls = injection.call;
    EXPECT_GE(calls, 12);
    for (int failing = 0; failing < calls; ++failing) {
        WriteWholeFile(path, "the old level");
        const bool replaced = Replace("the new level", failing);
        const std::string where =
            std::to_string(failing) + ": " + injection.names[static_cast<std::size_t>(failing)];
        EXPECT_EQ(ReadWholeFile(path), replaced ? "the new level" : "the old level") << where;
        EXPECT_EQ(error.empty(), replaced) << where;
        EXPECT_EQ(FilesInFolder(), 1u) << where;
    }
}

TEST_F(FileReplaceTest, AFullDiskIsToldWithTheReason) {
    WriteWholeFile(path, "old");
    ASSERT_TRUE(Replace("new"));
    const auto write = std::find(injection.names.begin(), injection.names.end(), "write");
    ASSERT_NE(write, injection.names.end());
    EXPECT_FALSE(Replace("newer", static_cast<int>(write - injection.names.begin()), ENOSPC));
    EXPECT_NE(error.find("No space left"), std::string::npos) << error;
    EXPECT_NE(error.find("a.level"), std::string::npos) << error;
}

TEST_F(FileReplaceTest, ASignalAtAnyCallDoesNotEndTheSave) {
    WriteWholeFile(path, "the old level");
    ASSERT_TRUE(Replace("the new level"));
    const int calls = injection.call;
    for (int failing = 0; failing < calls; ++failing) {
        WriteWholeFile(path, "the old level");
        EXPECT_TRUE(Replace("the new level", failing, EINTR)) << failing << ": " << error;
        EXPECT_EQ(ReadWholeFile(path), "the new level") << failing;
        EXPECT_EQ(FilesInFolder(), 1u) << failing;
        EXPECT_TRUE(done.messages.empty()) << failing;
    }
}

TEST_F(FileReplaceTest, ShortWritesAreContinued) {
    injection.most = 3;
    ASSERT_TRUE(Replace("ten bytes."));
    EXPECT_EQ(std::count(injection.names.begin(), injection.names.end(), "write"), 4);
    EXPECT_EQ(ReadWholeFile(path), "ten bytes.");
}

TEST_F(FileReplaceTest, ALongerTemporaryOfACrashLeavesNoTail) {
    const std::string leftover = MakeLeftover("much longer than the level that is saved now");
    ASSERT_TRUE(Replace("short"));
    EXPECT_EQ(ReadWholeFile(path), "short");
    EXPECT_FALSE(stdfs::exists(leftover));
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(FileReplaceTest, ATemporaryThatSomebodyHoldsIsLeftAlone) {
    const std::string held = MakeLeftover("of another save");
    std::FILE* other = std::fopen(held.c_str(), "r");
    ASSERT_EQ(flock(fileno(other), LOCK_EX), 0);
    EXPECT_TRUE(Replace("mine"));
    EXPECT_EQ(ReadWholeFile(held), "of another save");
    std::fclose(other);
    EXPECT_TRUE(Replace("mine"));
    EXPECT_FALSE(stdfs::exists(held));
}

TEST_F(FileReplaceTest, ALinkInPlaceOfTheTemporaryIsNotFollowed) {
    WriteWholeFile(folder.File("victim"), "precious");
    stdfs::create_symlink(folder.File("victim"),
                          folder.File(".a.level.saving-" + std::to_string(getpid()) + "-0"));
    EXPECT_TRUE(Replace("new"));
    EXPECT_EQ(ReadWholeFile(path), "new");
    EXPECT_FALSE(stdfs::is_symlink(path));
    EXPECT_EQ(ReadWholeFile(folder.File("victim")), "precious");
}

TEST_F(FileReplaceTest, OverlappingSavesEachPublishAWholeFile) {
    bool inner = false;
    std::string seen;
    injection.atWrite = [&] {
        std::string innerError;
        inner = ReplaceFile(path, "the inner save", innerError);
        seen = ReadWholeFile(path);
    };
    EXPECT_TRUE(Replace("the outer save, which ends later"));
    EXPECT_TRUE(inner);
    EXPECT_EQ(seen, "the inner save");
    EXPECT_EQ(ReadWholeFile(path), "the outer save, which ends later");
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(FileReplaceTest, ALinkStaysAndItsTargetIsReplaced) {
    stdfs::create_directory(folder.File("real"));
    WriteWholeFile(folder.File("real/target.level"), "old");
    stdfs::create_symlink("real/target.level", path);
    EXPECT_TRUE(Replace("new"));
    EXPECT_TRUE(stdfs::is_symlink(path));
    EXPECT_EQ(ReadWholeFile(folder.File("real/target.level")), "new");
    EXPECT_EQ(std::distance(stdfs::directory_iterator(folder.File("real")), {}), 1);
}

TEST_F(FileReplaceTest, ALinkToNothingGetsItsTarget) {
    stdfs::create_symlink(folder.File("later.level"), path);
    EXPECT_TRUE(Replace("new"));
    EXPECT_TRUE(stdfs::is_symlink(path));
    EXPECT_EQ(ReadWholeFile(folder.File("later.level")), "new");
}

TEST_F(FileReplaceTest, ARingOfLinksIsRefused) {
    stdfs::create_symlink(path, folder.File("b.level"));
    stdfs::create_symlink(folder.File("b.level"), path);
    EXPECT_FALSE(Replace("new"));
    EXPECT_EQ(FilesInFolder(), 2u);
}

TEST_F(FileReplaceTest, ModeIsKept) {
    WriteWholeFile(path, "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    EXPECT_TRUE(Replace("new"));
    EXPECT_EQ(ModeOf(path), 0640u);
}

TEST_F(FileReplaceTest, ANewFileGetsTheUsersMode) {
    const mode_t mask = umask(027);
    EXPECT_TRUE(Replace("new"));
    umask(mask);
    EXPECT_EQ(ModeOf(path), 0640u); // 0666 less 027
}

TEST_F(FileReplaceTest, OwnerAndGroupAreKept) {
    static uid_t owner;
    static gid_t group;
    owner = 0;
    group = 0;
    WriteWholeFile(path, "old");
    // Whoever runs the test, the file counts as somebody else's.
    LowLevel().lookUp = [](const char* file, struct stat* status) {
        const int result = injection.system.lookUp(file, status);
        status->st_uid = 4711;
        status->st_gid = 4712;
        return result;
    };
    LowLevel().setOwner = [](int, uid_t newOwner, gid_t newGroup) {
        owner = newOwner;
        group = newGroup;
        return 0;
    };
    EXPECT_TRUE(Replace("new"));
    EXPECT_EQ(owner, 4711u);
    EXPECT_EQ(group, 4712u);
    EXPECT_TRUE(done.messages.empty());
}

TEST_F(FileReplaceTest, AnOwnerThatCantBeKeptIsToldAndTheOldGroupsRightsEnd) {
    WriteWholeFile(path, "old");
    ASSERT_EQ(chmod(path.c_str(), 0664), 0);
    LowLevel().lookUp = [](const char* file, struct stat* status) {
        const int result = injection.system.lookUp(file, status);
        status->st_uid = 4711;
        status->st_gid = 4712;
        return result;
    };
    LowLevel().setOwner = [](int, uid_t, gid_t) {
        errno = EPERM;
        return -1;
    };
    EXPECT_TRUE(Replace("new"));
    EXPECT_EQ(ReadWholeFile(path), "new");
    EXPECT_EQ(ModeOf(path), 0604u);
    ASSERT_EQ(done.messages.size(), 1u);
    EXPECT_NE(done.messages[0].find("owner and group"), std::string::npos);
}

TEST_F(FileReplaceTest, AWriteProtectedFileIsRefusedEvenForRoot) {
    WriteWholeFile(path, "old");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_FALSE(Replace("new"));
    EXPECT_NE(error.find("write-protected"), std::string::npos) << error;
    EXPECT_EQ(ReadWholeFile(path), "old");
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(FileReplaceTest, WhatIsNoRegularFileIsRefused) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(Replace("new"));
    EXPECT_TRUE(stdfs::is_fifo(path));
    stdfs::remove(path);
    stdfs::create_directory(path);
    EXPECT_FALSE(Replace("new"));
    EXPECT_TRUE(stdfs::is_directory(path));
    stdfs::remove(path);
    stdfs::create_symlink("/dev/null", path);
    EXPECT_FALSE(Replace("new"));
    EXPECT_TRUE(stdfs::is_character_file("/dev/null"));
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(FileReplaceTest, TheFolderIsFlushedBehindTheRename) {
    ASSERT_TRUE(Replace("new"));
    const auto rename = std::find(injection.names.begin(), injection.names.end(), "rename");
    ASSERT_NE(rename, injection.names.end());
    EXPECT_EQ(std::count(rename, injection.names.end(), "sync"), 1);
    EXPECT_EQ(std::count(injection.names.begin(), rename, "sync"), 1);
}

TEST_F(FileReplaceTest, AFolderThatCantBeFlushedIsTold) {
    WriteWholeFile(path, "old");
    ASSERT_TRUE(Replace("new"));
    const auto last = std::find(injection.names.rbegin(), injection.names.rend(), "sync");
    const auto place = static_cast<int>(injection.names.rend() - last) - 1;
    EXPECT_TRUE(Replace("newer", place));
    EXPECT_EQ(ReadWholeFile(path), "newer");
    ASSERT_EQ(done.messages.size(), 1u);
    EXPECT_NE(done.messages[0].find("flushed"), std::string::npos);
}

TEST_F(FileReplaceTest, NamesOfFullLengthCanBeSaved) {
    const std::string longest = folder.File(std::string(249, 'n') + ".level");
    EXPECT_TRUE(ReplaceFile(longest, "new", error)) << error;
    EXPECT_EQ(ReadWholeFile(longest), "new");
}

TEST_F(FileReplaceTest, AStampTellsATouchedFileFromAChangedOne) {
    ASSERT_TRUE(Replace("text"));
    EXPECT_FALSE(engine::HasChanged(path, done.stamp));
    const auto later = stdfs::last_write_time(path) + std::chrono::seconds(5);
    stdfs::last_write_time(path, later);
    EXPECT_FALSE(engine::HasChanged(path, done.stamp));
    WriteWholeFile(path, "next"); // of the same size
    stdfs::last_write_time(path, later);
    EXPECT_TRUE(engine::HasChanged(path, done.stamp));
    stdfs::remove(path);
    EXPECT_FALSE(engine::HasChanged(path, done.stamp));
}

} // namespace

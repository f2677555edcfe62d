#include "host/engine/FileHandles.h"

#include "plugin/contract/FileSystem.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>

namespace {

namespace stdfs = std::filesystem;
using engine::LowLevel;

int writesUntilFailure = -1;

ssize_t CountedWrite(int descriptor, const void* bytes, std::size_t size) {
    if (writesUntilFailure == 0) {
        errno = ENOSPC;
        return -1;
    }
    writesUntilFailure -= writesUntilFailure > 0 ? 1 : 0;
    return ::write(descriptor, bytes, size);
}

/// A folder of its own and a system whose operations can be made to fail.
class FileHandlesTest : public ::testing::Test {
protected:
    FileHandlesTest() : original(LowLevel()) {
        char name[] = "/tmp/films-files-XXXXXX";
        folder = mkdtemp(name);
        writesUntilFailure = -1;
        LowLevel().write = CountedWrite;
    }
    ~FileHandlesTest() override {
        LowLevel() = original;
        stdfs::remove_all(folder);
    }
    std::string Path(const std::string& name) const { return (folder / name).string(); }

    engine::LowLevelFiles original;
    stdfs::path folder;
};

TEST_F(FileHandlesTest, WrittenBytesAreReadBack) {
    const std::uint32_t out = FS_open(Path("a").c_str(), 1);
    ASSERT_NE(out, 0u);
    EXPECT_EQ(FS_write(out, "hello", 5), 5);
    EXPECT_EQ(FS_write(out, "", 0), 0);
    EXPECT_EQ(FS_close(out), 0);
    const std::uint32_t in = FS_open(Path("a").c_str(), 0);
    char buffer[10] = {};
    EXPECT_EQ(FS_read(in, buffer, 3), 3);
    EXPECT_EQ(FS_read(in, buffer + 3, 7), 2);
    EXPECT_STREQ(buffer, "hello");
    EXPECT_EQ(FS_read(in, buffer, 5), 0);
    EXPECT_EQ(FS_close(in), 0);
}

TEST_F(FileHandlesTest, HandlesAreNeverZeroAndDieWithClose) {
    const std::uint32_t first = FS_open(Path("a").c_str(), 1);
    EXPECT_NE(first, 0u);
    EXPECT_EQ(FS_close(first), 0);
    EXPECT_EQ(FS_close(first), -1);
    const std::uint32_t second = FS_open(Path("a").c_str(), 1);
    EXPECT_NE(second, first);
    EXPECT_LT(FS_write(first, "x", 1), 0);
    EXPECT_EQ(FS_close(second), 0);
    EXPECT_LT(FS_read(0, nullptr, 0), 0);
    EXPECT_EQ(FS_close(0), -1);
    EXPECT_EQ(FS_close(0xFFFFFFFFu), -1);
}

TEST_F(FileHandlesTest, WrongPathsModesAndArgumentsAreRefused) {
    EXPECT_EQ(FS_open(nullptr, 0), 0u);
    EXPECT_EQ(FS_open(Path("missing").c_str(), 0), 0u);
    EXPECT_EQ(FS_open(folder.c_str(), 0), 0u);
    EXPECT_EQ(FS_open(Path("no/folder").c_str(), 1), 0u);
    EXPECT_EQ(FS_open(Path("a").c_str(), 2), 0u);
    EXPECT_FALSE(FS_exists(Path("a").c_str()));
    EXPECT_FALSE(FS_exists(nullptr));
    EXPECT_TRUE(FS_exists(folder.c_str()));
    const std::uint32_t out = FS_open(Path("a").c_str(), 1);
    char byte = 0;
    EXPECT_LT(FS_read(out, &byte, 1), 0);
    EXPECT_LT(FS_write(out, &byte, -1), 0);
    EXPECT_LT(FS_write(out, nullptr, 1), 0);
    FS_close(out);
    const std::uint32_t in = FS_open(Path("a").c_str(), 0);
    EXPECT_LT(FS_write(in, &byte, 1), 0);
    FS_close(in);
}

TEST_F(FileHandlesTest, FifosAndDevicesAreRefusedWithoutWaiting) {
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    for (const int mode : {0, 1}) {
        EXPECT_EQ(FS_open(Path("pipe").c_str(), mode), 0u);
        EXPECT_EQ(FS_open("/dev/null", mode), 0u);
    }
    EXPECT_TRUE(stdfs::is_fifo(Path("pipe")));
}

TEST_F(FileHandlesTest, WritingEmptiesALongerFile) {
    const std::uint32_t first = FS_open(Path("a").c_str(), 1);
    FS_write(first, "longer", 6);
    FS_close(first);
    const std::uint32_t second = FS_open(Path("a").c_str(), 1);
    FS_write(second, "ab", 2);
    FS_close(second);
    EXPECT_EQ(stdfs::file_size(Path("a")), 2u);
}

TEST_F(FileHandlesTest, LargeFilesGoThroughTheBufferWhole) {
    std::string bytes(200000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 7);
    }
    const std::uint32_t out = FS_open(Path("a").c_str(), 1);
    for (std::size_t at = 0; at < bytes.size(); at += 1000) {
        EXPECT_EQ(FS_write(out, bytes.data() + at, 1000), 1000);
    }
    EXPECT_EQ(engine::FilePosition(out), bytes.size());
    EXPECT_EQ(FS_close(out), 0);
    const std::uint32_t in = FS_open(Path("a").c_str(), 0);
    std::string back(bytes.size(), '\0');
    EXPECT_EQ(FS_read(in, back.data(), 150001), 150001);
    EXPECT_EQ(FS_read(in, back.data() + 150001, 100000), 49999);
    EXPECT_EQ(back, bytes);
    EXPECT_TRUE(engine::SeekTo(in, 70000));
    EXPECT_EQ(engine::BytesLeft(in), 130000u);
    char byte = 0;
    EXPECT_EQ(FS_read(in, &byte, 1), 1);
    EXPECT_EQ(byte, bytes[70000]);
    EXPECT_TRUE(engine::SeekTo(in, 999999));
    EXPECT_EQ(FS_read(in, &byte, 1), 0);
    FS_close(in);
}

TEST_F(FileHandlesTest, FailedWritesShowInLaterWritesOrInClose) {
    const std::uint32_t small = FS_open(Path("a").c_str(), 1);
    writesUntilFailure = 0;
    EXPECT_EQ(FS_write(small, "x", 1), 1); // still in the buffer
    EXPECT_EQ(FS_close(small), -1);
    writesUntilFailure = -1;
    const std::uint32_t large = FS_open(Path("b").c_str(), 1);
    writesUntilFailure = 0;
    const std::string bytes(100000, 'y');
    EXPECT_LT(FS_write(large, bytes.data(), 100000), 0);
    EXPECT_LT(FS_write(large, "x", 1), 0);
    EXPECT_EQ(FS_close(large), -1);
}

TEST_F(FileHandlesTest, MemoryHandlesReadAndWrite) {
    const std::uint32_t out = engine::OpenMemoryForWriting();
    EXPECT_EQ(FS_write(out, "abc", 3), 3);
    engine::WrittenBytes(out)->append("de");
    EXPECT_EQ(engine::FilePosition(out), 5u);
    const std::string bytes = engine::TakeWritten(out);
    EXPECT_EQ(bytes, "abcde");
    EXPECT_EQ(FS_close(out), -1);
    const std::uint32_t in = engine::OpenMemoryForReading(bytes);
    EXPECT_EQ(engine::BytesLeft(in), 5u);
    char buffer[8] = {};
    EXPECT_TRUE(engine::SeekTo(in, 2));
    EXPECT_EQ(FS_read(in, buffer, 8), 3);
    EXPECT_STREQ(buffer, "cde");
    EXPECT_EQ(engine::WrittenBytes(in), nullptr);
    EXPECT_EQ(engine::TakeWritten(in), "");
    EXPECT_EQ(FS_close(in), 0);
}

TEST_F(FileHandlesTest, ReadWholeFileTellsWhyItCannot) {
    std::string bytes;
    std::string error;
    EXPECT_FALSE(engine::ReadWholeFile(Path("missing"), bytes, error));
    EXPECT_FALSE(error.empty());
    EXPECT_FALSE(engine::ReadWholeFile(folder.string(), bytes, error));
    EXPECT_EQ(error, "not a file");
    ASSERT_TRUE(engine::ReplaceFile(Path("a"), "text", error));
    EXPECT_TRUE(engine::ReadWholeFile(Path("a"), bytes, error));
    EXPECT_EQ(bytes, "text");
}

} // namespace

#include "plugin/contract/Chunks.h"

#include "host/engine/LevelFormat.h"
#include "host/engine/MemoryFile.h"
#include "plugin/contract/FileSystem.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

using engine::MemoryFile;

std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

TEST(ChunksTest, HeaderIsIdAndSizeLittleEndian) {
    MemoryFile memory;
    ChunkSaveStart(memory.file, 0x1694);
    memory.file.Write("abc", 3);
    ChunkSaveEnd(memory.file, 0x1694);
    EXPECT_EQ(memory.Take(), Bytes({0x94, 0x16, 3, 0, 0, 0, 'a', 'b', 'c'}));
}

TEST(ChunksTest, ChunksNestAndCountTheHeadersInside) {
    MemoryFile memory;
    ChunkSaveStart(memory.file, 1);
    ChunkSaveStart(memory.file, 2);
    memory.file.Write("x", 1);
    ChunkSaveEnd(memory.file, 2);
    ChunkSaveStart(memory.file, 3);
    ChunkSaveEnd(memory.file, 3);
    ChunkSaveEnd(memory.file, 1);
    EXPECT_EQ(memory.Take(), Bytes({1, 0, 13, 0, 0, 0, 2, 0, 1, 0, 0, 0, 'x', 3, 0, 0, 0, 0, 0}));
}

TEST(ChunksTest, SizeIsFilledInOnDiskToo) {
    char path[] = "/tmp/films-chunks-XXXXXX";
    close(mkstemp(path));
    fs::file file;
    file.Open(path, 1);
    const std::string data(100000, 'd'); // more than the buffer
    ChunkSaveStart(file, 7);
    file.Write(data.data(), 100000);
    ChunkSaveEnd(file, 7);
    file.Write("end", 3);
    EXPECT_EQ(file.Close(), 0);
    file.Open(path, 0);
    ChunkHeader header;
    EXPECT_EQ(ChunkLoadHeader(file, header), 100000u);
    EXPECT_EQ(header.id, 7);
    std::string back(100003, '\0');
    EXPECT_EQ(file.Read(back.data(), 100003), 100003);
    EXPECT_EQ(back, data + "end");
    file.Close();
    std::remove(path);
}

TEST(ChunksTest, EndThatDoesNotFitItsStartThrows) {
    MemoryFile memory;
    EXPECT_THROW(ChunkSaveEnd(memory.file, 1), fs::file_exception);
    ChunkSaveStart(memory.file, 1);
    EXPECT_THROW(ChunkSaveEnd(memory.file, 2), fs::file_exception);
    fs::file closed;
    EXPECT_THROW(ChunkSaveStart(closed, 1), fs::file_exception);
}

TEST(ChunksTest, HeaderCutShortReadsAsNothing) {
    const std::string bytes = Bytes({0x94, 0x16, 3, 0, 0});
    MemoryFile memory{std::string_view(bytes)};
    ChunkHeader header{9, 9};
    EXPECT_EQ(ChunkLoadHeader(memory.file, header), 0u);
    EXPECT_EQ(header.id, 0);
    EXPECT_EQ(header.size, 0u);
}

TEST(ChunksTest, HeaderOfTheLargestSizeIsRead) {
    const std::string bytes = Bytes({1, 0, 0xFF, 0xFF, 0xFF, 0xFF});
    MemoryFile memory{std::string_view(bytes)};
    ChunkHeader header;
    EXPECT_EQ(ChunkLoadHeader(memory.file, header), 0xFFFFFFFFu);
}

TEST(ChunksTest, StringsAreConsumedWholeAndCutToTheBuffer) {
    const std::string bytes = Bytes({5, 0, 'h', 'e', 'l', 'l', 'o', 2, 0, 'y', 'o'});
    MemoryFile memory{std::string_view(bytes)};
    char buffer[4];
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(freadstring2(memory.file, buffer, 4), 5);
    EXPECT_STREQ(buffer, "hel");
    std::string text;
    EXPECT_EQ(freadstringstl2(memory.file, text), 2);
    EXPECT_EQ(text, "yo");
}

TEST(ChunksTest, StringsOfAnEndedFileAreShort) {
    const std::string bytes = Bytes({0xFF, 0xFF, 'a', 'b'});
    MemoryFile memory{std::string_view(bytes)};
    std::string text = "old";
    EXPECT_EQ(freadstringstl2(memory.file, text), 65535);
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(freadstringstl2(memory.file, text), 0);
    EXPECT_EQ(text, "");
    char buffer[4] = "zzz";
    EXPECT_EQ(freadstring2(memory.file, buffer, 4), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(freadstring2(memory.file, nullptr, 0), 0);
}

TEST(ChunksTest, CursorRefusesSizesBeyondTheContainer) {
    const std::string bytes = Bytes({1, 0, 1, 0, 0, 0, 'a', 2, 0, 5, 0, 0, 0, 'b'});
    engine::ChunkCursor cursor(bytes, 100);
    engine::FoundChunk chunk;
    ASSERT_TRUE(cursor.Next(chunk));
    EXPECT_EQ(chunk.data, "a");
    EXPECT_EQ(chunk.offset, 106u);
    try {
        cursor.Next(chunk);
        FAIL() << "the size was believed";
    } catch (const engine::ChunkError& error) {
        EXPECT_EQ(error.offset, 107u);
    }
}

TEST(ChunksTest, ForeignChunksGoBackToTheirPlaces) {
    std::string known;
    engine::AppendChunk(known, 1, "a");
    engine::AppendChunk(known, 2, "b");
    std::string expected;
    engine::AppendChunk(expected, 90, "x");
    engine::AppendChunk(expected, 1, "a");
    engine::AppendChunk(expected, 91, "y");
    engine::AppendChunk(expected, 92, "");
    engine::AppendChunk(expected, 2, "b");
    engine::AppendChunk(expected, 93, "z");
    engine::MergeForeign(known, {{90, 0, "x"}, {91, 1, "y"}, {92, 1, ""}, {93, 7, "z"}});
    EXPECT_EQ(known, expected);
}

} // namespace

#include "plugin/contract/File.h"

#include "files/base/Log.h"
#include "host/engine/FileHandles.h"
#include "plugin/contract/FileSystem.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string heard;

/// A file over memory, and what the debug print says.
class FileTest : public ::testing::Test {
protected:
    FileTest() {
        heard.clear();
        SetLogListener([](const char* text) { heard += text; });
        file.handle = engine::OpenMemoryForWriting();
    }
    ~FileTest() override {
        SetLogListener(nullptr);
        file.Close();
    }
    std::string Written() const { return *engine::WrittenBytes(file.handle); }
    template <class Action> std::int32_t CodeOf(Action action) {
        try {
            action();
        } catch (const fs::file_exception& error) {
            return error.code;
        }
        return -1;
    }

    fs::file file;
};

TEST_F(FileTest, FreshFileIsClosed) {
    fs::file fresh;
    EXPECT_EQ(fresh.handle, 0u);
    EXPECT_EQ(fresh.Close(), 0);
    EXPECT_EQ(sizeof(fs::file), 4u);
}

TEST_F(FileTest, FailedOpenPrintsThePathAndThrowsCode0) {
    fs::file missing;
    EXPECT_EQ(CodeOf([&] { missing.Open("/no/such/100%d file", 0); }), 0);
    EXPECT_EQ(heard, "WARNING [file] cannot open file /no/such/100%d file\n");
    EXPECT_EQ(missing.handle, 0u);
    EXPECT_EQ(CodeOf([&] { missing.Open(nullptr, 0); }), 0);
}

TEST_F(FileTest, ShortReadIsNoErrorButAFailedOneThrowsCode1) {
    const std::string bytes = "abc";
    fs::file reader;
    reader.handle = engine::OpenMemoryForReading(bytes);
    char buffer[8] = {};
    EXPECT_EQ(reader.Read(buffer, 8), 3);
    EXPECT_EQ(reader.Read(buffer, 8), 0);
    EXPECT_EQ(CodeOf([&] { reader.Read(buffer, -1); }), 1);
    EXPECT_EQ(reader.Close(), 0);
    EXPECT_EQ(CodeOf([&] { reader.Read(buffer, 1); }), 1);
}

TEST_F(FileTest, FailedWriteThrowsCode2) {
    EXPECT_EQ(file.Write("ab", 2), 2);
    fs::file closed;
    EXPECT_EQ(CodeOf([&] { closed.Write("ab", 2); }), 2);
    EXPECT_EQ(CodeOf([&] { closed.WriteString("ab"); }), 2);
    EXPECT_EQ(CodeOf([&] { closed.WriteString(""); }), 2);
}

TEST_F(FileTest, StringsAreA16BitLengthAndTheBytes) {
    EXPECT_EQ(&file.WriteString("ab").WriteString("c"), &file);
    EXPECT_EQ(Written(), std::string("\x02\x00"
                                     "ab"
                                     "\x01\x00"
                                     "c",
                                     7));
}

TEST_F(FileTest, EmptyStringIsTwoZeroBytes) {
    file.WriteString("");
    EXPECT_EQ(Written(), std::string(2, '\0'));
}

TEST_F(FileTest, NullStringThrowsCode7AndWritesNothing) {
    EXPECT_EQ(CodeOf([&] { file.WriteString(nullptr); }), 7);
    EXPECT_EQ(Written(), "");
}

TEST_F(FileTest, LongStringKeepsTheLow16BitsOfItsLength) {
    file.WriteString(std::string(65535, 'x').c_str());
    EXPECT_EQ(Written().size(), 65537u);
    engine::WrittenBytes(file.handle)->clear();
    file.WriteString(std::string(65536 + 3, 'y').c_str());
    EXPECT_EQ(Written(), std::string("\x03\x00yyy", 5));
    engine::WrittenBytes(file.handle)->clear();
    file.WriteString(std::string(65536, 'z').c_str());
    EXPECT_EQ(Written(), std::string(2, '\0'));
}

TEST_F(FileTest, CloseGivesTheHostsAnswerAndClosesInAnyCase) {
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.handle, 0u);
    file.handle = 0x7FFF0001u; // a handle that the host does not know
    EXPECT_EQ(file.Close(), -1);
    EXPECT_EQ(file.handle, 0u);
}

TEST_F(FileTest, CopiesShareTheHandle) {
    fs::file copy = file;
    copy.WriteString("a");
    file.WriteString("b");
    EXPECT_EQ(Written().size(), 6u);
}

TEST_F(FileTest, ExceptionTellsItsCode) {
    const struct {
        std::int32_t code;
        const char* text;
    } rows[] = {{0, "Error opening file"},
                {1, "Error reading file"},
                {2, "Error writing file"},
                {3, "Error getting file length"},
                {4, "Error getting position in file"},
                {5, "Error when seeking"},
                {6, "Null string"},
                {7, "Null string"},
                {8, "Unknown error"},
                {-1, "Unknown error"}};
    for (const auto& row : rows) {
        EXPECT_STREQ(fs::file_exception(row.code).what(), row.text);
    }
}

} // namespace

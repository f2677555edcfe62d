#include "files/base/Log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

namespace stdfs = std::filesystem;

std::string heard;

/// A working directory of its own with a freshly opened log.
class LogTest : public ::testing::Test {
protected:
    LogTest() : home(stdfs::current_path()) {
        char name[] = "/tmp/films-log-XXXXXX";
        folder = mkdtemp(name);
        stdfs::current_path(folder);
        heard.clear();
        SetLogListener([](const char* text) { heard += text; });
    }
    ~LogTest() override {
        SetLogListener(nullptr);
        stdfs::current_path(home);
        stdfs::remove_all(folder);
    }
    static std::string Content(const stdfs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// What the crash log holds after this one text.
    static std::string Logged(const std::string& text) {
        OpenCrashLog(false);
        CrashLog("%s", text.c_str());
        return Content("crash.log");
    }
    static std::vector<std::string> DatedLogs() {
        std::vector<std::string> names;
        for (const auto& entry : stdfs::directory_iterator("logs")) {
            names.push_back(entry.path().string());
        }
        return names;
    }

    /// The text with each digit replaced by a 9.
    static std::string Digits(std::string text) {
        std::replace_if(
            text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; }, '9');
        return text;
    }

    stdfs::path home;
    stdfs::path folder;
};

TEST_F(LogTest, DebugPrintFormatsForTheListenerAndWritesNoFile) {
    DebugPrint("%s has %d keys\n", "Box", 3);
    EXPECT_EQ(heard, "Box has 3 keys\n");
    EXPECT_TRUE(stdfs::is_empty(folder));
}

TEST_F(LogTest, DebugPrintCutsLongTextsAndTerminatesThem) {
    DebugPrint("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(heard, std::string(2048, 'x'));
}

TEST_F(LogTest, TextOfTheWholeBufferReachesTheListener) {
    const std::string text = std::string(2047, 'x') + "!";
    DebugPrint("%s", text.c_str());
    EXPECT_EQ(heard, text);
}

TEST_F(LogTest, DebugPrintWithoutListenerIsHarmless) {
    SetLogListener(nullptr);
    DebugPrint("nobody hears\n");
    EXPECT_EQ(heard, "");
}

TEST_F(LogTest, CrashLogGoesToItsFileAndToTheListener) {
    OpenCrashLog(false);
    CrashLog("line %d\n", 1);
    CrashLog("line %d\n", 2);
    EXPECT_EQ(Content("crash.log"), "line 1\r\nline 2\r\n");
    EXPECT_EQ(heard, "line 1\r\nline 2\r\n");
}

TEST_F(LogTest, BareLineFeedsGetACarriageReturnAndPairsKeepTheirs) {
    EXPECT_EQ(Logged("a\nb\r\nc\n\nd"), "a\r\nb\r\nc\r\n\r\nd");
}

TEST_F(LogTest, TextThatBeginsWithALineFeedKeepsItBare) {
    EXPECT_EQ(Logged("\na\n"), "\na\r\n");
    EXPECT_EQ(Logged("\n"), "\n");
}

TEST_F(LogTest, CopyStopsWhen2046BytesAreWritten) {
    EXPECT_EQ(Logged(std::string(2046, 'x')).size(), 2046u);
    EXPECT_EQ(Logged(std::string(2047, 'x')).size(), 2046u);
    EXPECT_EQ(Logged(std::string(5000, 'x')).size(), 2046u);
    // 1 bare line feed and 1500 pairs of 2 bytes: the limit is met behind the 2045th byte plus a pair.
    EXPECT_EQ(Logged(std::string(1501, '\n')).size(), 2047u);
}

TEST_F(LogTest, PairBegunAtTheLimitIsKeptWhole) {
    EXPECT_EQ(Logged(std::string(2045, 'x') + "\n"), std::string(2045, 'x') + "\r\n");
}

TEST_F(LogTest, EmptyTextWritesNothing) {
    EXPECT_EQ(Logged(""), "");
}

TEST_F(LogTest, OpeningReplacesTheOldLog) {
    std::ofstream("crash.log") << "of the last run";
    OpenCrashLog(false);
    EXPECT_EQ(Content("crash.log"), "");
}

TEST_F(LogTest, FileDebugFntSwitchesToADatedLogInLogs) {
    std::ofstream("debug.fnt") << "";
    OpenCrashLog(false);
    CrashLog("x");
    ASSERT_EQ(DatedLogs().size(), 1u);
    EXPECT_EQ(Digits(DatedLogs()[0]), "logs/crash_9999-99-99_9999.log");
    EXPECT_EQ(Content(DatedLogs()[0]), "x");
    EXPECT_FALSE(stdfs::exists("crash.log"));
}

TEST_F(LogTest, ExistingLogsFolderIsNoError) {
    std::ofstream("debug.fnt") << "";
    stdfs::create_directory("logs");
    OpenCrashLog(false);
    EXPECT_EQ(DatedLogs().size(), 1u);
}

TEST_F(LogTest, DatedLogThatCannotBeMadeFallsBackToThePlainOne) {
    std::ofstream("debug.fnt") << "";
    std::ofstream("logs") << "a file where the folder should be";
    EXPECT_EQ(Logged("x"), "x");
}

TEST_F(LogTest, LogThatCannotBeMadeAtAllStillReachesTheListener) {
    stdfs::create_directory("crash.log");
    OpenCrashLog(false);
    CrashLog("heard\n");
    EXPECT_EQ(heard, "heard\r\n");
}

TEST_F(LogTest, FirstCrashLogOpensTheLog) {
    // A process of its own: the log state lives as long as the process.
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            CrashLog("first\n");
            std::exit(Content("crash.log") == "first\r\n" ? 0 : 1);
        },
        testing::ExitedWithCode(0), "first");
}

TEST_F(LogTest, DatedNameUsesTheTwelveHourClock) {
    std::tm local = {};
    local.tm_year = 104;
    local.tm_mon = 1;
    local.tm_mday = 9;
    local.tm_hour = 15;
    local.tm_min = 4;
    EXPECT_EQ(DatedLogName(local), "logs/crash_2004-02-09_0304.log");
    local.tm_hour = 0;
    EXPECT_EQ(DatedLogName(local), "logs/crash_2004-02-09_1204.log");
}

TEST_F(LogTest, ConsoleHearsBothPrintsAndTheCrashLogsTerminator) {
    OpenCrashLog(true);
    testing::internal::CaptureStdout();
    DebugPrint("a\n");
    CrashLog("b\n");
    const std::string console = testing::internal::GetCapturedStdout();
    OpenCrashLog(false);
    EXPECT_EQ(console, std::string("a\nb\r\n\0", 6));
}

TEST_F(LogTest, WithoutAConsoleStandardOutputStaysEmpty) {
    OpenCrashLog(false);
    testing::internal::CaptureStdout();
    DebugPrint("a\n");
    CrashLog("b\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(LogTest, SystemsDebugOutputHearsTheCrashLog) {
    OpenCrashLog(false);
    testing::internal::CaptureStderr();
    DebugPrint("a\n");
    CrashLog("b\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "b\r\n");
}

} // namespace

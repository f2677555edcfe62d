#include "host/stage/host/WorkFolder.h"

#include "host/engine/LowLevelFiles.h"
#include "tests/support/TempFolder.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using stage::FoundWork;
using stage::KeptWork;
using stage::WorkFolder;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

KeptWork Work(const std::string& bytes) {
    return {"/levels/a.level", {true, 123456789, 42, 77}, true, bytes};
}

} // namespace

TEST(KeptWorkTest, ComesBackWithAllThatWasKnownOfTheLevelsFile) {
    KeptWork work = Work(std::string("le\0vel", 6));
    work.when = 1'700'000'000;
    work.discarded = true;
    KeptWork read;
    std::string error;
    ASSERT_TRUE(stage::DecodeWork(stage::EncodeWork(work), read, error));
    EXPECT_EQ(read.path, "/levels/a.level");
    EXPECT_EQ(read.bytes, std::string("le\0vel", 6));
    EXPECT_TRUE(read.stamp.exists);
    EXPECT_EQ(read.stamp.changed, 123456789);
    EXPECT_EQ(read.stamp.size, 42u);
    EXPECT_EQ(read.stamp.hash, 77u);
    EXPECT_TRUE(read.openedInPart);
    EXPECT_TRUE(read.discarded);
    EXPECT_EQ(read.when, 1'700'000'000);
}

TEST(KeptWorkTest, AFileCutShortAnywhereOrWithAnyByteChangedIsRefusedWithAReason) {
    const std::string file = stage::EncodeWork(Work("some bytes of a level"));
    for (std::size_t i = 0; i < file.size(); ++i) {
        KeptWork read;
        std::string error;
        EXPECT_FALSE(stage::DecodeWork(file.substr(0, i), read, error)) << i;
        EXPECT_FALSE(error.empty()) << i;
        std::string damaged = file;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
        EXPECT_FALSE(stage::DecodeWork(damaged, read, error)) << i;
    }
}

/// Two Stages at a time and one that comes later, each with its own object over one folder.
class WorkFolderTest : public ::testing::Test {
protected:
    ~WorkFolderTest() override { engine::LowLevel() = files; }
    bool Keep(WorkFolder& work, const std::string& bytes) { return work.Keep(Work(bytes), error); }
    /// Bytes of what is found, in order.
    static std::vector<std::string> Bytes(const WorkFolder& work) {
        std::vector<std::string> bytes;
        for (const FoundWork& found : work.Find()) {
            bytes.push_back(found.error.empty() ? found.work.bytes : "damaged");
        }
        return bytes;
    }

    const engine::LowLevelFiles files = engine::LowLevel();
    TempFolder state;
    std::string error;
    WorkFolder later{state.Path()};
};

TEST_F(WorkFolderTest, StagesThatRunKeepTheirOwnAndOfferNothingToOthers) {
    WorkFolder first(state.Path());
    WorkFolder second(state.Path());
    ASSERT_TRUE(Keep(first, "one"));
    ASSERT_TRUE(Keep(second, "two"));
    ASSERT_TRUE(Keep(first, "one again"));
    EXPECT_THAT(Bytes(later), IsEmpty());
    EXPECT_THAT(Bytes(first), IsEmpty());
}

TEST_F(WorkFolderTest, WhatAStageLeftIsFoundByTheNextAndByOneAtATime) {
    {
        WorkFolder first(state.Path());
        WorkFolder second(state.Path());
        ASSERT_TRUE(Keep(first, "one"));
        ASSERT_TRUE(Keep(second, "two"));
    }
    EXPECT_THAT(Bytes(later), ::testing::UnorderedElementsAre("one", "two"));
    std::vector<FoundWork> found = later.Find();
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_TRUE(WorkFolder::IsLeftover(found[0]));
    WorkFolder other(state.Path());
    EXPECT_THAT(Bytes(other), IsEmpty()) << "they are being offered elsewhere";
    const std::string stays = found[1].work.bytes;
    WorkFolder::Remove(found[0]);
    found.clear();
    EXPECT_THAT(Bytes(other), ::testing::ElementsAre(stays));
}

TEST_F(WorkFolderTest, AStageWithNothingUnsavedLeavesNothing) {
    {
        WorkFolder first(state.Path());
        ASSERT_TRUE(Keep(first, "one"));
        first.Drop();
    }
    EXPECT_THAT(Bytes(later), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(state.File("work")));
}

TEST_F(WorkFolderTest, DiscardedWorkStaysUntilOtherWorkIsDiscarded) {
    {
        WorkFolder first(state.Path());
        ASSERT_TRUE(first.KeepDiscarded(Work("thrown away"), error));
    }
    WorkFolder second(state.Path());
    ASSERT_TRUE(Keep(second, "two"));
    second.Drop();
    EXPECT_THAT(Bytes(later), ::testing::ElementsAre("thrown away"));
    EXPECT_FALSE(WorkFolder::IsLeftover(later.Find().front())) << "not offered unasked";
    ASSERT_TRUE(second.KeepDiscarded(Work("thrown later"), error));
    EXPECT_THAT(Bytes(later), ::testing::ElementsAre("thrown later"));
}

TEST_F(WorkFolderTest, DamagedWorkIsToldAndStays) {
    {
        WorkFolder first(state.Path());
        ASSERT_TRUE(Keep(first, "one"));
    }
    const std::string file = later.Find().front().file;
    WriteWholeFile(file, ReadWholeFile(file).substr(0, 40));
    ASSERT_THAT(later.Find(), SizeIs(1));
    EXPECT_THAT(later.Find().front().error, HasSubstr("cut short"));
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(WorkFolderTest, AFailedWriteKeepsWhatWasKeptBefore) {
    {
        WorkFolder first(state.Path());
        ASSERT_TRUE(Keep(first, "one"));
        engine::LowLevel().write = [](int, const void*, std::size_t) -> ssize_t {
            errno = ENOSPC;
            return -1;
        };
        EXPECT_FALSE(Keep(first, "two"));
        EXPECT_THAT(error, HasSubstr("No space left"));
        engine::LowLevel() = files;
    }
    EXPECT_THAT(Bytes(later), ::testing::ElementsAre("one"));
}

TEST_F(WorkFolderTest, WithoutAStateFolderNothingIsKeptAndThatIsTold) {
    WorkFolder none("");
    EXPECT_FALSE(none.IsUsable());
    EXPECT_FALSE(Keep(none, "one"));
    EXPECT_FALSE(error.empty());
    EXPECT_THAT(none.Find(), IsEmpty());
}

TEST_F(WorkFolderTest, LocksOfStagesThatWereKilledBeforeTheyKeptAnythingGo) {
    std::filesystem::create_directories(state.File("work"));
    WriteWholeFile(state.File("work/1-0.lock"), "");
    WorkFolder first(state.Path());
    ASSERT_TRUE(Keep(first, "one"));
    EXPECT_FALSE(std::filesystem::exists(state.File("work/1-0.lock")));
}

#include "framework/UserNote.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

TEST(UserNoteTest, ReachesTheHostWhileThereIsOne) {
    std::vector<std::string> told;
    NoteForUser("before");
    SetUserNoteSink([&told](const std::string& text) { told.push_back(text); });
    NoteForUser("meanwhile");
    SetUserNoteSink(nullptr);
    NoteForUser("after");
    EXPECT_THAT(told, ::testing::ElementsAre("meanwhile"));
}

TEST(UserNoteTest, HostMayGoWhileItIsTold) {
    std::string told;
    SetUserNoteSink([&told](const std::string& text) {
        SetUserNoteSink(nullptr);
        told = text;
    });
    NoteForUser("last");
    NoteForUser("too late");
    EXPECT_EQ(told, "last");
}

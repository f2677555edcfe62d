#include "host/engine/References.h"

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace stdfs = std::filesystem;
using engine::RebasedReference;

/// Folders a/level and b with files in them, and the working directory kept.
class ReferencesTest : public ::testing::Test {
protected:
    ReferencesTest() {
        stdfs::create_directories(folder.File("a/level/models"));
        stdfs::create_directories(folder.File("b"));
        WriteWholeFile(folder.File("a/level/models/crate.glb"), "crate");
        WriteWholeFile(folder.File("a/shared.wav"), "shared");
    }
    ~ReferencesTest() override { stdfs::current_path(before); }

    const stdfs::path before = stdfs::current_path();
    TempFolder folder;
    const std::string level = folder.File("a/level/");
    const std::string other = folder.File("b/");
};

TEST_F(ReferencesTest, ANameLeadsToTheSameFileFromAnotherFolder) {
    EXPECT_EQ(RebasedReference("models/crate.glb", level, other), "../a/level/models/crate.glb");
    EXPECT_EQ(RebasedReference("../shared.wav", level, other), "../a/shared.wav");
    EXPECT_EQ(RebasedReference("../a/level/models/crate.glb", other, level), "models/crate.glb");
    EXPECT_EQ(RebasedReference("models\\crate.glb", level, other), "../a/level/models/crate.glb");
    EXPECT_EQ(RebasedReference("models/missing.glb", level, other), "../a/level/models/missing.glb");
}

TEST_F(ReferencesTest, RelativeFoldersAreNoReasonToLoseAName) {
    stdfs::current_path(folder.Path());
    EXPECT_EQ(RebasedReference("models/crate.glb", "a/level/", folder.File("b/")),
              "../a/level/models/crate.glb");
    EXPECT_EQ(RebasedReference("models/crate.glb", "a/level/", level), "models/crate.glb");
    EXPECT_EQ(RebasedReference("models/crate.glb", level, "./a/../a/level"), "models/crate.glb");
}

TEST_F(ReferencesTest, AbsoluteNamesAndDrivesStay) {
    EXPECT_EQ(RebasedReference("/usr/share/a.wav", level, other), "/usr/share/a.wav");
    EXPECT_EQ(RebasedReference("C:\\sounds\\a.wav", level, other), "C:\\sounds\\a.wav");
    EXPECT_EQ(RebasedReference("c:/sounds/a.wav", level, other), "c:/sounds/a.wav");
    EXPECT_EQ(RebasedReference("", level, other), "");
}

TEST_F(ReferencesTest, NoNameIsReplacedByAnEmptyOne) {
    const std::string names[] = {"x",  ".",  "..",    "./", "models/", "../../../../../../../../x",
                                 "\\", "a:", "models"};
    const std::string folders[] = {"", "/", ".", level, other, "b", "/nowhere/at/all/"};
    for (const std::string& name : names) {
        for (const std::string& from : folders) {
            for (const std::string& to : folders) {
                EXPECT_NE(RebasedReference(name, from, to), "") << name << " from " << from << " to " << to;
            }
        }
    }
}

TEST_F(ReferencesTest, LinkedFoldersAreSeenThrough) {
    stdfs::create_directory_symlink(folder.File("a/level"), folder.File("linked"));
    EXPECT_TRUE(engine::IsSameFolder(folder.File("linked/"), level));
    EXPECT_EQ(RebasedReference("models/crate.glb", folder.File("linked/"), level), "models/crate.glb");
    // From behind the link ".." is folder "a", not the folder that the link lies in.
    EXPECT_EQ(RebasedReference("../shared.wav", folder.File("linked/"), other), "../a/shared.wav");
}

TEST_F(ReferencesTest, TheLevelsFolderIsWhereItsFileLies) {
    WriteWholeFile(folder.File("a/level/x.level"), "level");
    stdfs::create_symlink(folder.File("a/level/x.level"), folder.File("b/link.level"));
    EXPECT_EQ(engine::LevelFolder(folder.File("b/link.level")), level);
    EXPECT_EQ(engine::LevelFolder(folder.File("b/new.level")), other);
    stdfs::current_path(folder.File("a"));
    EXPECT_EQ(engine::LevelFolder("level/x.level"), level);
    EXPECT_EQ(engine::LevelFolder("./level/../level/x.level"), level);
    EXPECT_EQ(engine::LevelFolder("x.level"), folder.File("a/"));
}

TEST_F(ReferencesTest, ANameThatAFileDialogGaveIsFoundFromTheProgramsFolder) {
    const stdfs::path program = stdfs::read_symlink("/proc/self/exe").parent_path();
    const std::string name = stdfs::path(folder.File("a/shared.wav")).lexically_relative(program).string();
    // So deep that the name leads nowhere from the level: ".." ends at the root.
    const std::string deep = folder.File("a/1/2/3/4/5/6/7/8/9/10/11/12/");
    stdfs::create_directories(deep);
    const std::string up = "../../../../../../../../../../../../shared.wav";
    EXPECT_TRUE(stdfs::equivalent(engine::ReferencePath(deep, name), folder.File("a/shared.wav")));
    EXPECT_EQ(RebasedReference(name, deep, deep), up);
    EXPECT_EQ(RebasedReference(name, "", deep), up);
}

} // namespace

#include "host/engine/FilmManager.h"
#include "host/stage/host/LevelSession.h"
#include "plugin/contract/FilmManager.h"
#include "tests/stage/HostFixture.h"
#include "tests/support/TempFolder.h"

#include <filesystem>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A level with a mesh and a sound, changed since its save, and a second Stage that takes the work up.
class LevelRecoverTest : public HostFixture {
protected:
    LevelRecoverTest() {
        std::filesystem::create_directories(folder.File("level/models"));
        WriteWholeFile(folder.File("level/horn.wav"), "only a name here");
        session.New();
        EXPECT_TRUE(session.Save(path));
        Make("Crate")->SetMeshName("models/crate.glb");
        IFilmManager* films = host.level.Data()->filmManager;
        IFilm* film = films->GetFilm(films->AllocateFilm());
        CFilmTrack* track = film->CreateObjectTrack();
        film->AddTrack(track);
        auto* sound = static_cast<CFilmSoundKey*>(films->keyFactory->CreateKey(KeyKind::Sound));
        sound->wavPath = "horn.wav";
        EXPECT_TRUE(track->AddKey(sound));
        EXPECT_TRUE(session.Save(path));
        saved = ReadWholeFile(path);
        Make("Barrel");
    }

    TempFolder folder;
    const std::string path = folder.File("level/a.level");
    std::string saved; ///< the level's file
    stage::LevelSession session{host};

    FakeWindows laterWindows;
    stage::EditorHost laterHost{laterWindows, {"data", "data/helpers"}};
    stage::LevelSession later{laterHost};
};

TEST_F(LevelRecoverTest, KeepingTouchesNeitherTheLevelNorItsStar) {
    ASSERT_TRUE(session.IsChanged());
    session.TakeWork();
    EXPECT_TRUE(session.IsChanged());
    EXPECT_TRUE(session.IsMarkedChanged());
    EXPECT_TRUE(ReadWholeFile(path) == saved);
}

TEST_F(LevelRecoverTest, RecoveredWorkIsTheLevelOfItsPathAndNotSaved) {
    ASSERT_TRUE(later.Recover(session.TakeWork()));
    EXPECT_NE(laterHost.level.FindObject("Barrel"), nullptr);
    EXPECT_EQ(later.Path(), path);
    EXPECT_TRUE(later.IsChanged());
    EXPECT_TRUE(later.IsMarkedChanged());
    EXPECT_TRUE(ReadWholeFile(path) == saved) << "not before it is saved";
    ASSERT_TRUE(later.Save(later.Path()));
    EXPECT_THAT(laterWindows.changedFiles, IsEmpty());
    EXPECT_FALSE(later.IsChanged());
    ASSERT_TRUE(session.Save(folder.File("level/b.level")));
    EXPECT_TRUE(ReadWholeFile(path) == ReadWholeFile(folder.File("level/b.level")));
}

TEST_F(LevelRecoverTest, RecoveredWorkFindsItsMeshesAndSoundsAlsoWhenItIsSavedElsewhere) {
    ASSERT_TRUE(later.Recover(session.TakeWork()));
    EXPECT_EQ(laterHost.level.Folder(), folder.File("level/"));
    std::filesystem::create_directories(folder.File("other"));
    ASSERT_TRUE(later.Save(folder.File("other/a.level")));
    EXPECT_EQ(laterHost.level.FindObject("Crate")->meshName, "../level/models/crate.glb");
    const CFilmTrack& track = *laterHost.level.Data()->filmManager->films[0]->tracks.front();
    EXPECT_EQ(static_cast<const CFilmSoundKey*>(track.keys.front())->wavPath, "../level/horn.wav");
}

TEST_F(LevelRecoverTest, ALevelThatWasChangedOutsideMeanwhileIsAskedAboutBeforeItIsOverwritten) {
    const stage::KeptWork work = session.TakeWork();
    WriteWholeFile(path, saved + "and more");
    ASSERT_TRUE(later.Recover(work));
    EXPECT_FALSE(later.Save(path));
    EXPECT_THAT(laterWindows.changedFiles, ElementsAre(path));
    EXPECT_EQ(ReadWholeFile(path), saved + "and more");
}

TEST_F(LevelRecoverTest, WorkThatWasNeverSavedComesBackUntitled) {
    session.New();
    Make("Barrel");
    ASSERT_TRUE(later.Recover(session.TakeWork()));
    EXPECT_EQ(later.Title(), "Untitled");
    EXPECT_TRUE(later.IsChanged());
    EXPECT_NE(laterHost.level.FindObject("Barrel"), nullptr);
}

TEST_F(LevelRecoverTest, WorkThatHoldsNoLevelLeavesTheOpenOneAlone) {
    later.New();
    laterHost.level.CreateObject({ClassName::Mesh, "Here", "", {}, nullptr, true});
    EXPECT_FALSE(later.Recover({path, {}, false, "no level"}));
    EXPECT_THAT(laterWindows.errors, ElementsAre(HasSubstr("a.level")));
    EXPECT_NE(laterHost.level.FindObject("Here"), nullptr);
}

TEST_F(LevelRecoverTest, WhatCouldNotBeReadOfTheLevelIsStillKeptBesideTheFirstSave) {
    stage::KeptWork work = session.TakeWork();
    work.openedInPart = true;
    ASSERT_TRUE(later.Recover(work));
    ASSERT_TRUE(later.Save(path));
    EXPECT_TRUE(ReadWholeFile(path + ".bak") == saved);
}

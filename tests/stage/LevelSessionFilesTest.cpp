#include "host/engine/LevelFormat.h"
#include "host/engine/LowLevelFiles.h"
#include "host/stage/host/LevelSession.h"
#include "plugin/contract/FilmManager.h"
#include "tests/stage/HostFixture.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

namespace stdfs = std::filesystem;

/// A session and the folders "level" and "other". Files have what tests look for only as names.
class LevelSessionFilesTest : public HostFixture {
protected:
    LevelSessionFilesTest() {
        stdfs::create_directories(folder.File("level/models"));
        stdfs::create_directories(folder.File("other"));
    }
    ~LevelSessionFilesTest() override {
        stdfs::current_path(before);
        engine::LowLevel() = files;
    }

    /// A saved level with an object with a mesh, a sound and speech.
    void MakeLevel() {
        ASSERT_TRUE(session.Save(path));
        crate = Make("Crate");
        crate->SetMeshName("models/crate.glb");
        IFilmManager* films = host.level.Data()->filmManager;
        IFilm* film = films->GetFilm(films->AllocateFilm());
        CFilmTrack* track = film->CreateObjectTrack();
        film->AddTrack(track);
        sound = static_cast<CFilmSoundKey*>(films->keyFactory->CreateKey(KeyKind::Sound));
        sound->wavPath = "sounds/horn.wav";
        speech = static_cast<CFilmSpeechKey*>(films->keyFactory->CreateKey(KeyKind::Speech));
        speech->speechPath = "sounds/hello.wav";
        ASSERT_TRUE(track->AddKey(sound));
        ASSERT_TRUE(track->AddKey(speech));
        ASSERT_TRUE(session.Save(path));
    }
    /// Mesh, sound and speech as the open level names them.
    std::vector<std::string> Names() const {
        std::vector<std::string> names{host.level.FindObject("Crate")->meshName};
        const IFilm* film = host.level.Data()->filmManager->films[0];
        for (const IFilmKey* key : film->tracks.back()->keys) {
            names.push_back(key->kind == KeyKind::Sound
                                ? static_cast<const CFilmSoundKey*>(key)->wavPath
                                : static_cast<const CFilmSpeechKey*>(key)->speechPath);
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    auto AreAsMade() const { return ElementsAre("models/crate.glb", "sounds/hello.wav", "sounds/horn.wav"); }
    /// Opens the file in a session of its own, as a second Stage does.
    struct OtherStage {
        FakeWindows windows;
        stage::EditorHost host{windows, {"data", "data/helpers"}};
        stage::LevelSession session{host};
    };

    const stdfs::path before = stdfs::current_path();
    const engine::LowLevelFiles files = engine::LowLevel();
    TempFolder folder;
    const std::string path = folder.File("level/a.level");
    stage::LevelSession session{host};
    engine::SceneObject* crate = nullptr;
    CFilmSoundKey* sound = nullptr;
    CFilmSpeechKey* speech = nullptr;
};

TEST_F(LevelSessionFilesTest, ALevelOpenedByARelativePathKeepsItsNamesWhenSaved) {
    MakeLevel();
    const std::string bytes = ReadWholeFile(path);
    for (const char* way : {"level/a.level", "./level/a.level", "level/../level/a.level"}) {
        stdfs::current_path(folder.Path());
        ASSERT_TRUE(session.Open(way));
        EXPECT_THAT(session.Path(), ::testing::StartsWith("/")) << way;
        stdfs::current_path("/"); // as a file dialog does it
        ASSERT_TRUE(session.Save(session.Path()));
        EXPECT_THAT(Names(), AreAsMade()) << way;
        EXPECT_TRUE(ReadWholeFile(path) == bytes) << way;
    }
}

TEST_F(LevelSessionFilesTest, ALevelSavedByARelativePathKeepsItsNames) {
    MakeLevel();
    stdfs::current_path(folder.File("level"));
    ASSERT_TRUE(session.Save("b.level"));
    EXPECT_EQ(session.Path(), folder.File("level/b.level"));
    EXPECT_THAT(Names(), AreAsMade());
    ASSERT_TRUE(session.Save("../other/b.level"));
    EXPECT_THAT(Names(), ElementsAre("../level/models/crate.glb", "../level/sounds/hello.wav",
                                     "../level/sounds/horn.wav"));
}

TEST_F(LevelSessionFilesTest, ACopyInAnotherFolderFindsMeshesSoundsAndSpeechAndSoDoesTheWayBack) {
    MakeLevel();
    ASSERT_TRUE(session.Save(folder.File("other/b.level")));
    EXPECT_EQ(crate->meshName, "../level/models/crate.glb");
    EXPECT_EQ(sound->wavPath, "../level/sounds/horn.wav");
    EXPECT_EQ(speech->speechPath, "../level/sounds/hello.wav");
    ASSERT_TRUE(session.Open(folder.File("other/b.level")));
    ASSERT_TRUE(session.Save(path));
    EXPECT_THAT(Names(), AreAsMade());
}

TEST_F(LevelSessionFilesTest, ACopyThatCantBeWrittenLeavesAllNamesAsTheyWere) {
    MakeLevel();
    EXPECT_FALSE(session.Save(folder.File("no/such/folder/b.level")));
    EXPECT_THAT(Names(), AreAsMade());
    EXPECT_EQ(host.level.Folder(), folder.File("level/"));
}

TEST_F(LevelSessionFilesTest, ALinkedFolderIsTheSameFolder) {
    MakeLevel();
    stdfs::create_directory_symlink(folder.File("level"), folder.File("linked"));
    ASSERT_TRUE(session.Open(folder.File("linked/a.level")));
    ASSERT_TRUE(session.Save(path));
    EXPECT_THAT(Names(), AreAsMade());
}

TEST_F(LevelSessionFilesTest, ALinkedFileKeepsItsNamesAndStaysALink) {
    MakeLevel();
    const std::string bytes = ReadWholeFile(path);
    stdfs::create_symlink(path, folder.File("other/link.level"));
    ASSERT_TRUE(session.Open(folder.File("other/link.level")));
    EXPECT_EQ(host.level.Folder(), folder.File("level/"));
    ASSERT_TRUE(session.Save(session.Path()));
    EXPECT_THAT(Names(), AreAsMade());
    EXPECT_TRUE(stdfs::is_symlink(folder.File("other/link.level")));
    EXPECT_TRUE(ReadWholeFile(path) == bytes);
}

TEST_F(LevelSessionFilesTest, TwoStagesOnOneLevelAskBeforeTheSecondOverwritesTheFirst) {
    MakeLevel();
    OtherStage other;
    ASSERT_TRUE(other.session.Open(path));
    Make("Mine");
    ASSERT_TRUE(session.Save(path));
    const std::string mine = ReadWholeFile(path);
    // Nothing is saved without an answer.
    EXPECT_FALSE(other.session.Save(path));
    EXPECT_THAT(other.windows.changedFiles, ElementsAre(path));
    EXPECT_TRUE(ReadWholeFile(path) == mine);
    // Under another name both are kept.
    other.windows.pathForChangedFile = folder.File("level/b.level");
    EXPECT_TRUE(other.session.Save(path));
    EXPECT_EQ(other.session.Path(), folder.File("level/b.level"));
    EXPECT_TRUE(ReadWholeFile(path) == mine);
    EXPECT_TRUE(stdfs::exists(folder.File("level/b.level")));
    // The first Stage did not change meanwhile.
    EXPECT_TRUE(session.Save(path));
    EXPECT_THAT(windows.changedFiles, IsEmpty());
}

TEST_F(LevelSessionFilesTest, OverwritingOnPurposeIsAskedOnce) {
    MakeLevel();
    WriteWholeFile(path, "of another program");
    windows.pathForChangedFile = path;
    EXPECT_TRUE(session.Save(path));
    EXPECT_TRUE(session.Save(path));
    EXPECT_THAT(windows.changedFiles, ElementsAre(path));
}

TEST_F(LevelSessionFilesTest, ATouchedFileIsSavedWithoutAQuestionAndAChangedOneOfTheSameSizeIsNot) {
    MakeLevel();
    const stdfs::file_time_type later = stdfs::last_write_time(path) + std::chrono::seconds(10);
    stdfs::last_write_time(path, later);
    EXPECT_TRUE(session.Save(path));
    EXPECT_THAT(windows.changedFiles, IsEmpty());
    std::string bytes = ReadWholeFile(path);
    bytes[bytes.size() - 1] = static_cast<char>(~bytes[bytes.size() - 1]);
    WriteWholeFile(path, bytes);
    stdfs::last_write_time(path, later);
    EXPECT_FALSE(session.Save(path));
    EXPECT_THAT(windows.changedFiles, ElementsAre(path));
}

TEST_F(LevelSessionFilesTest, AFileThatWentAwayIsWrittenAnew) {
    MakeLevel();
    stdfs::remove(path);
    EXPECT_TRUE(session.Save(path));
    EXPECT_TRUE(stdfs::exists(path));
    EXPECT_THAT(windows.changedFiles, IsEmpty());
}

TEST_F(LevelSessionFilesTest, TheFirstSaveOverALevelThatWasNotOpenedWholeKeepsItBeside) {
    MakeLevel();
    // An object that can't be read, at the end of a level that is in order otherwise.
    std::string objects;
    engine::AppendChunk(objects, engine::LevelChunk::Object, "no object");
    std::string inner = ReadWholeFile(path).substr(6);
    engine::AppendChunk(inner, engine::LevelChunk::Objects, objects);
    std::string damaged;
    engine::AppendChunk(damaged, engine::LevelChunk::Level, inner);
    WriteWholeFile(path, damaged);
    ASSERT_TRUE(session.Open(path));
    ASSERT_EQ(windows.errors.size(), 1u);
    ASSERT_TRUE(session.Save(path));
    EXPECT_TRUE(ReadWholeFile(path + ".bak") == damaged);
    EXPECT_FALSE(ReadWholeFile(path) == damaged);
    // Later saves leave it alone: there is one.
    Make("More");
    ASSERT_TRUE(session.Save(path));
    EXPECT_TRUE(ReadWholeFile(path + ".bak") == damaged);
}

TEST_F(LevelSessionFilesTest, AnOriginalThatCantBeKeptIsNotOverwritten) {
    MakeLevel();
    std::string objects;
    engine::AppendChunk(objects, engine::LevelChunk::Object, "no object");
    std::string inner = ReadWholeFile(path).substr(6);
    engine::AppendChunk(inner, engine::LevelChunk::Objects, objects);
    std::string damaged;
    engine::AppendChunk(damaged, engine::LevelChunk::Level, inner);
    WriteWholeFile(path, damaged);
    ASSERT_TRUE(session.Open(path));
    stdfs::create_directory(path + ".bak");
    EXPECT_FALSE(session.Save(path));
    EXPECT_THAT(windows.errors.back(), HasSubstr(".bak"));
    EXPECT_TRUE(ReadWholeFile(path) == damaged);
    // A copy elsewhere leaves the original where it is.
    EXPECT_TRUE(session.Save(folder.File("other/b.level")));
    EXPECT_TRUE(ReadWholeFile(path) == damaged);
}

TEST_F(LevelSessionFilesTest, ALevelOpenedWholeGetsNoCopyBeside) {
    MakeLevel();
    ASSERT_TRUE(session.Open(path));
    Make("More");
    ASSERT_TRUE(session.Save(path));
    EXPECT_FALSE(stdfs::exists(path + ".bak"));
}

TEST_F(LevelSessionFilesTest, AWriteProtectedLevelIsToldAndStays) {
    MakeLevel();
    const std::string bytes = ReadWholeFile(path);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    Make("More");
    EXPECT_FALSE(session.Save(path));
    ASSERT_EQ(windows.errors.size(), 1u);
    EXPECT_THAT(windows.errors[0], HasSubstr("write-protected"));
    EXPECT_TRUE(ReadWholeFile(path) == bytes);
}

TEST_F(LevelSessionFilesTest, ALevelThatCantBeOpenedComesWithWhatToDo) {
    MakeLevel();
    EXPECT_FALSE(session.Open(folder.File("level/gone.level")));
    EXPECT_THAT(windows.errors.back(), HasSubstr("File > Open"));
    const std::string broken = folder.File("level/broken.level");
    std::ofstream(broken) << "no level";
    EXPECT_FALSE(session.Open(broken));
    EXPECT_THAT(windows.errors.back(), HasSubstr("File > Recover work"));
    std::ofstream(broken + ".bak") << "older";
    EXPECT_FALSE(session.Open(broken));
    EXPECT_THAT(windows.errors.back(), HasSubstr("\"broken.level.bak\""));
    EXPECT_THAT(Names(), AreAsMade()); // the open level stays
}

TEST_F(LevelSessionFilesTest, ALevelThatCantBeSavedComesWithWhatToDo) {
    EXPECT_FALSE(session.Save(folder.File("nowhere/a.level")));
    EXPECT_THAT(windows.errors.back(), HasSubstr("File > Save as"));
}

} // namespace

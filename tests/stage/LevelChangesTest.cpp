#include "host/engine/FilmManager.h"
#include "host/engine/LevelRoot.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/host/ObjectCommands.h"
#include "plugin/contract/Chunks.h"
#include "plugin/contract/FilmManager.h"
#include "tests/stage/HostFixture.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <fstream>

using ::testing::_;

/// A saved level with a film that has a camera with a key and a sub-track that loops.
class LevelChangesTest : public HostFixture {
protected:
    LevelChangesTest() {
        crate = Make("Crate");
        films = host.level.Data()->filmManager;
        film = films->GetFilm(films->AllocateFilm());
        film->AddTrack(film->CreateLevelTrack());
        camera = AsCameraTrack(film->CreateCameraTrack());
        film->AddTrack(camera);
        key = static_cast<CFilmScalarKey*>(films->keyFactory->CreateKey(KeyKind::FieldOfView));
        EXPECT_TRUE(camera->AddKey(key));
        EXPECT_CALL(first, SaveChunks(_, _)).WillRepeatedly([this](fs::file& file, IHostObject* object) {
            if (object->IsA(ClassId::LevelRoot)) {
                WriteRoot(file, static_cast<EditorObject&>(*object));
            }
            return false;
        });
        EXPECT_TRUE(session.Save(path));
    }
    /// As the film plug-in does it: a report beside the level, and every film counts as looked over.
    void WriteRoot(fs::file& file, const EditorObject& root) {
        std::ofstream(root.name + "Report.txt") << "all is well";
        for (IFilm* each : films->films) {
            if (each != nullptr) {
                each->validated = 1;
            }
        }
        ChunkSaveStart(file, 5785);
        file.Write(settings.data(), static_cast<int>(settings.size()));
        ChunkSaveEnd(file, 5785);
    }

    TempFolder folder;
    const std::string path = folder.File("a.level");
    std::string settings = "rows folded";
    stage::LevelSession session{host};
    stage::ObjectCommands commands{host, session};
    engine::SceneObject* crate = nullptr;
    IFilmManager* films = nullptr;
    IFilm* film = nullptr;
    CFilmCameraTrack* camera = nullptr;
    CFilmScalarKey* key = nullptr;
};

TEST_F(LevelChangesTest, ALoopModeIsAChangeAndSoIsItsLength) {
    EXPECT_FALSE(session.IsChanged());
    camera->loopMode[0] = LoopMode::PingPong;
    EXPECT_TRUE(session.IsChanged());
    camera->loopMode[0] = LoopMode::None;
    EXPECT_FALSE(session.IsChanged());
    camera->subTrackLength[3] = 2.5f;
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(LevelChangesTest, AKeysValueIsAChangeAndSoIsItsTime) {
    float value = 75.0f;
    const float before = key->value;
    key->SetValue(&value);
    EXPECT_TRUE(session.IsChanged());
    value = before;
    key->SetValue(&value);
    EXPECT_FALSE(session.IsChanged());
    key->SetTime(1.5f);
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(LevelChangesTest, WhatAPluginKeepsItselfIsAChange) {
    settings = "rows open";
    EXPECT_TRUE(session.IsChanged());
    settings = "rows folded";
    EXPECT_FALSE(session.IsChanged());
}

TEST_F(LevelChangesTest, AnObjectThatAPluginTakesOverIsAChange) {
    EXPECT_CALL(first, OnEvent(EventCode::CollectHiddenObjects, _)).WillRepeatedly([&](int, void* data) {
        static_cast<HiddenObjectsRequest*>(data)->collection->Add(crate);
        crate->savedAsObject = 0;
    });
    EXPECT_TRUE(session.IsChanged());
    EXPECT_EQ(crate->savedAsObject, 1) << "asking changes nothing";
}

TEST_F(LevelChangesTest, AnEditThatWasTakenBackIsNone) {
    engine::SceneObject* made = commands.Create({ClassName::Mesh, "Barrel", "", {}, nullptr, true});
    EXPECT_TRUE(session.IsMarkedChanged()) << "at once";
    host.DestroyObjects({made});
    EXPECT_FALSE(session.IsChanged());
    EXPECT_FALSE(session.IsMarkedChanged());
}

TEST_F(LevelChangesTest, AskingSendsNoEventThatLeavesTheFilmAndMakesNoFile) {
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, _)).Times(0);
    EXPECT_CALL(first, OnEvent(EventCode::Resume, _)).Times(0);
    std::filesystem::remove(folder.File("Report.txt"));
    film->validated = 0;
    EXPECT_FALSE(session.IsChanged());
    EXPECT_FALSE(std::filesystem::exists(folder.File("Report.txt")));
    EXPECT_EQ(film->validated, 0);
    EXPECT_EQ(host.level.Data()->Root().name, folder.Path());
}

TEST_F(LevelChangesTest, TheTitleHearsOfAChangeOnceItIsFoundAndOnceItIsGone) {
    const int before = windows.levelChanges;
    film->length = 11.0f;
    EXPECT_FALSE(session.IsMarkedChanged());
    session.IsChanged();
    session.IsChanged();
    EXPECT_TRUE(session.IsMarkedChanged());
    EXPECT_EQ(windows.levelChanges, before + 1);
    film->length = 10.0f;
    session.IsChanged();
    EXPECT_EQ(windows.levelChanges, before + 2);
}

TEST_F(LevelChangesTest, DefaultsThatAPluginWritesDownForWhatItShowsAreNoChange) {
    int due = 0;
    session.Changes().lookBegan = [&due] { ++due; };
    for (CFilmTrack* track : film->tracks) {
        track->Finish(); // rows are made of it
        settings = "rows folded and a default";
    }
    EXPECT_EQ(due, 1);
    session.Changes().EndLook();
    EXPECT_FALSE(session.IsChanged());
    settings = "rows open";
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(LevelChangesTest, AnEditBeforeTheRowsAreMadeAnewStaysAChange) {
    film->length = 11.0f;
    film->tracks.front()->Finish();
    settings = "rows folded and a default";
    session.Changes().EndLook();
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(LevelChangesTest, PosingAFilmIsNoChangeAndASaveInTheMiddleOfItLeavesNone) {
    CFilmTrack* actor = film->CreateObjectTrack();
    AsObjectTrack(actor)->SetActor(crate, false);
    film->AddTrack(actor);
    const float place[3] = {3.0f, 0.0f, 0.0f};
    auto* position = static_cast<CFilmVectorKey*>(films->keyFactory->CreateKey(KeyKind::Position));
    position->SetValue(place);
    ASSERT_TRUE(actor->AddKey(position));
    ASSERT_TRUE(session.Save(path));
    films->currentFilm = film;
    film->Activate();
    film->SetTime(1.0f, -1.0f);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 3.0f);
    EXPECT_FALSE(session.IsChanged());
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[0], 3.0f);
    film->Deactivate();
    films->currentFilm = nullptr;
}

TEST_F(LevelChangesTest, AViewThatFollowsAFilmIsWrittenAsTheUserLeftIt) {
    const std::string before = stage::DryWrite(host);
    ASSERT_TRUE(host.AttachViewToPlugin(0, first.id));
    engine::View& view = host.views.At(0)->Engine();
    const float elsewhere[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1};
    view.SetCamera(elsewhere);
    view.SetProjection(0.5f, 1.0f, 50.0f, 0);
    EXPECT_TRUE(stage::DryWrite(host) == before);
    EXPECT_EQ(view.CameraMatrix()[12], 7.0f);
    EXPECT_EQ(view.GetFieldOfView(), 0.5f);
    EXPECT_EQ(view.camera->data.recordFar, 50.0f);
    EXPECT_EQ(host.views.At(0)->attachedTo, first.id.PluginNumber());
    ASSERT_TRUE(session.Save(path));
    const std::string saved = ReadWholeFile(path);
    host.DetachViewFromPlugin(0, first.id);
    ASSERT_TRUE(session.Save(path));
    EXPECT_TRUE(ReadWholeFile(path) == saved);
}

TEST_F(LevelChangesTest, ALevelThatCantBeWrittenCountsAsChanged) {
    EXPECT_CALL(first, SaveChunks(_, _))
        .WillRepeatedly(::testing::Throw(fs::file_exception(fs::file_exception::kWrite)));
    EXPECT_TRUE(session.IsChanged());
}

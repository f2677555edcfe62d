#include "host/stage/host/LevelSession.h"
#include "host/engine/FileHandles.h"
#include "host/stage/host/ObjectCommands.h"
#include "plugin/contract/Chunks.h"
#include "tests/stage/HostFixture.h"

#include <filesystem>
#include <fstream>

using ::testing::_;
using ::testing::InSequence;

class LevelSessionTest : public HostFixture {
protected:
    LevelSessionTest() {
        folder =
            std::filesystem::temp_directory_path() /
            ("stage_session_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder / "other");
    }
    ~LevelSessionTest() override {
        engine::LowLevel() = files;
        std::filesystem::remove_all(folder);
    }

    std::string PathOf(const char* name) const { return (folder / name).string(); }
    IFilm* AddFilm() {
        IFilmManager* films = host.level.Data()->filmManager;
        IFilm* film = films->GetFilm(films->AllocateFilm());
        film->AddTrack(film->CreateLevelTrack());
        return film;
    }
    std::string Bytes(const std::string& path) const {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path folder;
    const engine::LowLevelFiles files = engine::LowLevel();
    stage::LevelSession session{host};
    stage::ObjectCommands commands{host, session};
};

TEST_F(LevelSessionTest, ANewLevelLeavesTheOldOneAndEndsWithEventSix) {
    EditorObject* crate = Make("Crate");
    InSequence order;
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, nullptr));
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsDeleting, nullptr)).WillOnce([&](int, void*) {
        EXPECT_EQ(host.level.selection, (ObjectList{crate}));
    });
    EXPECT_CALL(first, OnEvent(EventCode::ReleaseRenderResources, nullptr));
    EXPECT_CALL(first, OnNew());
    EXPECT_CALL(first, OnObjectDestroyed(crate));
    EXPECT_CALL(first, OnEvent(EventCode::LevelLoaded, nullptr)).WillOnce([&](int, void*) {
        EXPECT_NE(host.level.GetLevelData(), nullptr);
        EXPECT_EQ(Count(), 0u);
    });
    session.New();
    EXPECT_FALSE(session.IsChanged());
    EXPECT_EQ(session.Title(), "Untitled");
}

TEST_F(LevelSessionTest, SavingSuspendsCollectsWritesAndResumes) {
    Make("Crate");
    InSequence order;
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, nullptr));
    EXPECT_CALL(first, OnEvent(EventCode::CollectHiddenObjects, _)).WillOnce([](int, void* data) {
        EXPECT_NE(static_cast<HiddenObjectsRequest*>(data)->collection, nullptr);
    });
    EXPECT_CALL(first, SaveChunks(_, _)).Times(::testing::AtLeast(3)); // root, object, film manager
    EXPECT_CALL(first, OnEvent(EventCode::Resume, nullptr)).WillOnce([&](int, void*) {
        EXPECT_TRUE(std::filesystem::exists(PathOf("a.level")));
        EXPECT_FALSE(session.IsMarkedChanged());
    });
    EXPECT_TRUE(session.Save(PathOf("a.level")));
    EXPECT_EQ(session.Title(), "a");
    EXPECT_TRUE(windows.errors.empty());
}

TEST_F(LevelSessionTest, TheRootIsNamedByTheLevelsFolderWithASeparator) {
    EXPECT_CALL(first, SaveChunks(_, _)).Times(::testing::AnyNumber());
    std::string name;
    EXPECT_CALL(first, SaveChunks(_, ::testing::Truly([](IHostObject* object) {
                                      return object->IsA(ClassId::LevelRoot);
                                  })))
        .WillOnce([&](fs::file&, IHostObject* object) {
            name = static_cast<EditorObject*>(object)->name;
            return false;
        })
        .WillRepeatedly(::testing::Return(false)); // what is saved now is noted
    session.Save(PathOf("a.level"));
    EXPECT_EQ(name, folder.string() + "/");
}

TEST_F(LevelSessionTest, AnObjectThatAPluginCollectsStaysOutOfTheObjectList) {
    EditorObject* lamp = Make("Lamp", ClassName::GLLight);
    Make("Crate");
    EXPECT_CALL(first, OnEvent(EventCode::CollectHiddenObjects, _))
        .WillOnce([&](int, void* data) {
            static_cast<HiddenObjectsRequest*>(data)->collection->Add(lamp);
            lamp->savedAsObject = 0;
        })
        .WillRepeatedly(::testing::Return());
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    ASSERT_TRUE(session.Open(PathOf("a.level")));
    EXPECT_EQ(Count(), 1u);
    EXPECT_NE(host.level.FindObject("Crate"), nullptr);
}

TEST_F(LevelSessionTest, HelpersForTheSessionStayOutOfTheFile) {
    HelperObjectParams params;
    params.className = ClassName::CameraPosition;
    EditorObject* helper = nullptr;
    host.CreateHelperObject("Control", first.id, 2, params, &helper);
    Make("Crate");
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    ASSERT_TRUE(session.Open(PathOf("a.level")));
    EXPECT_EQ(Count(), 1u);
}

TEST_F(LevelSessionTest, OpeningCallsOnNewThenChunksThenEventSix) {
    constexpr std::uint16_t kChunk = 5785;
    Make("Crate");
    EXPECT_CALL(first, SaveChunks(_, _)).WillRepeatedly([](fs::file& file, IHostObject* object) {
        if (object->IsA(ClassId::LevelRoot)) {
            ChunkSaveStart(file, kChunk);
            file.Write("abcd", 4);
            ChunkSaveEnd(file, kChunk);
        }
        return false;
    });
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    ON_CALL(first, IsOwnChunk(_, kChunk)).WillByDefault(::testing::Return(true));
    InSequence order;
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, nullptr));
    EXPECT_CALL(first, OnNew());
    EXPECT_CALL(first, OnObjectDestroyed(_));
    EXPECT_CALL(first, LoadChunk(_, _, kChunk, 4u))
        .WillOnce([](IHostObject* object, fs::file& file, auto, auto) {
            EXPECT_TRUE(object->IsA(ClassId::LevelRoot));
            char bytes[4] = {};
            EXPECT_EQ(file.Read(bytes, 2), 2); // reads less than there is
            return true;
        });
    EXPECT_CALL(first, OnEvent(EventCode::LevelLoaded, nullptr)).WillOnce([&](int, void*) {
        EXPECT_NE(host.level.FindObject("Crate"), nullptr);
    });
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsCreated, _)).Times(0);
    EXPECT_TRUE(session.Open(PathOf("a.level")));
    EXPECT_FALSE(session.IsChanged());
    EXPECT_EQ(session.Path(), PathOf("a.level"));
}

TEST_F(LevelSessionTest, AFileErrorOfAPluginLosesOnlyItsChunk) {
    constexpr std::uint16_t kChunk = 5782;
    Make("Crate");
    EXPECT_CALL(first, SaveChunks(_, _)).WillRepeatedly([](fs::file& file, IHostObject* object) {
        if (object->IsA(ClassId::LevelRoot)) {
            ChunkSaveStart(file, kChunk);
            file.Write("abcd", 4);
            ChunkSaveEnd(file, kChunk);
        }
        return false;
    });
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    ON_CALL(first, IsOwnChunk(_, kChunk)).WillByDefault(::testing::Return(true));
    EXPECT_CALL(first, LoadChunk(_, _, _, _))
        .WillOnce(::testing::Throw(fs::file_exception(fs::file_exception::kRead)));
    EXPECT_TRUE(session.Open(PathOf("a.level")));
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(windows.errors.size(), 1u);
}

TEST_F(LevelSessionTest, AFileThatCantBeReadLeavesTheOpenLevelAlone) {
    Make("Crate");
    std::ofstream(PathOf("bad.level")) << "no level at all";
    EXPECT_CALL(first, OnNew()).Times(0);
    EXPECT_FALSE(session.Open(PathOf("bad.level")));
    EXPECT_FALSE(session.Open(PathOf("missing.level")));
    EXPECT_EQ(Count(), 1u);
    ASSERT_EQ(windows.errors.size(), 2u);
    EXPECT_NE(windows.errors[0].find("bad.level"), std::string::npos);
    EXPECT_NE(windows.errors[1].find("missing.level"), std::string::npos);
}

TEST_F(LevelSessionTest, AFailedSaveKeepsTheOldFileAndStillResumes) {
    Make("Crate");
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    const std::string before = Bytes(PathOf("a.level"));
    Make("Barrel");
    session.MarkChanged();
    engine::LowLevel().write = [](int, const void*, std::size_t) -> ssize_t { return -1; };
    EXPECT_CALL(first, OnEvent(EventCode::Resume, nullptr)).Times(1);
    EXPECT_FALSE(session.Save(PathOf("a.level")));
    engine::LowLevel() = files;
    EXPECT_EQ(Bytes(PathOf("a.level")), before);
    EXPECT_TRUE(session.IsChanged());
    ASSERT_EQ(windows.errors.size(), 1u);
    EXPECT_NE(windows.errors[0].find("a.level"), std::string::npos);
}

TEST_F(LevelSessionTest, FilmEditsOfAPluginCountAsChanges) {
    IFilm* film = AddFilm();
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    EXPECT_FALSE(session.IsChanged());
    film->length = 11.0f;
    EXPECT_TRUE(session.IsChanged());
    film->length = 10.0f;
    EXPECT_FALSE(session.IsChanged());
    CFilmTrack* camera = film->CreateCameraTrack();
    film->AddTrack(camera);
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    IFilmKey* key = host.level.Data()->filmManager->keyFactory->CreateKey(KeyKind::FieldOfView);
    ASSERT_TRUE(camera->AddKey(key));
    EXPECT_TRUE(session.IsChanged());
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    key->SetTime(2.0f);
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(LevelSessionTest, ACopyInAnotherFolderFindsTheSameMeshes) {
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    engine::ObjectSpec spec;
    spec.className = ClassName::Mesh;
    spec.meshName = "meshes/crate.glb";
    engine::SceneObject* crate = commands.Create(spec);
    ASSERT_TRUE(session.Save(PathOf("other/b.level")));
    EXPECT_EQ(crate->meshName, "../meshes/crate.glb");
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    EXPECT_EQ(crate->meshName, "meshes/crate.glb");
}

TEST_F(LevelSessionTest, ACopyThatCantBeWrittenLeavesTheMeshNamesAsTheyWere) {
    ASSERT_TRUE(session.Save(PathOf("a.level")));
    engine::ObjectSpec spec;
    spec.className = ClassName::Mesh;
    spec.meshName = "meshes/crate.glb";
    const engine::SceneObject* crate = commands.Create(spec);
    EXPECT_FALSE(session.Save(PathOf("no/such/folder/b.level")));
    EXPECT_EQ(crate->meshName, "meshes/crate.glb");
    EXPECT_EQ(host.level.Folder(), folder.string() + "/");
    EXPECT_EQ(session.Path(), PathOf("a.level"));
    EXPECT_TRUE(session.IsChanged());
}

TEST_F(LevelSessionTest, ClosingLeavesNoLevelAndNothingToSave) {
    commands.Create({ClassName::Mesh, "Crate", "", {}, nullptr, true});
    session.Close();
    EXPECT_EQ(host.GetLevel()->GetLevelData(), nullptr);
    EXPECT_FALSE(session.IsChanged());
    EXPECT_FALSE(session.Save(PathOf("a.level")));
}

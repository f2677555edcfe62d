#include "tests/engine/LevelFileFixture.h"

#include "host/engine/CameraTrack.h"
#include "host/engine/ChunkClient.h"
#include "host/engine/EngineLog.h"
#include "host/engine/LevelRoot.h"
#include "host/engine/MemoryFile.h"
#include "plugin/contract/Chunks.h"
#include "plugin/contract/EventCodes.h"
#include "tests/support/PlainPlugin.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <optional>

namespace engine_test {

using engine::LevelFileError;
using engine::LevelMessages;
using engine::SceneObject;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class LevelFileTest : public LevelFileBase {};

TEST_F(LevelFileTest, ObjectsComeBackWithEverythingTheyHold) {
    SceneObject& cart = MakeObject("Cart", {1.0f, 2.0f, 3.0f}, nullptr, "MeshObject", "cart.glb");
    SceneObject& crate = MakeObject("Crate", {4.0f, 5.0f, 6.0f}, &cart);
    cart.SetFlags(0x12u);
    crate.visible = 0;
    crate.objectKind = ObjectKind::MatrixOnly;
    SceneObject& lamp = MakeObject("Lamp", {}, nullptr, ClassName::DynLight);
    lamp.light = engine::LightProperties{{0.1f, 0.2f, 0.3f}, 7.0f, 2.0f, false};
    const int cartId = cart.id;
    const int crateId = crate.id;
    const int lampId = lamp.id;

    Reload();
    const SceneObject& cartBack = *level.FindObject(cartId);
    const SceneObject& crateBack = *level.FindObject(crateId);
    EXPECT_EQ(cartBack.name, "Cart");
    EXPECT_EQ(cartBack.meshName, "cart.glb");
    EXPECT_EQ(cartBack.Info().className, "MeshObject");
    EXPECT_EQ(cartBack.GetFlags(), 0x12u);
    EXPECT_EQ(cartBack.World().Translation(), (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(crateBack.parent, &cartBack);
    EXPECT_EQ(cartBack.firstChild, &crateBack);
    EXPECT_EQ(crateBack.World().Translation(), (Vector3{4.0f, 5.0f, 6.0f}));
    EXPECT_EQ(crateBack.visible, 0);
    EXPECT_FALSE(crateBack.IsA(ClassId::EditorObject));
    EXPECT_EQ(*level.FindObject(lampId)->light,
              (engine::LightProperties{{0.1f, 0.2f, 0.3f}, 7.0f, 2.0f, false}));
    EXPECT_EQ(level.Data()->Objects().size(), 3u);
}

TEST_F(LevelFileTest, SiblingsKeepTheirOrderAndLoadedParentsMoveThem) {
    SceneObject& cart = MakeObject("Cart");
    MakeObject("First", {1.0f, 0.0f, 0.0f}, &cart);
    MakeObject("Second", {2.0f, 0.0f, 0.0f}, &cart);
    Reload();
    SceneObject& back = *level.FindObject("Cart");
    EXPECT_EQ(back.firstChild->name, "First");
    EXPECT_EQ(back.firstChild->nextSibling->name, "Second");
    const float moved[3] = {0.0f, 9.0f, 0.0f};
    back.SetPosition(moved, 0);
    ExpectVector(level.FindObject("Second")->World().Translation(), {2.0f, 9.0f, 0.0f});
}

TEST_F(LevelFileTest, GroupsSunAndViewsComeBack) {
    SceneObject& a = MakeObject("A");
    SceneObject& b = MakeObject("B");
    level.Data()->MakeGroup("Pair", {&a, &b});
    level.Data()->Sun()->direction = {1.0f, 2.0f, 3.0f};
    level.Data()->Sun()->light.color = {0.5f, 0.25f, 0.125f};
    level.Views().SetCount(1);
    const engine::Matrix4 camera = engine::CameraMatrix({1.0f, 2.0f, 3.0f}, {}, 0.0f);
    level.Views().At(0)->SetCamera(camera.m);
    level.Views().At(0)->SetProjection(0.75f, 0.5f, 321.0f, 0);
    const std::string bytes = Saved();
    level.New("");
    level.Views().At(0)->SetCamera(engine::Matrix4{}.m);
    Load(bytes);
    ASSERT_EQ(level.Data()->Groups().size(), 1u);
    const engine::Group& group = *level.Data()->Groups()[0];
    EXPECT_EQ(group.name, "Pair");
    EXPECT_THAT(group.members, ElementsAre(level.FindObject("A"), level.FindObject("B")));
    EXPECT_EQ(level.Data()->Sun()->direction, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(level.Data()->Sun()->light.color, (Vector3{0.5f, 0.25f, 0.125f}));
    EXPECT_EQ(engine::MatrixFrom(level.Views().At(0)->CameraMatrix()), camera);
    EXPECT_EQ(level.Views().At(0)->GetFieldOfView(), 0.75f);
    EXPECT_EQ(level.Views().At(0)->camera->data.recordFar, 321.0f);
}

TEST_F(LevelFileTest, LevelWithoutASunStaysSo) {
    level.Data()->SetSun(false);
    Reload();
    EXPECT_EQ(level.GetLevelData()->sunObject, nullptr);
}

TEST_F(LevelFileTest, FilmsComeBackWithTracksKeysAndLinks) {
    MakeSample();
    Reload();
    const engine::Film& back = *Films().FilmAt(0);
    EXPECT_STREQ(back.name, "Test");
    EXPECT_EQ(back.length, 24.5f);
    EXPECT_EQ(back.validated, 1);
    EXPECT_EQ(back.index, 0);
    ASSERT_EQ(back.tracks.size(), 5u);
    EXPECT_EQ(back.mainTrack, back.tracks.front());

    const auto& track =
        static_cast<const engine::ObjectTrack&>(*AsObjectTrack(*std::next(back.tracks.begin())));
    EXPECT_EQ(track.actor, level.FindObject("Robot"));
    EXPECT_TRUE(track.actorIsVirtual);
    EXPECT_EQ(track.parentObject, level.FindObject("Cart"));
    EXPECT_EQ(track.parentElement, "wheel");
    EXPECT_EQ(back.FindObjectTrack(track.actor), &track);

    const auto& camera = *AsCameraTrack(back.FindCamera("Main"));
    EXPECT_EQ(camera.loopMode[2], LoopMode::PingPong);
    EXPECT_EQ(camera.subTrackLength[3], 3.25f);
    EXPECT_EQ(camera.fieldOfView, 42.0f);
    EXPECT_EQ(camera.nearPlane, 0.5f);
    EXPECT_EQ(camera.farPlane, 77.0f);
    EXPECT_EQ(camera.GetEyeKeyAt(0.0f)->linkObject, level.FindObject("Cart"));
    EXPECT_EQ(camera.GetEyeKeyAt(0.0f)->linkElement, "seat");

    const auto& sun = *AsGLLightTrack(*std::next(back.tracks.begin(), 3));
    EXPECT_EQ(sun.isSun, 1);
    EXPECT_EQ(sun.isFixedLight, 1);
}

TEST_F(LevelFileTest, KeysOfEveryKindComeBackEqual) {
    MakeSample();
    // Keys of the saved level, kept beside it by copying.
    std::vector<std::pair<int, IFilmKey*>> copies;
    engine::Level other;
    other.New("");
    IKeyFactory& factory = *other.Data()->Films().keyFactory;
    int number = 0;
    for (const CFilmTrack* track : film->tracks) {
        for (const IFilmKey* key : track->keys) {
            IFilmKey* copy = factory.CreateKey(key->kind);
            copy->CopyFrom(*key, 0);
            copy->time = key->time;
            copy->endTime = key->endTime;
            copies.emplace_back(number, copy);
        }
        ++number;
    }
    EXPECT_EQ(copies.size(), 20u);
    Reload();
    number = 0;
    std::size_t found = 0;
    for (const CFilmTrack* track : Films().FilmAt(0)->tracks) {
        for (const IFilmKey* key : track->keys) {
            const auto same = std::find_if(copies.begin(), copies.end(), [&](const auto& copy) {
                return copy.first == number && copy.second->Equals(*key, true) &&
                       copy.second->endTime == key->endTime;
            });
            EXPECT_NE(same, copies.end()) << "kind " << key->kind;
            EXPECT_EQ(key->track, track);
            ++found;
        }
        ++number;
    }
    EXPECT_EQ(found, copies.size());
    for (const auto& copy : copies) {
        factory.DestroyKey(copy.second);
    }
}

TEST_F(LevelFileTest, EffectWhoseNormalIsNoNumberComesBackAndPlays) {
    MakeSample();
    const auto effectOf = [](IFilm& of) {
        const KeyList& keys = of.mainTrack->keys;
        const auto found = std::ranges::find(keys, KeyKind::FxParticle, &IFilmKey::kind);
        return found != keys.end() ? static_cast<CFilmFxKey*>(*found) : nullptr;
    };
    ASSERT_NE(effectOf(*film), nullptr);
    // What scaling (0, 0, 0) to a length of one gives.
    effectOf(*film)->normal = {std::numeric_limits<float>::quiet_NaN(),
                               std::numeric_limits<float>::quiet_NaN(),
                               std::numeric_limits<float>::infinity()};
    Reload();
    IFilm& back = *Films().FilmAt(0);
    ASSERT_NE(effectOf(back), nullptr);
    EXPECT_TRUE(std::isnan(effectOf(back)->normal.x));
    EXPECT_EQ(effectOf(back)->normal.z, std::numeric_limits<float>::infinity());
    for (int half = 0; half < 20; ++half) {
        const float time = 0.5f * static_cast<float>(half);
        back.SetTime(time, time - 0.5f);
    }
    EXPECT_FALSE(Saved().empty());
}

TEST_F(LevelFileTest, SavingWhatWasLoadedGivesTheSameBytes) {
    MakeSample();
    const std::string first = Saved();
    Load(first);
    EXPECT_EQ(Saved(), first);
}

TEST_F(LevelFileTest, KeysOutOfOrderAreSavedInTheOrderOfTime) {
    CFilmObjectTrack& track = AddActor(MakeObject("Box"));
    for (const float time : {3.0f, 1.0f, 2.0f}) {
        AddVector(track, KeyKind::Position, time, {time, 0.0f, 0.0f});
    }
    Reload();
    CFilmTrack& back = *Films().FilmAt(0)->tracks.back();
    std::vector<float> times;
    for (const IFilmKey* key : back.keys) {
        times.push_back(key->time);
    }
    EXPECT_THAT(times, ElementsAre(1.0f, 2.0f, 3.0f));
    EXPECT_FLOAT_EQ(back.GetPositionAt(2.0f).x, 2.0f);
}

TEST_F(LevelFileTest, FilmsKeepTheirSlots) {
    for (int i = 0; i < 5; ++i) {
        MakeFilm("Film");
    }
    Films().DeleteFilm(2);
    Reload();
    EXPECT_EQ(Films().GetFilm(2), nullptr);
    EXPECT_EQ(Films().GetFilm(5)->index, 5);
    EXPECT_EQ(Films().GetFilm(6), nullptr);
}

TEST_F(LevelFileTest, HiddenTransientAndVirtualObjectsStayOutOfTheObjectList) {
    client.hidden = &MakeObject("Hidden");
    MakeObject("Body").transient = true;
    MakeObject("Virtual").savedAsObject = 0;
    MakeObject("Normal");
    Reload();
    ASSERT_EQ(level.Data()->Objects().size(), 1u);
    EXPECT_EQ(level.Data()->Objects()[0]->name, "Normal");
}

TEST_F(LevelFileTest, PluginIsAskedInOrderHiddenRootObjectsFilms) {
    MakeObject("A");
    MakeObject("B");
    Saved();
    EXPECT_THAT(client.calls, ElementsAre("collect", "save root", "save A", "save B", "save films"));
}

TEST_F(LevelFileTest, PluginReadsItsChunksRootFirstThenObjectsThenFilms) {
    client.rootText = "root state";
    client.objectText = "of an object";
    client.filmsText = "for the game";
    MakeObject("A");
    const std::string bytes = Saved();
    client.calls.clear();
    Load(bytes);
    EXPECT_THAT(client.calls, ElementsAre("load root 5780 root state", "load A 5784 of an object",
                                          "load films 5754 for the game"));
    EXPECT_EQ(Saved(), bytes);
}

TEST_F(LevelFileTest, ObjectsThatThePluginKeepsAreReadByTheRootAndLinkedToFilms) {
    SceneObject& ghost = MakeObject("Ghost", {3.0f, 0.0f, 0.0f}, nullptr, ClassName::VirtualObject);
    ghost.savedAsObject = 0;
    client.kept.push_back(&ghost);
    const int id = ghost.id;
    AddActor(ghost);
    MakeObject("Child", {}, &ghost);
    const std::string bytes = Saved();
    Load(bytes);
    SceneObject* back = level.FindObject(id);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->savedAsObject, 0);
    EXPECT_EQ(client.kept, std::vector<EditorObject*>{back});
    EXPECT_NE(Films().FilmAt(0)->FindObjectTrack(back), nullptr);
    EXPECT_EQ(level.FindObject("Child")->parent, back);
    EXPECT_EQ(Saved(), bytes);
}

TEST_F(LevelFileTest, LevelOpenedWithoutThePluginIsSavedAsItWas) {
    client.rootText = "root state";
    client.objectText = "of an object";
    client.filmsText = "for the game";
    SceneObject& ghost = MakeObject("Ghost", {}, nullptr, ClassName::VirtualObject);
    ghost.savedAsObject = 0;
    client.kept.push_back(&ghost);
    CFilmObjectTrack& track = AddActor(ghost);
    SceneObject& box = MakeObject("Box");
    track.SetParent(&ghost, true, "");
    level.SetParent(&box, &ghost);
    level.Data()->MakeGroup("Pair", {&box, &ghost});
    auto& eye = Add<CFilmLinkedKey>(AddCamera("A"), KeyKind::CameraPosition, 0.0f);
    eye.SetLinkObject(&ghost);
    const std::string bytes = Saved();

    level.SetChunkClient(nullptr);
    const LevelMessages messages = Load(bytes);
    EXPECT_EQ(messages.size(), 5u); // actor, attachment, camera key, parent, group
    EXPECT_EQ(Saved(), bytes);
    level.SetChunkClient(&client);
    EXPECT_TRUE(Load(bytes).empty());
    EXPECT_EQ(Saved(), bytes);
}

TEST_F(LevelFileTest, UnknownChunksAreWrittenBackWhereTheyStood) {
    MakeObject("A");
    client.objectText = "x";
    const std::string bytes = Saved();
    // A chunk 7777 in front of everything in the level, and one at the end of the first object.
    std::string inner = bytes.substr(6);
    std::string front;
    engine::AppendChunk(front, 7777, "future");
    inner.insert(0, front);
    std::string with;
    engine::AppendChunk(with, engine::LevelChunk::Level, inner);
    Load(with);
    EXPECT_EQ(Saved(), with);
}

TEST_F(LevelFileTest, UnknownChunkInsideAnObjectStaysBetweenItsNeighbours) {
    SceneObject& a = MakeObject("A");
    client.objectText = "x";
    a.foreignChunks.push_back({7777, 1, "between the description and the plug-in"});
    a.foreignChunks.push_back({7778, 2, "behind the plug-in"});
    level.Data()->foreignRootChunks.push_back({7779, 0, "in front of the plug-in"});
    Films().foreignChunks.push_back({7780, 1, "behind the film"});
    client.rootText = "root";
    client.filmsText = "films";
    const std::string bytes = Saved();
    EXPECT_LT(bytes.find("between the description"), bytes.find("behind the plug-in"));
    Load(bytes);
    EXPECT_EQ(Saved(), bytes);
}

TEST_F(LevelFileTest, LoadObjectConsumesItsSizeAndNothingElse) {
    SceneObject& box = MakeObject("Box", {1.0f, 2.0f, 3.0f});
    client.objectText = "re-entered";
    engine::MemoryFile out;
    box.Save(out.file);
    const std::string data = out.Take();
    const std::string bytes = data + "what follows";
    engine::MemoryFile in{std::string_view(bytes)};
    client.calls.clear();
    EditorObject* object = level.Data()->Root().LoadObject(in.file, static_cast<std::uint32_t>(data.size()),
                                                           ClassId::EditorObject, &level.Data()->Root());
    ASSERT_NE(object, nullptr);
    EXPECT_NE(object->id, box.id); // its own id was taken
    EXPECT_EQ(object->GetPosition(0)[2], 3.0f);
    EXPECT_THAT(client.calls, ElementsAre("load Box 5784 re-entered"));
    char rest[16] = {};
    EXPECT_EQ(in.file.Read(rest, 16), 12);
    EXPECT_STREQ(rest, "what follows");
}

TEST_F(LevelFileTest, LoadObjectOfDamagedDataGivesNullAndStaysInStep) {
    const std::string bytes = "no object at all, and the rest";
    engine::MemoryFile in{std::string_view(bytes)};
    EXPECT_EQ(level.Data()->Root().LoadObject(in.file, 16, ClassId::EditorObject, nullptr), nullptr);
    char rest[32] = {};
    in.file.Read(rest, 32);
    EXPECT_STREQ(rest, ", and the rest");
    engine::MemoryFile shorter{std::string_view(bytes)};
    EXPECT_EQ(level.Data()->Root().LoadObject(shorter.file, 0xFFFFFFFFu, ClassId::EditorObject, nullptr),
              nullptr);
    EXPECT_TRUE(level.Data()->Objects().empty());
}

TEST_F(LevelFileTest, DamagedObjectIsToldInTheEnginesLog) {
    static std::string heard;
    heard.clear();
    engine::SetEngineLogListener([](const char* text) { heard += text; });
    const std::string bytes = "xxx no object";
    engine::MemoryFile in{std::string_view(bytes)};
    level.Data()->Root().LoadObject(in.file, 13, ClassId::EditorObject, nullptr);
    engine::SetEngineLogListener(nullptr);
    EXPECT_THAT(heard, HasSubstr("[LoadObject] chunk "));
    EXPECT_THAT(heard, HasSubstr("at byte 0"));
}

TEST_F(LevelFileTest, SaveThroughADiskFileGivesTheSameObject) {
    SceneObject& box = MakeObject("Box");
    client.objectText = "on disk";
    fs::file file;
    file.Open(Path("object").c_str(), 1);
    ChunkSaveStart(file, 5753);
    box.Save(file);
    ChunkSaveEnd(file, 5753);
    EXPECT_EQ(file.Close(), 0);
    file.Open(Path("object").c_str(), 0);
    ChunkHeader header;
    ChunkLoadHeader(file, header);
    EditorObject* object = level.Data()->Root().LoadObject(file, header.size, ClassId::EditorObject, nullptr);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->name, "Box");
    file.Close();
}

TEST_F(LevelFileTest, PluginThatFailsToReadCostsItsChunkOnly) {
    client.objectText = "x";
    MakeObject("A");
    const std::string bytes = Saved();
    client.throwOnLoad = true;
    const LevelMessages messages = Load(bytes);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0], HasSubstr("Error reading file"));
    EXPECT_THAT(messages[0], HasSubstr("5784"));
    EXPECT_NE(level.FindObject("A"), nullptr);
}

TEST_F(LevelFileTest, PluginThatReadsTooMuchOrTooLittleDoesNotShiftTheRest) {
    client.rootText = "root";
    client.objectText = "x";
    MakeObject("A");
    MakeObject("B");
    const std::string bytes = Saved();
    client.readExtra = 40;
    client.calls.clear();
    Load(bytes);
    EXPECT_EQ(client.calls.size(), 3u);
    client.readExtra = -1;
    Load(bytes);
    EXPECT_EQ(client.calls.size(), 6u);
    EXPECT_NE(level.FindObject("B"), nullptr);
}

TEST_F(LevelFileTest, PluginThatFailsToWriteLeavesTheOldFile) {
    level.SetChunkClient(&client);
    MakeObject("A");
    engine::SaveLevel(level, Path("a.level"));
    const std::string before = Content("a.level");
    MakeObject("B");
    client.throwOnSave = true;
    EXPECT_THROW(engine::SaveLevel(level, Path("a.level")), LevelFileError);
    EXPECT_EQ(Content("a.level"), before);
}

TEST_F(LevelFileTest, FileIsWrittenAndReadThroughTheDisk) {
    MakeSample();
    engine::SaveLevel(level, Path("a.level"));
    EXPECT_EQ(level.Folder(), folder.string() + "/");
    EXPECT_EQ(level.Data()->Root().name, folder.string() + "/");
    level.New("");
    EXPECT_TRUE(engine::LoadLevel(level, Path("a.level")).empty());
    EXPECT_NE(level.FindObject("Robot"), nullptr);
    EXPECT_EQ(level.Folder(), folder.string() + "/");
}

TEST_F(LevelFileTest, AnyFailedWriteLeavesTheOldFileWhole) {
    MakeObject("A");
    engine::SaveLevel(level, Path("a.level"));
    const std::string before = Content("a.level");
    MakeObject("B");
    const engine::LowLevelFiles original = engine::LowLevel();
    const auto expectFailure = [&] {
        EXPECT_THROW(engine::SaveLevel(level, Path("a.level")), LevelFileError);
        engine::LowLevel() = original;
        EXPECT_EQ(Content("a.level"), before);
        EXPECT_EQ(FilesInFolder(), 1u);
    };
    engine::LowLevel().write = [](int, const void*, std::size_t) -> ssize_t { return -1; };
    expectFailure();
    engine::LowLevel().sync = [](int) { return -1; };
    expectFailure();
    engine::LowLevel().rename = [](const char*, const char*) { return -1; };
    expectFailure();
    engine::SaveLevel(level, Path("a.level"));
    EXPECT_NE(Content("a.level"), before);
}

TEST_F(LevelFileTest, FailedSaveElsewhereKeepsTheFolder) {
    level.SetFolder("/home/level");
    EXPECT_THROW(engine::SaveLevel(level, Path("no/such/a.level")), LevelFileError);
    EXPECT_EQ(level.Folder(), "/home/level/");
    level.Close();
    EXPECT_THROW(engine::SaveLevel(level, Path("a.level")), LevelFileError);
}

TEST_F(LevelFileTest, FailedOpenLeavesTheOpenLevelAlone) {
    SceneObject& a = MakeObject("A");
    engine::LevelData* before = level.Data();
    WriteFile("broken.level", "this is no level, whatever its name says");
    std::optional<LevelFileError> failure;
    try {
        engine::LoadLevel(level, Path("broken.level"));
    } catch (const LevelFileError& error) {
        failure = error;
    }
    ASSERT_TRUE(failure) << "opened";
    EXPECT_EQ(failure->path, Path("broken.level"));
    EXPECT_EQ(failure->offset, 0);
    EXPECT_THAT(failure->what(), HasSubstr(Path("broken.level")));
    EXPECT_FALSE(failure->reason.empty());
    EXPECT_THROW(engine::LoadLevel(level, Path("missing.level")), LevelFileError);
    EXPECT_THROW(engine::LoadLevel(level, folder.string()), LevelFileError);
    EXPECT_EQ(level.Data(), before);
    EXPECT_EQ(level.FindObject("A"), &a);
}

TEST_F(LevelFileTest, HostMayCloseTheOldLevelBetweenReadingAndInstalling) {
    MakeObject("A");
    const std::string bytes = Saved();
    engine::PendingLevel pending = engine::ParseLevel(level, "x.level", bytes);
    std::vector<std::string> gone;
    level.SetDestroyHook([&](EditorObject* object) { gone.push_back(object->name); });
    level.Close();
    EXPECT_THAT(gone, ElementsAre("A"));
    engine::InstallLevel(level, std::move(pending));
    EXPECT_NE(level.FindObject("A"), nullptr);
    EXPECT_EQ(gone.size(), 1u);
    level.SetDestroyHook(nullptr);
}

TEST_F(LevelFileTest, FreshIdsDoNotMeetThoseOfTheFile) {
    MakeObject("A");
    const int id = MakeObject("B").id;
    level.DeleteObject(level.FindObject(id));
    Reload();
    EXPECT_GT(MakeObject("C").id, id); // the id of a deleted object is not given again after loading either
}

TEST_F(LevelFileTest, NewerVersionIsRefusedByItsNumber) {
    std::string bytes = Saved();
    bytes[12] = 99; // behind the headers of the level and of its header chunk
    try {
        Load(bytes);
        FAIL() << "opened";
    } catch (const LevelFileError& error) {
        EXPECT_THAT(error.reason, HasSubstr("version 99"));
        EXPECT_EQ(error.offset, 12);
    }
}

/// A plug-in with one chunk under the root.
class ChunkPlugin : public PlainPlugin {
public:
    void OnEvent(int code, void* data) override {
        if (code == EventCode::CollectHiddenObjects && hidden != nullptr) {
            static_cast<HiddenObjectsRequest*>(data)->collection->Add(hidden);
        }
    }
    bool SaveChunks(fs::file& file, IHostObject* object) override {
        if (!object->IsA(ClassId::LevelRoot)) {
            return false;
        }
        ChunkSaveStart(file, chunk);
        ChunkSaveEnd(file, chunk);
        return false; // Required of plug-ins: false for the root even after writing.
    }
    bool LoadChunk(IHostObject*, fs::file&, std::uint16_t chunkId, std::uint32_t) override {
        loaded.push_back(chunkId);
        return true;
    }
    bool IsOwnChunk(Word, std::uint16_t chunkId) override { return chunkId == chunk; }

    EditorObject* hidden = nullptr;
    std::uint16_t chunk = 0;
    std::vector<int> loaded;
};

TEST_F(LevelFileTest, SeveralPluginsEachGetTheirOwnChunks) {
    ChunkPlugin first;
    ChunkPlugin second;
    first.chunk = 100;
    second.chunk = 200;
    second.hidden = &MakeObject("Hidden");
    MakeObject("Shown");
    engine::PluginChunkClient plugins;
    plugins.plugins = {&first, &second};
    level.SetChunkClient(&plugins);
    const std::string bytes = Saved();
    Load(bytes);
    EXPECT_THAT(first.loaded, ElementsAre(100));
    EXPECT_THAT(second.loaded, ElementsAre(200));
    EXPECT_EQ(level.FindObject("Hidden"), nullptr);
    plugins.plugins.pop_back(); // the second is gone: its chunk is kept all the same
    Load(bytes);
    second.hidden = nullptr;
    EXPECT_EQ(Saved(), bytes);
}

} // namespace engine_test

#include "files/base/Log.h"
#include "host/engine/LevelRoot.h"
#include "plugin/contract/FileSystem.h"
#include "plugin/rules/LevelChunkIds.h"
#include "tests/plugin/FakeActor.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/TempFolder.h"

#include <cstring>
#include <filesystem>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ChunksTest : public PluginTest {
protected:
    ChunksTest() { Data().Root().name = folder.Path(); }

    /// What the plug-in writes for an object.
    std::string Save(IHostObject* object, bool expected) {
        fs::file file;
        file.Open(folder.File("saved").c_str(), 1);
        EXPECT_EQ(plugin.SaveChunks(file, object), expected);
        file.Close();
        return ReadWholeFile(folder.File("saved"));
    }
    /// Hands the plug-in the data of one chunk. Returns how many bytes it consumed.
    std::size_t Load(IHostObject* object, unsigned id, const std::string& data) {
        WriteWholeFile(folder.File("chunk"), data + "the next chunk");
        fs::file file;
        file.Open(folder.File("chunk").c_str(), 0);
        EXPECT_TRUE(plugin.LoadChunk(object, file, static_cast<std::uint16_t>(id),
                                     static_cast<std::uint32_t>(data.size())));
        std::string rest(1000, '\0');
        rest.resize(static_cast<std::size_t>(file.Read(rest.data(), 1000)));
        file.Close();
        return data.size() + 14 - rest.size();
    }
    std::size_t Load(IHostObject* object, unsigned id, const Bytes& data) {
        return Load(object, id, data.Str());
    }
    /// The data of the light helpers' chunk, as the plug-in writes it.
    std::string LightChunk() {
        const std::string saved = Save(Root(), false);
        const std::size_t start = saved.find(Bytes().U16(5782).Str(), 8800);
        std::uint32_t size = 0;
        std::memcpy(&size, saved.data() + start + 2, 4);
        return saved.substr(start + 6, size);
    }
    engine::LevelRoot* Root() { return &Data().Root(); }
    static std::string DefaultSettings() {
        std::string bytes;
        for (int i = 0; i < 200; ++i) {
            bytes += Bytes()
                         .U32(0xFFFFFFFF)
                         .U32(0)
                         .U32(0x41200000)
                         .U32(0)
                         .U32(0x41200000)
                         .U32(150)
                         .U32(20)
                         .U32(0x3F800000)
                         .U32(5)
                         .U32(4)
                         .U32(0)
                         .Str();
        }
        return bytes;
    }
    static Bytes NewRecord(const std::string& film, unsigned expanded, unsigned filter) {
        return Bytes().Text(film).U8(expanded).U32(20).Fill(20, filter);
    }

    TempFolder folder;
};

} // namespace

TEST_F(ChunksTest, RootOfAnEmptyLevelIsWrittenByteByByte) {
    plugin.cameraParams.clear();
    Bytes expected;
    expected.Chunk(5780, Bytes().Chunk(5784, Bytes().U32(0)));
    const std::string settings = DefaultSettings();
    expected.U16(5785).U32(8800);
    std::string bytes = expected.Str() + settings;
    bytes += Bytes().Chunk(5782, Bytes()).Chunk(5752, Bytes()).Str();
    EXPECT_EQ(Save(Root(), false), bytes);
}

TEST_F(ChunksTest, LevelAndCameraStoresAreWrittenWithTheirNames) {
    plugin.levelParams.Set("Intro", nullptr, 255, 3, "Level"); // written as 1
    CPluginFilmsParams camera;
    const KeyFilter filter{2};
    camera.Set("Intro", filter.data(), 0, 3, "Cam");
    plugin.cameraParams.push_back(camera);
    Bytes cameraRecord;
    cameraRecord.U32(1).Text("Intro").Text("Cam").U8(0).U32(20).U8(2).Fill(19, 0);
    Bytes expected;
    expected.Chunk(
        5780, Bytes().Chunk(5784, Bytes().U32(1).Append(NewRecord("Intro", 1, 1))).Chunk(5786, cameraRecord));
    EXPECT_EQ(Save(Root(), false).substr(0, expected.Str().size()), expected.Str());
}

TEST_F(ChunksTest, RootSaveMarksAllFilmsAndLeavesAnEmptyReport) {
    IFilm* film = NewFilm();
    WriteWholeFile(folder.File("FilmsValidation.txt"), "old");
    Save(Root(), false);
    EXPECT_EQ(film->validated, 1);
    EXPECT_EQ(std::filesystem::file_size(folder.File("FilmsValidation.txt")), 0u);
}

TEST_F(ChunksTest, FilmsAreMarkedEvenIfTheReportCannotBeOpened) {
    IFilm* film = NewFilm();
    Root()->name = folder.Path() + "missing/";
    Save(Root(), false);
    EXPECT_EQ(film->validated, 1);
}

TEST_F(ChunksTest, RootNameIsAPlainPrefixOfTheReport) {
    Root()->name = folder.Path() + "Level";
    Save(Root(), false);
    EXPECT_TRUE(std::filesystem::exists(folder.File("LevelFilmsValidation.txt")));
}

TEST_F(ChunksTest, ObjectWithoutAStoreWritesNothing) {
    EXPECT_EQ(Save(editor.Create("Crate"), false), "");
    EXPECT_EQ(Save(nullptr, false), "");
}

TEST_F(ChunksTest, ObjectStoreIsWrittenWithoutItsObjectNames) {
    EditorObject* crate = editor.Create("Crate");
    const IFilm* film = OpenFilmWith({crate});
    EXPECT_EQ(Save(crate, true),
              Bytes().Chunk(5784, Bytes().U32(1).Append(NewRecord(film->name, 0, 1))).Str());
}

TEST_F(ChunksTest, OtherObjectsWriteNothing) {
    OpenNewFilm();
    EXPECT_EQ(Save(plugin.GetCurrentFilm()->mainTrack, false), "");
}

TEST_F(ChunksTest, OwnChunksAreExactlyEight) {
    std::vector<unsigned> own;
    for (unsigned id = 0; id < 65536; ++id) {
        if (plugin.IsOwnChunk(77, static_cast<std::uint16_t>(id))) {
            own.push_back(id);
        }
    }
    EXPECT_THAT(own, ElementsAre(5750, 5752, 5754, 5780, 5781, 5782, 5784, 5785));
}

TEST_F(ChunksTest, FilmManagersChunkIsOwnButNotRead) {
    fs::file file;
    EXPECT_FALSE(plugin.LoadChunk(Root(), file, 5754, 0));
    EXPECT_FALSE(plugin.LoadChunk(Root(), file, 5753, 0));
    EXPECT_FALSE(plugin.LoadChunk(Root(), file, 1, 0));
}

TEST_F(ChunksTest, SettingsComeBackAsWritten) {
    plugin.filmViewSettings[3].leftWidth = 77;
    plugin.filmViewSettings[199].cursorTime = 4.5f;
    const std::string saved = Save(Root(), false);
    const std::size_t start = saved.find(Bytes().U16(5785).U32(8800).Str());
    plugin.OnNew();
    EXPECT_EQ(Load(Root(), 5785, saved.substr(start + 6, 8800)), 8800u);
    EXPECT_EQ(plugin.filmViewSettings[3].leftWidth, 77);
    EXPECT_EQ(plugin.filmViewSettings[199].cursorTime, 4.5f);
}

TEST_F(ChunksTest, ShortSettingsLeaveTheRestZeroWithTheMask) {
    Load(Root(), 5785, DefaultSettings().substr(0, 44));
    EXPECT_EQ(plugin.filmViewSettings[0].leftWidth, 150);
    EXPECT_EQ(plugin.filmViewSettings[1].mask, 0u);
    EXPECT_EQ(plugin.filmViewSettings[1].leftWidth, 0);
}

TEST_F(ChunksTest, LongSettingsAreDroppedBehindTheTable) {
    const std::string data = DefaultSettings() + std::string(5000, 'x');
    EXPECT_EQ(Load(Root(), 5785, data), data.size());
    EXPECT_EQ(plugin.filmViewSettings[199].leftWidth, 150);
}

TEST_F(ChunksTest, TrackParamsReplaceLevelAndCameraStores) {
    plugin.levelParams.Set("Old", nullptr, 0, 3, "Level");
    plugin.cameraParams.emplace_back();
    Bytes data;
    data.Chunk(5784, Bytes().U32(1).Append(NewRecord("Intro", 1, 3)));
    data.Chunk(5786, Bytes().U32(1).Text("Intro").Text("Cam").U8(0).U32(20).Fill(20, 4));
    EXPECT_EQ(Load(Root(), 5780, data), data.Str().size());
    ASSERT_EQ(plugin.levelParams.records.size(), 1u);
    EXPECT_EQ(plugin.levelParams.records.front().filmName, "Intro");
    EXPECT_EQ(plugin.levelParams.records.front().objectName, "Level");
    EXPECT_EQ(plugin.levelParams.records.front().expanded, 1);
    EXPECT_EQ(plugin.levelParams.records.front().keyFilter[19], 3);
    ASSERT_EQ(plugin.cameraParams.size(), 1u);
    EXPECT_EQ(plugin.cameraParams.front().records.front().objectName, "Cam");
}

TEST_F(ChunksTest, SubChunksCountByTheirSizesWhateverTheirNumbers) {
    Bytes data;
    data.Chunk(0, Bytes().U32(1).Append(NewRecord("Intro", 1, 3)));
    data.Chunk(0, Bytes().U32(1).Text("Intro").Text("Cam").U8(0).U32(20).Fill(20, 4));
    data.Chunk(77, Bytes().U32(1).Text("Intro").Text("Other").U8(0).U32(20).Fill(20, 4));
    EXPECT_EQ(Load(Root(), 5780, data), data.Str().size());
    ASSERT_EQ(plugin.levelParams.records.size(), 1u);
    EXPECT_EQ(plugin.levelParams.records.front().filmName, "Intro");
    EXPECT_EQ(plugin.levelParams.records.front().keyFilter[19], 3) << "the new form";
    ASSERT_EQ(plugin.cameraParams.size(), 2u);
    EXPECT_EQ(plugin.cameraParams.front().records.front().objectName, "Cam");
    EXPECT_EQ(plugin.cameraParams.back().records.front().objectName, "Other");
}

TEST_F(ChunksTest, OldFirstSubChunkHasNineFilterBytes) {
    Bytes data;
    data.Chunk(5781, Bytes().U32(1).Text("Intro").U8(1).Fill(9, 0));
    data.Chunk(5781,
               Bytes().U32(1).Text("Intro").Text("Cam").U8(0).U32(20).Fill(20, 0)); // later ones are new form
    Load(Root(), 5780, data);
    ASSERT_EQ(plugin.levelParams.records.size(), 1u);
    const KeyFilter& filter = plugin.levelParams.records.front().keyFilter;
    EXPECT_EQ(filter[8], 0);
    EXPECT_EQ(filter[9], 1); // nothing in the file gives it a value
    ASSERT_EQ(plugin.cameraParams.size(), 1u);
    EXPECT_EQ(plugin.cameraParams.front().records.size(), 1u);
}

TEST_F(ChunksTest, KnownCameraStoreIsDroppedAndEmptyOnesEnter) {
    CPluginFilmsParams store;
    plugin.AddCameraParams(store);
    plugin.AddCameraParams(store);
    EXPECT_EQ(plugin.cameraParams.size(), 2u);
    store.Set("Intro", nullptr, 0, 3, "Cam");
    store.Set("Other", nullptr, 0, 3, "Cam");
    plugin.AddCameraParams(store);
    plugin.AddCameraParams(store);
    EXPECT_EQ(plugin.cameraParams.size(), 3u);
    CPluginFilmsParams later; // only its second record is known
    later.Set("New", nullptr, 0, 3, "Cam");
    later.Set("Intro", nullptr, 0, 3, "Cam");
    plugin.AddCameraParams(later);
    EXPECT_EQ(plugin.cameraParams.size(), 4u);
}

TEST_F(ChunksTest, ObjectStoreIsReadInBothForms) {
    EditorObject* crate = editor.Create("Crate");
    Load(crate, 5784, Bytes().U32(1).Append(NewRecord("Intro", 1, 0)));
    ASSERT_NE(ParamsOf(crate), nullptr);
    EXPECT_EQ(ParamsOf(crate)->records.front().objectName, "Crate");
    EXPECT_EQ(ParamsOf(crate)->records.front().keyFilter[0], 0);
    Load(crate, 5781, Bytes().U32(1).Text("Old").U8(0).Fill(9, 7)); // the store before is freed
    EXPECT_EQ(ParamsOf(crate)->records.front().filmName, "Old");
    EXPECT_EQ(ParamsOf(crate)->records.front().keyFilter[8], 7);
    EXPECT_EQ(ParamsOf(crate)->records.front().keyFilter[9], 1);
}

TEST_F(ChunksTest, HostileCountsAndSizesReadNoFurtherThanTheChunk) {
    EditorObject* crate = editor.Create("Crate");
    Load(crate, 5784, Bytes().U32(0x7FFFFFFF).Append(NewRecord("Intro", 1, 0)));
    EXPECT_EQ(ParamsOf(crate)->records.size(), 1u);
    Load(crate, 5784, Bytes().U32(1).Append(NewRecord("Intro", 1, 0)).Append(NewRecord("More", 1, 0)));
    EXPECT_EQ(ParamsOf(crate)->records.size(), 1u); // what the count leaves out
    Load(crate, 5784, Bytes().U32(0xFFFFFFFF).Append(NewRecord("Intro", 1, 0)));
    EXPECT_THAT(ParamsOf(crate)->records, IsEmpty()); // a negative count is none
    Load(crate, 5784, Bytes().U32(1).Text("F").U8(1).U32(0x7FFFFFFF).Fill(30, 5));
    ASSERT_EQ(ParamsOf(crate)->records.size(), 1u);
    EXPECT_EQ(ParamsOf(crate)->records.front().keyFilter[19], 5);
    Load(crate, 5784, Bytes().U32(2).Text("F").U8(1).U32(25).Fill(25, 6).Append(NewRecord("G", 0, 2)));
    ASSERT_EQ(ParamsOf(crate)->records.size(),
              2u); // the five bytes too many are dropped, the next is in step
    EXPECT_EQ(ParamsOf(crate)->records.back().filmName, "G");
    Load(crate, 5784, Bytes().U32(1).Text("F").U8(1).U32(3).Fill(3, 0));
    EXPECT_EQ(ParamsOf(crate)->records.front().keyFilter[2], 0);
    EXPECT_EQ(ParamsOf(crate)->records.front().keyFilter[3], 1);
    Load(crate, 5784, Bytes().U32(1).U16(60000).Fill(10, 65));
    EXPECT_THAT(ParamsOf(crate)->records, IsEmpty());
    Load(crate, 5784, Bytes());
    EXPECT_THAT(ParamsOf(crate)->records, IsEmpty());
}

TEST_F(ChunksTest, ObjectChunkWithoutAnObjectIsSkipped) {
    EXPECT_EQ(Load(nullptr, 5784, Bytes().U32(1).Append(NewRecord("Intro", 1, 0))), 36u);
}

TEST_F(ChunksTest, SubChunkSizesBeyondTheParentStopTheLoop) {
    for (const unsigned size : {0u, 5u, 0x7FFFFFFFu, 0xFFFFFFFAu, 0xFFFFFFFFu}) {
        for (const unsigned id : {5750u, 5752u, 5780u, 5782u}) {
            Load(Root(), id, Bytes().U16(5783).U32(size).U32(1).U8(0).Fill(3, 0));
        }
    }
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
}

TEST_F(ChunksTest, EveryCutOfATrackChunkIsReadWithoutAFault) {
    Bytes data;
    data.Chunk(5784, Bytes().U32(2).Append(NewRecord("Intro", 1, 3)).Append(NewRecord("B", 1, 3)));
    data.Chunk(5786, Bytes().U32(1).Text("Intro").Text("Cam").U8(0).U32(20).Fill(20, 4));
    for (std::size_t length = 0; length < data.Str().size(); ++length) {
        Load(Root(), 5780, data.Str().substr(0, length));
        EXPECT_LE(plugin.levelParams.records.size(), 2u);
    }
    EXPECT_EQ(plugin.levelParams.records.size(), 2u);
}

TEST_F(ChunksTest, LightsAreWrittenSunFirstAndPairedInOrderAfterLoading) {
    Data().SetSun(true);
    IFilm* film = OpenNewFilm();
    EditorObject* glLamp = editor.CreateOfClass("GLLightEditorObject", "A", 1, 0, 0);
    EditorObject* dynLamp = editor.CreateOfClass("FilmsDynLightEditorObject", "B", 2, 0, 0);
    const int ids[] = {plugin.lightHelpers.GetSunHelper()->object->id, glLamp->id, dynLamp->id};
    const std::string chunk = LightChunk();

    plugin.lightHelpers.DeleteHelpers();
    for (const int id : ids) {
        editor.level.DeleteObject(Data().Find(id));
    }
    Load(Root(), 5782, chunk);
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 3u);
    EXPECT_TRUE(plugin.lightHelpers.helpers.front()->isSun);
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    const auto* gl = AsGLLightTrack(*std::next(film->tracks.begin(), 2));
    const auto* dyn = AsDynLightTrack(*std::next(film->tracks.begin(), 3));
    ASSERT_NE(gl->lightObject, nullptr);
    EXPECT_EQ(gl->lightObject->id, ids[1]);
    EXPECT_EQ(PositionOf(*gl->lightObject).x, 1.0f);
    ASSERT_NE(dyn->lightObject, nullptr);
    EXPECT_EQ(dyn->lightObject->id, ids[2]);
    EXPECT_EQ(AsGLLightTrack(*std::next(film->tracks.begin()))->lightObject->id, ids[0]);
}

TEST_F(ChunksTest, LightThatCannotBeReadLeavesTheOthersWithTheirTracks) {
    IFilm* film = OpenNewFilm();
    EditorObject* lamps[] = {editor.CreateOfClass("GLLightEditorObject", "A"),
                             editor.CreateOfClass("FilmsDynLightEditorObject", "B"),
                             editor.CreateOfClass("GLLightEditorObject", "C")};
    const int ids[] = {lamps[0]->id, lamps[1]->id, lamps[2]->id};
    std::string chunk = LightChunk();
    std::uint32_t first = 0; // bytes of the first light, behind its header of 6 bytes
    std::memcpy(&first, chunk.data() + 2, 4);
    std::fill_n(chunk.begin() + 6 + 5, first - 5, '\xff');
    const std::string shortFirst = Bytes().Chunk(5783, Bytes().Fill(4, 0)).Str() + chunk.substr(6 + first);
    for (const std::string& damaged : {chunk, shortFirst}) {
        plugin.lightHelpers.DeleteHelpers();
        for (const int id : ids) {
            if (EditorObject* lamp = Data().FindObject(id)) {
                editor.level.DeleteObject(lamp);
            }
        }
        Load(Root(), 5782, damaged);
        plugin.lightHelpers.PairWithTracks(&Data());
        auto track = std::next(film->tracks.begin());
        EXPECT_EQ(AsGLLightTrack(*track)->lightObject, nullptr);
        ASSERT_NE(AsDynLightTrack(*++track)->lightObject, nullptr);
        EXPECT_EQ(AsDynLightTrack(*track)->lightObject->id, ids[1]);
        ASSERT_NE(AsGLLightTrack(*++track)->lightObject, nullptr);
        EXPECT_EQ(AsGLLightTrack(*track)->lightObject->id, ids[2]);
        // Saved again the light keeps its place.
        EXPECT_EQ(LightChunk().substr(0, 6 + 5), Bytes().Chunk(5783, Bytes().U32(0).U8(0)).Str());
    }
}

TEST_F(ChunksTest, SunThatCannotBeReadIsMadeAnew) {
    Data().SetSun(true);
    IFilm* film = OpenNewFilm();
    plugin.lightHelpers.DeleteHelpers();
    Load(Root(), 5782, Bytes().Chunk(5783, Bytes().U32(0).U8(1).Fill(20, 0xff)));
    EXPECT_THAT(plugin.lightHelpers.helpers, IsEmpty());
    plugin.lightHelpers.PairWithTracks(&Data());
    EXPECT_NE(AsGLLightTrack(film->tracks.back())->lightObject, nullptr);
}

TEST_F(ChunksTest, FewerHelpersThanTracksLeaveTracksWithoutALight) {
    IFilm* film = OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "A");
    editor.CreateOfClass("GLLightEditorObject", "B");
    CFilmsLightHelper* second = plugin.lightHelpers.helpers.back();
    plugin.lightHelpers.Remove(second);
    delete second;
    plugin.lightHelpers.PairWithTracks(&Data());
    EXPECT_NE(AsGLLightTrack(*std::next(film->tracks.begin()))->lightObject, nullptr);
    EXPECT_EQ(AsGLLightTrack(film->tracks.back())->lightObject, nullptr);
}

TEST_F(ChunksTest, SunMadeWhilePairingIsNotTakenForATracksHelper) {
    Data().SetSun(true);
    IFilm* film = OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "A");
    plugin.lightHelpers.DeleteHelpers();
    plugin.lightHelpers.PairWithTracks(&Data());
    EXPECT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    EXPECT_EQ(AsGLLightTrack(film->tracks.back())->lightObject, nullptr);
    EXPECT_NE(AsGLLightTrack(*std::next(film->tracks.begin()))->lightObject, nullptr);
}

TEST_F(ChunksTest, OnlyAFirstSunHelperIsSteppedOver) {
    IFilm* film = OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "A");
    editor.CreateOfClass("GLLightEditorObject", "B");
    plugin.lightHelpers.helpers.back()->isSun = true;
    plugin.lightHelpers.PairWithTracks(&Data());
    EXPECT_NE(AsGLLightTrack(film->tracks.back())->lightObject, nullptr);
}

TEST_F(ChunksTest, LightsWithoutARootAreSkipped) {
    EXPECT_EQ(Load(editor.Create("Crate"), 5782, Bytes().Chunk(5783, Bytes().U32(0).U8(1).Fill(20, 0))), 31u);
    EXPECT_THAT(plugin.lightHelpers.helpers, IsEmpty());
}

TEST_F(ChunksTest, VirtualObjectsComeBackWithTheirRealClass) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    const int id = crate->id;
    boxAnswer = IDYES;
    ObjectList objects{crate};
    plugin.ConvertToVirtualObjects(&objects);
    const std::string saved = Save(Root(), false);
    const std::size_t start = saved.rfind(Bytes().U16(5752).Str());
    editor.DeleteObjects({crate});
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    Load(Root(), 5752, saved.substr(start + 6));
    ASSERT_EQ(plugin.virtualObjects.size(), 1u);
    EXPECT_EQ(plugin.virtualObjects.front().className, "MeshObject");
    EXPECT_EQ(plugin.virtualObjects.front().object->id, id);
    EXPECT_EQ(PositionOf(*plugin.virtualObjects.front().object), (Vector3{1, 2, 3}));
}

TEST_F(ChunksTest, OldVirtualObjectsAreMeshObjects) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    fs::file file;
    file.Open(folder.File("object").c_str(), 1);
    crate->Save(file);
    file.Close();
    const std::string object = ReadWholeFile(folder.File("object"));
    editor.DeleteObjects({crate});
    Bytes data;
    data.U16(5753).U32(static_cast<unsigned>(object.size()));
    Load(Root(), 5750, data.Str() + object);
    ASSERT_EQ(plugin.virtualObjects.size(), 1u);
    EXPECT_EQ(plugin.virtualObjects.front().className, "MeshObject");
    EXPECT_EQ(plugin.virtualObjects.front().objectName, "Crate");
    EXPECT_EQ(plugin.virtualObjects.front().meshName, "box.glb");
}

TEST_F(ChunksTest, LongClassNamesAreCutTo255BytesAndStayInStep) {
    EditorObject* crate = editor.Create("Crate");
    fs::file file;
    file.Open(folder.File("object").c_str(), 1);
    file.WriteString(std::string(400, 'C').c_str());
    crate->Save(file);
    file.Close();
    const std::string object = ReadWholeFile(folder.File("object"));
    editor.DeleteObjects({crate});
    Bytes data;
    data.U16(5753).U32(static_cast<unsigned>(object.size()));
    Load(Root(), 5752, data.Str() + object);
    ASSERT_EQ(plugin.virtualObjects.size(), 1u);
    EXPECT_EQ(plugin.virtualObjects.front().objectName, "Crate");
    EXPECT_EQ(plugin.virtualObjects.front().className, std::string(255, 'C'));
}

TEST_F(ChunksTest, VirtualActorsAreWrittenForTheGameOncePerFilm) {
    EditorObject* crate = editor.Create("Crate");
    boxAnswer = IDYES;
    ObjectList objects{crate};
    plugin.ConvertToVirtualObjects(&objects);
    OpenFilmWith({crate});
    OpenFilmWith({crate});
    const std::string saved = Save(&Films(), true);
    const std::string mark = Bytes().U16(5754).Str();
    const std::size_t first = saved.find(mark);
    std::uint32_t size = 0;
    std::memcpy(&size, saved.data() + first + 2, 4);
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(saved.substr(0, 6 + size), saved.substr(6 + size));
    EXPECT_NE(saved.find("MeshObject"), std::string::npos);
    EXPECT_EQ(crate->GetInfo()->className, "VirtualObjEditorObject");
    EXPECT_EQ(crate->GetInfo()->saveClassName, "VirtualObjEditorObject");
}

TEST_F(ChunksTest, VirtualActorStaysVirtualWhenItsFileFails) {
    std::vector<std::string> log;
    FakeActorFilm film(log);
    film.object.info.SetClassName(ClassName::VirtualObject);
    film.object.fails = true;
    plugin.virtualObjects.push_back({"", "", "MeshObject", &film.object});
    Films().films[0] = &film;
    fs::file file;
    file.Open(folder.File("saved").c_str(), 1);
    EXPECT_THROW(plugin.SaveChunks(file, &Films()), fs::file_exception);
    file.Close();
    Films().films[0] = nullptr;
    plugin.virtualObjects.clear();
    EXPECT_THAT(log, ElementsAre("Save MeshObject"));
    // The next save writes it into the list of virtual objects as it stands.
    EXPECT_EQ(film.object.info.saveClassName, "VirtualObjEditorObject");
}

TEST_F(ChunksTest, VirtualActorWithoutARecordIsNotWritten) {
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    OpenFilmWith({ghost, editor.Create("Crate")});
    EXPECT_EQ(Save(&Films(), true), "");
}

TEST_F(ChunksTest, DeletingAFilmDropsItsRecords) {
    EditorObject* crate = editor.Create("Crate");
    IFilm* film = OpenFilmWith({crate});
    const std::string name = film->name;
    plugin.levelParams.Set(name, nullptr, 0, 3, "Level");
    plugin.levelParams.Set("Other", nullptr, 0, 3, "Level");
    CPluginFilmsParams camera;
    camera.Set(name, nullptr, 0, 3, "A");
    camera.Set(name, nullptr, 0, 3, "B");
    plugin.cameraParams.push_back(camera);
    plugin.cameraParams.push_back(camera);
    plugin.DeleteFilm(film);
    ASSERT_EQ(plugin.levelParams.records.size(), 1u);
    EXPECT_EQ(plugin.levelParams.records.front().filmName, "Other");
    ASSERT_EQ(plugin.cameraParams.front().records.size(), 1u); // the first of each store
    EXPECT_EQ(plugin.cameraParams.front().records.front().objectName, "B");
    EXPECT_EQ(plugin.cameraParams.back().records.size(), 1u);
    EXPECT_THAT(ParamsOf(crate)->records, IsEmpty());
    plugin.DeleteMovieParams(nullptr);
}

TEST_F(ChunksTest, WhatIsMissingForAFilmThatGoesOrAVirtualActorIsTold) {
    static std::vector<std::string> told;
    told.clear();
    EditorObject* bare = editor.Create("100% Bare");
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    IFilm* film = OpenFilmWith({bare, ghost});
    film->AddTrack(film->CreateObjectTrack());
    delete ParamsOf(bare);
    bare->GetInfo()->SetPluginData(6, nullptr);
    SetLogListener([](const char* text) { told.emplace_back(text); });
    Save(&Films(), true);
    plugin.DeleteMovieParams(nullptr);
    plugin.DeleteMovieParams(film);
    SetLogListener(nullptr);
    EXPECT_THAT(told, ElementsAre("Cannot find VirtualObjectHelper for object: Ghost\n",
                                  "[IPluginImpl::DeleteMovieParams] Film doesn't exist\n",
                                  "[IPluginImpl::DeleteMovieParams] Params not found for object 100% Bare\n",
                                  std::string("[IPluginImpl::DeleteMovieParams] Object not found for film ") +
                                      film->name + "\n"));
    EXPECT_THAT(ParamsOf(ghost)->records, IsEmpty()) << "the others go on";
}

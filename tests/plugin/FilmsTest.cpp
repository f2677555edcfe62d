#include "tests/plugin/PluginFixture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

using ::testing::ElementsAre;

namespace {

class FilmsTest : public PluginTest {};

} // namespace

TEST_F(FilmsTest, NewFilmHasALevelTrackTenSecondsAndDefaultSettings) {
    plugin.filmViewSettings[0].viewEnd = 77.0f;
    const int index = plugin.CreateFilm();
    ASSERT_EQ(index, 0);
    const IFilm* film = Films().films[0];
    ASSERT_NE(film, nullptr);
    EXPECT_EQ(Films().GetFilm(0), film);
    EXPECT_EQ(film->length, 10.0f);
    EXPECT_EQ(film->tracks.size(), 1u);
    EXPECT_TRUE(film->mainTrack->IsA(ClassId::LevelTrack));
    EXPECT_EQ(plugin.filmViewSettings[0].viewEnd, 10.0f);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(FilmsTest, NewFilmOfALevelWithASunHasASunTrack) {
    Data().SetSun(true);
    const IFilm* film = NewFilm();
    ASSERT_EQ(film->tracks.size(), 2u);
    EXPECT_NE(AsGLLightTrack(film->tracks.back())->isSun, 0);
}

TEST_F(FilmsTest, TwoHundredFilmsFitAndNoMore) {
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(plugin.CreateFilm(), i);
    }
    EXPECT_EQ(plugin.CreateFilm(), -1);
}

TEST_F(FilmsTest, NoFilmIsMadeWithoutALevel) {
    editor.level.Close();
    EXPECT_EQ(plugin.CreateFilm(), -1);
}

TEST_F(FilmsTest, FilmSwitchStopsDeactivatesActivatesInOrder) {
    LoggingFilm first(editor.calls);
    LoggingFilm second(editor.calls);
    plugin.SetCurrentFilm(&first);
    editor.calls.clear();
    LoggingWindow window(editor.calls);
    plugin.scenarioDlg = &window;
    plugin.SetCurrentFilm(&second);
    EXPECT_THAT(editor.calls, ElementsAre("Stop", "Deactivate", "Activate", "ShowCurrentFilm", "SetTime",
                                          "RedrawViews", "RedrawViews"));
    EXPECT_EQ(Films().currentFilm, &second);
    EXPECT_THAT(window.times, ElementsAre(0.0f));
    plugin.scenarioDlg = nullptr;
    plugin.SetCurrentFilm(nullptr);
}

TEST_F(FilmsTest, FilmThatGoesFindsObjectsBackAndItsLightsDarkBeforeTheNextIsTold) {
    EditorObject* crate = editor.Create("Crate", 1, 0, 0);
    EditorObject* lamp = editor.CreateOfClass("FilmsDynLightEditorObject", "Lamp");
    /// Notes at each call where the crate stands, whether the lamp shines and whose film the level has.
    class WitnessFilm : public LoggingFilm {
    public:
        WitnessFilm(std::vector<std::string>& calls, std::function<std::string()> seen)
            : LoggingFilm(calls), look(std::move(seen)) {
            validated = 1;
        }
        void Stop() override { log.push_back("Stop" + look()); }
        void Deactivate() override { log.push_back("Deactivate" + look()); }
        void Activate() override { log.push_back("Activate" + look()); }
        std::function<std::string()> look;
    };
    std::vector<std::string> calls;
    const IFilm* firstFilm = nullptr;
    const auto look = [&] {
        return std::string(PositionOf(*crate).x == 1.0f ? " back" : " moved") +
               (lamp->visible != 0 ? " lit" : " dark") + (Films().currentFilm == firstFilm ? " old" : " new");
    };
    WitnessFilm first(calls, look);
    WitnessFilm second(calls, look);
    firstFilm = &first;
    const std::unique_ptr<CFilmTrack> track(NewFilm()->CreateDynLightTrack());
    static_cast<CFilmDynLightTrack*>(track.get())->lightObject = lamp;
    first.tracks = {track.get()};
    second.tracks = {track.get()};
    plugin.SetCurrentFilm(&first);
    MoveTo(*crate, 9, 0, 0);
    calls.clear();
    plugin.SetCurrentFilm(&second);
    calls.erase(std::remove(calls.begin(), calls.end(), "SetTime"), calls.end());
    EXPECT_THAT(calls,
                ElementsAre("Stop moved lit old", "Deactivate back dark old", "Activate back dark old"));
    EXPECT_EQ(Films().currentFilm, &second);
    EXPECT_EQ(lamp->visible, 1);
    plugin.SetCurrentFilm(nullptr);
}

TEST_F(FilmsTest, ValidatedFilmIsPosedTwiceBySetFrame) {
    LoggingFilm film(editor.calls);
    film.validated = 1;
    plugin.SetCurrentFilm(&film);
    EXPECT_THAT(film.times, ElementsAre(0.0f, 0.0f));
    EXPECT_THAT(film.previousTimes, ElementsAre(-1.0f, -1.0f));
    plugin.SetCurrentFilm(nullptr);
}

TEST_F(FilmsTest, SameFilmAgainRunsEverythingAndKeepsTheTime) {
    LoggingFilm film(editor.calls);
    plugin.SetCurrentFilm(&film);
    plugin.SetTime(3.0f, true);
    editor.calls.clear();
    plugin.SetCurrentFilm(&film);
    EXPECT_THAT(editor.calls,
                ElementsAre("Stop", "Deactivate", "Activate", "SetTime", "RedrawViews", "RedrawViews"));
    EXPECT_EQ(plugin.currentTime, 3.0f);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(plugin.currentTime, 0.0f);
    EXPECT_EQ(Films().currentFilm, nullptr);
}

TEST_F(FilmsTest, ClosingAFilmPutsObjectsBackWhereTheyStood) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    OpenFilmWith({crate});
    MoveTo(*crate, 9, 9, 9);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
}

TEST_F(FilmsTest, ClosingAFilmLeavesAnimateObjectsOn) {
    OpenNewFilm();
    plugin.OnCommand(kPluginNumber, 50);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(plugin.animateObjects, 1);
}

TEST_F(FilmsTest, UnvalidatedFilmIsPosedByItsTracks) {
    EditorObject* crate = editor.Create("Crate", 1, 2, 3);
    IFilm* film = OpenFilmWith({crate});
    plugin.SetCurrentFilm(nullptr);
    MoveTo(*crate, 5, 5, 5);
    plugin.SetCurrentFilm(film);
    EXPECT_EQ(PositionOf(*crate), (Vector3{1, 2, 3}));
    EXPECT_EQ(film->validated, 0);
}

TEST_F(FilmsTest, SelectByIndexOutsideTheSlotsClosesTheFilm) {
    OpenNewFilm();
    plugin.SelectFilmByIndex(200);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    plugin.SelectFilmByIndex(-1);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    plugin.SelectFilmByIndex(0);
    EXPECT_EQ(plugin.GetCurrentFilm(), Films().films[0]);
}

TEST_F(FilmsTest, DeletingTheCurrentFilmClosesItFirst) {
    IFilm* film = OpenNewFilm();
    plugin.DeleteFilm(film);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(Films().films[0], nullptr);
    EXPECT_EQ(Films().GetFilm(0), nullptr);
}

TEST_F(FilmsTest, DeletingAFilmLeavesNoHelperWithItsTracks) {
    OpenNewFilm();
    editor.CreateOfClass("GLLightEditorObject", "Lamp");
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    ASSERT_NE(plugin.lightHelpers.helpers.front()->track, nullptr);
    plugin.DeleteFilm(plugin.GetCurrentFilm());
    ASSERT_EQ(plugin.lightHelpers.helpers.size(), 1u);
    EXPECT_EQ(plugin.lightHelpers.helpers.front()->track, nullptr);
}

TEST_F(FilmsTest, DeletingNoFilmDoesNothing) {
    IFilm* film = OpenNewFilm();
    plugin.DeleteFilm(nullptr);
    EXPECT_EQ(plugin.GetCurrentFilm(), film);
}

TEST_F(FilmsTest, NegativeTimesBecomeZero) {
    OpenNewFilm();
    for (const float time :
         {-1.0f, -std::numeric_limits<float>::denorm_min(), -0.0f, std::numeric_limits<float>::quiet_NaN(),
          -std::numeric_limits<float>::infinity()}) {
        plugin.currentTime = 5.0f;
        plugin.SetTime(time, true);
        EXPECT_EQ(plugin.currentTime, 0.0f) << time;
        EXPECT_FALSE(std::signbit(plugin.currentTime)) << time;
    }
}

TEST_F(FilmsTest, TimeFromTheWindowIsNotToldToTheWindow) {
    LoggingWindow window(editor.calls);
    plugin.scenarioDlg = &window;
    plugin.SetTime(2.0f, true);
    EXPECT_TRUE(window.times.empty());
    plugin.SetTime(3.0f, false);
    EXPECT_THAT(window.times, ElementsAre(3.0f));
}

TEST_F(FilmsTest, SnapRoundsToTheNearestOfThirtyFrames) {
    plugin.framesPerSecond = 30;
    EXPECT_NEAR(plugin.SnapToFrame(1.0f), 1.0, 1e-9);
    EXPECT_NEAR(plugin.SnapToFrame(1.01f), 1.0, 1e-6);         // 0.3 frames
    EXPECT_NEAR(plugin.SnapToFrame(1.02f), 31.0 / 30.0, 1e-6); // 0.6 frames
    EXPECT_NEAR(plugin.SnapToFrame(2.49f), 75.0 / 30.0, 1e-6); // 74.7 frames
}

TEST_F(FilmsTest, SnapWithoutARateCutsToWholeSeconds) {
    plugin.framesPerSecond = 0;
    EXPECT_EQ(plugin.SnapToFrame(3.75f), 3.0);
}

TEST_F(FilmsTest, SnapOfANegativeTimeFollowsTheFloorOfItsFraction) {
    plugin.framesPerSecond = 2; // interval 0.5
    // fraction -0.75; floor(-1.5) = -2 intervals; remainder -0.75 + 1.0 = 0.25, not above half; -1.75 - 0.25
    EXPECT_EQ(plugin.SnapToFrame(-1.75f), -2.0);
}

TEST_F(FilmsTest, RateIsZeroUntilTheFirstNewLevel) {
    IPluginImpl fresh;
    EXPECT_EQ(fresh.framesPerSecond, 0);
    fresh.Initialize(&editor, 6, &editor);
    fresh.OnNew();
    EXPECT_EQ(fresh.framesPerSecond, 30);
    fresh.OnEvent(EventCode::HostGoesAway, nullptr);
}

TEST_F(FilmsTest, CameraAtATimeIsTheLowestPriorityInForce) {
    IFilm* film = OpenNewFilm();
    AddCut(film, "High", 0, 5, 7);
    const IFilmKey* low = AddCut(film, "Low", 1, 3, 2);
    AddCut(film, "Equal", 1, 3, 2);
    std::string name;
    IFilmKey* key = nullptr;
    plugin.GetCameraNameAtTime(name, 0.5f, &key);
    EXPECT_EQ(name, "High");
    plugin.GetCameraNameAtTime(name, 1.0f, &key); // starts count
    EXPECT_EQ(name, "Low");
    EXPECT_EQ(key, low);                          // of equals the first
    plugin.GetCameraNameAtTime(name, 3.0f, &key); // ends don't
    EXPECT_EQ(name, "High");
    plugin.GetCameraNameAtTime(name, 5.0f, &key);
    EXPECT_EQ(name, "");
    EXPECT_EQ(key, nullptr);
}

TEST_F(FilmsTest, CameraKeysFromPriority2000OnNeverShow) {
    IFilm* film = OpenNewFilm();
    AddCut(film, "Never", 0, 5, 2000);
    std::string name = "old";
    plugin.GetCameraNameAtTime(name, 1.0f, nullptr);
    EXPECT_EQ(name, "");
    AddCut(film, "Last", 0, 5, 1999);
    plugin.GetCameraNameAtTime(name, 1.0f, nullptr);
    EXPECT_EQ(name, "Last");
}

TEST_F(FilmsTest, CameraWithoutAFilmIsEmpty) {
    std::string name = "old";
    IFilmKey* key = reinterpret_cast<IFilmKey*>(1);
    plugin.GetCameraNameAtTime(name, 1.0f, &key);
    EXPECT_EQ(name, "");
    EXPECT_EQ(key, nullptr);
}

TEST_F(FilmsTest, SettingsUpdateCopiesOnlyWhatTheMaskNames) {
    FilmViewSettings update;
    update.movieStart = 1;
    update.movieEnd = 2;
    update.viewStart = 3;
    update.viewEnd = 4;
    update.leftWidth = 5;
    update.rowHeight = 6;
    update.ticsDistance = 7;
    update.bigTics = 8;
    update.labelDistance = 9;
    update.cursorTime = 10;
    const auto expectOnly = [&](std::uint32_t mask, const auto& change) {
        plugin.ResetFilmViewSettings(3);
        plugin.filmViewSettings[3].cursorTime = 0.0f;
        FilmViewSettings expected;
        change(expected);
        update.mask = mask;
        plugin.SetFilmViewSettings(3, update);
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): to the bit, and nothing lies between members
        EXPECT_EQ(std::memcmp(&plugin.filmViewSettings[3], &expected, sizeof(expected)), 0)
            << "mask " << mask;
    };
    expectOnly(0, [](FilmViewSettings&) {});
    expectOnly(1, [](FilmViewSettings& s) { s.movieStart = 1, s.movieEnd = 2; });
    expectOnly(2, [](FilmViewSettings& s) { s.viewStart = 3, s.viewEnd = 4; });
    expectOnly(4, [](FilmViewSettings& s) { s.leftWidth = 5; });
    expectOnly(8, [](FilmViewSettings& s) { s.rowHeight = 6; });
    expectOnly(16, [](FilmViewSettings& s) { s.ticsDistance = 7; });
    expectOnly(32, [](FilmViewSettings& s) { s.bigTics = 8; });
    expectOnly(64, [](FilmViewSettings& s) { s.labelDistance = 9; });
    expectOnly(0x80, [](FilmViewSettings& s) { s.cursorTime = 10; });
    expectOnly(0x80000000u, [](FilmViewSettings& s) { s.cursorTime = 10; }); // any bit from 128 up
}

TEST_F(FilmsTest, SettingsIgnoreIndexesOutsideTheSlots) {
    FilmViewSettings update;
    update.leftWidth = 1;
    for (const int index : {-1, 200, 1000000}) {
        plugin.SetFilmViewSettings(index, update);
        plugin.ResetFilmViewSettings(index);
    }
    for (const FilmViewSettings& settings : plugin.filmViewSettings) {
        EXPECT_EQ(settings.leftWidth, 150);
    }
}

TEST_F(FilmsTest, SecondNewLevelKeepsDefaultsAndCursorTimes) {
    plugin.filmViewSettings[7].cursorTime = 4.0f;
    plugin.filmViewSettings[7].leftWidth = 99;
    plugin.OnNew();
    plugin.OnNew();
    EXPECT_EQ(plugin.filmViewSettings[7].leftWidth, 150);
    EXPECT_EQ(plugin.filmViewSettings[7].mask, 0xFFFFFFFFu);
    EXPECT_EQ(plugin.filmViewSettings[7].cursorTime, 4.0f);
}

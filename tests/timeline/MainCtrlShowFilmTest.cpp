#include "tests/timeline/ControlFixture.h"

#include "keys/views/TrackKey.h"
#include "tests/support/FakeAttributes.h"
#include "timeline/rows/TrackOrder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <utility>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class MainCtrlShowFilmTest : public ControlTest {};

} // namespace

TEST_F(MainCtrlShowFilmTest, ALevelTrackShowsItsRootRowAndHidesTheRest) {
    OpenNewFilm();
    EXPECT_THAT(RowNames(),
                ElementsAre("Level", "  Camera keys(0)", "  Sound keys", "  Java method keys", "  Flags keys",
                            "  FX sequence keys", "  FX particle keys", "  FX trace keys", "  FX rain keys",
                            "  FX blind keys", "  FX flare keys"));
    EXPECT_THAT(VisibleNames(), ElementsAre("Level"));
}

TEST_F(MainCtrlShowFilmTest, AnUnfoldedRootShowsTheKindsThatHaveKeys) {
    IFilm* film = OpenNewFilm();
    RowOf("Level")->SetExpanded(true, true);
    EXPECT_THAT(VisibleNames(), ElementsAre("Level")); // no kind has a key
    AddKey(film->mainTrack, KeyKind::Sound, 1.0f);
    control->ShowFilm(film, true);
    RowOf("Level")->SetExpanded(true, true);
    EXPECT_THAT(VisibleNames(), ElementsAre("Level", "Sound keys"));
}

TEST_F(MainCtrlShowFilmTest, EachClassOfTrackHasItsKindRows) {
    IFilm* film = OpenFilmWithActors(1);
    AddCamera(film, "Cam")->Finish();
    control->ShowFilm(film, true);
    const auto kinds = [](const CTrackCtrl* root) {
        std::vector<int> found;
        for (const CTrackCtrl* child : root->children) {
            found.push_back(child->kind);
        }
        return found;
    };
    EXPECT_THAT(kinds(RowOf("Actor100")), ElementsAre(10, 11, 12, 1, 8, 9, 13, 2, 3, 4, 7, 15));
    EXPECT_THAT(kinds(RowOf("Cam")), ElementsAre(16, 17, 19, 18));
}

TEST_F(MainCtrlShowFilmTest, AFilmIsShownWithTheSunOfItsLevel) {
    IFilm* film = OpenFilmWithActors(1);
    AddCamera(film, "Cam");
    Data().SetSun(true);
    control->ShowFilm(film, true);
    std::vector<std::string> roots;
    for (const CTrackCtrl* row : control->tracks) {
        if (row->IsRoot()) {
            roots.push_back(row->name);
        }
    }
    ASSERT_THAT(roots, ElementsAre("Level", "Sun", "Cam", "Actor100"));
    EXPECT_EQ(control->FindRowOfObject(plugin.FindObjectByTrack(RowOf("Sun")->track)), RowOf("Sun"));
}

TEST_F(MainCtrlShowFilmTest, TracksComeInTheirOrder) {
    IFilm* film = OpenFilmWith({editor.Create("zebra"), editor.Create("Ant")});
    AddCamera(film, "b");
    AddCamera(film, "B");
    control->ShowFilm(film, true);
    std::vector<std::string> roots;
    for (const CTrackCtrl* row : control->tracks) {
        if (row->IsRoot()) {
            roots.push_back(row->name);
        }
    }
    EXPECT_THAT(roots, ElementsAre("Level", "B", "b", "Ant", "zebra")); // by bytes
}

TEST_F(MainCtrlShowFilmTest, LightsComeLastByTheNamesOfTheirHelpers) {
    IFilm* film = OpenFilmWithActors(1);
    film->AddTrack(film->CreateGLLightTrack()); // whose object is missing
    EditorObject* second = editor.CreateOfClass(ClassName::GLLight, "Lamp");
    EditorObject* first = editor.CreateOfClass(ClassName::GLLight, "Torch");
    second->name = "b";
    first->name = "B";
    control->ShowFilm(film, true);
    std::vector<std::string> roots;
    for (const CTrackCtrl* row : control->tracks) {
        if (row->IsRoot()) {
            roots.push_back(row->name);
        }
    }
    EXPECT_THAT(roots, ElementsAre("Level", "Actor100", "B", "b", ""));
}

TEST_F(MainCtrlShowFilmTest, TracksAreFinishedBeforeTheyAreShown) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmTrack* track = RowOf("Actor100")->track;
    IFilmKey* key = Films().keyFactory->CreateKey(KeyKind::Position);
    track->keys.push_back(key); // as a host may do that builds a track by itself
    control->ShowFilm(film, true);
    EXPECT_EQ(key->track, track);
}

TEST_F(MainCtrlShowFilmTest, CameraRowsReachTheHighestIndex) {
    IFilm* film = OpenNewFilm();
    AddCut(film, "", 0.0f, 1.0f, 2);
    control->ShowFilm(film, true);
    EXPECT_NE(RowOf("Level", KeyKind::Camera, 2), nullptr);
    EXPECT_THAT(RowOf("Level", KeyKind::Camera, 2)->keys, SizeIs(1));
    EXPECT_THAT(RowOf("Level", KeyKind::Camera, 0)->keys, IsEmpty());
}

TEST_F(MainCtrlShowFilmTest, AnAbsurdCameraIndexMakesNoMillionRows) {
    IFilm* film = OpenNewFilm();
    AddCut(film, "", 0.0f, 1.0f, 1000000000);
    AddCut(film, "", 0.0f, 1.0f, -7);
    control->ShowFilm(film, true);
    EXPECT_NE(RowOf("Level", KeyKind::Camera, 1999), nullptr);
    EXPECT_EQ(RowOf("Level", KeyKind::Camera, 2000), nullptr);
}

TEST_F(MainCtrlShowFilmTest, EveryKeyHasAViewOnTheRowOfItsKind) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmTrack* track = RowOf("Actor100")->track;
    AddKey(track, KeyKind::Speech, 3.0f);
    AddKey(track, KeyKind::Flags, 4.0f);
    control->ShowFilm(film, true);
    ASSERT_THAT(RowOf("Actor100", KeyKind::Speech)->keys, SizeIs(1));
    const CTrackKey* speech = RowOf("Actor100", KeyKind::Speech)->keys.front();
    EXPECT_EQ(speech->time, 3.0f);
    EXPECT_EQ(speech->GetDuration(), 0.5f);
    EXPECT_EQ(RowOf("Actor100", KeyKind::Flags)->keys.front()->GetDuration(), 0.0f);
}

TEST_F(MainCtrlShowFilmTest, NothingIsSelectedAfterwards) {
    IFilm* film = OpenFilmWithActors(2);
    control->SelectOnly(RowOf("Actor100", KeyKind::Position)->keys.front());
    control->ShowFilm(film, true);
    EXPECT_THAT(control->selectedKeys, IsEmpty());
    for (const CTrackCtrl* row : control->tracks) {
        for (const CTrackKey* key : row->keys) {
            EXPECT_FALSE(key->selected);
            EXPECT_EQ(key->state, CTrackKey::kNormal);
        }
    }
}

TEST_F(MainCtrlShowFilmTest, ALongRowComesFromTallToShortAndLongToShort) {
    IFilm* film = OpenNewFilm();
    const float lengths[] = {1.0f, 3.0f, 2.0f, 3.0f};
    for (int i = 0; i < 4; ++i) {
        AddCut(film, "", 0.0f, lengths[i], 0)->delayTime = static_cast<float>(i);
    }
    control->ShowFilm(film, true);
    std::vector<float> order;
    for (const CTrackKey* key : RowOf("Level", KeyKind::Camera, 0)->keys) {
        order.push_back(key->GetDuration());
    }
    EXPECT_THAT(order, ElementsAre(3.0f, 3.0f, 2.0f, 1.0f));
}

TEST_F(MainCtrlShowFilmTest, TheFoldStateIsTheStoredOne) {
    IFilm* film = OpenFilmWithActors(2);
    RowOf("Actor101")->ToggleExpanded();
    plugin.SetCurrentFilm(nullptr);
    EXPECT_THAT(RowNames(), IsEmpty());
    plugin.SetCurrentFilm(film);
    EXPECT_FALSE(RowOf("Actor100")->expanded);
    EXPECT_TRUE(RowOf("Actor101")->expanded);
    EXPECT_THAT(VisibleNames(),
                ElementsAre("Level", "Actor100", "Actor101", "Position keys", "Rotation keys", "Scale keys"));
}

TEST_F(MainCtrlShowFilmTest, AFilmShownAnewKeepsTheShownPartOfItsAxis) {
    IFilm* film = OpenNewFilm();
    control->SetMovieRange(0.0f, 24.0f);
    control->SetViewRange(3.0f, 24.0f, /*redraw*/ false);
    control->CalcSecondsPerPixel();
    const float scale = control->secondsPerPixel;
    control->ShowFilm(film, true);
    EXPECT_EQ(control->movieEnd, 24.0f);
    EXPECT_EQ(control->viewStart, 3.0f);
    EXPECT_EQ(control->viewEnd, 24.0f);
    EXPECT_EQ(control->secondsPerPixel, scale);
    plugin.SetCurrentFilm(nullptr);
    plugin.SetCurrentFilm(film); // opened again it brings what is stored
    EXPECT_EQ(control->viewStart, 0.0f);
    EXPECT_EQ(control->viewEnd, 10.0f);
}

TEST_F(MainCtrlShowFilmTest, StoredSettingsThatChangedAreTakenWhenTheFilmIsShownAnew) {
    IFilm* film = OpenNewFilm();
    FilmViewSettings update;
    update.mask = FilmViewSettings::kView;
    update.viewStart = 1.0f;
    update.viewEnd = 4.0f;
    plugin.SetFilmViewSettings(film->index, update);
    control->ShowFilm(film, true);
    EXPECT_EQ(control->viewStart, 1.0f);
    EXPECT_EQ(control->viewEnd, 4.0f);
}

TEST_F(MainCtrlShowFilmTest, AFilmBringsItsSettings) {
    IFilm* film = OpenNewFilm();
    FilmViewSettings update;
    update.mask = FilmViewSettings::kMovie | FilmViewSettings::kView | FilmViewSettings::kTicsDistance;
    update.movieEnd = 25.0f;
    update.viewStart = 5.0f;
    update.viewEnd = 15.0f;
    update.ticsDistance = 0.5f;
    plugin.SetFilmViewSettings(film->index, update);
    IFilm* other = OpenNewFilm();
    EXPECT_EQ(control->movieEnd, 10.0f);
    plugin.SetCurrentFilm(film);
    EXPECT_EQ(control->movieEnd, 25.0f);
    EXPECT_EQ(control->viewStart, 5.0f);
    EXPECT_EQ(control->grid->ticDistance, 0.5f);
    plugin.SetCurrentFilm(other);
    EXPECT_EQ(control->viewEnd, 10.0f);
}

TEST_F(MainCtrlShowFilmTest, TheTopRowSurvivesARebuild) {
    IFilm* film = OpenFilmWithActors(40);
    control->topRow = RowOf("Actor107");
    control->ShowFilm(film, true);
    EXPECT_EQ(control->topRow, RowOf("Actor107"));
}

TEST_F(MainCtrlShowFilmTest, TheTimeSurvivesARebuild) {
    IFilm* film = OpenFilmWithActors(1);
    plugin.SetTime(2.5f, false);
    control->ShowFilm(film, true);
    EXPECT_EQ(plugin.currentTime, 2.5f);
    EXPECT_EQ(control->currentTime, 2.5f);
}

TEST_F(MainCtrlShowFilmTest, MarksGoWithTheFilm) {
    IFilm* film = OpenNewFilm();
    control->grid->AddMark(1.0f);
    control->ShowFilm(film, true);
    EXPECT_THAT(control->grid->marks, IsEmpty());
}

TEST_F(MainCtrlShowFilmTest, WithoutAFilmTheControlIsEmpty) {
    OpenFilmWithActors(3);
    control->ShowFilm(nullptr, true);
    EXPECT_THAT(RowNames(), IsEmpty());
    EXPECT_EQ(control->topRow, nullptr);
    EXPECT_EQ(control->vScroll->rangeEnd, 0.0f);
}

TEST_F(MainCtrlShowFilmTest, ARebuildKeepsTheKeyOfTheAttributesWindowWithoutWritingIt) {
    IFilm* film = OpenFilmWithActors(1);
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.visible = true;
    CTrackKey* view = RowOf("Actor100", KeyKind::Position)->keys.front();
    IFilmKey* record = view->record;
    dialog.key = view;
    dialog.record = record;
    control->ShowFilm(film, true);
    EXPECT_THAT(dialog.log, ElementsAre("Reset", "SetKey key"));
    EXPECT_EQ(dialog.record, record);
    EXPECT_EQ(dialog.key, RowOf("Actor100", KeyKind::Position)->keys.front());
    plugin.keyAttributesDlg.reset();
}

TEST_F(MainCtrlShowFilmTest, AnotherFilmTakesTheKeyOutOfTheAttributesWindow) {
    OpenFilmWithActors(1);
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.visible = true;
    dialog.key = RowOf("Actor100", KeyKind::Position)->keys.front();
    dialog.record = dialog.key->record;
    dialog.locked = true;
    control->ShowFilm(NewFilm(), true);
    EXPECT_THAT(dialog.log, ElementsAre("SetKey null"));
    EXPECT_FALSE(dialog.locked);
    plugin.keyAttributesDlg.reset();
}

TEST_F(MainCtrlShowFilmTest, ARootRowHasItsButtonOnceItIsPainted) {
    OpenFilmWithActors(40);
    Settle();
    CTrackCtrl* shown = RowOf("Actor100");
    EXPECT_TRUE(shown->expandButton.IsWindowVisible());
    EXPECT_EQ(shown->expandButton.GetWindowText(), "+");
    CTrackCtrl* below = RowOf("Actor139");
    EXPECT_EQ(below->expandButton.GetSafeHwnd(), nullptr);
    below->ToggleExpanded();
    control->topRow = below;
    control->RebuildVisibleRows(true, nullptr);
    Settle();
    EXPECT_TRUE(below->expandButton.IsWindowVisible());
    EXPECT_EQ(below->expandButton.GetWindowText(), "-");
    EXPECT_EQ(RowOf("Actor139", KeyKind::Position)->expandButton.GetSafeHwnd(), nullptr);
}

TEST_F(MainCtrlShowFilmTest, ManyFilmsOneAfterTheOther) {
    std::vector<IFilm*> films;
    for (int i = 0; i < IFilmManager::kFilms; ++i) {
        if (IFilm* film = NewFilm()) {
            films.push_back(film);
        }
    }
    ASSERT_THAT(films, SizeIs(IFilmManager::kFilms));
    for (IFilm* film : films) {
        plugin.SetCurrentFilm(film);
        ASSERT_THAT(VisibleNames(), ElementsAre("Level"));
    }
}

TEST_F(MainCtrlShowFilmTest, TwoThousandRowsScrollAndClose) {
    IFilm* film = OpenFilmWithActors(160); // 13 rows each
    EXPECT_GT(control->tracks.size(), 2000u);
    for (int i = 0; i < 30; ++i) {
        control->OnLineForward(control->vScroll);
        Settle();
    }
    EXPECT_EQ(control->topRow, control->visibleTracks[30]);
    control->ShowFilm(film, true);
    EXPECT_EQ(control->topRow, control->visibleTracks[30]);
}

TEST_F(MainCtrlShowFilmTest, NewLevelLeavesTheFilmThatIsOpenedWhileTheUserIsTold) {
    IFilm* film = OpenFilmWithActors(1);
    bool told = false;
    Hooks().messageBox = [&](const std::string&, UINT) {
        told = true;
        plugin.SetCurrentFilm(film); // of the level that goes
        return IDOK;
    };
    plugin.OnNew(); // the editor has no file of key parameters
    EXPECT_TRUE(told);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_TRUE(control->tracks.empty());
}

TEST_F(MainCtrlShowFilmTest, WindowMayGoWhileTheUserIsToldOfAMissingElement) {
    IFilm* film = OpenFilmWithActors(1);
    const std::string element = "tail";
    AddKey(film->tracks.back(), KeyKind::Animation, 1.0f)->SetValue(&element);
    boxes.clear();
    Hooks().messageBox = [&](const std::string& text, UINT) {
        boxes.push_back(text);
        plugin.scenarioDlg = nullptr;
        control.reset();
        return IDOK;
    };
    control->ShowFilm(film, true);
    EXPECT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(control, nullptr);
}

TEST_F(MainCtrlShowFilmTest, KeyThatIsMadeWhileTheUserIsToldOfAMissingElementIsShownOnce) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmTrack* track = film->tracks.back();
    const std::string element = "tail";
    AddKey(track, KeyKind::Animation, 1.0f)->SetValue(&element);
    boxes.clear();
    Hooks().messageBox = [&](const std::string& text, UINT) {
        boxes.push_back(text);
        EditorObject* actor = plugin.FindObjectByTrack(track);
        std::array<float, 16> before{};
        std::copy_n(actor->GetMatrix(0), before.size(), before.begin());
        std::array<float, 16> now = before;
        now[12] += 5.0f; // x of the place
        control->RecordObjectKeys(actor, 3.0f, now.data(), before.data());
        return IDOK;
    };
    control->ShowFilm(film, true);
    EXPECT_THAT(boxes, SizeIs(1));
    const CTrackCtrl* row = RowOf("Actor100", KeyKind::Position);
    EXPECT_EQ(std::ranges::count_if(row->keys, [](const CTrackKey* view) { return view->time == 3.0f; }), 1);
}

TEST_F(MainCtrlShowFilmTest, WindowMayGoWhileTheKeyOnShowIsWritten) {
    OpenFilmWithActors(1);
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.key = RowOf("Actor100", KeyKind::Position)->keys.front();
    dialog.record = dialog.key->record;
    dialog.onSetKey = [this] {
        plugin.scenarioDlg = nullptr;
        control.reset();
    };
    control->ShowFilm(NewFilm(), true);
    EXPECT_EQ(control, nullptr);
    plugin.keyAttributesDlg.reset();
}

TEST_F(MainCtrlShowFilmTest, FilmThatIsOpenedWhileTheKeyOnShowIsWrittenStays) {
    OpenFilmWithActors(1);
    FakeAttributes& dialog = OpenFakeAttributes(plugin);
    dialog.key = RowOf("Actor100", KeyKind::Position)->keys.front();
    dialog.record = dialog.key->record;
    IFilm* later = NewFilm();
    AddCamera(later, "Late");
    bool asked = false;
    dialog.onSetKey = [&] {
        if (!std::exchange(asked, true)) {
            plugin.SetCurrentFilm(later);
        }
    };
    plugin.SetCurrentFilm(NewFilm());
    EXPECT_EQ(plugin.GetCurrentFilm(), later);
    EXPECT_NE(RowOf("Late"), nullptr);
    ExpectNothingDangles();
}

TEST_F(MainCtrlShowFilmTest, TrackMayBeRemovedWhileTheUserIsToldOfItsMissingElement) {
    IFilm* film = OpenFilmWithActors(3);
    CFilmTrack* doomed = RowOf("Actor101")->track;
    const std::string element = "tail";
    AddKey(doomed, KeyKind::Animation, 1.0f)->SetValue(&element);
    boxes.clear();
    Hooks().messageBox = [&](const std::string& text, UINT) {
        boxes.push_back(text);
        for (const char* name : {"Actor101", "Actor100"}) {
            control->RemoveTrackCtrl(RowOf(name), /*redraw*/ true);
        }
        return IDOK;
    };
    control->ShowFilm(film, true);
    EXPECT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(RowOf("Actor100"), nullptr);
    EXPECT_EQ(RowOf("Actor101"), nullptr);
    EXPECT_NE(RowOf("Actor102"), nullptr);
    EXPECT_FALSE(control->IsRebuilding());
    ExpectNothingDangles();
}

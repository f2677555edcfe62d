#include "tests/timeline/ScenarioDlgFixture.h"

#include "keys/views/TrackKey.h"
#include "resources/resource.h"
#include "tests/support/FakeAttributes.h"

#include <algorithm>
#include <set>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ScenarioCommandsTest : public ScenarioDlgTest {
protected:
    /// An opened film with one actor that has position keys at 1 and 2 seconds and an animation key at 3, its
    /// rows unfolded.
    void OpenFilmWithKeys() {
        IFilm* film = OpenFilmWith({editor.Create("Crate")});
        CFilmTrack* track = film->tracks.back();
        track->ClearKind(KeyKind::Position);
        AddKey(track, KeyKind::Position, 1.0f);
        AddKey(track, KeyKind::Position, 2.0f);
        AddKey(track, KeyKind::Animation, 3.0f);
        ShowRows();
    }
    CTrackKey* Position(std::size_t index) { return RowOf("Crate", KeyKind::Position)->keys[index]; }
};

} // namespace

TEST_F(ScenarioCommandsTest, OnlySomeCommandsReachTheBaseClass) {
    const std::set<UINT> kept = {36820, 36821, 36822, 36824, 36833, 36834,
                                 36838, 36839, 36840, 36841, 36851, 36852};
    for (UINT id = 36797; id <= 36877; ++id) {
        window->baseCommands.clear();
        Command(id);
        if (kept.count(id) != 0) {
            EXPECT_THAT(window->baseCommands, IsEmpty()) << id;
        } else {
            EXPECT_THAT(window->baseCommands, ElementsAre(id));
        }
    }
}

TEST_F(ScenarioCommandsTest, NotificationCodesAreNoCommands) {
    OpenNewFilm();
    GoTo(4.0f);
    window->SendMessage(WM_COMMAND, MAKEWPARAM(IDC_MOVE_TO_END, 1));
    EXPECT_EQ(plugin.currentTime, 4.0f);
}

TEST_F(ScenarioCommandsTest, EditsUnderWayAreWrittenBeforeEachCommand) {
    OpenNewFilm();
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    int written = 0;
    attributes.onApplyPending = [&written] { ++written; };
    for (const UINT id :
         {36821, 36822, 36824, 36833, 36834, 36838, 36839, 36840, 36841, 36851, 36852, 36864, 36865}) {
        written = 0;
        Command(id);
        EXPECT_EQ(written, 1) << id;
    }
}

TEST_F(ScenarioCommandsTest, WithoutAFilmTheCommandsDoNothing) {
    GoTo(4.0f);
    for (UINT id = IDC_PLAY_MOVIE; id <= IDC_SELECT_KEY; ++id) {
        Command(id);
    }
    EXPECT_EQ(plugin.currentTime, 4.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_EQ(plugin.animateObjects, 0);
}

TEST_F(ScenarioCommandsTest, CommandsAfterTheControlsEndAreHarmless) {
    OpenFilmWithKeys();
    window->SendMessage(WM_DESTROY); // the window is about to go: its control is gone
    ASSERT_EQ(window->mainCtrl, nullptr);
    for (UINT id = IDC_STOP_MOVIE; id <= IDC_SELECT_KEY; ++id) {
        Command(id);
    }
    window->ShowCurrentFilm();
    window->RecalcLayout();
    window->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_EQ(plugin.currentTime, 10.0f); // begin, end, a frame back, a frame forward
}

TEST_F(ScenarioCommandsTest, PlayRunsFromTheCurrentTimeToTheEnd) {
    OpenNewFilm();
    GoTo(9.0f);
    frames.clear();
    RunClock(250);
    Command(IDC_PLAY_MOVIE);
    ASSERT_FALSE(frames.empty());
    EXPECT_GT(frames.front(), 9.0f);
    EXPECT_LE(frames.back(), 10.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_EQ(Control().currentTime, frames.back()) << "the cursor follows each frame";
}

TEST_F(ScenarioCommandsTest, StopEndsAPlayingFilm) {
    OpenNewFilm();
    RunClock(100);
    InsidePump([this] { Command(IDC_STOP_MOVIE); });
    Command(IDC_PLAY_MOVIE);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_LT(plugin.currentTime, 5.0f);
}

TEST_F(ScenarioCommandsTest, ValidateMarksTheFilm) {
    IFilm* film = OpenNewFilm();
    film->validated = 0;
    Command(IDC_VALIDATE_MOVIE);
    EXPECT_EQ(film->validated, 1);
}

TEST_F(ScenarioCommandsTest, AnimateTurnsTheModeAndItsButton) {
    OpenNewFilm();
    Command(IDC_ANIMATE_OBJECT);
    EXPECT_EQ(plugin.animateObjects, 1);
    EXPECT_TRUE(IsPressed(IDC_ANIMATE_OBJECT));
    Command(IDC_ANIMATE_OBJECT);
    EXPECT_EQ(plugin.animateObjects, 0);
    EXPECT_FALSE(IsPressed(IDC_ANIMATE_OBJECT));
}

TEST_F(ScenarioCommandsTest, AnimateOffReleasesTheButtonDeselectKeys) {
    OpenNewFilm();
    window->PressButton(IDC_DESELECT_KEYS, true);
    Command(IDC_ANIMATE_OBJECT);
    EXPECT_TRUE(IsPressed(IDC_DESELECT_KEYS));
    Command(IDC_ANIMATE_OBJECT);
    EXPECT_FALSE(IsPressed(IDC_DESELECT_KEYS)); // required: another button than the command's own
}

TEST_F(ScenarioCommandsTest, AttachTurnsTheActiveViewOnAndOff) {
    OpenNewFilm();
    Command(IDC_ATTACH_MOVIE);
    EXPECT_THAT(plugin.attachedViews, ElementsAre(0));
    EXPECT_TRUE(IsPressed(IDC_ATTACH_MOVIE));
    Command(IDC_ATTACH_MOVIE);
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
    EXPECT_FALSE(IsPressed(IDC_ATTACH_MOVIE));
}

TEST_F(ScenarioCommandsTest, AttachButtonFollowsTheActiveView) {
    OpenNewFilm();
    Command(IDC_ATTACH_MOVIE);
    editor.activeView = 1;
    window->UpdateAttachButton();
    EXPECT_FALSE(IsPressed(IDC_ATTACH_MOVIE));
    editor.activeView = 0;
    window->UpdateAttachButton();
    EXPECT_TRUE(IsPressed(IDC_ATTACH_MOVIE));
    editor.activeView = -1;
    window->UpdateAttachButton();
    EXPECT_FALSE(IsPressed(IDC_ATTACH_MOVIE));
}

TEST_F(ScenarioCommandsTest, NewWindowShowsThatTheActiveViewIsAttached) {
    OpenNewFilm();
    Command(IDC_ATTACH_MOVIE);
    delete window;
    window = new ObservedScenarioDlg(plugin);
    EXPECT_TRUE(IsPressed(IDC_ATTACH_MOVIE));
}

TEST_F(ScenarioCommandsTest, AttachWithoutAnActiveViewOnlyReleasesTheButton) {
    OpenNewFilm();
    editor.activeView = -1;
    window->PressButton(IDC_ATTACH_MOVIE, true);
    Command(IDC_ATTACH_MOVIE);
    EXPECT_FALSE(IsPressed(IDC_ATTACH_MOVIE));
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
}

TEST_F(ScenarioCommandsTest, RefusedAttachLeavesTheButtonPressed) {
    OpenNewFilm();
    editor.refuseAttach = true;
    Command(IDC_ATTACH_MOVIE);
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
    EXPECT_TRUE(IsPressed(IDC_ATTACH_MOVIE)); // required: nothing puts it right
}

TEST_F(ScenarioCommandsTest, BeginAndEndMoveTheTimeAndTheCursor) {
    OpenNewFilm()->length = 8.5f;
    GoTo(4.0f);
    frames.clear();
    Command(IDC_MOVE_TO_END);
    EXPECT_EQ(plugin.currentTime, 8.5f);
    EXPECT_EQ(Control().currentTime, 8.5f);
    Command(IDC_MOVE_TO_BEGIN);
    EXPECT_EQ(plugin.currentTime, 0.0f);
    EXPECT_EQ(Control().currentTime, 0.0f);
    EXPECT_THAT(frames, ElementsAre(8.5f, 0.0f)) << "each poses the film once";
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(ScenarioCommandsTest, BeginInAPlayingFilmPlaysOnFromZero) {
    OpenNewFilm();
    GoTo(6.0f);
    frames.clear();
    RunClock(250);
    InsidePump([this] {
        frames.clear();
        Command(IDC_MOVE_TO_BEGIN);
    });
    Command(IDC_PLAY_MOVIE);
    ASSERT_GT(frames.size(), 2U);
    EXPECT_EQ(frames[0], 0.0f);
    EXPECT_LT(frames[1], 1.0f);
    EXPECT_GT(frames.back(), 9.0f) << "it plays to the end";
    EXPECT_TRUE(std::ranges::is_sorted(frames)) << "the interrupted play doesn't go on";
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(ScenarioCommandsTest, EndInAPlayingFilmStopsIt) {
    OpenNewFilm();
    RunClock(250);
    InsidePump([this] { Command(IDC_MOVE_TO_END); });
    Command(IDC_PLAY_MOVIE);
    EXPECT_EQ(plugin.currentTime, 10.0f);
    EXPECT_EQ(plugin.isPlaying, 0);
}

TEST_F(ScenarioCommandsTest, FrameStepsMoveTheTimeAndTheCursor) {
    OpenNewFilm();
    GoTo(1.5f);
    Command(IDC_FRAME_BACK);
    EXPECT_FLOAT_EQ(plugin.currentTime, 1.4666667f); // 44 / 30
    EXPECT_FLOAT_EQ(Control().currentTime, 1.4666667f);
    Command(IDC_FRAME_FORWARD);
    EXPECT_FLOAT_EQ(plugin.currentTime, 1.5f);
    EXPECT_FLOAT_EQ(Control().currentTime, 1.5f);
    GoTo(1.51f);
    Command(IDC_FRAME_BACK);
    EXPECT_FLOAT_EQ(plugin.currentTime, 1.5f);
}

TEST_F(ScenarioCommandsTest, FrameStepsStopAtTheFilmsEnds) {
    OpenNewFilm();
    Command(IDC_FRAME_BACK);
    EXPECT_EQ(plugin.currentTime, 0.0f);
    GoTo(10.0f);
    Command(IDC_FRAME_FORWARD);
    EXPECT_EQ(plugin.currentTime, 10.0f);
}

TEST_F(ScenarioCommandsTest, FrameStepsWithoutARateStay) {
    OpenNewFilm();
    plugin.framesPerSecond = 0;
    GoTo(1.51f);
    Command(IDC_FRAME_BACK);
    EXPECT_EQ(plugin.currentTime, 1.51f);
    Command(IDC_FRAME_FORWARD);
    EXPECT_EQ(plugin.currentTime, 1.51f);
}

TEST_F(ScenarioCommandsTest, FrameStepInAPlayingFilmPlaysOn) {
    for (const UINT step : {IDC_FRAME_BACK, IDC_FRAME_FORWARD}) {
        OpenNewFilm();
        RunClock(250);
        bool wasPlaying = false;
        InsidePump([&] {
            wasPlaying = plugin.isPlaying != 0;
            Command(step);
        });
        Command(IDC_PLAY_MOVIE);
        EXPECT_TRUE(wasPlaying);
        EXPECT_GT(plugin.currentTime, 9.0f);
        EXPECT_EQ(plugin.isPlaying, 0);
    }
}

TEST_F(ScenarioCommandsTest, StepsInAPlayingFilmPoseItStopped) {
    for (const UINT step : {IDC_MOVE_TO_BEGIN, IDC_MOVE_TO_END, IDC_FRAME_BACK, IDC_FRAME_FORWARD}) {
        OpenNewFilm();
        RunClock(250);
        std::vector<int> playing;
        InsidePump([&] {
            playing.push_back(plugin.isPlaying);
            editor.onBroadcast = [&](int, void*) { playing.push_back(plugin.isPlaying); };
            Command(step);
        });
        Command(IDC_PLAY_MOVIE);
        editor.onBroadcast = nullptr;
        ASSERT_GE(playing.size(), 2u) << step;
        EXPECT_EQ(playing[0], 1) << step;
        EXPECT_EQ(playing[1], 0) << step;
    }
}

TEST_F(ScenarioCommandsTest, WindowMayGoInAPlayingFilm) {
    OpenNewFilm();
    RunClock(250);
    InsidePump([this] {
        InsidePump([this] { delete window; });
        Command(IDC_FRAME_FORWARD);
    });
    Command(IDC_PLAY_MOVIE);
    EXPECT_FALSE(IsAlive());
    EXPECT_GT(plugin.currentTime, 9.0f) << "the film plays on without it";
}

TEST_F(ScenarioCommandsTest, UndoAndRedoHaveNoEffect) {
    OpenFilmWithKeys();
    GoTo(2.0f);
    Position(0)->SetPosition(1.25f, /*viewOnly*/ false);
    Command(IDC_UNDO);
    Command(IDC_REDO);
    EXPECT_EQ(Position(0)->time, 1.25f);
    EXPECT_EQ(plugin.currentTime, 2.0f);
}

TEST_F(ScenarioCommandsTest, CameraFrameIsMadeOnTheTrackOnShow) {
    IFilm* film = OpenNewFilm();
    CFilmCameraTrack* camera = AddCamera(film, "Cam");
    plugin.trackVisualizer.SetRenderTrack(camera);
    Command(IDC_CREATE_CAMERA_FRAME);
    EXPECT_EQ(KeysOf(*camera, KeyKind::CameraPosition).size(), 1U);
    EXPECT_THAT(window->baseCommands, ElementsAre(36846U));
}

TEST_F(ScenarioCommandsTest, ToVirtualObjectTakesTheSelection) {
    OpenNewFilm();
    editor.Select({editor.Create("Crate")});
    boxAnswer = IDYES;
    Command(IDC_TO_VIRTUAL_OBJECT);
    EXPECT_EQ(plugin.virtualObjects.size(), 1U);
}

TEST_F(ScenarioCommandsTest, DeselectKeysClearsTheMarksOfTheTrack) {
    OpenFilmWithKeys();
    Control().SelectOnly(Position(0));
    Position(0)->marked = true;
    Position(1)->marked = true;
    Command(IDC_DESELECT_KEYS);
    EXPECT_FALSE(Position(0)->marked);
    EXPECT_FALSE(Position(1)->marked);
}

TEST_F(ScenarioCommandsTest, DeselectKeysWorksOnlyFromAMarkedKey) {
    OpenFilmWithKeys();
    Position(1)->marked = true;
    Command(IDC_DESELECT_KEYS);
    EXPECT_TRUE(Position(1)->marked) << "no key is selected";
    Control().SelectOnly(Position(0));
    Command(IDC_DESELECT_KEYS);
    EXPECT_TRUE(Position(1)->marked) << "the oldest selected key isn't marked";
}

TEST_F(ScenarioCommandsTest, SelectKeyTurnsTheMarkOfTheOldestSelectedKey) {
    OpenFilmWithKeys();
    Control().SelectOnly(Position(1));
    Control().selectedKeys.push_back(Position(0));
    Command(IDC_SELECT_KEY);
    EXPECT_TRUE(Position(1)->marked);
    EXPECT_FALSE(Position(0)->marked);
    EXPECT_TRUE(IsPressed(IDC_SELECT_KEY));
    Command(IDC_SELECT_KEY);
    EXPECT_FALSE(Position(1)->marked);
    EXPECT_FALSE(IsPressed(IDC_SELECT_KEY));
}

TEST_F(ScenarioCommandsTest, SelectKeyWithoutAKeyLeavesTheButton) {
    OpenFilmWithKeys();
    window->PressButton(IDC_SELECT_KEY, true);
    Command(IDC_SELECT_KEY);
    EXPECT_TRUE(IsPressed(IDC_SELECT_KEY));
}

TEST_F(ScenarioCommandsTest, TurnedMarkIsPainted) {
    OpenFilmWithKeys();
    window->Show();
    Control().SelectOnly(Position(0));
    Settle();
    CRect update;
    ASSERT_FALSE(RowOf("Crate", KeyKind::Position)->GetUpdateRect(&update));
    ASSERT_FALSE(window->GetUpdateRect(&update));
    Command(IDC_SELECT_KEY);
    EXPECT_TRUE(RowOf("Crate", KeyKind::Position)->GetUpdateRect(&update));
    EXPECT_TRUE(window->GetUpdateRect(&update));
}

#include "tests/timeline/ScenarioDlgFixture.h"

#include "framework/Button.h"
#include "framework/QtBridge.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/support/FakeAttributes.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ScenarioWindowTest : public ScenarioDlgTest {
protected:
    /// A view of so many seconds from `start` on, at 0.1 seconds per pixel: the time area of the window of
    /// 500 pixels is 500 - 150 - 20 = 330 pixels wide.
    void View(float start, float movieEnd) {
        Control().SetMovieRange(0.0f, movieEnd);
        Control().SetViewRange(start, start + 33.0f, /*redraw*/ false);
        Control().CalcSecondsPerPixel();
    }
    void Resize(int width, int height) {
        window->SetWindowPos(nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    }
    CRect Sizing(UINT side, CRect rect) {
        window->SendMessage(WM_SIZING, side, reinterpret_cast<LPARAM>(&rect));
        return rect;
    }
    CRect PlaceOf(const CWnd& child) {
        CRect rect;
        child.GetWindowRect(&rect);
        window->ScreenToClient(&rect);
        return rect;
    }
    void OpenManyRows() {
        std::vector<EditorObject*> actors;
        actors.reserve(20);
        for (int i = 0; i < 20; ++i) {
            actors.push_back(editor.Create("Actor" + std::to_string(100 + i)));
        }
        OpenFilmWith(actors);
        window->ShowCurrentFilm();
    }
    std::string TopRow() { return Control().topRow != nullptr ? Control().topRow->name : "none"; }
    void TurnWheel(const CWnd& over, int delta) {
        const QWidget* widget = NativeWidget(over);
        const QPointF place = widget->mapTo(NativeWidget(*window), widget->rect().center());
        QWheelEvent wheel(place, widget->mapToGlobal(widget->rect().center()), QPoint(), QPoint(0, delta),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&wheel); // as the user's, it climbs from widget to widget
        qApp->notify(Native(), &wheel);
    }
};

} // namespace

TEST_F(ScenarioWindowTest, ConstructionMakesAHiddenWindowOfTheFirstSize) {
    CRect client;
    window->GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 500, 300));
    EXPECT_EQ(window->GetWindowText(), "Scenario");
    EXPECT_FALSE(window->IsVisible());
    EXPECT_TRUE(window->IsEnabled());
    EXPECT_TRUE(window->initialised);
    EXPECT_EQ(plugin.scenarioDlg, window);
    EXPECT_EQ(window->GetMainCtrl(), &Control());
    EXPECT_EQ(window->GetDlgItem(1234), &Control());
    EXPECT_EQ(Control().IsFlickerFree(), 1);
}

TEST_F(ScenarioWindowTest, ToolbarTakesTheTopAndTheControlTheRest) {
    const CRect bar = PlaceOf(window->toolbar);
    EXPECT_EQ(bar.TopLeft(), CPoint(0, 0));
    EXPECT_EQ(bar.Width(), 500);
    EXPECT_GT(bar.Height(), 16);
    EXPECT_EQ(PlaceOf(Control()), CRect(0, bar.bottom, 500, 300));
    Resize(730, 410);
    EXPECT_EQ(PlaceOf(window->toolbar), CRect(0, 0, 730, bar.bottom));
    EXPECT_EQ(PlaceOf(Control()), CRect(0, bar.bottom, 730, 410));
}

TEST_F(ScenarioWindowTest, ChildrenOfTheControlFollowTheWindow) {
    Resize(700, 300);
    CRect grid;
    Control().grid->GetClientRect(&grid);
    EXPECT_EQ(grid.Width(), 530); // 700 - 150 - 20
}

TEST_F(ScenarioWindowTest, ShowMakesItVisibleWithTheKeyboardOnTheControl) {
    window->Show();
    EXPECT_TRUE(window->IsVisible());
    ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(*window)));
    EXPECT_EQ(CWnd::GetFocus(), &Control());
}

TEST_F(ScenarioWindowTest, ControlTakesTheKeyboardWhenItDescribesAKey) {
    OpenManyRows();
    window->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(*window)));
    window->toolbar.SetFocus();
    ASSERT_NE(CWnd::GetFocus(), &Control());
    Control().ShowKeyDescription(RowOf("Actor100", KeyKind::Position)->keys.front());
    Control().SendMessage(WM_TIMER, 0); // the delay is over
    EXPECT_EQ(CWnd::GetFocus(), &Control());
}

TEST_F(ScenarioWindowTest, ShowsTheFilmAndTheTimeItIsTold) {
    IFilm* film = OpenNewFilm();
    EXPECT_EQ(Control().tracks.front()->track, film->mainTrack);
    window->SetTime(2.5f);
    EXPECT_EQ(Control().currentTime, 2.5f);
    plugin.SetCurrentFilm(nullptr);
    EXPECT_THAT(Control().tracks, IsEmpty());
}

TEST_F(ScenarioWindowTest, WindowMadeWhileAFilmIsOpenShowsItAtItsTime) {
    OpenNewFilm();
    GoTo(3.0f);
    delete window;
    window = new ObservedScenarioDlg(plugin);
    EXPECT_THAT(Control().tracks, Not(IsEmpty()));
    EXPECT_EQ(Control().currentTime, 3.0f);
    EXPECT_EQ(plugin.currentTime, 3.0f);
}

TEST_F(ScenarioWindowTest, WideningKeepsTheScaleAndShowsMoreTime) {
    View(10.0f, 100.0f);
    Resize(600, 300);
    EXPECT_FLOAT_EQ(Control().viewStart, 10.0f);
    EXPECT_FLOAT_EQ(Control().viewEnd, 53.0f); // 100 pixels more
    EXPECT_FLOAT_EQ(Control().secondsPerPixel, 0.1f);
    EXPECT_EQ(Control().movieEnd, 100.0f);
}

TEST_F(ScenarioWindowTest, NarrowingKeepsTheScaleAndShowsLessTime) {
    View(10.0f, 100.0f);
    Resize(450, 300);
    EXPECT_FLOAT_EQ(Control().viewStart, 10.0f);
    EXPECT_FLOAT_EQ(Control().viewEnd, 38.0f); // 50 pixels less
    EXPECT_EQ(Control().movieEnd, 100.0f);
}

TEST_F(ScenarioWindowTest, HeightLeavesTheView) {
    View(10.0f, 100.0f);
    Resize(500, 700);
    EXPECT_FLOAT_EQ(Control().viewStart, 10.0f);
    EXPECT_FLOAT_EQ(Control().viewEnd, 43.0f);
}

TEST_F(ScenarioWindowTest, WideningAtTheEndOfTheAxisStretchesThePicture) {
    View(0.0f, 33.0f);
    Resize(600, 300);
    EXPECT_FLOAT_EQ(Control().viewEnd, 33.0f); // there is no more time to show
    EXPECT_FLOAT_EQ(Control().secondsPerPixel, 0.1f);
    Resize(500, 300);
    EXPECT_FLOAT_EQ(Control().viewEnd, 23.0f); // required: the way back loses what the way there didn't win
}

TEST_F(ScenarioWindowTest, NarrowingBehindTheFilmsEndShortensTheAxis) {
    OpenNewFilm()->length = 20.0f;
    View(0.0f, 33.0f);
    Resize(450, 300);
    EXPECT_FLOAT_EQ(Control().viewEnd, 28.0f); // 50 pixels less is above the 20 seconds of the film
    EXPECT_FLOAT_EQ(Control().movieEnd, 28.0f);
    Resize(300, 300);
    EXPECT_FLOAT_EQ(Control().viewEnd, 13.0f); // inside the film the axis stays
    EXPECT_FLOAT_EQ(Control().movieEnd, 28.0f);
}

TEST_F(ScenarioWindowTest, NarrowingPastTheStartOfTheViewTurnsItRound) {
    Control().SetMovieRange(0.0f, 100.0f);
    Control().SetViewRange(30.0f, 33.0f, /*redraw*/ false);
    Control().secondsPerPixel = 0.1f;
    Resize(450, 300);
    EXPECT_FLOAT_EQ(Control().viewStart, 28.0f); // 33 - 5 lies in front of 30
    EXPECT_FLOAT_EQ(Control().viewEnd, 30.0f);
}

TEST_F(ScenarioWindowTest, NarrowingAStretchedPictureLeavesWhatIsShown) {
    View(0.0f, 33.0f);
    Resize(1300, 300); // the 33 seconds stretch over 1130 pixels
    Resize(700, 300);  // 600 pixels of 0.1 seconds are more than all of them
    EXPECT_FLOAT_EQ(Control().viewStart, 0.0f);
    EXPECT_FLOAT_EQ(Control().viewEnd, 33.0f);
    EXPECT_FLOAT_EQ(Control().secondsPerPixel, 33.0f / 530.0f); // of 700 - 150 - 20 pixels
    Resize(600, 300);
    EXPECT_FLOAT_EQ(Control().viewEnd, 33.0f - 100.0f * (33.0f / 530.0f));
}

TEST_F(ScenarioWindowTest, AWindowTooNarrowForTimeShowsItAgainWhenItWidens) {
    View(0.0f, 33.0f);
    Resize(100, 300); // narrower than the names
    EXPECT_GT(Control().viewEnd, Control().viewStart);
    Resize(500, 300);
    EXPECT_FLOAT_EQ(Control().viewStart, 0.0f);
    EXPECT_FLOAT_EQ(Control().viewEnd, 33.0f);
}

TEST_F(ScenarioWindowTest, EndlessScaleLeavesTheView) {
    View(0.0f, 100.0f);
    Control().secondsPerPixel = 1.0e38f;
    Resize(600, 300);
    EXPECT_FLOAT_EQ(Control().viewEnd, 33.0f);
}

TEST_F(ScenarioWindowTest, MinimizingLeavesTheLayout) {
    View(0.0f, 100.0f);
    const CRect before = PlaceOf(Control());
    Control().MoveWindow(0, 0, 100, 100);
    window->SendMessage(WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(PlaceOf(Control()), CRect(0, 0, 100, 100));
    window->SendMessage(WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(500, 300));
    EXPECT_EQ(PlaceOf(Control()), before);
}

TEST_F(ScenarioWindowTest, TinyWindowsAreLaidOut) {
    Resize(1, 1);
    Resize(30, 20);
    Resize(500, 300);
    EXPECT_EQ(PlaceOf(Control()).Width(), 500);
}

TEST_F(ScenarioWindowTest, SizingStopsAtTheLeastSizeOnTheSideThatIsDragged) {
    const CRect small(200, 300, 250, 350); // 450 too narrow, 50 too low
    EXPECT_EQ(Sizing(1, small), CRect(-250, 300, 250, 350));
    EXPECT_EQ(Sizing(2, small), CRect(200, 300, 700, 350));
    EXPECT_EQ(Sizing(3, small), CRect(200, 250, 250, 350));
    EXPECT_EQ(Sizing(4, small), CRect(-250, 250, 250, 350));
    EXPECT_EQ(Sizing(5, small), CRect(200, 250, 700, 350));
    EXPECT_EQ(Sizing(6, small), CRect(200, 300, 250, 400));
    EXPECT_EQ(Sizing(7, small), CRect(-250, 300, 250, 400));
    EXPECT_EQ(Sizing(8, small), CRect(200, 300, 700, 400));
}

TEST_F(ScenarioWindowTest, SizingLeavesARectThatIsLargeEnough) {
    const CRect least(200, 300, 700, 400);
    for (UINT side = 0; side <= 9; ++side) {
        EXPECT_EQ(Sizing(side, least), least) << "side " << side;
    }
    const CRect small(0, 0, 10, 10);
    EXPECT_EQ(Sizing(0, small), small) << "no side is dragged";
    EXPECT_EQ(Sizing(9, small), small);
}

TEST_F(ScenarioWindowTest, ClosingHidesItAndItCanBeShownAgain) {
    OpenNewFilm();
    window->Show();
    NativeWidget(*window)->close();
    ASSERT_TRUE(IsAlive());
    EXPECT_FALSE(window->IsVisible());
    EXPECT_NE(window->mainCtrl, nullptr);
    window->Show();
    EXPECT_TRUE(window->IsVisible());
}

TEST_F(ScenarioWindowTest, ClosingHidesAVisibleAttributesWindow) {
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    window->Show();
    window->SendMessage(WM_CLOSE);
    EXPECT_FALSE(attributes.visible);
    EXPECT_THAT(attributes.log, ElementsAre("Hide"));
    window->Show();
    window->SendMessage(WM_CLOSE);
    EXPECT_THAT(attributes.log, ElementsAre("Hide")) << "a hidden one is left alone";
}

TEST_F(ScenarioWindowTest, EscapeAndReturnHideIt) {
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        window->Show();
        QTest::keyClick(Native(), key);
        ASSERT_TRUE(IsAlive());
        EXPECT_FALSE(window->IsVisible());
    }
}

TEST_F(ScenarioWindowTest, DestroyedWindowIsForgotten) {
    OpenNewFilm();
    window->DestroyWindow();
    EXPECT_EQ(plugin.scenarioDlg, nullptr);
    EXPECT_EQ(plugin.GetMainCtrl(), nullptr);
    GoTo(1.0f); // nothing is told any more
    plugin.SetCurrentFilm(nullptr);
}

TEST_F(ScenarioWindowTest, GoesWithTheHostsMainWindow) {
    delete window;
    auto main = std::make_unique<QWidget>();
    window = new ObservedScenarioDlg(plugin, WrapWidget(main.get()));
    EXPECT_EQ(NativeWidget(*window)->parentWidget(), main.get());
    OpenNewFilm();
    main.reset();
    EXPECT_FALSE(IsAlive());
}

TEST_F(ScenarioWindowTest, SpaceBarPlaysFromTheCurrentTimeAgainAndAgain) {
    OpenNewFilm();
    GoTo(7.0f);
    window->Show();
    RunClock(500);
    QTest::keyClick(Native(), Qt::Key_Space);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_GT(plugin.currentTime, 8.0f);
    EXPECT_LE(plugin.currentTime, 10.0f);
    GoTo(7.0f);
    frames.clear();
    MSG repeat;
    repeat.message = WM_KEYDOWN;
    repeat.wParam = 32;
    repeat.lParam = 0x40000000; // the key was down before
    EXPECT_FALSE(window->PreTranslateMessage(&repeat)) << "the key goes on to the window with the focus";
    EXPECT_FALSE(frames.empty());
}

TEST_F(ScenarioWindowTest, OtherKeysAndKeysWithoutAFilmPlayNothing) {
    RunClock(500);
    frames.clear();
    MSG space;
    space.message = WM_KEYDOWN;
    space.wParam = 32;
    window->PreTranslateMessage(&space);
    EXPECT_THAT(frames, IsEmpty());
    OpenNewFilm();
    frames.clear();
    MSG other = space;
    other.wParam = 'P';
    window->PreTranslateMessage(&other);
    other = space;
    other.message = WM_KEYUP;
    window->PreTranslateMessage(&other);
    EXPECT_THAT(frames, IsEmpty());
}

TEST_F(ScenarioWindowTest, SpaceBarInAPlayingFilmStopsIt) {
    OpenNewFilm();
    window->Show();
    RunClock(100);
    InsidePump([this] { QTest::keyPress(Native(), Qt::Key_Space); });
    Command(IDC_PLAY_MOVIE);
    EXPECT_EQ(plugin.isPlaying, 0);
    EXPECT_LT(plugin.currentTime, 5.0f) << "the film was not played to its end";
}

TEST_F(ScenarioWindowTest, SpaceBarSurvivesTheWindowsEnd) {
    OpenNewFilm();
    window->Show();
    RunClock(100);
    InsidePump([this] {
        plugin.StopPlaying();
        delete window;
    });
    MSG space;
    space.message = WM_KEYDOWN;
    space.wParam = 32;
    EXPECT_TRUE(window->PreTranslateMessage(&space)) << "nobody is left to take the key";
    EXPECT_FALSE(IsAlive());
}

TEST_F(ScenarioWindowTest, WheelScrollsTheRowsByOneLine) {
    OpenManyRows();
    const auto turn = [this](short delta) {
        window->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<UINT>(delta)), 0);
        return TopRow();
    };
    ASSERT_EQ(turn(120), "Level");
    EXPECT_EQ(turn(-120), "Actor100");
    EXPECT_EQ(turn(-240), "Actor101") << "a long turn is one line too";
    EXPECT_EQ(turn(1), "Actor100");
    EXPECT_EQ(turn(0), "Actor101") << "no turn counts as forward";
}

TEST_F(ScenarioWindowTest, WheelOverAnyPartOfTheWindowScrollsTheRows) {
    OpenManyRows();
    window->Show();
    Settle();
    const CTrackCtrl& row = *Control().visibleTracks[2];
    for (const CWnd* part :
         {static_cast<const CWnd*>(&row), static_cast<const CWnd*>(&row.expandButton),
          static_cast<const CWnd*>(Control().grid), static_cast<const CWnd*>(Control().infoWnd),
          static_cast<const CWnd*>(Control().hScroll), static_cast<const CWnd*>(&window->toolbar)}) {
        SCOPED_TRACE(part->GetDlgCtrlID());
        TurnWheel(*part, -120);
        EXPECT_EQ(TopRow(), "Actor100");
        TurnWheel(*part, 120);
        EXPECT_EQ(TopRow(), "Level");
        Settle();
    }
}

TEST_F(ScenarioWindowTest, TipOfAWindowIsTheTextOfItsNumber) {
    CButton known;
    known.Create("BUTTON", "", WS_CHILD, CRect(0, 0, 10, 10), window, IDC_VALIDATE_MOVIE);
    CButton unknown;
    unknown.Create("BUTTON", "", WS_CHILD, CRect(0, 0, 10, 10), window, 4321);
    const auto ask = [this](CWnd& child, UINT flags, std::string& text) {
        TOOLTIPTEXT request;
        request.hdr = {child.GetSafeHwnd(), reinterpret_cast<UINT_PTR>(child.GetSafeHwnd()), TTN_NEEDTEXT};
        request.uFlags = flags;
        request.lpszText = "untouched";
        request.hinst = PluginResources();
        window->SendMessage(WM_NOTIFY, request.hdr.idFrom, reinterpret_cast<LPARAM>(&request));
        text = request.lpszText;
        return request.hinst == nullptr;
    };
    std::string text;
    EXPECT_TRUE(ask(known, TTF_IDISHWND, text));
    EXPECT_EQ(text, "Validate movie");
    EXPECT_TRUE(ask(unknown, TTF_IDISHWND, text));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(ask(known, 0, text));
    EXPECT_EQ(text, "untouched");
}

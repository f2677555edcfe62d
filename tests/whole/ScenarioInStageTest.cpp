#include "framework/QtBridge.h"
#include "framework/Wnd.h"
#include "host/stage/windows/films/TimelineAxis.h"
#include "host/stage/windows/films/TimelineHand.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/whole/StageFixture.h"

#include <QAction>
#include <QDockWidget>
#include <QImage>
#include <QTest>
#include <QWindow>

namespace {

/// The scenario window in its home in the main window.
class ScenarioInStageTest : public StageTest {
protected:
    void SetUp() override { OpenScenario("Intro"); }
    stage::ToolWindowDock* Dock() const {
        const QList<stage::ToolWindowDock*> docks = window->toolWindows->Docks();
        return docks.isEmpty() ? nullptr : docks.front();
    }
    /// Columns of the ruler that aren't plain: a ruler without time has its frame alone.
    int ColumnsWithInk(const CWnd& scenario) const {
        const CWnd* ruler = scenario.GetDlgItem(kMainCtrlId)->GetDlgItem(kRulerId);
        const QImage picture = NativeWidget(*ruler)->grab().toImage();
        const int middle = picture.height() - 5; // through the small tics
        int columns = 0;
        for (int x = 2; x < picture.width() - 2; ++x) {
            columns += picture.pixelColor(x, middle) != picture.pixelColor(x, 3) ? 1 : 0;
        }
        return columns;
    }
    static constexpr int kMainCtrlId = 1234;
    static constexpr int kRulerId = 20;
};

} // namespace

TEST_F(ScenarioInStageTest, DoubleClickOnAFilmShowsItDocked) {
    EXPECT_EQ(window->toolWindows->Docks().size(), 1);
    EXPECT_EQ(Dock()->windowTitle(), "Scenario");
    EXPECT_TRUE(Dock()->isVisible());
    EXPECT_EQ(window->dockWidgetArea(Dock()), Qt::BottomDockWidgetArea);
    EXPECT_GE(window->views->height(), Dock()->height());
}

TEST_F(ScenarioInStageTest, DoubleClickOnAFilmBringsItsTabForward) {
    window->setAnimated(false);
    auto* other = new QDockWidget("Other", window.get());
    other->setWidget(new QWidget);
    window->addDockWidget(Qt::BottomDockWidgetArea, other);
    window->tabifyDockWidget(Dock(), other);
    other->show();
    Settle();
    other->raise();
    Settle();
    QWidget* content = NativeWidget(*Dock()->Window());
    ASSERT_TRUE(content->visibleRegion().isEmpty());
    OpenScenario("Intro");
    EXPECT_FALSE(content->visibleRegion().isEmpty());
    delete other;
}

TEST_F(ScenarioInStageTest, DockedAtTheRightOrNarrowItGoesOnShowingTime) {
    window->resize(1360, 860);
    Settle();
    window->setAnimated(false);
    const auto isDrawn = [this] { return ColumnsWithInk(*Dock()->Window()) > 3; };
    EXPECT_TRUE(isDrawn());
    window->addDockWidget(Qt::RightDockWidgetArea, Dock());
    window->resizeDocks({Dock()}, {340}, Qt::Horizontal);
    Settle();
    EXPECT_TRUE(isDrawn());
    window->addDockWidget(Qt::BottomDockWidgetArea, Dock());
    Settle();
    EXPECT_TRUE(isDrawn());
    window->resize(700, 640);
    Settle();
    EXPECT_TRUE(isDrawn());
    Dock()->setFloating(true);
    Dock()->resize(500, 200);
    Settle();
    EXPECT_TRUE(isDrawn());
}

TEST_F(ScenarioInStageTest, EscapeLeavesItOpenWhileItIsDocked) {
    Dock()->Window()->SetActiveWindow();
    PressKey(Qt::Key_Escape);
    Settle();
    EXPECT_TRUE(Dock()->isVisible());
    EXPECT_TRUE(Dock()->Window()->IsWindowVisible());
}

TEST_F(ScenarioInStageTest, EscapeEndsADragOfTheRulerWhileTheFilmPlays) {
    CWnd* ruler = Dock()->Window()->GetDlgItem(kMainCtrlId)->GetDlgItem(kRulerId);
    ASSERT_NE(ruler, nullptr);
    Dock()->Window()->SetActiveWindow();
    const CWnd* after = ruler;
    InsidePump([&] {
        ruler->SetCapture();
        PressKey(Qt::Key_Escape);
        InsidePump([&] {
            after = CWnd::GetCapture();
            PressKey(Qt::Key_Space);
        });
    });
    Hooks().clock = [this] { return clock += 1; };
    PressKey(Qt::Key_Space);
    Settle();
    Hooks().clock = nullptr;
    EXPECT_EQ(after, nullptr);
    EXPECT_TRUE(Dock()->isVisible());
}

TEST_F(ScenarioInStageTest, ClosedItIsHiddenAndStaysThePluginsWindow) {
    CWnd* scenario = Dock()->Window();
    Dock()->close();
    Settle();
    ASSERT_NE(Dock(), nullptr);
    EXPECT_EQ(Dock()->Window(), scenario);
    EXPECT_FALSE(Dock()->isVisible());
    EXPECT_FALSE(scenario->IsWindowVisible());
    Dock()->toggleViewAction()->trigger();
    Settle();
    EXPECT_TRUE(scenario->IsWindowVisible());
}

TEST_F(ScenarioInStageTest, FloatingItIsNeverSmallerThanItsRule) {
    Dock()->setFloating(true);
    Dock()->resize(50, 50);
    Settle();
    CRect rect;
    Dock()->Window()->GetWindowRect(&rect);
    EXPECT_EQ(rect.Size(), (CSize{500, 100}));
}

TEST_F(ScenarioInStageTest, SpacePlaysWhileItHasTheKeyboardAndStops) {
    Dock()->Window()->SetActiveWindow();
    bool isPlaying = false;
    InsidePump([&] {
        isPlaying = true;
        PressKey(Qt::Key_Space);
    });
    Hooks().clock = [this] { return clock += 1; };
    PressKey(Qt::Key_Space);
    Settle();
    Hooks().clock = nullptr;
    EXPECT_TRUE(isPlaying);
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
}

TEST_F(ScenarioInStageTest, TheSamplesFilmIsShownWholeAlsoBehindASave) {
    const stage::TimelineHand hand(*window->toolWindows);
    const auto shownSeconds = [&] {
        const auto state = stage::TimelineAxis(hand, Film("Intro")->length, 30).Read();
        return state ? state->shown : 0.0;
    };
    EXPECT_EQ(shownSeconds(), 24.0);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath)));
    Settle();
    EXPECT_EQ(shownSeconds(), 24.0);
}

TEST_F(ScenarioInStageTest, AnotherLevelLeavesItWhereItIs) {
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    Settle();
    ASSERT_NE(Dock(), nullptr);
    EXPECT_TRUE(Dock()->isVisible());
}

TEST_F(ScenarioInStageTest, EndOfTheHostDestroysItBeforeItsCodeIsUnloaded) {
    window->ShutdownHost();
    EXPECT_EQ(Dock(), nullptr);
}

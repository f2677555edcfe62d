#include "framework/Wnd.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/whole/StageFixture.h"

#include <QAction>
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
};

} // namespace

TEST_F(ScenarioInStageTest, DoubleClickOnAFilmShowsItDocked) {
    EXPECT_EQ(window->toolWindows->Docks().size(), 1);
    EXPECT_EQ(Dock()->windowTitle(), "Scenario");
    EXPECT_TRUE(Dock()->isVisible());
    EXPECT_EQ(window->dockWidgetArea(Dock()), Qt::BottomDockWidgetArea);
    EXPECT_GE(window->views->height(), Dock()->height());
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

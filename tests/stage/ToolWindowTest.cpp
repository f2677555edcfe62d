#include "tests/stage/ToolDialog.h"
#include "tests/stage/WindowFixture.h"

#include "framework/QtBridge.h"
#include "host/stage/windows/app/Inspector.h"
#include "host/stage/windows/ToolWindows.h"
#include "host/stage/windows/ViewArea.h"

#include <QAction>
#include <QApplication>
#include <QJsonArray>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ToolWindowTest : public WindowFixture {
protected:
    ToolWindowTest() {
        QSettings().clear();
        AfxSetMainWnd(WrapWidget(&window));
        window.toolWindows->Attach();
    }
    ~ToolWindowTest() override { QSettings().clear(); }

    stage::ToolWindowDock* DockOf(const stage::MainWindow& main, const CWnd& dialog) const {
        for (stage::ToolWindowDock* dock : main.toolWindows->Docks()) {
            if (dock->Window() == &dialog) {
                return dock;
            }
        }
        return nullptr;
    }
    stage::ToolWindowDock* DockOf(const CWnd& dialog) const { return DockOf(window, dialog); }
    void Show(ToolDialog& dialog) {
        dialog.ShowWindow(SW_SHOW);
        Settle();
    }
    QAction* MenuEntry(const QString& title) const {
        for (QAction* menu : window.menuBar()->actions()) {
            for (QAction* action : menu->menu()->actions()) {
                if (action->text() == title) {
                    return action;
                }
            }
        }
        return nullptr;
    }
    /// A key as the keyboard gives it, to the window and not to a chosen widget.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.windowHandle(), key, modifiers);
        Settle();
    }
    /// A click as the mouse gives it.
    void ClickAt(QWidget& widget, const QPoint& place) {
        QWidget* top = widget.window();
        QTest::mouseClick(top->windowHandle(), Qt::LeftButton, Qt::NoModifier, widget.mapTo(top, place));
        Settle();
    }
    /// What the frame of a floating dock does while the user holds it.
    void DragFrame(stage::ToolWindowDock& dock, const QRect& to) {
        QTest::mousePress(dock.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
        dock.setGeometry(to);
        Settle();
        QTest::mouseRelease(dock.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(1, 1));
        Settle();
    }
};

TEST_F(ToolWindowTest, WindowStaysHiddenUntilItShowsItselfAndThenDocksBelow) {
    ToolDialog dialog;
    Settle();
    ASSERT_NE(DockOf(dialog), nullptr);
    EXPECT_FALSE(DockOf(dialog)->isVisible());
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_EQ(dialog.size, (CSize{500, 300})); // as it asked, although it is inside a hidden dock
    Show(dialog);
    EXPECT_TRUE(dialog.IsWindowVisible());
    EXPECT_TRUE(DockOf(dialog)->isVisible());
    EXPECT_FALSE(DockOf(dialog)->isFloating());
    EXPECT_EQ(window.dockWidgetArea(DockOf(dialog)), Qt::BottomDockWidgetArea);
    EXPECT_EQ(DockOf(dialog)->windowTitle(), "Tool");
    EXPECT_THAT(dialog.log, ElementsAre("show"));
}

TEST_F(ToolWindowTest, DockedWindowTakesTheSizeOfItsDock) {
    ToolDialog dialog;
    Show(dialog);
    const QWidget* widget = NativeWidget(dialog);
    EXPECT_EQ(dialog.size, (CSize{widget->width(), widget->height()}));
    EXPECT_NE(dialog.size.cx, 500);
    window.resize(window.width() + 100, window.height());
    Settle();
    EXPECT_EQ(dialog.size, (CSize{widget->width(), widget->height()}));
}

TEST_F(ToolWindowTest, FixedOwnedAndModalDialogsStayWindowsOfTheirOwn) {
    ToolDialog fixed(nullptr, 2002);
    EXPECT_EQ(DockOf(fixed), nullptr);
    ToolDialog owner;
    ToolDialog owned(&owner);
    EXPECT_EQ(DockOf(owned), nullptr);
    fixed.ShowWindow(SW_SHOW);
    EXPECT_TRUE(NativeWidget(fixed)->isWindow());
    ToolDialog ofMain(WrapWidget(&window));
    EXPECT_NE(DockOf(ofMain), nullptr);
}

TEST_F(ToolWindowTest, CloseButtonAsksTheWindow) {
    ToolDialog dialog;
    Show(dialog);
    dialog.mayClose = false;
    DockOf(dialog)->close();
    EXPECT_TRUE(DockOf(dialog)->isVisible());
    EXPECT_TRUE(DockOf(dialog)->toggleViewAction()->isChecked());
    dialog.mayClose = true;
    DockOf(dialog)->close();
    EXPECT_FALSE(DockOf(dialog)->isVisible());
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_NE(dialog.GetSafeHwnd(), nullptr);
    EXPECT_THAT(dialog.log, ElementsAre("show", "close", "close", "hide"));
    Show(dialog);
    EXPECT_TRUE(DockOf(dialog)->isVisible());
}

TEST_F(ToolWindowTest, WindowThatDestroysItselfOnCloseTakesItsDockAlong) {
    ToolDialog dialog;
    Show(dialog);
    dialog.diesOnClose = true;
    const QPointer<stage::ToolWindowDock> dock = DockOf(dialog);
    dock->close();
    Settle();
    EXPECT_TRUE(dock.isNull());
    EXPECT_EQ(MenuEntry("Tool"), nullptr);
    EXPECT_THAT(dialog.log, ElementsAre("show", "close", "destroy"));
}

TEST_F(ToolWindowTest, ViewMenuListsTheWindowWithACheckMark) {
    ToolDialog dialog;
    QAction* entry = MenuEntry("Tool");
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    Settle();
    EXPECT_TRUE(dialog.IsWindowVisible());
    EXPECT_TRUE(entry->isChecked());
    entry->trigger();
    Settle();
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_FALSE(entry->isChecked());
    EXPECT_THAT(dialog.log, ElementsAre("show", "close", "hide"));
}

TEST_F(ToolWindowTest, TitleFollowsTheWindow) {
    ToolDialog dialog;
    dialog.SetWindowText("Tool - Intro");
    EXPECT_EQ(DockOf(dialog)->windowTitle(), "Tool - Intro");
    EXPECT_NE(MenuEntry("Tool - Intro"), nullptr);
}

TEST_F(ToolWindowTest, EscAndEnterLeaveADockedWindowOpen) {
    ToolDialog dialog;
    Show(dialog);
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        NativeWidget(dialog)->setFocus();
        Press(key);
        EXPECT_TRUE(dialog.IsWindowVisible());
        EXPECT_TRUE(DockOf(dialog)->isVisible());
    }
    EXPECT_THAT(dialog.keys, ElementsAre(27, 13)); // they came there
}

TEST_F(ToolWindowTest, EscEndsADragInADockedWindow) {
    ToolDialog dialog;
    Show(dialog);
    NativeWidget(dialog)->setFocus();
    dialog.SetCapture();
    Press(Qt::Key_Escape);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_TRUE(dialog.IsWindowVisible());
}

TEST_F(ToolWindowTest, HiddenItGivesTheKeyboardBack) {
    ToolDialog dialog;
    Show(dialog);
    View()->setFocus();
    NativeWidget(dialog)->setFocus();
    DockOf(dialog)->close();
    Settle();
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_EQ(QApplication::focusWidget(), View()); // where it was before
}

TEST_F(ToolWindowTest, PlainKeysReachTheWindowAndNotTheEditorsCommands) {
    ToolDialog dialog;
    Show(dialog);
    engine::SceneObject* crate = AddEmpty("Crate", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    NativeWidget(dialog)->setFocus();
    Press(Qt::Key_Space);
    Press(Qt::Key_E); // "Rotate" of the main window
    Press(Qt::Key_Delete);
    EXPECT_THAT(dialog.keys, ElementsAre(32, 'E', 46));
    EXPECT_FALSE(Action("ToolRotate")->isChecked());
    EXPECT_TRUE(window.host.Contains(crate));
    Press(Qt::Key_2, Qt::ControlModifier); // two views: a command of the main window
    EXPECT_TRUE(Action("Views2")->isChecked());
    View()->setFocus();
    Press(Qt::Key_E);
    EXPECT_TRUE(Action("ToolRotate")->isChecked());
    EXPECT_EQ(dialog.keys.size(), 3u + 1u); // Ctrl, held for the command
}

TEST_F(ToolWindowTest, TheKeyForHelpIsTheMainWindows) {
    ToolDialog dialog;
    Show(dialog);
    NativeWidget(dialog)->setFocus();
    QString title;
    QTimer::singleShot(0, &window, [&title] {
        if (QWidget* help = QApplication::activeModalWidget()) {
            title = help->windowTitle();
            help->close();
        }
    });
    Press(Qt::Key_F1);
    EXPECT_EQ(title, "Mouse and keys");
}

TEST_F(ToolWindowTest, ClickGivesTheWindowTheKeyboardAsAFrameOfItsOwnWould) {
    ToolDialog dialog;
    Show(dialog);
    QWidget* second = NativeWidget(*dialog.GetDlgItem(ToolDialog::kSecond));
    second->setFocus();
    View()->setFocus();
    QWidget* widget = NativeWidget(dialog);
    ClickAt(*widget, QPoint(widget->width() - 5, widget->height() - 5));
    EXPECT_EQ(QApplication::focusWidget(), second); // who had it last inside
    QWidget* first = NativeWidget(*dialog.GetDlgItem(ToolDialog::kFirst));
    View()->setFocus();
    ClickAt(*first, QPoint(3, 3));
    EXPECT_EQ(QApplication::focusWidget(), first);
    EXPECT_EQ(CWnd::GetActiveWindow(), &dialog);
    View()->setFocus();
    EXPECT_NE(CWnd::GetActiveWindow(), &dialog);
}

TEST_F(ToolWindowTest, TabStaysInside) {
    ToolDialog dialog;
    Show(dialog);
    QWidget* first = NativeWidget(*dialog.GetDlgItem(ToolDialog::kFirst));
    QWidget* second = NativeWidget(*dialog.GetDlgItem(ToolDialog::kSecond));
    first->setFocus();
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), second);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), first);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), second);
}

TEST_F(ToolWindowTest, WheelClimbsToTheWindowAndStopsThere) {
    ToolDialog dialog;
    Show(dialog);
    QWidget* top = &window;
    QWidget* edit = NativeWidget(*dialog.GetDlgItem(ToolDialog::kFirst));
    const QPoint place = edit->mapTo(top, QPoint(3, 3));
    QWheelEvent turn(place, top->mapToGlobal(QPointF(place)), QPoint(), QPoint(0, 120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, /*inverted*/ false);
    QApplication::sendEvent(window.windowHandle(), &turn);
    Settle();
    EXPECT_EQ(dialog.wheel, 120);
}

TEST_F(ToolWindowTest, FloatingWindowHasTheSizeItAskedForAndKeepsItsOwnRule) {
    ToolDialog dialog;
    Show(dialog);
    stage::ToolWindowDock& dock = *DockOf(dialog);
    dock.setFloating(true);
    Settle();
    EXPECT_TRUE(dock.isWindow());
    EXPECT_TRUE(dialog.IsWindowVisible());
    EXPECT_EQ(dialog.size.cx, 500);
    dock.resize(200, 60);
    Settle();
    EXPECT_EQ(dialog.size, (CSize{500, 100}));
    dock.setFloating(false);
    Settle();
    window.resizeDocks({&dock}, {80}, Qt::Vertical); // below the 100 of the rule
    Settle();
    EXPECT_LT(dialog.size.cy, 100);
}

TEST_F(ToolWindowTest, DraggingTheFloatingFrameAsksTheWindow) {
    ToolDialog dialog;
    Show(dialog);
    stage::ToolWindowDock& dock = *DockOf(dialog);
    dock.setFloating(true);
    Settle();
    dialog.sides.clear();
    const QRect before = dock.geometry();
    DragFrame(dock, before.adjusted(0, 0, 40, 0));
    EXPECT_THAT(dialog.sides, ElementsAre(2u)); // the right edge
    EXPECT_EQ(dialog.size.cx, 540);
    dialog.sides.clear();
    DragFrame(dock, dock.geometry().adjusted(0, -30, 0, 0));
    EXPECT_THAT(dialog.sides, ElementsAre(3u)); // the top edge
    dialog.sides.clear();
    dock.resize(700, 400); // not by the user
    Settle();
    EXPECT_THAT(dialog.sides, IsEmpty());
}

TEST_F(ToolWindowTest, DockedAtASideItHasTheRoomThatItNeeds) {
    window.resize(1600, 900);
    ToolDialog dialog;
    Show(dialog);
    stage::ToolWindowDock& dock = *DockOf(dialog);
    for (const Qt::DockWidgetArea area : {Qt::RightDockWidgetArea, Qt::LeftDockWidgetArea}) {
        window.addDockWidget(area, &dock);
        window.resizeDocks({&dock}, {100}, Qt::Horizontal);
        Settle();
        EXPECT_GE(dialog.size.cx, 500); // its rule
        EXPECT_GE(dialog.size.cy, 240); // beside the properties, which would take it all
    }
    window.addDockWidget(Qt::BottomDockWidgetArea, &dock);
    window.resizeDocks({&dock}, {80}, Qt::Vertical);
    Settle();
    EXPECT_LT(dialog.size.cy, 100);
}

TEST_F(ToolWindowTest, WindowPlacesItselfWhileItFloatsAndOnlyThen) {
    ToolDialog dialog;
    Show(dialog);
    CRect docked;
    dialog.GetWindowRect(&docked);
    dialog.SetWindowPos(nullptr, 10, 20, 640, 200, SWP_NOZORDER);
    Settle();
    CRect now;
    dialog.GetWindowRect(&now);
    EXPECT_EQ(now, docked);
    DockOf(dialog)->setFloating(true);
    Settle();
    dialog.SetWindowPos(nullptr, 30, 60, 640, 200, SWP_NOZORDER);
    Settle();
    dialog.GetWindowRect(&now);
    EXPECT_EQ(now, CRect(30, 60, 670, 260));
    EXPECT_EQ(dialog.size, (CSize{640, 200}));
    dialog.SetWindowPos(nullptr, 0, 0, 520, 150, SWP_NOMOVE | SWP_NOZORDER);
    Settle();
    dialog.GetWindowRect(&now);
    EXPECT_EQ(now, CRect(30, 60, 550, 210));
}

TEST_F(ToolWindowTest, EscAndKeysWorkWhileItFloats) {
    ToolDialog dialog;
    Show(dialog);
    stage::ToolWindowDock& dock = *DockOf(dialog);
    dock.setFloating(true);
    dialog.ShowWindow(SW_SHOW);
    Settle();
    QTest::keyClick(dock.windowHandle(), Qt::Key_Space);
    EXPECT_THAT(dialog.keys, ElementsAre(32));
    QTest::keyClick(dock.windowHandle(), Qt::Key_Escape);
    Settle();
    EXPECT_FALSE(dialog.IsWindowVisible());
    EXPECT_FALSE(dock.isVisible());
    Show(dialog);
    EXPECT_TRUE(dock.isFloating());
}

TEST_F(ToolWindowTest, HidingKeepsThePlace) {
    ToolDialog dialog;
    Show(dialog);
    stage::ToolWindowDock& dock = *DockOf(dialog);
    window.resizeDocks({&dock}, {222}, Qt::Vertical);
    Settle();
    dialog.ShowWindow(SW_HIDE);
    Settle();
    Show(dialog);
    EXPECT_EQ(dock.height(), 222);
    dialog.ShowWindow(SW_HIDE);
    MenuEntry("Tool")->trigger();
    Settle();
    EXPECT_EQ(dock.height(), 222);
    dock.setFloating(true);
    dock.setGeometry(70, 60, 555, 333);
    Settle();
    dialog.ShowWindow(SW_HIDE);
    Settle();
    Show(dialog);
    EXPECT_EQ(dock.geometry(), QRect(70, 60, 555, 333));
    dock.setFloating(false);
    Settle();
    EXPECT_EQ(dock.height(), 222);
    dialog.ShowWindow(SW_HIDE);
    Settle();
    MenuEntry("Tool")->trigger();
    Settle();
    EXPECT_EQ(dock.height(), 222);
    dock.setFloating(true);
    Settle();
    EXPECT_EQ(dock.geometry(), QRect(70, 60, 555, 333));
}

TEST_F(ToolWindowTest, ShowingABuriedWindowBringsItsTabForward) {
    ToolDialog first;
    ToolDialog second;
    Show(first);
    Show(second);
    EXPECT_NE(DockOf(first)->objectName(), DockOf(second)->objectName());
    window.tabifyDockWidget(DockOf(first), DockOf(second));
    DockOf(second)->raise();
    Settle();
    EXPECT_TRUE(NativeWidget(first)->visibleRegion().isEmpty());
    EXPECT_FALSE(first.IsWindowVisible()); // who shows only what is hidden shows it too
    EXPECT_TRUE(second.IsWindowVisible());
    Show(first);
    EXPECT_TRUE(first.IsWindowVisible());
    EXPECT_FALSE(NativeWidget(first)->visibleRegion().isEmpty());
    DockOf(second)->raise();
    first.BringWindowToTop();
    Settle();
    EXPECT_FALSE(NativeWidget(first)->visibleRegion().isEmpty());
}

TEST_F(ToolWindowTest, OpeningALevelLeavesItWhereItIs) {
    ToolDialog dialog;
    Show(dialog);
    EXPECT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("start.level"))));
    Settle();
    EXPECT_TRUE(dialog.IsWindowVisible());
    EXPECT_THAT(dialog.log, ElementsAre("show"));
}

TEST_F(ToolWindowTest, EndOfTheHostDestroysTheWindowWhilePluginsAreLoaded) {
    ToolDialog docked;
    ToolDialog floating;
    Show(docked);
    Show(floating);
    DockOf(floating)->setFloating(true);
    window.ShutdownHost();
    EXPECT_THAT(docked.log, ElementsAre("show", "destroy"));
    EXPECT_THAT(floating.log, ElementsAre("show", "destroy"));
    EXPECT_EQ(docked.GetSafeHwnd(), nullptr);
    EXPECT_THAT(window.toolWindows->Docks(), IsEmpty());
    ToolDialog late; // nobody docks it any more
    EXPECT_TRUE(NativeWidget(late)->isWindow());
}

TEST_F(ToolWindowTest, DestroyedWindowsComeBackWhereTheyWere) {
    {
        ToolDialog dialog;
        Show(dialog);
        DockOf(dialog)->setFloating(true);
        DockOf(dialog)->setGeometry(100, 80, 610, 222);
        Settle();
    }
    Settle();
    ToolDialog again;
    EXPECT_FALSE(again.IsWindowVisible());
    Show(again);
    EXPECT_TRUE(DockOf(again)->isFloating());
    EXPECT_EQ(DockOf(again)->geometry(), QRect(100, 80, 610, 222));
}

TEST_F(ToolWindowTest, APlaceOutsideOfAllScreensIsMovedIn) {
    const QString key = "toolWindows/ToolWindow Tool/";
    QSettings().setValue(key + "floating", true);
    QSettings().setValue(key + "place", QRect(50000, -9000, 640, 200));
    ToolDialog dialog;
    Show(dialog);
    ASSERT_TRUE(DockOf(dialog)->isFloating());
    EXPECT_TRUE(window.screen()->availableGeometry().contains(DockOf(dialog)->geometry()));
    EXPECT_EQ(DockOf(dialog)->width(), 640);
}

TEST_F(ToolWindowTest, DamagedSettingsGiveThePlaceOfAFirstStart) {
    const QString key = "toolWindows/ToolWindow Tool/";
    QSettings().setValue(key + "area", 77);
    QSettings().setValue(key + "floating", true);
    QSettings().setValue(key + "place", "nonsense");
    QSettings().setValue(key + "extent", -5);
    ToolDialog dialog;
    Show(dialog);
    EXPECT_FALSE(DockOf(dialog)->isFloating());
    EXPECT_EQ(window.dockWidgetArea(DockOf(dialog)), Qt::BottomDockWidgetArea);
    EXPECT_GT(dialog.size.cy, 0);
}

TEST_F(ToolWindowTest, ViewsKeepHalfOfTheHeight) {
    for (const QSize size : {QSize(1600, 1000), QSize(1280, 800)}) {
        QSettings().clear();
        window.resize(size);
        Settle();
        ToolDialog dialog;
        const int all = window.views->height();
        Show(dialog);
        EXPECT_GE(window.views->height(), all / 2);
        EXPECT_GE(DockOf(dialog)->height(), all / 4);
    }
}

TEST_F(ToolWindowTest, AHeightFromATallerWindowIsCutToHalf) {
    window.resize(1280, 800);
    Settle();
    QSettings().setValue("toolWindows/ToolWindow Tool/extent", 900);
    ToolDialog dialog;
    const int all = window.views->height();
    Show(dialog);
    EXPECT_GE(window.views->height(), all / 2 - 10); // the separator's pixels
    EXPECT_GE(DockOf(dialog)->height(), all / 2 - 10);
}

TEST_F(ToolWindowTest, TheDescriptionForScriptsTellsWhereEverythingIs) {
    AddEmpty("Crate", 1, 2, 3);
    ToolDialog dialog;
    QJsonObject told = stage::DescribeStage(window);
    EXPECT_FALSE(told["toolWindows"][0].toObject()["shown"].toBool());
    Show(dialog);
    told = stage::DescribeStage(window);
    const QJsonObject tool = told["toolWindows"][0].toObject();
    EXPECT_EQ(tool["title"], "Tool");
    EXPECT_TRUE(tool["shown"].toBool());
    EXPECT_TRUE(tool["focused"].toBool());
    ASSERT_EQ(tool["children"].toArray().size(), 2);
    const QJsonObject first = tool["children"][0].toObject();
    EXPECT_EQ(first["id"], ToolDialog::kFirst);
    CRect edit;
    dialog.GetDlgItem(ToolDialog::kFirst)->GetWindowRect(&edit);
    EXPECT_EQ(first["rect"], (QJsonArray{edit.left, edit.top, edit.Width(), edit.Height()}));
    EXPECT_EQ(told["objects"].toObject()["Crate"], (QJsonArray{1, 2, 3}));
    EXPECT_EQ(told["views"].toArray().size(), 1);
    EXPECT_EQ(told["film"], "");
}

TEST_F(ToolWindowTest, TheDescriptionForScriptsTellsWhereObjectsAndHandlesAreInAView) {
    engine::SceneObject* crate = AddEmpty("Crate", 1, 2, 3);
    window.host.views.At(0)->navigation.LookAt({1, 2, 13}, {1, 2, 3});
    window.host.views.At(0)->ApplyNavigation();
    const auto view = [this] { return stage::DescribeStage(window)["views"][0].toObject(); };
    const QJsonArray rect = view()["rect"].toArray();
    const double middleX = rect[0].toDouble() + rect[2].toDouble() / 2;
    const double middleY = rect[1].toDouble() + rect[3].toDouble() / 2;
    const QJsonArray place = view()["onScreen"].toObject()["Crate"].toArray();
    ASSERT_EQ(place.size(), 2);
    EXPECT_NEAR(place[0].toDouble(), middleX, 1.0);
    EXPECT_NEAR(place[1].toDouble(), middleY, 1.0);
    EXPECT_TRUE(view()["handles"].toArray().isEmpty());
    window.host.Select({crate});
    const QJsonArray handles = view()["handles"].toArray();
    ASSERT_EQ(handles.size(), 3);
    EXPECT_GT(handles[0][0].toDouble(), middleX + 20);
    EXPECT_LT(handles[1][1].toDouble(), middleY - 20);
}

/// Two runs of the program, one after the other, with the same settings.
class ToolWindowRestartTest : public ToolWindowTest {
protected:
    /// Opens a main window as the program does, shows the dialog and lets `use` have both.
    void Run(const std::function<void(stage::MainWindow&, ToolDialog&, stage::ToolWindowDock&)>& use) {
        stage::MainWindow main({folder.path().toStdString(), folder.path().toStdString()});
        main.RestorePlaces();
        main.resize(1280, 800);
        main.show();
        main.LoadPlugins({});
        ToolDialog dialog;
        Show(dialog);
        use(main, dialog, *DockOf(main, dialog));
        Settle();
        main.close();
        main.ShutdownHost();
    }
};

TEST_F(ToolWindowRestartTest, HeightIsRemembered) {
    int height = 0;
    Run([&](stage::MainWindow& main, ToolDialog&, stage::ToolWindowDock& dock) {
        main.resizeDocks({&dock}, {211}, Qt::Vertical);
        Settle();
        height = dock.height();
    });
    EXPECT_EQ(height, 211);
    Run([&](stage::MainWindow&, ToolDialog&, stage::ToolWindowDock& dock) { EXPECT_EQ(dock.height(), 211); });
}

TEST_F(ToolWindowRestartTest, AreaIsRemembered) {
    Run([&](stage::MainWindow& main, ToolDialog&, stage::ToolWindowDock& dock) {
        main.addDockWidget(Qt::TopDockWidgetArea, &dock);
    });
    Run([&](stage::MainWindow& main, ToolDialog& dialog, stage::ToolWindowDock& dock) {
        EXPECT_EQ(main.dockWidgetArea(&dock), Qt::TopDockWidgetArea);
        EXPECT_TRUE(dialog.IsWindowVisible());
    });
}

TEST_F(ToolWindowRestartTest, FloatingPlaceIsRememberedAndTheWindowStartsHidden) {
    const QRect place(120, 90, 600, 200);
    Run([&](stage::MainWindow&, ToolDialog&, stage::ToolWindowDock& dock) {
        dock.setFloating(true);
        dock.setGeometry(place);
    });
    Run([&](stage::MainWindow&, ToolDialog& dialog, stage::ToolWindowDock& dock) {
        EXPECT_THAT(dialog.log, ElementsAre("show")); // not before it showed itself
        EXPECT_TRUE(dock.isFloating());
        EXPECT_EQ(dock.geometry(), place);
        dock.resize(100, 50);
        Settle();
        EXPECT_EQ(dialog.size, (CSize{500, 100}));
        dock.setFloating(false);
    });
    Run([&](stage::MainWindow&, ToolDialog&, stage::ToolWindowDock& dock) {
        EXPECT_FALSE(dock.isFloating());
    });
}

} // namespace

#include "host/stage/windows/PluginPanel.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"
#include "plugin/contract/EventCodes.h"
#include "tests/support/Answering.h"
#include "tests/support/Paths.h"
#include "tests/whole/StageFixture.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QToolBar>

namespace {

/// What the plug-in puts into Stage's windows: tool bar, panel, menus, lights.
class PluginInStageTest : public StageTest {
protected:
    static constexpr unsigned kNumber = 1; ///< the only plug-in
    static constexpr unsigned kMovies = 1;
    static constexpr unsigned kAttachView = 60;
    static constexpr unsigned kDetachView = 61;

    void Run(unsigned local) {
        window->host.RunCommand(PluginCommandId::FromPluginNumber(kNumber).WithLocal(local));
        Settle();
    }
    QAction* Button(const QString& tip) const {
        for (QToolBar* bar : window->findChildren<QToolBar*>()) {
            for (QAction* action : bar->actions()) {
                if (action->toolTip() == tip && bar->windowTitle() == "Films") {
                    return action;
                }
            }
        }
        return nullptr;
    }
    void TriggerMovies() {
        Button("Movies")->trigger();
        Settle();
    }
    /// An object made by the user, of which the plug-in is told.
    engine::SceneObject* Create(const std::string& name, const char* className) {
        engine::SceneObject* object = window->commands.Create({className, name, "", {}, nullptr, true});
        Settle();
        return object;
    }
    static int LightTracks(const IFilm& film) {
        int tracks = 0;
        for (CFilmTrack* track : film.tracks) {
            tracks += AsGLLightTrack(track) != nullptr ? 1 : 0;
        }
        return tracks;
    }
    void ClickView(const QPoint& place, Qt::MouseButton button) {
        QTest::mouseClick(window->views->Widget(0), button, {}, place);
        Settle();
    }
    void ChooseInViewMenu(const char* text) {
        Answering([text](QWidget& menu) { ChooseEntry(menu, text); },
                  [this] { ClickView(QPoint(30, 60), Qt::RightButton); });
    }
};

} // namespace

TEST_F(PluginInStageTest, ItsToolbarIsDockedWithNamedButtons) {
    ASSERT_NE(Button("Movies"), nullptr);
    EXPECT_FALSE(Button("Movies")->icon().isNull());
    EXPECT_NE(Button("Animate object"), nullptr);
    EXPECT_NE(Button("Convert to virtual object"), nullptr);
    ASSERT_EQ(window->host.shortcuts.size(), 1u);
    EXPECT_EQ(window->host.shortcuts[0].description, "Start / stop playing movie");
}

TEST_F(PluginInStageTest, ItsPanelComesAndGoesWithItsButton) {
    EXPECT_TRUE(window->IsPanelShown());
    EXPECT_TRUE(Button("Movies")->isChecked());
    TriggerMovies();
    EXPECT_FALSE(window->IsPanelShown());
    EXPECT_FALSE(window->pluginPanel->isVisible());
    EXPECT_FALSE(Button("Movies")->isChecked());
    TriggerMovies();
    EXPECT_TRUE(window->IsPanelShown());
    EXPECT_TRUE(window->pluginPanel->isVisible());
    EXPECT_TRUE(Button("Movies")->isChecked());
    Run(kMovies);
    EXPECT_FALSE(window->IsPanelShown());
}

TEST_F(PluginInStageTest, APanelClosedByTheUserUnchecksTheButtonAndCanBeOpenedAgain) {
    window->pluginPanel->close();
    Settle();
    EXPECT_FALSE(window->IsPanelShown());
    EXPECT_FALSE(Button("Movies")->isChecked());
    Run(kMovies);
    EXPECT_TRUE(window->IsPanelShown());
}

TEST_F(PluginInStageTest, TheViewMenuListsThePanelAndOpensAndClosesIt) {
    QAction* entry = window->pluginPanel->toggleViewAction();
    QMenu* view = nullptr;
    for (QAction* menu : window->menuBar()->actions()) {
        view = menu->menu()->actions().contains(entry) ? menu->menu() : view;
    }
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->title(), "&View");
    EXPECT_EQ(entry->text(), "Films");
    EXPECT_TRUE(entry->isChecked());
    entry->trigger();
    Settle();
    EXPECT_FALSE(window->IsPanelShown());
    EXPECT_FALSE(Button("Movies")->isChecked());
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    Settle();
    EXPECT_TRUE(window->IsPanelShown());
    EXPECT_TRUE(window->pluginPanel->isVisible());
    EXPECT_TRUE(Button("Movies")->isChecked());
    EXPECT_TRUE(entry->isChecked());
}

TEST_F(PluginInStageTest, ARestartBringsNoEmptyPanel) {
    QSettings().setValue("window/state", window->saveState()); // with the panel open
    stage::MainWindow again({folder.Path(), folder.Path(), SourceFolder() + "/host/stage/data"});
    again.RestorePlaces();
    again.show();
    Settle();
    EXPECT_FALSE(again.IsPanelShown());
    EXPECT_FALSE(again.pluginPanel->isVisible());
    again.ShutdownHost();
    QSettings().clear();
}

TEST_F(PluginInStageTest, AnotherPluginsPanelTakesItsPlace) {
    window->host.BroadcastEvent(EventCode::PanelTaken, PluginCommandId::FromPluginNumber(kNumber + 1),
                                nullptr);
    Settle();
    EXPECT_FALSE(window->IsPanelShown());
    EXPECT_FALSE(Button("Movies")->isChecked());
}

TEST_F(PluginInStageTest, AnAddedFilmMarksTheLevelAsChangedUntilItIsSaved) {
    EXPECT_FALSE(window->session.IsChanged());
    for (QPushButton* button : window->pluginPanel->findChildren<QPushButton*>()) {
        if (button->text() == "Add") {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    EXPECT_EQ(FilmLines().size(), 4u);
    EXPECT_TRUE(window->session.IsChanged());
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(folder.File("harbour/more.level"))));
    EXPECT_FALSE(window->session.IsChanged());
    window->findChild<QAction*>("FileNew")->trigger();
    EXPECT_EQ(Films().films[0], nullptr);
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(folder.File("harbour/more.level"))));
    EXPECT_FALSE(window->session.IsChanged());
}

TEST_F(PluginInStageTest, ALightMadeWithAFilmOpenGetsOneTrackAndGoesWithItsObject) {
    ChooseFilm("Epilogue");
    const IFilm& film = *Film("Epilogue");
    const int before = LightTracks(film);
    engine::SceneObject* lamp = Create("Lamp", ClassName::GLLight);
    EXPECT_EQ(LightTracks(film), before + 1);
    EXPECT_EQ(lamp->name.rfind("MovieGLLight", 0), 0u);
    window->host.Select({lamp});
    window->commands.DeleteSelected();
    EXPECT_EQ(LightTracks(film), before);
}

TEST_F(PluginInStageTest, ANewLightIsSavedAndComesBackPaired) {
    ChooseFilm("Epilogue");
    const std::string name = Create("Lamp", ClassName::GLLight)->name;
    const std::size_t objects = window->host.level.Data()->Objects().size();
    const QString path = QString::fromStdString(folder.File("harbour/lights.level"));
    ASSERT_TRUE(window->SaveLevelAs(path));
    ASSERT_TRUE(window->OpenLevel(path));
    EXPECT_EQ(window->host.level.Data()->Objects().size(), objects);
    const engine::SceneObject* lamp = Object(name);
    ASSERT_NE(lamp, nullptr);
    bool isPaired = false;
    for (CFilmTrack* track : Film("Epilogue")->tracks) {
        const CFilmGLLightTrack* light = AsGLLightTrack(track);
        isPaired = isPaired || (light != nullptr && light->lightObject == lamp);
    }
    EXPECT_TRUE(isPaired);
}

TEST_F(PluginInStageTest, TheViewMenuAttachesAndTheBadgeDetaches) {
    ChooseFilm("Intro");
    ChooseInViewMenu("Detach movie"); // greyed: nothing happens
    EXPECT_FALSE(window->host.FollowsPlugin(0));
    ChooseInViewMenu("Attach movie");
    EXPECT_TRUE(window->host.FollowsPlugin(0));
    ClickView(QPoint(window->views->Widget(0)->width() - 60, 22), Qt::LeftButton);
    EXPECT_FALSE(window->host.FollowsPlugin(0));
    EXPECT_FALSE(window->host.IsViewAttachedToPlugin(0, PluginCommandId::FromPluginNumber(kNumber)));
    Run(kAttachView);
    EXPECT_TRUE(window->host.FollowsPlugin(0));
    Run(kDetachView);
    EXPECT_FALSE(window->host.FollowsPlugin(0));
}

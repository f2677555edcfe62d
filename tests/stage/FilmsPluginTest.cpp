#include "stage/WindowFixture.h"

#include "host/stage/windows/PluginPanel.h"
#include "host/stage/windows/ViewArea.h"
#include "plugin/contract/FilmManager.h"

#include <filesystem>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

using ::testing::_;

/// The main window with the film plug-in from its shared library beside the mock. The mock has number 1,
/// the film plug-in number 2.
class FilmsPluginTest : public WindowFixture {
protected:
    static constexpr unsigned kNumber = 2;
    static constexpr unsigned kMovies = 1;
    static constexpr unsigned kAnimate = 50;
    static constexpr unsigned kAttachView = 60;
    static constexpr unsigned kDetachView = 61;

    FilmsPluginTest() {
        window.LoadPlugins({FILMS_PLUGIN_PATH});
        EXPECT_NE(window.host.plugins.Find(kNumber), nullptr);
        EXPECT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("start.level"))));
        Settle();
    }

    void Run(unsigned local) {
        window.host.RunCommand(PluginCommandId::FromPluginNumber(kNumber).WithLocal(local));
        Settle();
    }
    /// As the keyboard gives it: to the window, before any widget is chosen.
    void PressSpace() { QTest::keyClick(window.windowHandle(), Qt::Key_Space); }
    QAction* Button(const QString& tip) const {
        for (QToolBar* bar : window.findChildren<QToolBar*>()) {
            for (QAction* action : bar->actions()) {
                if (action->toolTip() == tip && bar->windowTitle() == "Films") {
                    return action;
                }
            }
        }
        return nullptr;
    }
    void PressInPanel(const QString& text) {
        for (QAbstractButton* button : window.pluginPanel->findChildren<QAbstractButton*>()) {
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                Settle();
                return;
            }
        }
        ADD_FAILURE() << "no button " << text.toStdString();
    }
    IFilmManager& Films() { return *window.host.level.Data()->filmManager; }
    /// A film made with the panel's Add button; it is then the open one.
    IFilm* AddFilm() {
        if (!window.IsPanelShown()) {
            Run(kMovies);
        }
        PressInPanel("Add");
        EXPECT_NE(Films().currentFilm, nullptr);
        return Films().currentFilm;
    }
    /// Makes an object an actor as a user does: "Animate object" on, and it is moved.
    void MakeActor(engine::SceneObject& object, float x) {
        Run(kAnimate);
        window.host.Select({&object});
        engine::Matrix4 matrix;
        matrix.SetTranslation({x, 0, 0});
        window.commands.Move({{&object, matrix}});
        Run(kAnimate);
    }
    /// An object that the plug-in was told of.
    engine::SceneObject* Create(const std::string& name, const char* className = "EmptyObject") {
        engine::SceneObject* object = window.commands.Create({className, name, "", {}, nullptr, true});
        Settle();
        return object;
    }
};

TEST_F(FilmsPluginTest, ItsToolbarIsDockedWithNamedButtons) {
    ASSERT_NE(Button("Movies"), nullptr);
    EXPECT_FALSE(Button("Movies")->icon().isNull());
    EXPECT_NE(Button("Animate object"), nullptr);
    EXPECT_NE(Button("Convert to virtual object"), nullptr);
    ASSERT_EQ(window.host.shortcuts.size(), 1u);
    EXPECT_EQ(window.host.shortcuts[0].description, "Start / stop playing movie");
}

TEST_F(FilmsPluginTest, ItsPanelComesAndGoesWithItsButton) {
    Button("Movies")->trigger();
    Settle();
    EXPECT_TRUE(window.IsPanelShown());
    EXPECT_TRUE(window.pluginPanel->isVisible());
    EXPECT_TRUE(Button("Movies")->isChecked());
    Button("Movies")->trigger();
    Settle();
    EXPECT_FALSE(window.IsPanelShown());
    EXPECT_FALSE(window.pluginPanel->isVisible());
    EXPECT_FALSE(Button("Movies")->isChecked());
    Run(kMovies);
    EXPECT_TRUE(window.IsPanelShown());
}

TEST_F(FilmsPluginTest, APanelClosedByTheUserUnchecksTheButtonAndCanBeOpenedAgain) {
    Run(kMovies);
    window.pluginPanel->close();
    Settle();
    EXPECT_FALSE(window.IsPanelShown());
    EXPECT_FALSE(Button("Movies")->isChecked());
    Run(kMovies);
    EXPECT_TRUE(window.IsPanelShown());
}

TEST_F(FilmsPluginTest, AnotherPluginsPanelTakesItsPlace) {
    Run(kMovies);
    window.host.BroadcastEvent(EventCode::PanelTaken, plugin.id, nullptr);
    Settle();
    EXPECT_FALSE(window.IsPanelShown());
    EXPECT_FALSE(Button("Movies")->isChecked());
}

TEST_F(FilmsPluginTest, FilmsSurviveASaveAndMarkTheLevelAsChanged) {
    IFilm* film = AddFilm();
    const std::string name = film->name;
    EXPECT_TRUE(window.session.IsChanged());
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(PathOf("films.level"))));
    EXPECT_FALSE(window.session.IsChanged());
    EXPECT_EQ(Films().currentFilm, film); // open again after the save
    EXPECT_TRUE(std::filesystem::exists(PathOf("FilmsValidation.txt")));
    Action("FileNew")->trigger();
    EXPECT_EQ(Films().films[0], nullptr);
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("films.level"))));
    ASSERT_NE(Films().films[0], nullptr);
    EXPECT_EQ(Films().films[0]->name, name);
    EXPECT_FALSE(window.session.IsChanged());
}

TEST_F(FilmsPluginTest, AFilmIsChosenInThePanelsList) {
    IFilm* film = AddFilm();
    QListWidget* list = window.pluginPanel->findChild<QListWidget*>();
    ASSERT_NE(list, nullptr);
    const auto choose = [&](const char* text) {
        QListWidgetItem* item = list->findItems(text, Qt::MatchExactly).value(0);
        ASSERT_NE(item, nullptr);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(item).center());
        Settle();
    };
    choose("<none>");
    EXPECT_EQ(Films().currentFilm, nullptr);
    choose(film->name);
    EXPECT_EQ(Films().currentFilm, film);
}

TEST_F(FilmsPluginTest, AMovedObjectBecomesAnActorAndCantBeDeleted) {
    IFilm* film = AddFilm();
    engine::SceneObject* crate = Create("Crate");
    MakeActor(*crate, 3.0f);
    ASSERT_NE(film->FindObjectTrack(crate), nullptr);
    QString text;
    Answering(
        [&](QWidget& box) {
            text = dynamic_cast<QMessageBox&>(box).informativeText();
            Press(box, QMessageBox::Ok);
        },
        [&] { Action("EditDelete")->trigger(); });
    EXPECT_EQ(text.toStdString(),
              "Crate(" + std::to_string(crate->id) + ") is actor in film " + std::string(film->name));
    EXPECT_TRUE(window.host.Contains(crate));
}

TEST_F(FilmsPluginTest, AnActorSnapsBackWhileAnimatingIsOff) {
    IFilm* film = AddFilm();
    engine::SceneObject* crate = Create("Crate");
    MakeActor(*crate, 3.0f);
    engine::Matrix4 elsewhere;
    elsewhere.SetTranslation({9, 9, 9});
    window.commands.Move({{crate, elsewhere}});
    const Vector3 pose = film->FindObjectTrack(crate)->GetPositionAt(0.0f);
    EXPECT_NEAR(crate->GetPosition(0)[0], pose.x, 1e-4f);
    EXPECT_NEAR(crate->GetPosition(0)[1], pose.y, 1e-4f);
    EXPECT_LT(pose.y, 1.0f);
}

TEST_F(FilmsPluginTest, ALightMadeWithAFilmOpenGetsOneTrackAndGoesWithItsObject) {
    IFilm* film = AddFilm();
    const auto count = [&] {
        int tracks = 0;
        for (CFilmTrack* track : film->tracks) {
            const CFilmGLLightTrack* light = AsGLLightTrack(track);
            tracks += light != nullptr && light->isSun == 0 ? 1 : 0;
        }
        return tracks;
    };
    ASSERT_EQ(count(), 0);
    engine::SceneObject* lamp = Create("Lamp", ClassName::GLLight);
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(lamp->name.rfind("MovieGLLight", 0), 0u);
    window.host.Select({lamp});
    window.commands.DeleteSelected();
    EXPECT_EQ(count(), 0);
}

TEST_F(FilmsPluginTest, FilmLightsTravelInThePluginsChunk) {
    AddFilm();
    Create("Lamp", ClassName::GLLight);
    Create("Crate");
    const std::size_t objects = window.host.level.Data()->Objects().size();
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(PathOf("lights.level"))));
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("lights.level"))));
    EXPECT_EQ(window.host.level.Data()->Objects().size(), objects);
    const engine::SceneObject* lamp = window.host.level.FindObject("MovieGLLight");
    ASSERT_NE(lamp, nullptr);
    bool paired = false;
    for (CFilmTrack* track : Films().films[0]->tracks) {
        const CFilmGLLightTrack* light = AsGLLightTrack(track);
        paired = paired || (light != nullptr && light->lightObject == lamp);
    }
    EXPECT_TRUE(paired);
}

TEST_F(FilmsPluginTest, TheViewMenuAttachesAndTheBadgeDetaches) {
    const auto choose = [&](const QString& text) {
        Answering(
            [&](QWidget& popup) {
                auto& menu = dynamic_cast<QMenu&>(popup);
                for (QAction* action : menu.actions()) {
                    if (action->text() == text && action->isEnabled()) {
                        menu.setActiveAction(action);
                        QTest::keyClick(&menu, Qt::Key_Return);
                        return;
                    }
                }
                menu.close();
            },
            [&] { Click(QPoint(30, 60), Qt::NoModifier, Qt::RightButton); });
    };
    choose("Detach movie"); // greyed: nothing happens
    EXPECT_FALSE(window.host.FollowsPlugin(0));
    choose("Attach movie");
    EXPECT_TRUE(window.host.FollowsPlugin(0));
    Click(QPoint(View()->width() - 60, 22));
    EXPECT_FALSE(window.host.FollowsPlugin(0));
    EXPECT_FALSE(window.host.IsViewAttachedToPlugin(0, PluginCommandId::FromPluginNumber(kNumber)));
    Run(kAttachView);
    EXPECT_TRUE(window.host.FollowsPlugin(0));
    Run(kDetachView);
    EXPECT_FALSE(window.host.FollowsPlugin(0));
}

TEST_F(FilmsPluginTest, TheShortcutPlaysAndSpaceStops) {
    IFilm* film = AddFilm();
    film->length = 600.0f;
    int frames = 0;
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsMoved, _)).WillRepeatedly([&](int, void*) {
        if (++frames == 5) {
            QTimer::singleShot(0, &window, [this] { PressSpace(); });
        }
    });
    QTest::keyClick(View(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_GE(frames, 5);
}

TEST_F(FilmsPluginTest, AFilmInPlayLetsTheLevelBeSavedAndGoesOn) {
    IFilm* film = AddFilm();
    film->length = 600.0f;
    int frames = 0;
    bool saved = false;
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsMoved, _)).WillRepeatedly([&](int, void*) { ++frames; });
    QTimer::singleShot(50, &window, [&] {
        QTimer::singleShot(50, &window, [&] { PressSpace(); });
        saved =
            window.SaveLevelAs(QString::fromStdString(PathOf("playing.level"))); // back when the film ends
    });
    QTest::keyClick(View(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(saved);
    EXPECT_GT(frames, 0);
    EXPECT_TRUE(std::filesystem::exists(PathOf("playing.level")));
}

TEST_F(FilmsPluginTest, AnotherLevelMayBeOpenedWhileAFilmPlays) {
    AddFilm()->length = 600.0f;
    QTimer::singleShot(50, &window,
                       [&] { EXPECT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("start.level")))); });
    QTest::keyClick(View(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(Films().currentFilm, nullptr);
    EXPECT_EQ(Films().films[0], nullptr);
}

TEST_F(FilmsPluginTest, TheWindowMayBeClosedWhileAFilmPlays) {
    AddFilm()->length = 600.0f;
    QTimer::singleShot(50, &window, [&] {
        Answering([](QWidget& box) { Press(box, QMessageBox::Discard); },
                  [&] { EXPECT_TRUE(window.close()); });
    });
    QTest::keyClick(View(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.host.level.GetLevelData(), nullptr);
    window.ShutdownHost();
    EXPECT_TRUE(window.host.plugins.Entries().empty());
}

TEST_F(FilmsPluginTest, TheSampleLevelOpensPlaysAndSavesToTheSameBytes) {
    const QString sample = QString(FILMS_SOURCE_DIR) + "/examples/harbour/harbour.level";
    ASSERT_TRUE(window.OpenLevel(sample));
    ASSERT_NE(Films().films[0], nullptr);
    EXPECT_STREQ(Films().films[0]->name, "Intro");
    EXPECT_FALSE(window.session.IsChanged());
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(PathOf("once.level"))));
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("once.level"))));
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(PathOf("twice.level"))));
    const auto bytes = [&](const char* name) {
        QFile file(QString::fromStdString(PathOf(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    EXPECT_EQ(bytes("once.level"), bytes("twice.level"));
}

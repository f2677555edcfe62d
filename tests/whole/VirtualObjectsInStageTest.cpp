#include "host/engine/Level.h"
#include "host/engine/ObjectTrack.h"
#include "plugin/contract/ClassIds.h"
#include "tests/support/Answering.h"
#include "tests/whole/StageFixture.h"

#include <algorithm>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>
#include <set>

using ::testing::ElementsAre;

namespace {

constexpr const char* kToVirtual = "Convert to virtual object";
constexpr const char* kToNormal = "Convert to normal object";

/// Objects that are kept for films only, made and turned back with the mouse: by the buttons of the plug-in's
/// toolbar and by the entries of the menu "Plug-ins". The question comes as a box of the program.
class VirtualObjectsInStageTest : public StageTest {
protected:
    void SetUp() override {
        Hooks().messageBox = nullptr;
        chest = Make("Chest", {100, 500, 200});
        Save();
    }
    engine::SceneObject* Make(const std::string& name, const Vector3& place) {
        engine::Matrix4 matrix;
        matrix.SetTranslation(place);
        engine::SceneObject* object =
            window->commands.Create({ClassName::Mesh, name, "models/crate.glb", matrix, nullptr, true});
        Settle();
        return object;
    }
    void Save() { ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(levelPath))); }
    void SaveAndOpenAgain() {
        Save();
        ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
        Settle();
        chest = Object("Chest");
    }
    /// Presses the button of the toolbar "Films" that has this tip.
    void ClickButton(const QString& tip) {
        for (QToolBar* bar : window->findChildren<QToolBar*>()) {
            for (QAction* action : bar->actions()) {
                if (bar->windowTitle() == "Films" && action->toolTip() == tip) {
                    ASSERT_TRUE(action->isEnabled());
                    QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
                    Settle();
                    return;
                }
            }
        }
        FAIL() << "no button " << tip.toStdString();
    }
    /// Opens the menu "Plug-ins" and clicks the entry.
    void ClickEntry(const QString& text) {
        QMenu* menu = nullptr;
        for (QAction* title : window->menuBar()->actions()) {
            if (title->text() == "&Plug-ins") {
                menu = title->menu();
                QTest::mouseClick(window->menuBar(), Qt::LeftButton, {},
                                  window->menuBar()->actionGeometry(title).center());
            }
        }
        ASSERT_NE(menu, nullptr);
        ASSERT_TRUE(menu->isVisible());
        for (QAction* entry : menu->actions()) {
            if (entry->text() == text) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
                Settle();
                return;
            }
        }
        menu->close();
        FAIL() << "no entry " << text.toStdString();
    }
    /// Answers the question with the mouse; first does what is given, as if from elsewhere in the program.
    void Answer(QMessageBox::StandardButton button, const std::function<void()>& ask,
                const std::function<void()>& before = nullptr) {
        Answering(
            [&](QWidget& top) {
                auto* box = qobject_cast<QMessageBox*>(&top);
                ASSERT_NE(box, nullptr);
                EXPECT_EQ(box->text(), "Transform selected objects to virtual objects ?");
                EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
                if (before) {
                    before();
                }
                QTest::mouseClick(box->button(button), Qt::LeftButton);
            },
            ask);
        Settle();
    }
    void MakeVirtual(const std::vector<engine::SceneObject*>& objects) {
        window->host.Select({objects.begin(), objects.end()});
        Answer(QMessageBox::Yes, [this] { ClickButton(kToVirtual); });
    }
    void MakeNormal(const std::vector<engine::SceneObject*>& objects) {
        window->host.Select({objects.begin(), objects.end()});
        ClickButton(kToNormal);
    }
    static bool IsVirtual(const engine::SceneObject* object) {
        return object != nullptr && object->Info().className == ClassName::VirtualObject;
    }
    /// What the object tree says of an object when the mouse rests on it.
    std::string Tip(const std::string& name) const {
        const auto* tree = window->findChild<QTreeWidget*>("ObjectTree");
        const QList<QTreeWidgetItem*> found =
            tree->findItems(QString::fromStdString(name), Qt::MatchExactly | Qt::MatchRecursive);
        return found.size() == 1 ? found.front()->toolTip(0).toStdString() : "no single item";
    }
    std::string TipOf(const engine::SceneObject& object, const std::string& className) const {
        return className + " (" + std::to_string(object.id) + ")";
    }
    /// Opens the film and moves the object with "Animate object" on, which makes it an actor.
    void MakeActor(engine::SceneObject* object, const std::string& film, float x) {
        ChooseFilm(film);
        ClickButton("Animate object");
        Move(object, x, 500, 200);
        ClickButton("Animate object");
    }
    engine::ObjectTrack* TrackIn(const std::string& film, const EditorObject* object) const {
        return static_cast<engine::ObjectTrack*>(Film(film)->FindObjectTrack(object));
    }
    std::vector<std::string> Selected() const {
        std::vector<std::string> names;
        for (const EditorObject* object : window->host.level.selection) {
            names.push_back(object->name);
        }
        return names;
    }
    std::size_t Count(const std::string& name) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(window->host.level.Data()->Objects(),
                                  [&name](const auto& object) { return object->name == name; }));
    }

    engine::SceneObject* chest = nullptr;
};

} // namespace

TEST_F(VirtualObjectsInStageTest, ButtonsTurnTheSelectionToAndFro) {
    window->host.Select({chest});
    Answer(QMessageBox::Yes, [this] { ClickButton(kToVirtual); });
    EXPECT_TRUE(IsVirtual(chest));
    EXPECT_EQ(Tip("Chest"), TipOf(*chest, "Virtual object"));
    EXPECT_TRUE(window->session.IsChanged());
    EXPECT_THAT(Selected(), ElementsAre("Chest"));
    ClickButton(kToNormal);
    EXPECT_EQ(chest->Info().className, ClassName::Mesh);
    EXPECT_EQ(Tip("Chest"), TipOf(*chest, "Mesh"));
    EXPECT_FALSE(window->session.IsChanged());
    EXPECT_THAT(Selected(), ElementsAre("Chest"));
}

TEST_F(VirtualObjectsInStageTest, MenuEntriesTurnTheSelectionToAndFro) {
    window->host.Select({chest});
    // The menu itself comes up before the question, so it is opened here and not while an answer is waited
    // for.
    Answering(
        [this](QWidget& top) {
            auto* menu = qobject_cast<QMenu*>(&top);
            ASSERT_NE(menu, nullptr);
            for (QAction* entry : menu->actions()) {
                if (entry->text() == kToVirtual) {
                    Answer(QMessageBox::Yes, [&] {
                        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
                    });
                }
            }
        },
        [this] {
            for (QAction* title : window->menuBar()->actions()) {
                if (title->text() == "&Plug-ins") {
                    QTest::mouseClick(window->menuBar(), Qt::LeftButton, {},
                                      window->menuBar()->actionGeometry(title).center());
                }
            }
            QTest::qWait(50);
        });
    EXPECT_TRUE(IsVirtual(chest));
    ClickEntry(kToNormal);
    EXPECT_EQ(chest->Info().className, ClassName::Mesh);
}

TEST_F(VirtualObjectsInStageTest, NoEscapeAndAClosedBoxChangeNothingNotEvenTheSelection) {
    engine::SceneObject* barrel = Object("Barrel");
    window->host.Select({chest, barrel});
    const std::vector<float> place = MatrixOf(*chest);
    Answer(QMessageBox::No, [this] { ClickButton(kToVirtual); });
    Answering([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); },
              [this] { ClickButton(kToVirtual); });
    Answering([](QWidget& box) { box.close(); }, [this] { ClickButton(kToVirtual); });
    EXPECT_FALSE(IsVirtual(chest));
    EXPECT_FALSE(IsVirtual(barrel));
    EXPECT_EQ(MatrixOf(*chest), place);
    EXPECT_THAT(Selected(), ElementsAre("Chest", "Barrel"));
    EXPECT_FALSE(window->session.IsChanged());
}

TEST_F(VirtualObjectsInStageTest, AnActorOfSeveralFilmsIsSavedOnceAndComesBackInAllOfThem) {
    MakeActor(chest, "Intro", 300);
    MakeActor(chest, "Epilogue", 700);
    ChooseFilm("<none>");
    MakeVirtual({chest});
    EXPECT_TRUE(TrackIn("Intro", chest)->actorIsVirtual);
    EXPECT_TRUE(TrackIn("Epilogue", chest)->actorIsVirtual);
    for (int round = 0; round < 2; ++round) {
        SaveAndOpenAgain();
        ASSERT_TRUE(IsVirtual(chest));
        EXPECT_EQ(Count("Chest"), 1u);
        EXPECT_EQ(Tip("Chest"), TipOf(*chest, "Virtual object"));
        EXPECT_EQ(chest->World().Translation(), (Vector3{100, 500, 200}));
        ASSERT_NE(TrackIn("Intro", chest), nullptr);
        EXPECT_TRUE(TrackIn("Intro", chest)->actorIsVirtual);
        ChooseFilm("Intro");
        EXPECT_EQ(chest->World().Translation(), (Vector3{300, 500, 200}));
        ChooseFilm("Epilogue");
        EXPECT_EQ(chest->World().Translation(), (Vector3{700, 500, 200}));
        ChooseFilm("<none>");
        EXPECT_FALSE(window->session.IsChanged());
    }
    MakeNormal({chest});
    EXPECT_FALSE(TrackIn("Intro", chest)->actorIsVirtual);
    EXPECT_FALSE(TrackIn("Epilogue", chest)->actorIsVirtual);
    SaveAndOpenAgain();
    EXPECT_EQ(chest->Info().className, ClassName::Mesh);
    EXPECT_EQ(Count("Chest"), 1u);
    ASSERT_NE(TrackIn("Epilogue", chest), nullptr);
    EXPECT_FALSE(TrackIn("Epilogue", chest)->actorIsVirtual);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(VirtualObjectsInStageTest, AVirtualObjectBecomesAnActorLikeAnyOther) {
    MakeVirtual({chest});
    MakeActor(chest, "Epilogue", 700);
    ASSERT_NE(TrackIn("Epilogue", chest), nullptr);
    EXPECT_TRUE(TrackIn("Epilogue", chest)->actorIsVirtual);
    SaveAndOpenAgain();
    ASSERT_TRUE(IsVirtual(chest));
    ASSERT_NE(TrackIn("Epilogue", chest), nullptr);
    EXPECT_EQ(chest->World().Translation(), (Vector3{100, 500, 200})) << "where it stands outside of films";
}

TEST_F(VirtualObjectsInStageTest, WhileItsFilmIsOpenAndTheScenarioShowsItItStaysAnActor) {
    MakeActor(chest, "Epilogue", 700);
    ASSERT_NO_FATAL_FAILURE(OpenScenario("Epilogue"));
    ASSERT_FALSE(ScenarioRows().empty());
    const CFilmTrack* track = TrackIn("Epilogue", chest);
    MakeVirtual({chest});
    EXPECT_EQ(chest->World().Translation(), (Vector3{700, 500, 200}));
    EXPECT_EQ(TrackIn("Epilogue", chest), track);
    ChooseFilm("Intro");
    EXPECT_EQ(chest->World().Translation(), (Vector3{100, 500, 200}));
    ChooseFilm("Epilogue");
    EXPECT_EQ(chest->World().Translation(), (Vector3{700, 500, 200}));
    EXPECT_EQ(TrackIn("Epilogue", chest), track);
    MakeNormal({chest});
    EXPECT_EQ(chest->World().Translation(), (Vector3{700, 500, 200}));
}

TEST_F(VirtualObjectsInStageTest, OfObjectsWithOneNameTheConvertedAreRenamedAndStaySo) {
    engine::SceneObject* second = Make("Second", {0, 500, 0});
    engine::SceneObject* third = Make("Third", {0, 600, 0});
    second->name = third->name = "Chest";
    MakeVirtual({second, third});
    EXPECT_EQ(chest->name, "Chest");
    const std::string names[] = {second->name, third->name};
    EXPECT_EQ(std::set<std::string>({chest->name, names[0], names[1]}).size(), 3u);
    EXPECT_EQ(Tip(names[0]), TipOf(*second, "Virtual object"));
    SaveAndOpenAgain();
    EXPECT_FALSE(IsVirtual(chest));
    EXPECT_TRUE(IsVirtual(Object(names[0])));
    EXPECT_TRUE(IsVirtual(Object(names[1])));
    EXPECT_EQ(Object(names[1])->World().Translation(), (Vector3{0, 600, 0}));
}

TEST_F(VirtualObjectsInStageTest, LightsOfTheSelectionAreSkippedAndTheOthersConverted) {
    ChooseFilm("Epilogue");
    engine::SceneObject* lamp = window->commands.Create({ClassName::GLLight, "Lamp", "", {}, nullptr, true});
    Settle();
    MakeVirtual({lamp, chest});
    EXPECT_EQ(lamp->Info().className, ClassName::GLLight);
    EXPECT_TRUE(IsVirtual(chest));
    MakeNormal({lamp, chest});
    EXPECT_EQ(lamp->Info().className, ClassName::GLLight);
    EXPECT_EQ(chest->Info().className, ClassName::Mesh);
    EXPECT_THAT(Selected(), ElementsAre("Chest")) << "what was turned back";
}

TEST_F(VirtualObjectsInStageTest, TwiceVirtualIsOnce) {
    MakeVirtual({chest});
    MakeVirtual({chest});
    EXPECT_TRUE(IsVirtual(chest));
    MakeNormal({chest});
    EXPECT_EQ(chest->Info().className, ClassName::Mesh);
}

TEST_F(VirtualObjectsInStageTest, NormalObjectsAreNotTurnedNormalNorSelected) {
    engine::SceneObject* barrel = Object("Barrel");
    MakeNormal({chest, barrel});
    EXPECT_FALSE(window->session.IsChanged());
    EXPECT_THAT(Selected(), ElementsAre("Chest", "Barrel"));
    MakeVirtual({barrel});
    MakeNormal({chest, barrel});
    EXPECT_THAT(Selected(), ElementsAre("Barrel"));
}

TEST_F(VirtualObjectsInStageTest, WithNothingSelectedTheQuestionComesAllTheSame) {
    window->host.ClearSelection();
    Answer(QMessageBox::Yes, [this] { ClickButton(kToVirtual); });
    ClickButton(kToNormal);
    EXPECT_FALSE(window->session.IsChanged());
}

TEST_F(VirtualObjectsInStageTest, ParentsAndChildrenComeBackTogether) {
    engine::SceneObject* below = Make("Below", {0, 500, 0});
    engine::SceneObject* above = Make("Above", {0, 600, 0});
    ASSERT_EQ(window->commands.SetParent({below}, chest), "");
    ASSERT_EQ(window->commands.SetParent({chest}, above), "");
    MakeVirtual({chest});
    SaveAndOpenAgain();
    ASSERT_TRUE(IsVirtual(chest));
    EXPECT_EQ(chest->parent, Object("Above"));
    EXPECT_EQ(Object("Below")->parent, chest);
    EXPECT_EQ(chest->World().Translation(), (Vector3{100, 500, 200}));
    EXPECT_EQ(Object("Below")->World().Translation(), (Vector3{0, 500, 0}));
    EXPECT_EQ(Tip("Chest"), TipOf(*chest, "Virtual object"));
    MakeNormal({chest});
    SaveAndOpenAgain();
    EXPECT_EQ(chest->parent, Object("Above"));
    EXPECT_EQ(Object("Below")->parent, chest);
}

TEST_F(VirtualObjectsInStageTest, WhatHangsOnAVirtualObjectInAFilmStillDoes) {
    engine::SceneObject* rider = Make("Rider", {0, 900, 0});
    MakeActor(chest, "Epilogue", 700);
    MakeActor(rider, "Epilogue", 50);
    TrackIn("Epilogue", rider)->SetParent(chest, false, "");
    CFilmTrack* camera = Film("Epilogue")->CreateCameraTrack();
    Film("Epilogue")->AddTrack(camera);
    AsCameraTrack(camera)->cameraName = "Follower";
    IFilmKey* key = Films().keyFactory->CreateKey(KeyKind::CameraTarget);
    ASSERT_TRUE(camera->AddKey(key));
    key->SetLinkObject(chest);
    ChooseFilm("<none>");
    MakeVirtual({chest});
    SaveAndOpenAgain();
    ASSERT_TRUE(IsVirtual(chest));
    EXPECT_EQ(TrackIn("Epilogue", Object("Rider"))->parentObject, chest);
    const CFilmCameraTrack* follower = AsCameraTrack(Film("Epilogue")->FindCamera("Follower"));
    ASSERT_NE(follower, nullptr);
    EXPECT_EQ(static_cast<const CFilmLinkedKey*>(follower->keys.front())->linkObject, chest);
}

TEST_F(VirtualObjectsInStageTest, GroupsKeepTheirVirtualMembers) {
    engine::SceneObject* second = Make("Second", {0, 500, 0});
    window->host.Select({chest, second});
    ASSERT_TRUE(window->commands.GroupSelected());
    MakeVirtual({chest});
    SaveAndOpenAgain();
    ASSERT_TRUE(IsVirtual(chest));
    const auto* group = window->host.level.Data()->GroupOf(chest);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(window->host.level.Data()->GroupOf(Object("Second")), group);
}

TEST_F(VirtualObjectsInStageTest, AnActorIsNotDeletedAndAFreeVirtualObjectIs) {
    MakeVirtual({chest});
    MakeActor(chest, "Epilogue", 700);
    ChooseFilm("<none>");
    window->host.Select({chest});
    Answering([](QWidget& box) { box.close(); }, [this] { window->commands.DeleteSelected(); });
    EXPECT_EQ(Object("Chest"), chest);
    ChooseFilm("Epilogue");
    Film("Epilogue")->RemoveTrack(TrackIn("Epilogue", chest), 1);
    ChooseFilm("<none>");
    window->host.Select({chest});
    window->commands.DeleteSelected();
    EXPECT_EQ(Object("Chest"), nullptr);
    SaveAndOpenAgain();
    EXPECT_EQ(chest, nullptr);
}

TEST_F(VirtualObjectsInStageTest, AnObjectDeletedUnderTheQuestionIsLeftOut) {
    engine::SceneObject* second = Make("Second", {0, 500, 0});
    window->host.Select({chest, second});
    Answer(
        QMessageBox::Yes, [this] { ClickButton(kToVirtual); },
        [&] {
            window->host.Select({chest});
            window->commands.DeleteSelected();
            window->host.Select({second});
        });
    EXPECT_EQ(Object("Chest"), nullptr);
    EXPECT_TRUE(IsVirtual(second));
}

TEST_F(VirtualObjectsInStageTest, ALevelThatWentUnderTheQuestionIsLeftAlone) {
    window->host.Select({chest});
    Answer(
        QMessageBox::Yes, [this] { ClickButton(kToVirtual); },
        [this] { ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath))); });
    EXPECT_FALSE(IsVirtual(Object("Chest"))) << "nothing is selected in it";
    EXPECT_FALSE(window->session.IsChanged());
}

TEST_F(VirtualObjectsInStageTest, AFilmThatPlaysGoesOnAroundTheQuestion) {
    MakeActor(chest, "Epilogue", 700);
    bool asked = false;
    InsidePump([&] {
        window->host.Select({chest});
        Answer(QMessageBox::Yes, [this] { ClickButton(kToVirtual); });
        asked = true;
    });
    PlayWithShortcut(50);
    EXPECT_TRUE(asked);
    EXPECT_TRUE(IsVirtual(chest));
    EXPECT_EQ(chest->World().Translation(), (Vector3{700, 500, 200}));
    EXPECT_EQ(Films().currentFilm, Film("Epilogue"));
}

TEST_F(VirtualObjectsInStageTest, ASaveThatFailsLeavesTheObjectVirtual) {
    MakeActor(chest, "Epilogue", 700);
    MakeVirtual({chest});
    Answering([](QWidget& box) { box.close(); },
              [this] { window->SaveLevelAs(QString::fromStdString(folder.File("nowhere/of/a.level"))); });
    EXPECT_TRUE(IsVirtual(chest));
    SaveAndOpenAgain();
    EXPECT_TRUE(IsVirtual(chest));
}

TEST_F(VirtualObjectsInStageTest, AnEmptyLevelAfterOneWithVirtualObjectsHasNone) {
    MakeVirtual({chest});
    Save();
    window->findChild<QAction*>("FileNew")->trigger();
    Settle();
    chest = Make("Chest", {100, 500, 200});
    levelPath = folder.File("harbour/other.level");
    SaveAndOpenAgain();
    EXPECT_FALSE(IsVirtual(chest));
    EXPECT_EQ(Count("Chest"), 1u);
}

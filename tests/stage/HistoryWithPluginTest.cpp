// Undo and redo in Stage with films.so: what a user does, and back.
#include "framework/TestHooks.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelContent.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/windows/films/PanelHand.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/PluginPanel.h"
#include "host/stage/windows/UndoCommands.h"
#include "plugin/contract/EventCodes.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <QApplication>
#include <QDialog>
#include <QListWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <random>

namespace {

constexpr int kYes = 6;
constexpr int kCancel = 2;
constexpr std::uint32_t kAnimate = 50; ///< the plug-in's commands by their numbers in menus
constexpr std::uint32_t kToVirtual = 52;
constexpr std::uint32_t kToNormal = 53;

/// Stage with films.so, a copy of the sample level and the plug-in's panel.
class HistoryWithPluginTest : public ::testing::Test {
protected:
    HistoryWithPluginTest() {
        Hooks().messageBox = [](const std::string&, UINT) { return kYes; };
        Hooks().modalDialog = [](CDialog&) { return kCancel; };
        std::filesystem::copy(SampleFolder(), folder.File("harbour"),
                              std::filesystem::copy_options::recursive);
        window = std::make_unique<stage::MainWindow>(
            stage::HostFolders{folder.Path(), folder.Path(), SourceFolder() + "/host/stage/data"});
        window->resize(700, 500);
        window->LoadPlugins({QString::fromStdString(BuiltLibrary("films.so"))});
        EXPECT_TRUE(window->OpenLevel(QString::fromStdString(folder.File("harbour/harbour.level"))));
        for (const auto* entry : window->host.plugins.Entries()) {
            entry->plugin->OnActivate(true);
        }
        QObject::connect(&boxes, &QTimer::timeout, [] {
            if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                box->reject();
            }
        });
        boxes.start(1);
    }
    ~HistoryWithPluginTest() override {
        window->ShutdownHost();
        window.reset();
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    stage::LevelHistory& History() { return window->session.History(); }
    engine::LevelData& Data() { return *window->host.level.Data(); }
    IFilm* Current() { return Data().filmManager->currentFilm; }
    std::vector<IFilm*> Films() {
        std::vector<IFilm*> films;
        std::ranges::copy_if(Data().filmManager->films, std::back_inserter(films),
                             [](const IFilm* film) { return film != nullptr; });
        return films;
    }
    QListWidget* FilmList() {
        for (QListWidget* list : window->pluginPanel->findChildren<QListWidget*>()) {
            if (list->count() > 0 && list->item(0)->text() == "<none>") {
                return list;
            }
        }
        return nullptr;
    }
    /// Line 0 closes the film.
    void ChooseLine(int line) {
        const IFilm* film = line == 0 ? nullptr : Films().at(static_cast<std::size_t>(line - 1));
        const stage::PanelHand panel([this] { return window->PanelForm(); });
        EXPECT_TRUE(panel.Choose(*Data().filmManager, film));
    }
    void Rebuild() { window->host.plugins.SendEvent(EventCode::ObjectSetChanged, nullptr); }
    void Command(std::uint32_t local) {
        window->host.RunCommand(PluginCommandId::FromPluginNumber(1).WithLocal(local));
    }
    std::uint64_t Written() {
        return engine::LevelContent(stage::DryWrite(window->host, stage::DryWriteFor::Comparison));
    }
    engine::SceneObject* Find(const std::string& name) { return window->host.level.FindObject(name); }
    void MoveBy(engine::SceneObject& object, float x, float z) {
        window->host.Select({&object});
        engine::Matrix4 world = object.World();
        const Vector3 place = world.Translation();
        world.SetTranslation({place.x + x, place.y, place.z + z});
        window->commands.Move({{&object, world}});
    }
    std::vector<engine::SceneObject*> Listed() {
        std::vector<engine::SceneObject*> objects;
        for (const auto& object : Data().Objects()) {
            if (!object->transient) {
                objects.push_back(object.get());
            }
        }
        return objects;
    }

    HookScope hooks;
    TempFolder folder;
    QTimer boxes;
    std::unique_ptr<stage::MainWindow> window;
};

TEST_F(HistoryWithPluginTest, KeysComeBackAndTheFilmStaysOpenAtItsTime) {
    ChooseLine(1);
    QApplication::processEvents(); // the look at the film ends
    IFilm* film = Current();
    ASSERT_NE(film, nullptr);
    History().NoteAll();
    const std::uint64_t start = Written();
    CFilmTrack* track = nullptr;
    for (CFilmTrack* each : film->tracks) {
        track = AsObjectTrack(each) != nullptr && !each->keys.empty() ? each : track;
    }
    ASSERT_NE(track, nullptr);
    IFilmKey* key = track->keys.front();
    const float before = key->time;
    key->SetTime(before + 0.5f);
    Rebuild();
    History().Note();
    EXPECT_EQ(History().Edits().UndoName(), "Edit " + std::string(film->name) + ": 1 key");
    EXPECT_TRUE(window->session.IsChanged());
    window->undo->Undo();
    EXPECT_EQ(Current(), film);
    EXPECT_EQ(key->time, before);
    EXPECT_EQ(Written(), start);
    window->undo->Redo();
    EXPECT_EQ(key->time, before + 0.5f);
}

TEST_F(HistoryWithPluginTest, ADeletedObjectComesBackAndTheFilmStaysOpen) {
    ChooseLine(1);
    QApplication::processEvents(); // the look at the film ends
    IFilm* film = Current();
    ASSERT_NE(film, nullptr);
    History().NoteAll();
    const std::uint64_t start = Written();
    const std::size_t tracks = film->tracks.size();
    EditorObject* crate = nullptr;
    for (engine::SceneObject* object : Listed()) {
        std::list<DeleteMessage> messages;
        const ObjectList one{object};
        bool free = true;
        window->host.plugins.Each([&](IPlugin& plugin) { free = plugin.CanDeleteObjects(&one, &messages); });
        crate = free && !object->IsLight() ? object : crate;
    }
    ASSERT_NE(crate, nullptr);
    const std::string name = crate->name;
    window->host.Select({crate});
    window->commands.DeleteSelected();
    History().NoteAll();
    EXPECT_EQ(History().Edits().UndoName(), "Delete " + name);
    window->undo->Undo();
    EXPECT_NE(Find(name), nullptr);
    EXPECT_EQ(Current(), film);
    ASSERT_NE(FilmList()->currentItem(), nullptr);
    EXPECT_EQ(FilmList()->currentItem()->text().toStdString(), film->name) << "the list says so";
    EXPECT_EQ(film->tracks.size(), tracks);
    EXPECT_EQ(Written(), start);
}

TEST_F(HistoryWithPluginTest, OpeningAFilmIsNoStepOfTheUser) {
    MoveBy(*Find("Fishing boat"), 100.0f, 0.0f);
    History().NoteAll();
    window->commands.Duplicate();
    History().NoteAll();
    MoveBy(*Find("Fishing boat1"), 100.0f, 0.0f);
    History().NoteAll();
    ASSERT_EQ(History().Edits().UndoName(), "Move Fishing boat1");
    ChooseLine(1);
    QApplication::processEvents();
    History().NoteAll();
    EXPECT_EQ(History().Edits().UndoName(), "Move Fishing boat1");
    window->undo->Undo();
    EXPECT_EQ(History().Edits().RedoName(), "Move Fishing boat1");
    ChooseLine(2);
    QApplication::processEvents();
    History().NoteAll();
    EXPECT_EQ(History().Edits().RedoName(), "Move Fishing boat1") << "looking at another one ends nothing";
}

TEST_F(HistoryWithPluginTest, AnimatingStaysOnWhereTheLevelIsPutTogetherAnew) {
    ChooseLine(1);
    QApplication::processEvents();
    QAction* animate = nullptr;
    for (const QToolBar* bar : window->findChildren<QToolBar*>()) {
        for (QAction* action : bar->actions()) {
            animate = action->toolTip() == "Animate object" ? action : animate;
        }
    }
    ASSERT_NE(animate, nullptr);
    engine::ObjectSpec spec;
    spec.className = "EmptyObject";
    spec.name = "Made";
    window->commands.Create(spec);
    History().NoteAll();
    EXPECT_FALSE(animate->isChecked());
    window->undo->Undo();
    EXPECT_FALSE(animate->isChecked()) << "it was off";
    animate->trigger();
    ASSERT_TRUE(animate->isChecked());
    window->undo->Redo();
    EXPECT_TRUE(animate->isChecked());
    History().Undo();
    EXPECT_FALSE(animate->isChecked()) << "by itself the plug-in lets go of it";
}

TEST_F(HistoryWithPluginTest, ASavedLevelIsUnchangedAgainAfterAnUndo) {
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(folder.File("harbour/harbour.level"))));
    engine::SceneObject* object = Listed().front();
    MoveBy(*object, 100.0f, 0.0f);
    EXPECT_TRUE(window->session.IsChanged());
    window->undo->Undo();
    EXPECT_FALSE(window->session.IsChanged());
    window->undo->Redo();
    EXPECT_TRUE(window->session.IsChanged());
}

/// What may be done at random, and the way back checked against what it was.
class HistoryRandomTest : public HistoryWithPluginTest {
protected:
    int Pick(int count) { return static_cast<int>(luck() % static_cast<unsigned>(std::max(count, 1))); }
    float Number() { return static_cast<float>(Pick(2001) - 1000); }
    engine::SceneObject* AnyObject() {
        const auto objects = Listed();
        return objects.empty() ? nullptr
                               : objects[static_cast<std::size_t>(Pick(static_cast<int>(objects.size())))];
    }
    void SelectSome() {
        ObjectList some;
        for (int i = Pick(3); i >= 0; --i) {
            if (engine::SceneObject* object = AnyObject()) {
                some.push_back(object);
            }
        }
        window->host.Select(some);
    }
    void EditObjects() {
        engine::SceneObject* object = AnyObject();
        if (object == nullptr) {
            return;
        }
        switch (Pick(8)) {
        case 0:
            window->commands.Rename(*object, "Thing" + std::to_string(Pick(50)));
            break;
        case 1:
            window->commands.SetParent({object}, Pick(2) == 0 ? nullptr : AnyObject());
            break;
        case 2:
            window->commands.SetVisible(*object, Pick(2) == 0);
            break;
        case 3:
            SelectSome();
            Pick(2) == 0 ? window->commands.GroupSelected() : window->commands.UngroupSelected();
            break;
        case 4:
            window->commands.SetSun({Number(), 500.0f, Number()}, Data().Sun()->light);
            break;
        default:
            MoveBy(*object, Number(), Number());
            break;
        }
    }
    void MakeOrDelete() {
        static constexpr const char* kClasses[] = {"EmptyObject", "GLLight", "FilmsDynLight", "MeshObject"};
        engine::ObjectSpec spec;
        switch (Pick(4)) {
        case 0:
            SelectSome();
            window->commands.DeleteSelected();
            break;
        case 1:
            SelectSome();
            window->commands.Duplicate();
            break;
        default:
            spec.className = kClasses[Pick(4)];
            spec.name = "Made";
            spec.matrix.SetTranslation({Number(), 0.0f, Number()});
            window->commands.Create(spec);
            break;
        }
    }
    void EditKeys() {
        IFilm* film = Current();
        if (film == nullptr || film->tracks.empty()) {
            return;
        }
        auto place = film->tracks.begin();
        std::advance(place, Pick(static_cast<int>(film->tracks.size())));
        CFilmTrack* track = *place;
        IFilmKey* key = nullptr;
        if (!track->keys.empty()) {
            auto at = track->keys.begin();
            std::advance(at, Pick(static_cast<int>(track->keys.size())));
            key = *at;
        }
        const int what = Pick(5);
        if (key != nullptr && what == 0) {
            key->SetTime(static_cast<float>(Pick(100)) * 0.1f);
        } else if (key != nullptr && what == 1) {
            key->endTime += 0.25f; // as some fields are written, without a word
        } else if (key != nullptr && what == 2) {
            key->time = static_cast<float>(Pick(100)) * 0.1f;
            track->NotifyKeysChanged(key->kind);
        } else if (what == 3) {
            const int kinds[] = {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale, KeyKind::Sound};
            if (IFilmKey* made = Data().filmManager->keyFactory->CreateKey(kinds[Pick(4)])) {
                made->SetTime(static_cast<float>(Pick(100)) * 0.1f);
                if (!track->AddKey(made)) {
                    Data().filmManager->keyFactory->DestroyKey(made);
                }
            }
        } else {
            film->length = static_cast<float>(5 + Pick(20));
        }
        Rebuild();
    }
    void EditFilms() {
        QListWidget* list = FilmList();
        switch (Pick(6)) {
        case 0:
            ChooseLine(0);
            break;
        case 1:
            QApplication::processEvents();
            break;
        case 2:
            if (IFilm* film = Current()) {
                CFilmTrack* camera = film->CreateCameraTrack();
                film->NewCameraName(AsCameraTrack(camera)->cameraName);
                film->AddTrack(camera);
                Rebuild();
            }
            break;
        case 3:
            Command(kAnimate);
            break;
        default:
            ChooseLine(list != nullptr ? Pick(list->count()) : 0);
            break;
        }
    }
    void Convert() {
        SelectSome();
        Command(Pick(2) == 0 ? kToVirtual : kToNormal);
    }

    std::size_t Done() { return History().Edits().Done(); }
    /// What the history noted when the last of the steps was done, which it was not asked for since.
    void Compare() {
        const std::uint64_t noted = Done() == 0 ? startHash : History().Edits().Steps()[Done() - 1].hashAfter;
        if (!History().HasLooks()) {
            ASSERT_EQ(History().WorkHash(), noted) << "back to " << Done();
        }
    }
    void Step() {
        const int what = Pick(20);
        if (what < 6) {
            const std::size_t steps = History().Edits().Steps().size();
            History().NoteAll();
            const bool ran =
                what < 3   ? History().Undo()
                : what < 5 ? History().Redo()
                           : History().GoTo(static_cast<std::size_t>(Pick(static_cast<int>(steps) + 1)));
            restored += ran ? 1 : 0;
            Compare();
            return;
        }
        if (what < 11) {
            EditObjects();
        } else if (what < 13) {
            MakeOrDelete();
        } else if (what < 17) {
            EditKeys();
        } else if (what < 19) {
            EditFilms();
        } else {
            Convert();
        }
        if (Pick(10) == 0) {
            QApplication::processEvents();
        }
        Pick(2) == 0 ? History().Note() : History().NoteAll();
        History().NoteAll();
    }
    void Run(unsigned seed, int steps) {
        luck.seed(seed);
        History().NoteAll();
        startHash = History().Edits().Steps().empty() ? History().WorkHash() : 0;
        for (int i = 0; i < steps && !HasFatalFailure(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i) + " of seed " + std::to_string(seed));
            Step();
        }
        ChooseLine(0);
        History().NoteAll();
        const std::size_t all = Done();
        const std::uint64_t end = History().WorkHash();
        for (std::size_t i = all; i > 0 && !HasFatalFailure(); --i) {
            History().GoTo(i - 1);
            Compare();
        }
        EXPECT_EQ(Done(), 0u);
        EXPECT_EQ(History().WorkHash(), startHash);
        History().GoTo(all);
        EXPECT_EQ(History().WorkHash(), end);
        RecordProperty("restored", restored);
    }

    std::mt19937 luck;
    std::uint64_t startHash = 0;
    int restored = 0;
};

TEST_F(HistoryRandomTest, AnyRunGoesBackToItsStartAndOnToItsEnd) {
    const char* steps = std::getenv("FILMS_HISTORY_STEPS");
    const char* seed = std::getenv("FILMS_HISTORY_SEED");
    Run(seed != nullptr ? static_cast<unsigned>(std::atoi(seed)) : 1,
        steps != nullptr ? std::atoi(steps) : 300);
    EXPECT_GT(restored, 0);
}

} // namespace

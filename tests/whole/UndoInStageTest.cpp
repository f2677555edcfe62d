// Steps back over what Stage makes, in each state that a film can be in.
#include "host/engine/Film.h"
#include "host/engine/Shape.h"
#include "host/stage/host/ObjectCopies.h"
#include "host/stage/windows/ImportFiles.h"
#include "host/stage/windows/UndoCommands.h"
#include "plugin/contract/ClassIds.h"
#include "tests/support/Answering.h"
#include "tests/support/Paths.h"
#include "tests/whole/StageFixture.h"

#include <filesystem>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>
#include <set>

namespace {

enum class Doing { Paste, Shape, ShapeSize, Label, Lock, Import };
enum class FilmState {
    None,
    Open,
    Shown, ///< in the Scenario window
    Playing
};

class UndoInStageTest : public StageTest {
protected:
    stage::LevelHistory& History() { return window->session.History(); }
    /// A number of the level without what only says how it is shown, which leaving a film writes down.
    std::uint64_t Work() {
        History().NoteAll();
        return History().WorkHash();
    }
    std::string Note() const { return window->statusBar()->currentMessage().toStdString(); }
    engine::SceneObject* Boat() const { return Object("Fishing boat"); }
    engine::SceneObject* Make(const char* className, const char* name, const std::string& mesh = {}) {
        engine::ObjectSpec spec;
        spec.className = className;
        spec.name = name;
        spec.meshName = mesh;
        return window->commands.Create(spec);
    }
    void Copy() { copied = stage::CopyObjects(window->host.level, {Boat()}); }
    void Paste() { ASSERT_EQ(stage::PasteObjects(window->host, window->session, copied), 1); }

    void Open(FilmState state) {
        if (state == FilmState::None) {
            return;
        }
        if (state == FilmState::Shown) {
            OpenScenario("Intro");
        } else {
            ChooseFilm("Intro");
        }
        Settle();
    }
    /// What must be there before.
    void Prepare(Doing doing) {
        Copy();
        if (doing == Doing::ShapeSize) {
            Make(ClassName::Mesh, "Prop", "shape:box 100 100 100 #b4b4b4");
        } else if (doing == Doing::Label) {
            Make(engine::kLabelClass, "Prop");
        }
    }
    void Do(Doing doing) {
        engine::ObjectNotes notes;
        switch (doing) {
        case Doing::Paste:
            Paste();
            break;
        case Doing::Shape:
            Make(ClassName::Mesh, "Prop", "shape:box 100 100 100 #b4b4b4");
            break;
        case Doing::ShapeSize:
            window->commands.SetMesh(*Object("Prop"), "shape:box 200 100 100 #b4b4b4");
            break;
        case Doing::Label:
            notes.text = "Stand here";
            window->commands.SetNotes(*Object("Prop"), notes);
            break;
        case Doing::Lock:
            notes = Boat()->notes;
            notes.locked = true;
            window->commands.SetNotes(*Boat(), notes);
            break;
        case Doing::Import:
            window->findChild<stage::ImportFiles*>()->Import(
                {QString::fromStdString(SampleFolder() + "/models/crate.glb")}, {0.0f, 0.0f, 0.0f});
            break;
        }
    }

    /// Plays the open film to its end, and runs this once meanwhile. False if it did not come to that.
    bool WhilePlaying(const std::function<void()>& action) {
        bool ran = false;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, window.get(), [&] {
            const auto* film = static_cast<const engine::Film*>(Films().currentFilm);
            if (!ran && film != nullptr && film->IsPlaying()) {
                ran = true;
                action();
                Hooks().clock = [this] { return clock += 2000; }; // to the end
            }
        });
        timer.start(1);
        PlayWithShortcut(20);
        return ran;
    }
    /// What was done, in words.
    std::string Seen() const {
        std::string seen = std::to_string(window->host.level.Data()->Objects().size());
        const engine::SceneObject* prop = Object("Prop");
        if (prop != nullptr) {
            seen += ' ' + prop->meshName + ' ' + prop->notes.text;
        }
        return seen + (Boat()->notes.locked ? " locked" : "");
    }

    std::string copied;
};

class UndoStatesTest : public UndoInStageTest,
                       public ::testing::WithParamInterface<std::tuple<Doing, FilmState>> {};

TEST_P(UndoStatesTest, WhatWasDoneIsTakenBackAndTheFilmStays) {
    const auto [doing, state] = GetParam();
    Prepare(doing);
    Open(state);
    History().NoteAll();
    const std::string before = Seen();
    const std::string undoName = History().Edits().UndoName();
    const IFilm* film = Films().currentFilm;
    ASSERT_EQ(film != nullptr, state != FilmState::None);
    if (state == FilmState::Playing) {
        ASSERT_TRUE(WhilePlaying([this, doingNow = doing] {
            Do(doingNow);
            window->undo->Undo();
            EXPECT_NE(Note().find("Stop what is under way first"), std::string::npos);
        }));
        EXPECT_EQ(Films().currentFilm, film) << "it went on to its end";
    } else {
        Do(doing);
    }
    const std::string after = Seen();
    ASSERT_NE(after, before);
    window->undo->Undo();
    EXPECT_EQ(Seen(), before);
    EXPECT_EQ(History().Edits().UndoName(), undoName) << "it was one step";
    EXPECT_EQ(Films().currentFilm, film);
    window->undo->Redo();
    EXPECT_EQ(Seen(), after);
    EXPECT_EQ(Films().currentFilm, film);
}

INSTANTIATE_TEST_SUITE_P(All, UndoStatesTest,
                         ::testing::Combine(::testing::Values(Doing::Paste, Doing::Shape, Doing::ShapeSize,
                                                              Doing::Label, Doing::Lock, Doing::Import),
                                            ::testing::Values(FilmState::None, FilmState::Open,
                                                              FilmState::Shown, FilmState::Playing)));

TEST_F(UndoInStageTest, ObjectsFromAnotherLevelGoAndComeBack) {
    Copy();
    const std::string boat = Boat()->name;
    window->session.New();
    const std::uint64_t empty = Work();
    Paste();
    const std::uint64_t full = Work();
    window->undo->Undo();
    EXPECT_EQ(Object(boat), nullptr);
    EXPECT_EQ(Work(), empty);
    window->undo->Undo();
    EXPECT_EQ(Note(), "Nothing to undo") << "the other level's steps are its own";
    window->undo->Redo();
    EXPECT_NE(Object(boat), nullptr);
    EXPECT_EQ(Work(), full);
}

TEST_F(UndoInStageTest, NothingIsTakenBackWhileASaveThatFailedSaysWhy) {
    OpenScenario("Intro");
    const IFilm* film = Films().currentFilm;
    Make(ClassName::Mesh, "Prop", "shape:box 100 100 100 #b4b4b4");
    History().NoteAll();
    const std::string made = Seen();
    int answered = 0;
    Answering(
        [&](QWidget& box) {
            ++answered;
            EXPECT_EQ(Films().currentFilm, nullptr) << "the film is left while the level is written";
            window->undo->Undo();
            EXPECT_NE(Note().find("Stop what is under way first"), std::string::npos);
            EXPECT_EQ(Seen(), made);
            PressButton(box, QMessageBox::Ok);
        },
        [this] { EXPECT_FALSE(window->session.Save(folder.File("none/harbour.level"))); });
    EXPECT_EQ(answered, 1);
    EXPECT_EQ(Films().currentFilm, film);
    window->undo->Undo();
    EXPECT_EQ(Object("Prop"), nullptr);
    EXPECT_EQ(Films().currentFilm, film);
}

TEST_F(UndoInStageTest, FilesOfAnImportStayWhenItIsTakenBack) {
    Do(Doing::Import);
    History().NoteAll();
    const std::filesystem::path level(window->host.level.Folder());
    const auto models = [&] {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(level)) {
            found.insert(entry.path().string());
        }
        return found;
    };
    const auto before = models();
    window->undo->Undo();
    EXPECT_EQ(models(), before) << "a redo finds them";
}

} // namespace

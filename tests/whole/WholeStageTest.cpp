#include "tests/whole/StageFixture.h"

#include <filesystem>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

class WholeStageTest : public StageTest {
protected:
    static std::vector<float> ActorMatrices(const IFilm& film) {
        std::vector<float> all;
        for (CFilmTrack* track : film.tracks) {
            if (const auto* objectTrack = AsObjectTrack(track)) {
                all.insert(all.end(), objectTrack->actor->GetMatrix(0),
                           objectTrack->actor->GetMatrix(0) + 16);
            }
        }
        return all;
    }
};

/// Answers the next modal message box of the host and keeps its text.
void AnswerNextBox(std::string& text) {
    QTimer::singleShot(0, qApp, [&text] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            text = (box->text() + "\n" + box->informativeText() + "\n" + box->detailedText()).toStdString();
            box->accept();
        } else if (QWidget* widget = QApplication::activeModalWidget()) {
            widget->close();
        }
    });
}

} // namespace

TEST_F(WholeStageTest, PanelListsTheFilmsOfTheSampleLevel) {
    EXPECT_THAT(FilmLines(), ElementsAre("<none>", "Intro", "Epilogue"));
    EXPECT_TRUE(boxes.empty());
}

TEST_F(WholeStageTest, ChoosingAFilmOpensItAndNoneTakesObjectsBack) {
    IFilm* intro = Film("Intro");
    EditorObject* actor = FirstActor(intro);
    ASSERT_NE(actor, nullptr);
    const std::vector<float> own = MatrixOf(*actor);
    ChooseFilm("Intro");
    EXPECT_EQ(Films().currentFilm, intro);
    ChooseFilm("<none>");
    EXPECT_EQ(Films().currentFilm, nullptr);
    EXPECT_EQ(MatrixOf(*actor), own);
}

TEST_F(WholeStageTest, FilmPlaysFromTheShortcutToItsEnd) {
    ChooseFilm("Intro");
    IFilm* film = Film("Intro");
    const std::vector<float> first = ActorMatrices(*film);
    PlayWithShortcut(1000);
    EXPECT_EQ(film->validated, 1);
    EXPECT_NE(ActorMatrices(*film), first); // the last frame shown stays
}

TEST_F(WholeStageTest, SpaceStopsThePlayingFilmAndReachesNothingElse) {
    ChooseFilm("Intro");
    QLineEdit edit(window.get());
    edit.show();
    edit.setFocus();
    Settle();
    bool stopped = false;
    InsidePump([&] {
        QTest::keyClick(window->windowHandle(), Qt::Key_Space);
        stopped = true;
    });
    const std::uint32_t before = clock;
    PlayWithShortcut(1);
    EXPECT_TRUE(stopped);
    EXPECT_LT(clock - before, 20000u); // long before the 24 seconds are over
    EXPECT_EQ(edit.text(), "");
    QTest::keyClick(window->windowHandle(), Qt::Key_Space); // no film plays: it goes through
    EXPECT_EQ(edit.text(), " ");
}

TEST_F(WholeStageTest, ActorSnapsBackWhileAnimateIsOffAndFreeObjectsMove) {
    ChooseFilm("Intro");
    EditorObject* actor = FirstActor(Film("Intro"));
    const std::vector<float> pose = MatrixOf(*actor);
    Move(actor, pose[12] + 5, pose[13], pose[14]);
    EXPECT_EQ(MatrixOf(*actor), pose);
    engine::SceneObject* barrel = Object("Barrel");
    ASSERT_NE(barrel, nullptr);
    Move(barrel, 1, 2, 3);
    EXPECT_EQ(barrel->World().Translation(), (Vector3{1, 2, 3}));
}

TEST_F(WholeStageTest, AnimateObjectMakesAMovedObjectAnActor) {
    ChooseFilm("Intro");
    engine::SceneObject* barrel = Object("Barrel");
    const Vector3 place = barrel->World().Translation();
    ASSERT_EQ(Film("Intro")->FindObjectTrack(barrel), nullptr);
    for (const auto* entry : window->host.plugins.Entries()) {
        entry->plugin->OnCommand(entry->plugin->GetPluginId().PluginNumber(), 50);
    }
    Move(barrel, place.x + 2, place.y, place.z);
    const CFilmTrack* track = Film("Intro")->FindObjectTrack(barrel);
    ASSERT_NE(track, nullptr);
    ASSERT_EQ(track->keys.size(), 3u);
    const auto* first = static_cast<const CFilmVectorKey*>(track->keys.front());
    // The key at the cursor, made with the track, takes the new place.
    EXPECT_EQ(first->time, 0.0f);
    EXPECT_EQ(first->value, (Vector3{place.x + 2, place.y, place.z}));
    EXPECT_EQ(barrel->World().Translation(), first->value);
}

TEST_F(WholeStageTest, DeletingAnActorIsRefusedWithTheFilmsNamed) {
    EditorObject* actor = FirstActor(Film("Intro"));
    const int id = actor->id;
    window->host.SelectObject(actor, 1, 0);
    std::string text;
    AnswerNextBox(text);
    window->commands.DeleteSelected();
    EXPECT_THAT(text, HasSubstr(actor->name + "(" + std::to_string(id) + ") is actor in film Intro"));
    EXPECT_NE(window->host.level.FindObject(id), nullptr);
}

TEST_F(WholeStageTest, SavedAndReopenedLevelHasTheSameBytes) {
    const std::string copy = folder.File("harbour/copy.level");
    const std::string again = folder.File("harbour/again.level");
    ChooseFilm("Intro");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(copy)));
    EXPECT_EQ(Films().currentFilm, Film("Intro")); // the film is open again after the save
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(copy)));
    EXPECT_THAT(FilmLines(), ElementsAre("<none>", "Intro", "Epilogue"));
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(again)));
    const std::string first = ReadWholeFile(copy);
    EXPECT_FALSE(first.empty());
    EXPECT_TRUE(first == ReadWholeFile(again));
    EXPECT_TRUE(std::filesystem::exists(folder.File("harbour/FilmsValidation.txt")));
    EXPECT_EQ(std::filesystem::file_size(folder.File("harbour/FilmsValidation.txt")), 0u);
}

TEST_F(WholeStageTest, SampleOpenedByARelativePathAndSavedKeepsAllItsNames) {
    const auto names = [this] {
        std::vector<std::string> found;
        for (const auto& object : window->host.level.Data()->Objects()) {
            if (!object->meshName.empty()) {
                found.push_back(object->name + " " + object->meshName);
            }
        }
        return found;
    };
    const std::vector<std::string> before = names();
    EXPECT_GT(before.size(), 40u);
    const std::filesystem::path work = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    ASSERT_TRUE(window->OpenLevel("harbour/harbour.level"));
    EXPECT_EQ(names(), before);
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(window->session.Path())));
    std::filesystem::current_path(work);
    EXPECT_EQ(names(), before);
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(levelPath)));
    EXPECT_EQ(names(), before);
    EXPECT_NE(Object("Crate")->Mesh(), nullptr);
}

TEST_F(WholeStageTest, SaveStoresNoFilmPoses) {
    ChooseFilm("Intro"); // closing it hides its lights, which the level keeps
    ChooseFilm("<none>");
    const std::string closed = folder.File("harbour/closed.level");
    const std::string open = folder.File("harbour/open.level");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(closed)));
    ChooseFilm("Intro");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(open)));
    EXPECT_TRUE(ReadWholeFile(closed) == ReadWholeFile(open));
}

TEST_F(WholeStageTest, FilmLightsOfTheSampleComeBackPaired) {
    int lights = 0;
    for (CFilmTrack* track : Film("Intro")->tracks) {
        if (const auto* gl = AsGLLightTrack(track)) {
            EXPECT_NE(gl->lightObject, nullptr);
            ++lights;
        } else if (const auto* dyn = AsDynLightTrack(track)) {
            EXPECT_NE(dyn->lightObject, nullptr);
            ++lights;
        }
    }
    EXPECT_GE(lights, 3); // the sun, one GL light, one dynamic light
}

TEST_F(WholeStageTest, FilmAddedInThePanelIsSavedAndReopened) {
    for (QPushButton* button : window->findChildren<QPushButton*>()) {
        if (button->text() == "Add") {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    ASSERT_EQ(FilmLines().size(), 4u);
    const std::string name = FilmLines().back();
    EXPECT_EQ(Films().currentFilm, Film(name));
    const std::string path = folder.File("harbour/more.level");
    ASSERT_TRUE(window->SaveLevelAs(QString::fromStdString(path)));
    ASSERT_TRUE(window->OpenLevel(QString::fromStdString(path)));
    EXPECT_THAT(FilmLines(), Contains(name));
}

TEST_F(WholeStageTest, DamagedLevelLeavesTheOpenOneAlone) {
    const std::string whole = ReadWholeFile(levelPath);
    WriteWholeFile(folder.File("harbour/damaged.level"), whole.substr(0, 5));
    std::string text;
    AnswerNextBox(text);
    EXPECT_FALSE(window->OpenLevel(QString::fromStdString(folder.File("harbour/damaged.level"))));
    EXPECT_THAT(FilmLines(), ElementsAre("<none>", "Intro", "Epilogue"));
}

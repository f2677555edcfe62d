#include "plugin/contract/EventCodes.h"
#include "tests/support/Answering.h"
#include "tests/whole/StageFixture.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using ::testing::ElementsAre;

namespace {

/// Things that happen inside the message pump of a playing film.
class ReentryTest : public StageTest {
protected:
    /// Plays "Intro" with the action inside; the film must have ended when this returns.
    void PlayIntroWith(std::function<void()> action) {
        ChooseFilm("Intro");
        bool ran = false;
        InsidePump([&] {
            ran = true;
            action();
        });
        PlayWithShortcut(500);
        EXPECT_TRUE(ran);
    }
    void Click(const char* text) {
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        ADD_FAILURE() << "no button " << text;
    }
    void SendEvent(int code) {
        for (const auto* entry : window->host.plugins.Entries()) {
            entry->plugin->OnEvent(code, nullptr);
        }
    }
};

} // namespace

TEST_F(ReentryTest, SwitchingToAnotherFilmEndsThePlaying) {
    PlayIntroWith([this] { ChooseFilm("Epilogue"); });
    EXPECT_EQ(Films().currentFilm, Film("Epilogue"));
}

TEST_F(ReentryTest, ClosingTheFilmEndsThePlaying) {
    PlayIntroWith([this] { ChooseFilm("<none>"); });
    EXPECT_EQ(Films().currentFilm, nullptr);
}

TEST_F(ReentryTest, DeletingThePlayingFilmEndsThePlaying) {
    PlayIntroWith([this] { Click("Delete"); });
    EXPECT_THAT(FilmLines(), ElementsAre("<none>", "Epilogue"));
}

TEST_F(ReentryTest, AddingAFilmOpensIt) {
    PlayIntroWith([this] { Click("Add"); });
    EXPECT_EQ(FilmLines().size(), 4u);
    EXPECT_EQ(Films().currentFilm, Film(FilmLines().back()));
}

TEST_F(ReentryTest, DeletingAFreeObjectLetsTheFilmPlayOn) {
    const int id = Object("Barrel")->id;
    PlayIntroWith([this] {
        window->host.SelectObject(Object("Barrel"), 1, 0);
        window->commands.DeleteSelected();
    });
    EXPECT_EQ(window->host.level.FindObject(id), nullptr);
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
}

TEST_F(ReentryTest, NewLevelEndsThePlaying) {
    PlayIntroWith([this] { window->session.New(); });
    EXPECT_THAT(FilmLines(), ElementsAre("<none>"));
}

TEST_F(ReentryTest, OpeningALevelEndsThePlaying) {
    PlayIntroWith([this] { window->OpenLevel(QString::fromStdString(levelPath)); });
    EXPECT_THAT(FilmLines(), ElementsAre("<none>", "Intro", "Epilogue"));
    EXPECT_EQ(Films().currentFilm, nullptr);
}

TEST_F(ReentryTest, SavingGoesOnPlayingAndEnds) {
    const QString path = QString::fromStdString(folder.File("harbour/inside.level"));
    PlayIntroWith([&] { EXPECT_TRUE(window->SaveLevelAs(path)); });
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
    EXPECT_FALSE(ReadWholeFile(path.toStdString()).empty());
}

TEST_F(ReentryTest, SuspendAndResumeGoOnPlaying) {
    PlayIntroWith([this] {
        SendEvent(EventCode::Suspend);
        EXPECT_EQ(Films().currentFilm, nullptr);
        SendEvent(EventCode::Resume);
    });
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
}

TEST_F(ReentryTest, ShortcutInsideStops) {
    PlayIntroWith([this] {
        for (const auto* entry : window->host.plugins.Entries()) {
            entry->plugin->OnShortcut(0, 0, 0);
        }
    });
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
}

TEST_F(ReentryTest, ClosingThePanelLetsTheFilmPlayOn) {
    PlayIntroWith([this] { window->HidePanel(); });
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
    ShowPanel();
    EXPECT_THAT(FilmLines(), ElementsAre("<none>", "Intro", "Epilogue"));
}

TEST_F(ReentryTest, MovingObjectsWhilePlaying) {
    PlayIntroWith([this] {
        Move(FirstActor(Film("Intro")), 1, 2, 3);
        Move(Object("Barrel"), 1, 2, 3);
    });
    EXPECT_EQ(Object("Barrel")->World().Translation(), (Vector3{1, 2, 3}));
}

TEST_F(ReentryTest, ClosingTheWindowEndsThePlaying) {
    PlayIntroWith([this] {
        Click("Add"); // so that there are changes to ask about
        Answering([](QWidget& box) { PressButton(box, QMessageBox::Discard); },
                  [this] { EXPECT_TRUE(window->close()); });
    });
    EXPECT_EQ(window->host.level.GetLevelData(), nullptr);
    window->ShutdownHost();
    EXPECT_TRUE(window->host.plugins.Entries().empty());
}

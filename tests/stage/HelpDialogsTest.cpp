#include "host/stage/windows/HelpDialogs.h"
#include "host/stage/windows/films/CameraCuts.h"
#include "host/stage/windows/films/ScenarioKeys.h"
#include "tests/stage/WindowFixture.h"
#include "tests/support/Paths.h"

#include <fstream>
#include <QAction>
#include <QLineEdit>
#include <sstream>

namespace {
class HelpDialogsTest : public WindowFixture {};
} // namespace

TEST_F(HelpDialogsTest, ShortcutsAreThoseOfEveryActionAndOfTheScenarioWindow) {
    const std::vector<stage::ShortcutLine> lines = stage::AllShortcuts(window);
    const auto has = [&](const QString& keys, const QString& meaning) {
        return std::ranges::any_of(lines, [&](const stage::ShortcutLine& line) {
            return line.keys == keys && line.meaning == meaning;
        });
    };
    for (const QAction* action : window.findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            EXPECT_TRUE(has(action->shortcut().toString(), action->text().remove('&').remove("...")))
                << action->text().toStdString();
        }
    }
    for (const stage::ScenarioKey& key : stage::ScenarioKeyTable()) {
        EXPECT_TRUE(has(key.keys, key.meaning)) << key.keys;
    }
    EXPECT_TRUE(has("Ctrl+D", "Duplicate"));
}

TEST_F(HelpDialogsTest, TipsOfTheToolbarTellTheKeys) {
    EXPECT_EQ(Action("ToolMove")->toolTip(), "Move (W)");
    EXPECT_EQ(Action("FileSave")->toolTip(), "Save (Ctrl+S)");
    EXPECT_EQ(Action("EditGroup")->toolTip(), "Group (Ctrl+G)");
}

TEST_F(HelpDialogsTest, SearchKeepsTheLinesThatHaveAllWords) {
    stage::ShortcutsDialog dialog(
        {{"Stage", "Ctrl+D", "Duplicate"}, {"Stage", "F", "Focus"}, {"Scenario", "F", "Show the whole film"}},
        &window);
    EXPECT_EQ(dialog.ShownCount(), 3);
    auto* search = dialog.findChild<QLineEdit*>("Search");
    search->setText("dup");
    EXPECT_EQ(dialog.ShownCount(), 1);
    search->setText("scenario FILM");
    EXPECT_EQ(dialog.ShownCount(), 1);
    search->setText("ctrl focus");
    EXPECT_EQ(dialog.ShownCount(), 0);
    search->clear();
    EXPECT_EQ(dialog.ShownCount(), 3);
}

TEST_F(HelpDialogsTest, FirstFilmIsToldAsInTheGuide) {
    std::ifstream file(SourceFolder() + "/docs/USER_GUIDE.md");
    std::string guide((std::istreambuf_iterator<char>(file)), {});
    std::ranges::replace(guide, '\n', ' ');
    for (std::size_t at = 0; (at = guide.find("    ", at)) != std::string::npos;) {
        guide.erase(at, 3); // the lines of a step stand in
    }
    const std::size_t begin = guide.find("Your first film in ten minutes");
    ASSERT_NE(begin, std::string::npos);
    std::size_t at = begin;
    for (const char* step : stage::FirstFilmSteps()) {
        at = guide.find(step, at); // one behind the other
        ASSERT_NE(at, std::string::npos) << step;
    }
}

TEST_F(HelpDialogsTest, FirstFilmStaysOpenBesideTheWorkAndGoesWhenClosed) {
    stage::ShowFirstFilm(&window);
    QPointer<QDialog> page = window.findChild<QDialog*>("FirstFilm");
    ASSERT_FALSE(page.isNull());
    EXPECT_FALSE(page->isModal());
    stage::ShowFirstFilm(&window);
    EXPECT_EQ(window.findChildren<QDialog*>("FirstFilm").size(), 1);
    page->close();
    Settle();
    EXPECT_TRUE(page.isNull());
}

namespace {

/// The keys of a level track alone, in a film that is ten seconds long.
class CameraCutsTest : public WindowFixture {
protected:
    CameraCutsTest() {
        IFilmManager& films = *window.host.level.GetLevelData()->filmManager;
        film = films.GetFilm(films.AllocateFilm());
        film->AddTrack(film->CreateLevelTrack());
        factory = films.keyFactory;
    }
    void Add(float from, float to, int priority = 0) {
        IFilmKey* key = factory->CreateKey(KeyKind::Camera);
        key->SetTime(from);
        key->SetEndTime(to);
        static_cast<CFilmCameraKey*>(key)->priority = priority;
        film->mainTrack->AddKey(key);
    }
    std::vector<float> Cuts() const { return stage::CameraCuts(*film); }

    IFilm* film = nullptr;
    IKeyFactory* factory = nullptr;
};

} // namespace

TEST_F(CameraCutsTest, AreWhereAnotherKeyComesIntoForce) {
    EXPECT_TRUE(Cuts().empty());
    Add(0.0f, 3.0f);
    Add(3.0f, 5.0f); // cut at once
    Add(7.0f, 9.0f); // after two seconds without a camera
    EXPECT_EQ(Cuts(), (std::vector<float>{0.0f, 3.0f, 5.0f, 7.0f, 9.0f}));
}

TEST_F(CameraCutsTest, TheLowestPriorityHidesWhatIsBelow) {
    Add(0.0f, 10.0f, 1);
    Add(2.0f, 4.0f, 0);
    Add(3.0f, 6.0f, 2);    // never seen
    Add(5.0f, 6.0f, 2000); // never in force
    Add(7.0f, 7.0f, 0);    // no length
    EXPECT_EQ(Cuts(), (std::vector<float>{0.0f, 2.0f, 4.0f, 10.0f}));
    Add(11.0f, 12.0f, 0); // behind the film
    EXPECT_EQ(Cuts(), (std::vector<float>{0.0f, 2.0f, 4.0f, 10.0f}));
}

TEST_F(CameraCutsTest, TheFrameIsTheFirstThatShowsTheCut) {
    EXPECT_EQ(stage::FrameOfCut(1.0f, 30), 30);
    EXPECT_EQ(stage::FrameOfCut(1.01f, 30), 31); // 30.3
    EXPECT_EQ(stage::FrameOfCut(0.1f, 30), 3);   // float32 is a little more
}

#include "host/stage/windows/browse/AnimationBrowser.h"
#include "host/stage/windows/browse/MeshElementBrowser.h"
#include "host/stage/windows/browse/ModelPicture.h"
#include "host/stage/windows/browse/PlayBar.h"
#include "tests/support/Answering.h"
#include "tests/whole/StageFixture.h"

#include <QLineEdit>
#include <QTest>

namespace {

/// Browsers beside a film that plays, whichever of the two began first.
class BrowseInStageTest : public StageTest {
protected:
    /// Opens the sailor's animations; what the user chose.
    std::optional<std::string> Browse(const std::function<void(stage::AnimationBrowser&)>& use) {
        std::optional<std::string> answer;
        Answering([&](QWidget& dialog) { use(dynamic_cast<stage::AnimationBrowser&>(dialog)); },
                  [&] { answer = window->BrowseMeshAnimation(Object("Sailor"), "Walk"); });
        return answer;
    }
    /// Plays to the end from under a modal window, which takes the shortcut's key from the plug-in.
    void PlayBelow() {
        Hooks().clock = [this] { return clock += 5000; };
        for (const auto* entry : window->host.plugins.Entries()) {
            entry->plugin->OnShortcut(0, 0, 0);
        }
        Hooks().clock = nullptr;
    }
};

} // namespace

TEST_F(BrowseInStageTest, ABrowserOpensOverAPlayingFilmWhichGoesOnAfterwards) {
    ChooseFilm("Intro");
    std::optional<std::string> answer;
    InsidePump([&] {
        answer =
            Browse([](stage::AnimationBrowser& browser) { QTest::keyClick(browser.search, Qt::Key_Return); });
    });
    PlayWithShortcut(500);
    EXPECT_EQ(answer, "Walk");
    EXPECT_EQ(Films().currentFilm, Film("Intro"));
}

TEST_F(BrowseInStageTest, AFilmThatPlaysBelowLeavesTheBrowserAlone) {
    ChooseFilm("Intro");
    const auto answer = Browse([this](stage::AnimationBrowser& browser) {
        browser.playBar->SetPlaying(false);
        const QImage before = browser.picture->grab().toImage();
        bool played = false;
        InsidePump([&] { played = true; });
        PlayBelow();
        EXPECT_TRUE(played);
        EXPECT_TRUE(browser.isVisible());
        EXPECT_EQ(browser.picture->grab().toImage(), before);
        QTest::keyClick(browser.search, Qt::Key_Escape);
    });
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(BrowseInStageTest, ALevelLeftInsideAFilmThatPlaysBelowClosesTheBrowser) {
    ChooseFilm("Intro");
    const auto answer = Browse([this](stage::AnimationBrowser& browser) {
        bool left = false;
        InsidePump([&] {
            left = true;
            window->session.New();
            EXPECT_FALSE(browser.isVisible());
            EXPECT_FALSE(browser.playBar->IsTicking());
        });
        PlayBelow();
        EXPECT_TRUE(left) << "while the film played";
        browser.reject();
    });
    EXPECT_EQ(answer, std::nullopt);
}

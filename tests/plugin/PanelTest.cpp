#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/UserNote.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/plugin/PluginFixture.h"
#include "timeline/FilmsView.h"

#include <functional>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QWidget>
#include <utility>

using ::testing::ElementsAre;

namespace {

/// A scenario window in which something goes on while it shows a film anew, as behind a question to the user.
class BusyWindow : public LoggingWindow {
public:
    using LoggingWindow::LoggingWindow;
    void ShowCurrentFilm() override {
        if (meanwhile) {
            std::exchange(meanwhile, nullptr)();
        }
    }

    std::function<void()> meanwhile; ///< once
};

/// The panel in a host's window, with its real controls.
class PanelTest : public PluginTest {
protected:
    PanelTest() {
        CFilmsView::OfferTo(plugin);
        SetUserNoteSink([this](const std::string& text) { notes.push_back(text); });
        Show();
    }
    ~PanelTest() override {
        SetUserNoteSink(nullptr);
        Close();
        plugin.scenarioDlg = nullptr;
    }

    void Show() {
        side = new QWidget;
        side->resize(320, 560);
        const ResourceScope resources(PluginResources()); // as when the plug-in asks its host for the panel
        panel = static_cast<CFilmsView*>(CreateFormView(RUNTIME_CLASS(CFilmsView), side, 1));
        side->show();
    }
    void Close() {
        delete side;
        side = nullptr;
        panel = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    CMoviesDialog& Page() { return panel->moviesPage; }
    QListWidget* List() { return side->findChild<QListWidget*>(); }
    std::vector<std::string> Lines() {
        std::vector<std::string> lines;
        lines.reserve(static_cast<std::size_t>(List()->count()));
        for (int i = 0; i < List()->count(); ++i) {
            lines.push_back(List()->item(i)->text().toStdString());
        }
        return lines;
    }
    QPushButton* Button(const char* text) {
        for (QPushButton* button : side->findChildren<QPushButton*>()) {
            if (button->text() == text) {
                return button;
            }
        }
        return nullptr;
    }
    void Click(const char* text) { QTest::mouseClick(Button(text), Qt::LeftButton); }
    void ClickLine(int line) {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                          List()->visualItemRect(List()->item(line)).center());
    }
    void DoubleClickLine(int line) {
        const QPoint place = List()->visualItemRect(List()->item(line)).center();
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, place);
    }

    QWidget* side = nullptr;
    CFilmsView* panel = nullptr;
    std::vector<std::string> notes; ///< lines for the host's status bar
};

} // namespace

TEST_F(PanelTest, FirstUpdateMakesOneTabWithTheFilmList) {
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(CFilmsView::GetPanel(), panel);
    EXPECT_EQ(panel->currentTab, 0);
    EXPECT_FALSE(panel->firstUpdate);
    EXPECT_EQ(panel->tabCtrl.GetItemCount(), 1);
    EXPECT_TRUE(Page().IsWindowVisible());
    EXPECT_THAT(Lines(), ElementsAre("<none>"));
}

TEST_F(PanelTest, SecondUpdateInsertsNoSecondTab) {
    panel->OnUpdate(nullptr, 0, nullptr);
    EXPECT_EQ(panel->tabCtrl.GetItemCount(), 1);
}

TEST_F(PanelTest, ChosenTabShowsItsPageUnlessItIsTheCurrentOne) {
    const auto choose = [this] {
        NMHDR header{panel->tabCtrl.GetSafeHwnd(), IDC_PANEL_TABS, TCN_SELCHANGE};
        return panel->SendMessage(WM_NOTIFY, IDC_PANEL_TABS, reinterpret_cast<LPARAM>(&header));
    };
    Page().ShowWindow(SW_HIDE);
    EXPECT_EQ(choose(), 0);
    EXPECT_FALSE(Page().IsWindowVisible()) << "nothing happens";
    panel->currentTab = -1; // as if no page had been shown yet
    EXPECT_EQ(choose(), 0);
    EXPECT_TRUE(Page().IsWindowVisible());
    EXPECT_EQ(panel->currentTab, 0);
}

TEST_F(PanelTest, ClosedPanelIsForgottenAndReopenedAnew) {
    Close();
    EXPECT_EQ(CFilmsView::GetPanel(), nullptr);
    Show();
    EXPECT_EQ(CFilmsView::GetPanel(), panel);
    EXPECT_EQ(panel->tabCtrl.GetItemCount(), 1);
}

TEST_F(PanelTest, ScenarioWindowIsMadeOnceForAllPanels) {
    static std::vector<std::string> calls;
    static LoggingWindow window(calls);
    static int made = 0;
    made = 0;
    plugin.makeScenarioWindow = [](IPluginImpl&) -> IScenarioWindow* {
        ++made;
        return &window;
    };
    Close();
    Show();
    Close();
    Show();
    EXPECT_EQ(made, 1);
    EXPECT_EQ(plugin.scenarioDlg, &window);
}

TEST_F(PanelTest, CommandHidesThePanelWhileItExists) {
    editor.calls.clear();
    plugin.OnCommand(kPluginNumber, 1);
    EXPECT_THAT(editor.calls, ElementsAre("HidePluginPanel"));
}

TEST_F(PanelTest, ListShowsFilmsInSlotOrderWithTheCurrentOneSelected) {
    const IFilm* first = NewFilm();
    IFilm* second = NewFilm();
    plugin.SetCurrentFilm(second);
    panel->OnUpdate(nullptr, 0, nullptr);
    EXPECT_THAT(Lines(), ElementsAre("<none>", first->name, second->name));
    EXPECT_EQ(Page().list.GetCurSel(), 2);
    EXPECT_EQ(Page().GetSelectedFilm(), second);
}

TEST_F(PanelTest, DeleteAndValidateAreEnabledOnlyOnAFilm) {
    EXPECT_FALSE(Button("Delete")->isEnabled());
    EXPECT_FALSE(Button("Validate")->isEnabled());
    NewFilm();
    panel->RefreshMovies();
    ClickLine(1);
    EXPECT_TRUE(Button("Delete")->isEnabled());
    EXPECT_TRUE(Button("Validate")->isEnabled());
    ClickLine(0);
    EXPECT_FALSE(Button("Delete")->isEnabled());
}

TEST_F(PanelTest, AddMakesAndOpensAFilm) {
    editor.Select({editor.Create("Crate")});
    Click("Add");
    EXPECT_TRUE(editor.level.selection.empty());
    ASSERT_NE(plugin.GetCurrentFilm(), nullptr);
    EXPECT_EQ(plugin.GetCurrentFilm(), Films().films[0]);
    EXPECT_THAT(Lines(), ElementsAre("<none>", plugin.GetCurrentFilm()->name));
    EXPECT_TRUE(Button("Delete")->isEnabled());
}

TEST_F(PanelTest, AddWithoutAFreeSlotChangesNothingAndTellsIt) {
    for (int i = 0; i < 200; ++i) {
        NewFilm();
    }
    Click("Add");
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_THAT(notes, ElementsAre("No film was added: a level holds 200 at most."));
}

TEST_F(PanelTest, DeleteRemovesTheSelectedFilm) {
    NewFilm();
    panel->RefreshMovies();
    ClickLine(1);
    Click("Delete");
    EXPECT_EQ(Films().films[0], nullptr);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
    EXPECT_THAT(Lines(), ElementsAre("<none>"));
    EXPECT_FALSE(Button("Delete")->isEnabled());
}

TEST_F(PanelTest, ValidateMarksTheSelectedFilm) {
    IFilm* film = NewFilm();
    panel->RefreshMovies();
    ClickLine(1);
    Click("Validate");
    EXPECT_EQ(film->validated, 1);
    Click("Validate"); // tells also that it was before
    const std::string told = "The film \"" + std::string(film->name) + "\" is validated.";
    EXPECT_THAT(notes, ElementsAre(told, told));
}

TEST_F(PanelTest, SelectionOpensTheFilmAndNoneClosesIt) {
    IFilm* film = NewFilm();
    panel->RefreshMovies();
    editor.Select({editor.Create("Crate")});
    ClickLine(1);
    EXPECT_EQ(plugin.GetCurrentFilm(), film);
    EXPECT_TRUE(editor.level.selection.empty());
    ClickLine(0);
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(PanelTest, DoubleClickShowsAHiddenScenarioWindow) {
    std::vector<std::string> calls;
    LoggingWindow window(calls);
    plugin.scenarioDlg = &window;
    DoubleClickLine(0);
    EXPECT_THAT(calls, ::testing::Not(::testing::Contains("Show")));
    window.visible = false;
    DoubleClickLine(0);
    EXPECT_THAT(calls, ::testing::Contains("Show").Times(1));
}

TEST_F(PanelTest, FilmThatWentUnderTheListIsNotTouched) {
    NewFilm();
    panel->RefreshMovies();
    ClickLine(1);
    editor.level.New("");
    plugin.OnNew(); // the list is not filled anew
    EXPECT_EQ(Page().GetSelectedFilm(), nullptr);
    Click("Validate");
    Click("Delete");
    EXPECT_EQ(plugin.GetCurrentFilm(), nullptr);
}

TEST_F(PanelTest, PanelThatGoesWhileAFilmIsOpenedIsNotTouched) {
    const IFilm* film = NewFilm();
    std::vector<std::string> calls;
    BusyWindow window(calls);
    plugin.scenarioDlg = &window;
    const auto goes = [this] { std::exchange(panel, nullptr)->DestroyWindow(); };
    panel->RefreshMovies();
    window.meanwhile = goes;
    ClickLine(1);
    EXPECT_EQ(CFilmsView::GetPanel(), nullptr);
    EXPECT_EQ(plugin.GetCurrentFilm(), film);

    Close();
    Show();
    window.meanwhile = goes;
    Click("Add");
    EXPECT_EQ(CFilmsView::GetPanel(), nullptr);
    EXPECT_EQ(plugin.GetCurrentFilm(), Films().films[1]);

    Close();
    Show();
    window.meanwhile = goes;
    Click("Delete");
    EXPECT_EQ(CFilmsView::GetPanel(), nullptr);
    EXPECT_EQ(Films().films[1], nullptr);
}

TEST_F(PanelTest, FilmThatGoesWhileItIsLeftIsNotDeletedAgain) {
    std::vector<std::string> calls;
    BusyWindow window(calls);
    plugin.scenarioDlg = &window;
    Click("Add");
    window.meanwhile = [this] { Films().DeleteFilm(0); };
    Click("Delete");
    EXPECT_THAT(Lines(), ElementsAre("<none>"));

    Click("Add");
    window.meanwhile = [this] {
        editor.level.New("");
        plugin.OnNew();
    };
    Click("Delete");
    EXPECT_THAT(Lines(), ElementsAre("<none>"));
    EXPECT_FALSE(Button("Delete")->isEnabled());
}

TEST_F(PanelTest, LoadedLevelFillsTheList) {
    const IFilm* film = NewFilm();
    plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    EXPECT_THAT(Lines(), ElementsAre("<none>", film->name));
}

TEST_F(PanelTest, ListWithoutALevelIsEmpty) {
    editor.level.Close();
    panel->RefreshMovies();
    EXPECT_TRUE(Lines().empty());
}

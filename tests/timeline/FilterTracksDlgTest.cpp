#include "files/FilterTracksDlg.h"

#include "framework/Resource.h"
#include "helpers/rules/FilmsLightHelper.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/timeline/CommandFixture.h"
#include "tests/timeline/DialogUser.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

/// The dialog at a film with the actors "Crate" and "Boat" and the camera "Cam", driven by a real user.
class FilterTracksDlgTest : public CommandTest {
protected:
    FilterTracksDlgTest() {
        plugin.AddActors({editor.Create("Boat")});
        AddCamera(film, "Cam");
        control->ShowFilm(film, true);
        Settle();
    }
    int Run(const std::function<void()>& work) { return user.Run(work); }
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        lines.reserve(static_cast<std::size_t>(dialog.list.GetCount()));
        for (int line = 0; line < dialog.list.GetCount(); ++line) {
            lines.push_back(dialog.list.GetText(line));
        }
        return lines;
    }
    std::vector<std::string> Selected() const {
        std::vector<std::string> lines;
        for (int line = 0; line < dialog.list.GetCount(); ++line) {
            if (dialog.list.GetSel(line) > 0) {
                lines.push_back(dialog.list.GetText(line));
            }
        }
        return lines;
    }
    void ClickLine(int line, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        CRect rect;
        EXPECT_EQ(dialog.list.GetItemRect(line, &rect), 0);
        user.ClickAt(dialog.list, CPoint(rect.left + 10, rect.top + 8), modifiers);
    }
    /// Runs the command; the user works on its dialog by messages and answers it with OK.
    void Filter(const std::function<void(CFilterTracksDlg&)>& work) {
        Hooks().modalDialog = [&work](CDialog& shown) {
            work(dynamic_cast<CFilterTracksDlg&>(shown));
            shown.SendMessage(WM_COMMAND, IDOK);
            return IDCANCEL;
        };
        control->menuRow = nullptr;
        CommandTest::Run(IDC_FILTER_ACTORS);
    }

    ResourceScope resources{PluginResources()};
    CFilterTracksDlg dialog{plugin};
    DialogUser user{dialog};
};

} // namespace

TEST_F(FilterTracksDlgTest, ListsTheRootRowsThoseThatShowSelected) {
    RowOf("Boat")->SetVisibleFlag(false);
    Run([this] {
        EXPECT_EQ(dialog.GetWindowText(), "Filter tracks");
        EXPECT_THAT(Lines(), ElementsAre("Level", "Cam", "Boat", "Crate"));
        EXPECT_THAT(Selected(), ElementsAre("Level", "Cam", "Crate"));
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(FilterTracksDlgTest, LightsAreNamedAfterTheirObjects) {
    Data().SetSun(true);
    editor.CreateOfClass("GLLightEditorObject", "Lamp"); // the plug-in gives it a track and a name of its own
    editor.CreateOfClass("FilmsDynLightEditorObject", "Torch");
    AsObjectTrack(film->FindObjectTrack(crate))->actor = nullptr; // broken
    control->ShowFilm(film, true);
    Run([this] {
        EXPECT_THAT(Lines(), ::testing::UnorderedElementsAre("Level", "Sun", "Cam", "", "Boat",
                                                             "MovieGLLight", "MovieDynLight"));
        user.Key(Qt::Key_Escape);
    });
    AsObjectTrack(track)->actor = crate;
}

TEST_F(FilterTracksDlgTest, OkShowsWhatIsSelectedAlone) {
    RowOf("Crate")->SetVisibleFlag(false);
    RowOf("Cam")->SetExpanded(true, true);
    EXPECT_EQ(Run([this] {
                  ClickLine(2); // Boat alone
                  ClickLine(3, Qt::ControlModifier);
                  user.Click(IDOK);
              }),
              IDOK);
    control->RebuildVisibleRows(true, nullptr);
    EXPECT_FALSE(RowOf("Level")->visible);
    EXPECT_FALSE(RowOf("Cam")->visible);
    EXPECT_TRUE(RowOf("Boat")->visible);
    EXPECT_TRUE(RowOf("Crate")->visible);
    EXPECT_FALSE(RowOf("Cam", KeyKind::Roll)->visible); // children go with it
}

TEST_F(FilterTracksDlgTest, ButtonsSelectAllNoneAndTheOthers) {
    Run([this] {
        ClickLine(1);
        user.Click(1765);
        EXPECT_THAT(Selected(), ElementsAre("Level", "Boat", "Crate"));
        user.Click(1766);
        EXPECT_THAT(Selected(), IsEmpty());
        user.Click(1765);
        EXPECT_EQ(Selected().size(), 4U);
        user.Click(1766);
        user.Click(1764);
        EXPECT_EQ(Selected().size(), 4U);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(FilterTracksDlgTest, KeysSelectAndEnterIsOk) {
    EXPECT_EQ(Run([this] {
                  ClickLine(0);
                  user.Key(Qt::Key_Down, Qt::ShiftModifier);
                  EXPECT_THAT(Selected(), ElementsAre("Level", "Cam"));
                  user.Key(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_TRUE(RowOf("Cam")->visible);
    EXPECT_FALSE(RowOf("Crate")->visible);
}

TEST_F(FilterTracksDlgTest, CancelAndEscapeChangeNothing) {
    const std::function<void()> ends[] = {[this] { user.Click(IDCANCEL); },
                                          [this] { user.Key(Qt::Key_Escape); }};
    for (const std::function<void()>& end : ends) {
        EXPECT_EQ(Run([&] {
                      user.Click(1766);
                      end();
                  }),
                  IDCANCEL);
        EXPECT_TRUE(RowOf("Crate")->visible);
    }
}

TEST_F(FilterTracksDlgTest, EverythingStandsInsideAndApart) {
    Run([this] {
        user.ExpectTidy(7);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(FilterTracksDlgTest, CommandPlacesTheRowsAnew) {
    RowOf("Crate")->SetExpanded(true, true);
    Filter([](CFilterTracksDlg& shown) { shown.list.SetSel(3, FALSE); });
    EXPECT_THAT(VisibleNames(), ElementsAre("Level", "Cam", "Boat"));
    Filter([](CFilterTracksDlg& shown) {
        EXPECT_EQ(shown.list.GetSel(3), 0);
        shown.list.SetSel(3, TRUE);
    });
    EXPECT_THAT(VisibleNames(), Contains("Crate"));
    EXPECT_THAT(VisibleNames(), Contains("Position keys")); // it is still unfolded
}

TEST_F(FilterTracksDlgTest, HiddenTracksShowAgainWhereTheFilmIsShownAnew) {
    Filter([](CFilterTracksDlg& shown) { shown.list.SetSel(-1, FALSE); });
    EXPECT_THAT(VisibleNames(), IsEmpty());
    control->ShowFilm(film, true);
    EXPECT_EQ(VisibleNames().size(), 4U); // Required: nothing stores the flag of a root row.
}

TEST_F(FilterTracksDlgTest, RowsMadeAnewUnderTheDialogAreFoundAgain) {
    Filter([this](CFilterTracksDlg& shown) {
        shown.list.SetSel(3, FALSE);
        control->ShowFilm(film, true);
    });
    EXPECT_THAT(VisibleNames(), ElementsAre("Level", "Cam", "Boat"));
}

TEST_F(FilterTracksDlgTest, RowsThatGoUnderTheDialogArePassedOver) {
    Filter([this](CFilterTracksDlg& shown) {
        shown.list.SetSel(0, FALSE);
        control->RemoveTrackCtrl(RowOf("Boat"), true);
    });
    EXPECT_THAT(VisibleNames(), ElementsAre("Cam", "Crate"));
    ExpectNothingDangles();
}

TEST_F(FilterTracksDlgTest, AnotherFilmUnderTheDialogKeepsItsRows) {
    IFilm* other = NewFilm();
    Filter([&](CFilterTracksDlg& shown) {
        shown.list.SetSel(-1, FALSE);
        plugin.SetCurrentFilm(other);
    });
    EXPECT_THAT(VisibleNames(), ElementsAre("Level"));
}

TEST_F(FilterTracksDlgTest, ControlThatGoesUnderTheDialogDoesntMatter) {
    Filter([this](CFilterTracksDlg&) {
        plugin.scenarioDlg = nullptr;
        control.reset();
    });
    EXPECT_EQ(control, nullptr);
}

TEST_F(FilterTracksDlgTest, OpensEmptyWithoutAFilmOrAControl) {
    plugin.SetCurrentFilm(nullptr);
    EXPECT_EQ(Run([this] {
                  EXPECT_THAT(Lines(), IsEmpty());
                  user.Click(1765);
                  user.Click(IDOK);
              }),
              IDOK);
    plugin.scenarioDlg = nullptr;
    EXPECT_EQ(Run([this] {
                  EXPECT_THAT(Lines(), IsEmpty());
                  user.Key(Qt::Key_Return);
              }),
              IDOK);
    plugin.scenarioDlg = &holder;
}

TEST_F(FilterTracksDlgTest, WorksWhileTheFilmPlays) {
    std::uint32_t milliseconds = 0;
    Hooks().clock = [&milliseconds] { return milliseconds += 10; };
    bool shown = false;
    editor.onBroadcast = [&](int code, void*) {
        if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0 && !shown) {
            shown = true;
            Filter([](CFilterTracksDlg& opened) { opened.list.SetSel(3, FALSE); });
            plugin.StopPlaying();
        }
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    EXPECT_TRUE(shown);
    EXPECT_FALSE(RowOf("Crate")->visible);
}

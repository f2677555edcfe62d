#include "tests/timeline/ControlFixture.h"

#include "files/MainCtrlSettingsDlg.h"
#include "resources/resource.h"

#include <gmock/gmock.h>
#include <set>

using ::testing::ElementsAre;

namespace {

/// The command "Settings" of the control's menu.
class MainCtrlSettingsTest : public ControlTest {
protected:
    MainCtrlSettingsTest() {
        Hooks().modalDialog = [this](CDialog& shown) {
            auto& dialog = dynamic_cast<CMainCtrlSettingsDlg&>(shown);
            seen = {dialog.begin, dialog.end, dialog.interval};
            seenCounts = {dialog.bigTics, dialog.labelDistance, dialog.ticsDistance};
            if (edit) {
                edit(dialog);
            }
            return result;
        };
        film = OpenNewFilm();
    }
    void OpenSettings() { control->OnCmdMsg(IDC_SETTINGS, 0, nullptr, nullptr); }

    IFilm* film = nullptr;
    std::vector<float> seen;
    std::vector<int> seenCounts;
    std::function<void(CMainCtrlSettingsDlg&)> edit;
    int result = IDOK;
};

} // namespace

TEST_F(MainCtrlSettingsTest, ShowsTheAxisTheViewAndTheGrid) {
    control->SetMovieRange(1.0f, 12.0f);
    control->SetViewRange(2.0f, 5.0f, false);
    control->SetTicsDistance(0.5f, false);
    OpenSettings();
    EXPECT_THAT(seen, ElementsAre(1.0f, 12.0f, 3.0f));
    EXPECT_THAT(seenCounts, ElementsAre(5, 4, 15)); // half a second at 30 frames
}

TEST_F(MainCtrlSettingsTest, OkTakesAndStoresThem) {
    edit = [](CMainCtrlSettingsDlg& dialog) {
        dialog.end = 20.0f;
        dialog.interval = 8.0f;
        dialog.bigTics = 2;
        dialog.labelDistance = 6;
        dialog.ticsDistance = 3;
    };
    OpenSettings();
    EXPECT_EQ(control->movieEnd, 20.0f);
    EXPECT_EQ(control->viewEnd, 8.0f);
    EXPECT_EQ(control->grid->ticDistance, 0.1f);
    EXPECT_EQ(control->grid->bigTics, 2);
    EXPECT_EQ(control->grid->labelDistance, 6);
    EXPECT_EQ(film->length, 20.0f);
    const FilmViewSettings& stored = plugin.filmViewSettings[static_cast<std::size_t>(film->index)];
    EXPECT_EQ(stored.movieEnd, 20.0f);
    EXPECT_EQ(stored.viewEnd, 8.0f);
    EXPECT_EQ(stored.ticsDistance, 0.1f);
    EXPECT_EQ(stored.bigTics, 2);
    EXPECT_EQ(stored.labelDistance, 6);
    control->ShowFilm(film, true);
    EXPECT_EQ(control->viewEnd, 8.0f);
}

TEST_F(MainCtrlSettingsTest, TheNewIntervalIsSpreadOverTheTimeArea) {
    edit = [](CMainCtrlSettingsDlg& dialog) { dialog.interval = 6.3f; };
    OpenSettings();
    EXPECT_FLOAT_EQ(control->secondsPerPixel, 0.01f); // 630 of 800 pixels: names 150, scroll bar 20
}

TEST_F(MainCtrlSettingsTest, OnlyWhatTheDialogHasIsStored) {
    FilmViewSettings& stored = plugin.filmViewSettings[static_cast<std::size_t>(film->index)];
    stored.leftWidth = 170;
    stored.rowHeight = 31;
    stored.cursorTime = 2.5f;
    edit = [](CMainCtrlSettingsDlg& dialog) {
        dialog.begin = -2.0f;
        dialog.end = 7.0f;
        dialog.interval = 4.0f;
    };
    OpenSettings();
    EXPECT_EQ(stored.movieStart, -2.0f);
    EXPECT_EQ(stored.movieEnd, 7.0f);
    EXPECT_EQ(stored.viewStart, 0.0f);
    EXPECT_EQ(stored.viewEnd, 4.0f);
    EXPECT_EQ(stored.leftWidth, 170);
    EXPECT_EQ(stored.rowHeight, 31);
    EXPECT_EQ(stored.cursorTime, 2.5f);
    EXPECT_EQ(film->length, 9.0f);
}

TEST_F(MainCtrlSettingsTest, PartsOfAFrameAreCutFromTheTicDistance) {
    control->SetTicsDistance(0.59f, /*redraw*/ false);
    OpenSettings();
    EXPECT_EQ(seenCounts[2], 17); // of 17.7
    EXPECT_FLOAT_EQ(control->grid->ticDistance, 17.0f / 30.0f);
}

TEST_F(MainCtrlSettingsTest, FramesComeBackAsTheyWereButForSevenNumbers) {
    // Required: n / 30 * 30 in float32 falls below these n, and is cut.
    const std::set<int> lost{63, 125, 126, 127, 250, 252, 254};
    for (int frames = 1; frames <= 300; ++frames) {
        control->SetTicsDistance(static_cast<float>(frames) / 30.0f, /*redraw*/ false);
        result = IDCANCEL;
        OpenSettings();
        EXPECT_EQ(seenCounts[2], lost.contains(frames) ? frames - 1 : frames);
    }
}

TEST_F(MainCtrlSettingsTest, CancelChangesNothing) {
    result = IDCANCEL;
    edit = [](CMainCtrlSettingsDlg& dialog) { dialog.end = 20.0f; };
    OpenSettings();
    EXPECT_EQ(control->movieEnd, 10.0f);
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(MainCtrlSettingsTest, BeginAndEndMayBeTurnedRound) {
    edit = [](CMainCtrlSettingsDlg& dialog) {
        dialog.begin = 6.0f;
        dialog.end = 2.0f;
    };
    OpenSettings();
    EXPECT_EQ(control->movieStart, 2.0f);
    EXPECT_EQ(control->movieEnd, 6.0f);
    EXPECT_EQ(film->length, 4.0f);
}

TEST_F(MainCtrlSettingsTest, AnEmptyAxisStands) {
    edit = [](CMainCtrlSettingsDlg& dialog) { dialog.begin = dialog.end = 3.0f; };
    OpenSettings();
    EXPECT_EQ(control->movieStart, 3.0f);
    EXPECT_EQ(control->movieEnd, 3.0f);
    Settle();
    OpenSettings();
    Settle();
}

TEST_F(MainCtrlSettingsTest, WithoutARateATicIsASecond) {
    plugin.framesPerSecond = 0;
    edit = [](CMainCtrlSettingsDlg& dialog) { dialog.ticsDistance = 7; };
    OpenSettings();
    EXPECT_EQ(seenCounts[2], 0);
    EXPECT_EQ(control->grid->ticDistance, 1.0f);
}

TEST_F(MainCtrlSettingsTest, NoTicDistanceIsATenth) {
    edit = [](CMainCtrlSettingsDlg& dialog) { dialog.ticsDistance = 0; };
    OpenSettings();
    EXPECT_EQ(control->grid->ticDistance, 0.1f);
}

TEST_F(MainCtrlSettingsTest, WhatIsNoNumberIsRefused) {
    edit = [](CMainCtrlSettingsDlg& dialog) { dialog.end = std::numeric_limits<float>::infinity(); };
    OpenSettings();
    EXPECT_EQ(control->movieEnd, 10.0f);
}

TEST_F(MainCtrlSettingsTest, AFilmClosedUnderTheDialogKeepsItsLength) {
    edit = [this](CMainCtrlSettingsDlg& dialog) {
        plugin.SetCurrentFilm(nullptr);
        dialog.end = 30.0f;
    };
    OpenSettings();
    EXPECT_EQ(film->length, 10.0f);
}

TEST_F(MainCtrlSettingsTest, AnotherFilmUnderTheDialogKeepsItsOwn) {
    IFilm* other = NewFilm();
    other->length = 4.0f;
    edit = [&](CMainCtrlSettingsDlg& dialog) {
        plugin.SetCurrentFilm(other);
        dialog.end = 30.0f;
        dialog.bigTics = 9;
    };
    OpenSettings();
    EXPECT_EQ(other->length, 4.0f);
    EXPECT_EQ(film->length, 10.0f);
    EXPECT_EQ(control->grid->bigTics, 5);
}

TEST_F(MainCtrlSettingsTest, AnotherLevelUnderTheDialogKeepsItsOwnFilm) {
    edit = [&](CMainCtrlSettingsDlg& dialog) {
        plugin.OnNew();
        plugin.SetCurrentFilm(film); // stands for the other level's film at the same address
        dialog.end = 30.0f;
        dialog.bigTics = 9;
    };
    OpenSettings();
    EXPECT_EQ(film->length, 10.0f);
    EXPECT_EQ(control->grid->bigTics, 5);
}

TEST_F(MainCtrlSettingsTest, ControlThatGoesUnderTheDialogDoesntMatter) {
    edit = [this](CMainCtrlSettingsDlg&) {
        plugin.scenarioDlg = nullptr;
        control.reset();
    };
    OpenSettings();
    EXPECT_EQ(film->length, 10.0f);
}

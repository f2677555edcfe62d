#include "tests/timeline/ControlFixture.h"

#include "keys/rules/TicLayout.h"
#include "keys/views/TrackKey.h"

#include <cstdint>
#include <limits>

namespace {

class MainCtrlTimeTest : public ControlTest {
protected:
    bool HasUpdate(const CWnd* window) {
        CRect update;
        return window->GetUpdateRect(&update);
    }
};

} // namespace

TEST_F(MainCtrlTimeTest, MovieRangeIsSortedAndReachesEveryPart) {
    OpenFilmWithActors(1);
    control->SetMovieRange(12.0f, 2.0f);
    EXPECT_EQ(control->movieStart, 2.0f);
    EXPECT_EQ(control->movieEnd, 12.0f);
    EXPECT_EQ(control->grid->rangeStart, 2.0f);
    EXPECT_EQ(control->hScroll->rangeEnd, 12.0f);
    EXPECT_EQ(RowOf("Actor100")->rangeEnd, 12.0f);
}

TEST_F(MainCtrlTimeTest, AllThatShowsTheAxisIsPaintedWithItsNewRange) {
    OpenFilmWithActors(1);
    Settle();
    ASSERT_FALSE(HasUpdate(control->grid));
    control->SetMovieRange(0.0f, 12.0f);
    EXPECT_TRUE(HasUpdate(control->grid));
    EXPECT_TRUE(HasUpdate(RowOf("Actor100")));
    EXPECT_TRUE(HasUpdate(control->hScroll));
}

TEST_F(MainCtrlTimeTest, MovieRangeKeepsEachEndOfTheViewInsideOneSideOnly) {
    control->SetMovieRange(0.0f, 20.0f);
    control->SetViewRange(6.0f, 10.0f, false);
    control->SetMovieRange(0.0f, 5.0f);
    EXPECT_EQ(control->viewStart, 6.0f); // required: it isn't brought down
    EXPECT_EQ(control->viewEnd, 5.0f);
    EXPECT_EQ(control->hScroll->page, 4.0f); // nor is the page renewed
    EXPECT_EQ(control->grid->viewStart, 5.0f);
    EXPECT_EQ(control->grid->viewEnd, 5.0f);
    control->CalcSecondsPerPixel();
    EXPECT_FLOAT_EQ(control->secondsPerPixel, 1.0f / 630.0f); // 800 - 20 - 150, without a sign
    Settle();                                                 // a view of no length paints
    control->OnPageForward(control->hScroll);
    control->OnPageBack(control->hScroll);
    Settle();
}

TEST_F(MainCtrlTimeTest, ViewRangeIsSortedAndKeptInsideTheAxis) {
    control->SetMovieRange(0.0f, 10.0f);
    control->SetViewRange(12.0f, -2.0f, false);
    EXPECT_EQ(control->viewStart, 0.0f);
    EXPECT_EQ(control->viewEnd, 10.0f);
    EXPECT_EQ(control->hScroll->page, 10.0f);
}

TEST_F(MainCtrlTimeTest, SecondsPerPixelSpanTheTimeArea) {
    control->SetMovieRange(0.0f, 10.0f);
    control->SetViewRange(1.0f, 7.3f, false);
    control->CalcSecondsPerPixel();
    EXPECT_FLOAT_EQ(control->secondsPerPixel, 0.01f); // 6.3 over 800 - 20 - 150
    Resize(170, 400);
    control->CalcSecondsPerPixel();
    EXPECT_FLOAT_EQ(control->secondsPerPixel, 6.3f); // no width counts as 1
}

TEST_F(MainCtrlTimeTest, ATicDistanceNotAboveZeroIsATenth) {
    control->SetTicsDistance(0.0f, false);
    EXPECT_EQ(control->grid->ticDistance, 0.1f);
    control->SetTicsDistance(-3.0f, false);
    EXPECT_EQ(control->grid->ticDistance, 0.1f);
    control->SetTicsDistance(std::numeric_limits<float>::quiet_NaN(), false);
    EXPECT_EQ(control->grid->ticDistance, 0.1f);
}

TEST_F(MainCtrlTimeTest, BigTicsAreAtLeastOne) {
    control->SetBigTics(0, true);
    EXPECT_EQ(control->grid->bigTics, 1);
}

TEST_F(MainCtrlTimeTest, RowsTakeANewGrid) {
    OpenFilmWithActors(1);
    control->SetTicsDistance(0.25f, true);
    control->SetBigTics(7, true);
    EXPECT_EQ(RowOf("Actor100")->ticDistance, 0.25f);
    EXPECT_EQ(RowOf("Actor100")->bigTics, 7);
}

TEST_F(MainCtrlTimeTest, ARowIsNeverLowerThanTwenty) {
    control->SetRowHeight(5, true);
    EXPECT_EQ(control->rowHeight, 20);
    control->SetRowHeight(35, true);
    EXPECT_EQ(control->rowHeight, 35);
    EXPECT_EQ(control->GetVisibleRowCount(), 9); // 350 / 35 is 10, and 350 is below 400
}

TEST_F(MainCtrlTimeTest, RowsTakeANewHeightAtOnceWhereItIsToBeSeen) {
    OpenFilmWithActors(1);
    Settle();
    const auto height = [this] {
        CRect place;
        RowOf("Actor100")->GetClientRect(&place);
        return place.Height();
    };
    control->SetRowHeight(35, /*redraw*/ false);
    EXPECT_EQ(height(), 20);
    control->SetRowHeight(45, /*redraw*/ true);
    EXPECT_EQ(height(), 45);
}

TEST_F(MainCtrlTimeTest, ARowIsNoHigherThanTwoHundredWhateverIsStored) {
    OpenFilmWithActors(3);
    FilmViewSettings settings;
    settings.mask = FilmViewSettings::kRowHeight;
    settings.rowHeight = std::numeric_limits<std::int32_t>::max();
    control->ApplySettings(settings);
    EXPECT_EQ(control->rowHeight, 200);
    Settle();
    CRect place;
    RowOf("Level")->GetClientRect(&place);
    EXPECT_EQ(place.Height(), 200);
    settings.rowHeight = std::numeric_limits<std::int32_t>::min();
    control->ApplySettings(settings);
    EXPECT_EQ(control->rowHeight, 20);
    control->SetRowHeight(250, /*redraw*/ true);
    EXPECT_EQ(control->rowHeight, 250) << "set, not stored";
}

TEST_F(MainCtrlTimeTest, StoredCountsAtTheirEndsAreHarmless) {
    OpenFilmWithActors(1);
    constexpr std::int32_t kEnds[] = {std::numeric_limits<std::int32_t>::min(), 0,
                                      std::numeric_limits<std::int32_t>::max()};
    for (const std::int32_t count : kEnds) {
        FilmViewSettings settings;
        settings.mask =
            FilmViewSettings::kBigTics | FilmViewSettings::kLabelDistance | FilmViewSettings::kLeftWidth;
        settings.bigTics = settings.labelDistance = settings.leftWidth = count;
        control->ApplySettings(settings);
        Settle();
        EXPECT_GE(control->grid->bigTics, 1);
        EXPECT_LE(control->leftWidth, 2000);
        EXPECT_LE(
            LayOutTics({0.0, 0.001, 0.0, 10.0, control->grid->bigTics, control->grid->labelDistance}, 0, 700)
                .size(),
            701u); // one a pixel
    }
}

TEST_F(MainCtrlTimeTest, SettingsWithAnEmptyMaskChangeNothing) {
    FilmViewSettings settings;
    settings.mask = 0;
    settings.movieEnd = 99.0f;
    settings.leftWidth = 10;
    control->ApplySettings(settings);
    EXPECT_EQ(control->movieEnd, 0.0f);
    EXPECT_EQ(control->leftWidth, 150);
}

TEST_F(MainCtrlTimeTest, SettingsTakeWhatTheMaskNames) {
    FilmViewSettings settings;
    settings.movieEnd = 40.0f;
    settings.viewStart = 4.0f;
    settings.viewEnd = 10.3f;
    settings.leftWidth = 200;
    settings.rowHeight = 30;
    settings.ticsDistance = 0.5f;
    settings.bigTics = 2;
    settings.labelDistance = 6;
    settings.cursorTime = 3.0f;
    control->ApplySettings(settings);
    EXPECT_EQ(control->movieEnd, 40.0f);
    EXPECT_EQ(control->viewStart, 4.0f);
    EXPECT_EQ(control->grid->ticDistance, 0.5f);
    EXPECT_EQ(control->grid->bigTics, 2);
    EXPECT_EQ(control->grid->labelDistance, 6);
    EXPECT_EQ(control->rowHeight, 30);
    EXPECT_EQ(control->leftWidth, 200);
    EXPECT_EQ(control->currentTime, 3.0f);
    EXPECT_EQ(control->grid->cursorMark->time, 3.0f);
    EXPECT_EQ(PlaceOf(control->grid).left, 200);
    // The zoom was taken before the name column changed: 6.3 seconds over 630 pixels.
    EXPECT_FLOAT_EQ(control->secondsPerPixel, 0.01f);
}

TEST_F(MainCtrlTimeTest, ANegativeNameColumnIsNone) {
    FilmViewSettings settings;
    settings.mask = FilmViewSettings::kLeftWidth;
    settings.leftWidth = -5;
    control->ApplySettings(settings);
    EXPECT_EQ(control->leftWidth, 0);
}

TEST_F(MainCtrlTimeTest, AnyHighMaskBitMeansTheCursor) {
    FilmViewSettings settings;
    settings.mask = 0x400;
    settings.cursorTime = 2.5f;
    control->ApplySettings(settings);
    EXPECT_EQ(control->currentTime, 2.5f);
    EXPECT_EQ(control->movieEnd, 0.0f);
}

TEST_F(MainCtrlTimeTest, CurrentTimeMovesTheCursorWithoutSnapping) {
    OpenFilmWithActors(1);
    Settle();
    control->SetCurrentTime(0.512f, true);
    EXPECT_EQ(control->currentTime, 0.512f);
    EXPECT_EQ(control->grid->cursorMark->time, 0.512f);
    EXPECT_EQ(plugin.currentTime, 0.0f);
    EXPECT_TRUE(HasUpdate(control->grid));
    EXPECT_TRUE(HasUpdate(RowOf("Actor100")));
    EXPECT_TRUE(HasUpdate(control->infoWnd));
}

TEST_F(MainCtrlTimeTest, TheUsersMoveSnapsAndTakesTheFilmAlong) {
    OpenFilmWithActors(1);
    Settle();
    control->SetCurrentFrame(0.51f, true); // 0.01 behind frame 15
    EXPECT_EQ(control->currentTime, 0.5f);
    EXPECT_EQ(plugin.currentTime, 0.5f);
    EXPECT_TRUE(HasUpdate(control->grid));
    EXPECT_FALSE(HasUpdate(control->infoWnd)); // required
}

TEST_F(MainCtrlTimeTest, TheUsersMoveInAPlayingFilmPosesItStoppedAndPlaysOn) {
    OpenFilmWithActors(1);
    std::uint32_t milliseconds = 0;
    Hooks().clock = [&milliseconds] { return milliseconds += 500; };
    std::vector<std::pair<float, int>> frames;
    editor.onBroadcast = [&](int, void*) { frames.emplace_back(plugin.currentTime, plugin.isPlaying); };
    plugin.isPlaying = 1;
    control->SetCurrentFrame(2.0f, true);
    editor.onBroadcast = nullptr;
    ASSERT_GE(frames.size(), 2u);
    EXPECT_EQ(frames[0], std::pair(2.0f, 0));
    EXPECT_GT(frames[1].first, 2.0f);
    EXPECT_EQ(frames[1].second, 1);
    EXPECT_EQ(plugin.isPlaying, 0) << "the end is reached";
}

TEST_F(MainCtrlTimeTest, TheFilmsEndIsReached) {
    OpenFilmWithActors(1); // 10 seconds
    control->SetCurrentFrame(10.0f, false);
    EXPECT_EQ(control->currentTime, 10.0f);
    EXPECT_EQ(plugin.currentTime, 10.0f);
}

TEST_F(MainCtrlTimeTest, AMoveBehindTheFilmsEndLeavesTheCursor) {
    OpenFilmWithActors(1); // 10 seconds
    control->SetCurrentFrame(2.0f, false);
    control->grid->cursorMark->time = 10.5f;
    control->SetCurrentFrame(10.5f, false);
    EXPECT_EQ(control->currentTime, 2.0f);
    EXPECT_EQ(control->grid->cursorMark->time, 2.0f);
    EXPECT_EQ(plugin.currentTime, 2.0f);
    control->SetCurrentFrame(std::numeric_limits<float>::quiet_NaN(), false);
    EXPECT_EQ(control->currentTime, 2.0f);
}

TEST_F(MainCtrlTimeTest, AMoveBeforeZeroStaysWithTheCursorOnly) {
    OpenFilmWithActors(1);
    control->SetCurrentFrame(-0.5f, false);
    EXPECT_EQ(control->currentTime, -0.5f);
    EXPECT_EQ(plugin.currentTime, 0.0f);
}

TEST_F(MainCtrlTimeTest, WithoutAFilmTheCursorStays) {
    control->SetCurrentFrame(1.0f, true);
    EXPECT_EQ(control->currentTime, 0.0f);
}

TEST_F(MainCtrlTimeTest, AtRateZeroMovesGoToWholeSeconds) {
    OpenFilmWithActors(1);
    plugin.framesPerSecond = 0;
    control->SetCurrentFrame(3.9f, false);
    EXPECT_EQ(control->currentTime, 3.0f);
}

TEST_F(MainCtrlTimeTest, MarksShiftKeysOfVisibleRowsOnly) {
    OpenFilmWithActors(1);
    RowOf("Actor100")->SetExpanded(true, true);
    CTrackCtrl* positions = RowOf("Actor100", KeyKind::Position);
    positions->keys.front()->SetPosition(1.0f, false);
    CTrackCtrl* scales = RowOf("Actor100", KeyKind::Scale);
    scales->keys.front()->SetPosition(1.0f, false);
    scales->visible = false;
    control->RebuildVisibleRows(true, nullptr);
    control->SaveKeyTimes();
    EXPECT_EQ(positions->keys.front()->savedTime, 1.0f);
    EXPECT_EQ(scales->keys.front()->savedTime, -1.0f);
    Settle();
    ASSERT_FALSE(HasUpdate(control->grid));
    control->ShiftKeysAtMark(1.05f, 2.05f); // 1.0 lies inside 0.95 to 1.15
    EXPECT_TRUE(HasUpdate(control->grid));
    EXPECT_TRUE(HasUpdate(positions));
    EXPECT_FLOAT_EQ(positions->keys.front()->time, 2.0f);
    EXPECT_EQ(scales->keys.front()->time, 1.0f);
    control->RestoreKeyTimes(/*keep*/ false);
    EXPECT_EQ(positions->keys.front()->time, 1.0f);
    EXPECT_EQ(positions->keys.front()->record->GetTime(), 1.0f);
}

TEST_F(MainCtrlTimeTest, ARangeOfABillionSecondsPaints) {
    OpenFilmWithActors(1);
    control->SetMovieRange(-1e9f, 1e9f);
    control->SetViewRange(-1e9f, 1e9f, true);
    control->SetTicsDistance(1e-6f, true);
    Settle();
    control->CalcSecondsPerPixel();
    EXPECT_GT(control->secondsPerPixel, 0.0f);
}

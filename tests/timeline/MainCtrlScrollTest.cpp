#include "tests/timeline/ControlFixture.h"

#include <limits>
#include <string>

namespace {

/// The row bar counts 16 rows as fitting.
class MainCtrlScrollTest : public ControlTest {
protected:
    void AddRows(int count, int top) {
        for (int i = 0; i < count; ++i) {
            control->AddTrackCtrl(false)->name = std::to_string(i);
        }
        control->topRow = control->visibleTracks[static_cast<std::size_t>(top)];
    }
    std::string TopName() const { return control->topRow != nullptr ? control->topRow->name : "none"; }
    void SetTimes(float start, float end, float from, float to, float tics) {
        control->SetMovieRange(start, end);
        control->SetViewRange(from, to, false);
        control->SetTicsDistance(tics, false);
    }
};

} // namespace

TEST_F(MainCtrlScrollTest, LineForwardShiftsTheViewByATic) {
    SetTimes(0.0f, 10.0f, 2.0f, 6.0f, 0.5f);
    control->OnLineForward(control->hScroll);
    EXPECT_EQ(control->viewStart, 2.5f);
    EXPECT_EQ(control->viewEnd, 6.5f);
    EXPECT_EQ(control->grid->viewStart, 2.5f);
    EXPECT_EQ(control->hScroll->position, 2.5f);
}

TEST_F(MainCtrlScrollTest, LineForwardStopsAtTheEndOfTheAxis) {
    SetTimes(0.0f, 10.0f, 5.75f, 9.75f, 0.5f);
    control->OnLineForward(control->hScroll);
    EXPECT_EQ(control->viewEnd, 10.0f);
    EXPECT_EQ(control->viewStart, 6.0f);
    control->OnLineForward(control->hScroll);
    EXPECT_EQ(control->viewStart, 6.0f);
}

TEST_F(MainCtrlScrollTest, LineBackStopsAtTheStartOfTheAxis) {
    SetTimes(0.0f, 10.0f, 0.25f, 4.25f, 0.5f);
    control->OnLineBack(control->hScroll);
    EXPECT_EQ(control->viewStart, 0.0f);
    EXPECT_EQ(control->viewEnd, 4.0f);
    control->OnLineBack(control->hScroll);
    EXPECT_EQ(control->viewStart, 0.0f);
}

TEST_F(MainCtrlScrollTest, PagesShiftByTheViewOrWhatIsLeft) {
    SetTimes(0.0f, 10.0f, 0.0f, 4.0f, 0.5f);
    control->OnPageForward(control->hScroll);
    EXPECT_EQ(control->viewStart, 4.0f);
    control->OnPageForward(control->hScroll);
    EXPECT_EQ(control->viewStart, 6.0f); // only 2 seconds were left
    control->OnPageBack(control->hScroll);
    EXPECT_EQ(control->viewStart, 2.0f);
    control->OnPageBack(control->hScroll);
    EXPECT_EQ(control->viewStart, 0.0f);
    EXPECT_EQ(control->viewEnd, 4.0f);
}

TEST_F(MainCtrlScrollTest, TimeThumbIsKeptInsideTheAxis) {
    SetTimes(0.0f, 10.0f, 1.0f, 5.0f, 0.5f);
    control->OnThumbTrack(control->hScroll, 8.0f); // 10 less the page of 4
    EXPECT_EQ(control->viewStart, 6.0f);
    EXPECT_EQ(control->viewEnd, 10.0f);
    control->OnThumbTrack(control->hScroll, -3.0f);
    EXPECT_EQ(control->viewStart, 0.0f);
    control->OnThumbTrack(control->hScroll, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(control->viewStart, 0.0f);
    Settle();
    control->OnThumbTrack(control->hScroll, -1.0f); // it stands there
    CRect update;
    EXPECT_FALSE(control->grid->GetUpdateRect(&update));
}

TEST_F(MainCtrlScrollTest, RowLinesStopAtTheLastPage) {
    AddRows(18, 1);
    control->OnLineForward(control->vScroll); // 1 + 16 is below 18
    EXPECT_EQ(TopName(), "2");
    EXPECT_EQ(control->vScroll->position, 2.0f);
    control->OnLineForward(control->vScroll); // 2 + 16 isn't
    EXPECT_EQ(TopName(), "2");
    control->OnLineBack(control->vScroll);
    control->OnLineBack(control->vScroll);
    control->OnLineBack(control->vScroll);
    EXPECT_EQ(TopName(), "0");
}

TEST_F(MainCtrlScrollTest, RowPagesGoByTheRowsThatFit) {
    AddRows(40, 0);
    control->OnPageForward(control->vScroll); // 40 left: min(24, 16)
    EXPECT_EQ(TopName(), "16");
    control->OnPageForward(control->vScroll); // 24 left: min(8, 16)
    EXPECT_EQ(TopName(), "24");
    control->OnPageForward(control->vScroll); // 16 left: min(0, 16)
    EXPECT_EQ(TopName(), "24");
    control->OnPageBack(control->vScroll);
    EXPECT_EQ(TopName(), "8");
    control->OnPageBack(control->vScroll); // 8 is below 16
    EXPECT_EQ(TopName(), "0");
}

TEST_F(MainCtrlScrollTest, PageForwardPastTheLastPageLeavesNoTopRowUntilARebuild) {
    AddRows(40, 30); // 10 left of 16
    control->OnPageForward(control->vScroll);
    EXPECT_EQ(TopName(), "none");
    EXPECT_FALSE(control->visibleTracks[30]->IsWindowVisible());
    control->OnPageForward(control->vScroll);
    EXPECT_EQ(TopName(), "none");
    control->OnLineForward(control->vScroll);
    control->OnLineBack(control->vScroll);
    EXPECT_EQ(TopName(), "none");
    control->RebuildVisibleRows(true, nullptr);
    EXPECT_EQ(TopName(), "0");
}

TEST_F(MainCtrlScrollTest, PageBackWithoutATopRowGoesToTheFirst) {
    AddRows(40, 30);
    control->OnPageForward(control->vScroll);
    control->OnPageBack(control->vScroll);
    EXPECT_EQ(TopName(), "0");
}

TEST_F(MainCtrlScrollTest, RowThumbGoesToTheRowOfItsWholePart) {
    AddRows(40, 0);
    control->OnThumbTrack(control->vScroll, 7.9f);
    EXPECT_EQ(TopName(), "7");
    EXPECT_EQ(control->vScroll->position, 7.9f);
}

TEST_F(MainCtrlScrollTest, RowThumbNearTheEndJumpsToTheLastPlace) {
    AddRows(40, 0);
    control->OnThumbTrack(control->vScroll, 23.0f); // 23 + 16 is not above 39
    EXPECT_EQ(TopName(), "23");
    control->OnThumbTrack(control->vScroll, 23.5f); // 39.5 is: 40 - 16
    EXPECT_EQ(TopName(), "24");
}

TEST_F(MainCtrlScrollTest, RowThumbWithFewerRowsThanFitEmptiesTheList) {
    AddRows(3, 0);
    control->RebuildVisibleRows(true, nullptr);
    ASSERT_TRUE(control->visibleTracks[0]->IsWindowVisible());
    control->OnThumbTrack(control->vScroll, 1.0f); // 3 - 16 lies before the list
    EXPECT_EQ(TopName(), "none");
    EXPECT_FALSE(control->visibleTracks[0]->IsWindowVisible());
    control->RebuildVisibleRows(true, nullptr);
    EXPECT_EQ(TopName(), "0");
    EXPECT_TRUE(control->visibleTracks[0]->IsWindowVisible());
}

TEST_F(MainCtrlScrollTest, WheelScrollsTheRowsByALine) {
    AddRows(40, 5);
    control->OnWheelForward();
    EXPECT_EQ(TopName(), "6");
    control->OnWheelBack();
    control->OnWheelBack();
    EXPECT_EQ(TopName(), "4");
}

TEST_F(MainCtrlScrollTest, AForeignBarScrollsNothing) {
    AddRows(40, 5);
    CTimeScrollbar foreign;
    control->OnLineForward(&foreign);
    control->OnLineBack(nullptr);
    control->OnPageForward(&foreign);
    control->OnPageBack(&foreign);
    control->OnThumbTrack(nullptr, 3.0f);
    EXPECT_EQ(TopName(), "5");
}

TEST_F(MainCtrlScrollTest, AWindowTooLowForRowsScrollsWithoutLeavingTheList) {
    AddRows(4, 0);
    Resize(800, 40); // -1 rows fit
    control->OnPageForward(control->vScroll);
    EXPECT_EQ(TopName(), "0");
    control->OnLineForward(control->vScroll);
    EXPECT_EQ(TopName(), "1");
    control->OnPageBack(control->vScroll);
    EXPECT_EQ(TopName(), "1");                       // a page of no rows
    control->OnThumbTrack(control->vScroll, 100.0f); // 4 + 1 lies behind the list
    EXPECT_EQ(TopName(), "none");
}

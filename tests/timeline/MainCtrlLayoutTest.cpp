#include "tests/timeline/ControlFixture.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class MainCtrlLayoutTest : public ControlTest {};

bool IsAt(const CRect& rect, int left, int top, int right, int bottom) {
    return rect == CRect(left, top, right, bottom);
}

} // namespace

TEST_F(MainCtrlLayoutTest, RefusesARectTooNarrowOrTooLow) {
    CFilmsMainCtrl narrow(plugin);
    EXPECT_FALSE(narrow.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 59, 400), &frame, 1));
    EXPECT_EQ(narrow.GetSafeHwnd(), nullptr);
    CFilmsMainCtrl low(plugin);
    EXPECT_FALSE(low.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 400, 69), &frame, 1));
    EXPECT_EQ(low.GetSafeHwnd(), nullptr);
    EXPECT_EQ(low.grid, nullptr);
}

TEST_F(MainCtrlLayoutTest, IsMadeAtTheSmallestSize) {
    CFilmsMainCtrl small(plugin);
    EXPECT_TRUE(small.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 60, 70), &frame, 1));
    EXPECT_NE(small.keyDescrWnd, nullptr);
}

TEST_F(MainCtrlLayoutTest, MakesItsWindowsWithTheirFirstSettings) {
    EXPECT_EQ(control->grid->alignment, CGridCtrl::kBottom);
    EXPECT_EQ(control->grid->ticDistance, 2.0f);
    EXPECT_EQ(control->grid->bigTics, 5);
    EXPECT_EQ(control->hScroll->vertical, 0);
    EXPECT_EQ(control->vScroll->vertical, 1);
    EXPECT_EQ(control->vScroll->page, 0.0f);
    EXPECT_NE(control->grid->IsFlickerFree(), 0);
    EXPECT_EQ(control->grid->GetDlgCtrlID(), control->vScroll->GetDlgCtrlID());
    CRect popup;
    control->keyDescrWnd->GetWindowRect(&popup);
    EXPECT_EQ(popup.Width(), 200);
    EXPECT_EQ(popup.Height(), 150);
    EXPECT_FALSE(control->keyDescrWnd->IsWindowVisible());
}

TEST_F(MainCtrlLayoutTest, PlacesItsWindowsAlongTheEdges) {
    // Name column 150, row bar 20, ruler 30, time bar 20.
    EXPECT_TRUE(IsAt(PlaceOf(control->grid), 150, 0, 780, 30));
    EXPECT_TRUE(IsAt(PlaceOf(control->hScroll), 150, 380, 780, 400));
    EXPECT_TRUE(IsAt(PlaceOf(control->vScroll), 780, 30, 800, 380));
    EXPECT_TRUE(IsAt(PlaceOf(control->infoWnd), 0, 0, 150, 30));
}

TEST_F(MainCtrlLayoutTest, RecomputesTheBarsAfterMovingThem) {
    Resize(500, 300);
    // The time bar is 330 wide: the arrows take 1..21 and 309..329.
    EXPECT_TRUE(IsAt(control->hScroll->backArrowRect, 1, 1, 21, 19));
    EXPECT_TRUE(IsAt(control->hScroll->forwardArrowRect, 309, 1, 329, 19));
    // The row bar is 300 - 20 - 30 = 250 high.
    EXPECT_TRUE(IsAt(control->vScroll->forwardArrowRect, 1, 229, 19, 249));
}

TEST_F(MainCtrlLayoutTest, CountsOneRowLessThanFits) {
    // (400 - 20 - 30) / 20 = 17, and 17 * 20 is below 400.
    EXPECT_EQ(control->GetVisibleRowCount(), 16);
    Resize(800, 200);
    EXPECT_EQ(control->GetVisibleRowCount(), 6);
    Resize(800, 40);
    EXPECT_EQ(control->GetVisibleRowCount(), -1); // -10 / 20 is 0, and 0 is below 40
    Resize(800, 0);
    EXPECT_EQ(control->GetVisibleRowCount(), -3); // -50 / 20 is -2, and -40 is below 0
}

TEST_F(MainCtrlLayoutTest, PlacesRowsDownToAMarginAboveTheBottom) {
    OpenFilmWithActors(30);
    // Rows begin at 31 and must end above 400 - 30 = 370: 16 rows, the last from 331 to 351.
    EXPECT_TRUE(IsAt(PlaceOf(control->visibleTracks[0]), 0, 31, 780, 51));
    EXPECT_TRUE(IsAt(PlaceOf(control->visibleTracks[15]), 0, 331, 780, 351));
    EXPECT_TRUE(control->visibleTracks[15]->IsWindowVisible());
    EXPECT_FALSE(control->visibleTracks[16]->IsWindowVisible());
}

TEST_F(MainCtrlLayoutTest, RowThatWouldEndOnTheMarginIsNotShown) {
    OpenFilmWithActors(30);
    Resize(800, 401); // the 17th row would end at 371 = 401 - 30
    control->ArrangeRows(/*invalidate*/ false, /*move*/ true);
    EXPECT_TRUE(control->visibleTracks[15]->IsWindowVisible());
    EXPECT_FALSE(control->visibleTracks[16]->IsWindowVisible());
    Resize(800, 402);
    control->ArrangeRows(/*invalidate*/ false, /*move*/ true);
    EXPECT_TRUE(IsAt(PlaceOf(control->visibleTracks[16]), 0, 351, 780, 371));
    EXPECT_TRUE(control->visibleTracks[16]->IsWindowVisible());
    EXPECT_FALSE(control->visibleTracks[17]->IsWindowVisible());
}

TEST_F(MainCtrlLayoutTest, HidesRowsAboveTheTopRow) {
    OpenFilmWithActors(30);
    control->topRow = control->visibleTracks[3];
    control->ArrangeRows(/*invalidate*/ false, /*move*/ true);
    EXPECT_FALSE(control->visibleTracks[2]->IsWindowVisible());
    EXPECT_TRUE(IsAt(PlaceOf(control->visibleTracks[3]), 0, 31, 780, 51));
}

TEST_F(MainCtrlLayoutTest, PaintTakesItsWindowsAndRowsAlong) {
    OpenFilmWithActors(1);
    Settle();
    CWnd* const windows[] = {control->hScroll, control->vScroll, control->grid, control->infoWnd,
                             control->visibleTracks[0]};
    for (CWnd* window : windows) {
        window->ValidateRect();
    }
    control->SendMessage(WM_PAINT);
    for (const CWnd* window : windows) {
        EXPECT_TRUE(window->GetUpdateRect(nullptr)) << PlaceOf(window).left << ", " << PlaceOf(window).top;
    }
}

TEST_F(MainCtrlLayoutTest, WithoutATopRowHidesAll) {
    OpenFilmWithActors(3);
    control->topRow = nullptr;
    control->ArrangeRows(/*invalidate*/ false, /*move*/ true);
    for (const CTrackCtrl* row : control->visibleTracks) {
        EXPECT_FALSE(row->IsWindowVisible()) << row->name;
    }
}

TEST_F(MainCtrlLayoutTest, SkipsARowWhoseFlagIsClearWithoutAGap) {
    OpenFilmWithActors(3);
    control->visibleTracks[1]->visible = false;
    control->ArrangeRows(/*invalidate*/ false, /*move*/ true);
    EXPECT_FALSE(control->visibleTracks[1]->IsWindowVisible());
    EXPECT_TRUE(IsAt(PlaceOf(control->visibleTracks[2]), 0, 51, 780, 71));
}

TEST_F(MainCtrlLayoutTest, InvalidatesRowsWithoutMovingThem) {
    OpenFilmWithActors(3);
    Settle();
    control->visibleTracks[1]->MoveWindow(0, 200, 780, 20, /*repaint*/ FALSE);
    control->ArrangeRows(/*invalidate*/ true, /*move*/ false);
    EXPECT_TRUE(IsAt(PlaceOf(control->visibleTracks[1]), 0, 200, 780, 220));
    CRect update;
    EXPECT_TRUE(control->visibleTracks[1]->GetUpdateRect(&update));
}

TEST_F(MainCtrlLayoutTest, StandsEverySize) {
    OpenFilmWithActors(5);
    for (const int width : {0, 1, 59, 150, 170, 171, 500, 10000}) {
        for (const int height : {0, 1, 30, 50, 69, 300, 10000}) {
            Resize(width, height);
            control->RebuildVisibleRows(/*redraw*/ true, nullptr);
            control->CalcSecondsPerPixel();
            control->RedrawWindow();
            Settle();
        }
    }
    Resize(kWidth, kHeight);
    EXPECT_TRUE(IsAt(PlaceOf(control->grid), 150, 0, 780, 30));
}

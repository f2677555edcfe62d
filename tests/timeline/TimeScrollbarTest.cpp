#include "timeline/TimeScrollbar.h"

#include "plugin/PluginImpl.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/FakeTimeline.h"
#include "tests/support/Golden.h"
#include "tests/support/MouseScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QImage>

#include <limits>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int kThickness = 20; // pixels across a bar

void PrintTo(const CRect& r, std::ostream& out) {
    out << r.left << ',' << r.top << ',' << r.right << ',' << r.bottom;
}

std::string Text(const CRect& r) {
    std::ostringstream out;
    PrintTo(r, out);
    return out.str();
}

/// A bar 20 pixels thick over 0 to 8, with the thumb at 2 and a page of 4.
class TimeScrollbarTest : public testing::Test {
protected:
    TimeScrollbarTest() {
        main.Create(nullptr, "main", WS_POPUP | WS_CAPTION, {0, 0, 300, 300}, nullptr, 0);
        bar.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 0, 0}, &main, 20);
        bar.SetBarRange(0.0f, 8.0f);
        bar.SetBarPosition(2.0f);
        bar.page = 4.0f;
    }

    void Lay(int length) {
        bar.MoveWindow(10, 10, bar.vertical == 1 ? kThickness : length,
                       bar.vertical == 1 ? length : kThickness);
        bar.UpdateBar();
    }
    void Press(int x, int y) { bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y)); }
    void Move(int x, int y) { bar.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x, y)); }
    void Release(int x, int y) { bar.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y)); }
    /// What the control is asked for by a press; "thumb" when the thumb is held instead.
    std::string Pressed(int x, int y) {
        main.log.clear();
        Press(x, y);
        const bool held = bar.dragging;
        Release(x, y);
        return held ? "thumb" : main.log.empty() ? "nothing" : main.log.front();
    }

    IPluginImpl plugin;
    FakeTimeline main{plugin};
    CTimeScrollbar bar;
    DrawRecorder recorder;
};

} // namespace

TEST_F(TimeScrollbarTest, StartsHorizontalWithoutAThumb) {
    const CTimeScrollbar fresh;
    EXPECT_EQ(fresh.rangeStart, -1.0f);
    EXPECT_EQ(fresh.rangeEnd, -1.0f);
    EXPECT_EQ(fresh.position, -1.0f);
    EXPECT_EQ(fresh.page, 0.0f);
    EXPECT_EQ(fresh.vertical, 0);
    EXPECT_FALSE(fresh.dragging);
    EXPECT_EQ(Text(fresh.thumbRect), "0,0,0,0");
}

TEST_F(TimeScrollbarTest, RangeIsSortedAndPositionCut) {
    bar.SetBarRange(6.0f, -2.0f);
    EXPECT_EQ(bar.rangeStart, -2.0f);
    EXPECT_EQ(bar.rangeEnd, 6.0f);
    bar.SetBarPosition(7.0f);
    EXPECT_EQ(bar.position, 6.0f);
    bar.SetBarPosition(-3.0f);
    EXPECT_EQ(bar.position, -2.0f);
    bar.SetBarPosition(1.5f);
    EXPECT_EQ(bar.position, 1.5f);
}

// 198 pixels inside the frame, arrows of 20, a track of 158 = 19.75 pixels a unit: the thumb starts at
// 21 + 39.5, cut to 60, and is 79 long.
TEST_F(TimeScrollbarTest, LongBarHasArrowsAndAThumbOfItsPage) {
    Lay(200);
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,21,19");
    EXPECT_EQ(Text(bar.forwardArrowRect), "179,1,199,19");
    EXPECT_EQ(Text(bar.thumbRect), "60,1,139,19");
}

TEST_F(TimeScrollbarTest, VerticalBarIsTheSameWithTheAxesSwapped) {
    bar.vertical = 1;
    Lay(200);
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,19,21");
    EXPECT_EQ(Text(bar.forwardArrowRect), "1,179,19,199");
    EXPECT_EQ(Text(bar.thumbRect), "1,60,19,139");
}

TEST_F(TimeScrollbarTest, BarOfThirtyPixelsIsTwoArrows) {
    Lay(30);
    // 28 inside: arrows of 14, nothing between.
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,15,19");
    EXPECT_EQ(Text(bar.forwardArrowRect), "15,1,29,19");
    EXPECT_EQ(Text(bar.thumbRect), "0,0,0,0");
    bar.vertical = 1;
    Lay(30);
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,19,15");
    EXPECT_EQ(Text(bar.forwardArrowRect), "1,15,19,29");
}

TEST_F(TimeScrollbarTest, ArrowsOfAnOddShortBarLeaveAPixelForTheThumb) {
    Lay(43);
    // 41 inside is long enough for arrows of 20; a track of 1 keeps the thumb's ends.
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,21,19");
    EXPECT_EQ(Text(bar.forwardArrowRect), "22,1,42,19");
    EXPECT_EQ(Text(bar.thumbRect), "0,1,0,19");
    Lay(42);
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,21,19");
    EXPECT_EQ(Text(bar.thumbRect), "0,0,0,0");
    Lay(41);
    // 39 inside: arrows of 19, a track of 1.
    EXPECT_EQ(Text(bar.backArrowRect), "1,1,20,19");
    EXPECT_EQ(Text(bar.forwardArrowRect), "21,1,40,19");
    EXPECT_EQ(Text(bar.thumbRect), "0,1,0,19");
}

// Required: a track of at most 20 pixels keeps the ends of the last layout, wherever they are.
TEST_F(TimeScrollbarTest, ShortTrackKeepsTheThumbsEnds) {
    Lay(200);
    Lay(62);
    EXPECT_EQ(Text(bar.thumbRect), "60,1,139,19");
    Lay(63);
    // A track of 21 = 2.625 a unit: from 21 + 5.25, cut to 26, 10.5 cut to 10 long.
    EXPECT_EQ(Text(bar.thumbRect), "26,1,36,19");
    bar.vertical = 1;
    Lay(62);
    EXPECT_EQ(Text(bar.thumbRect), "1,1,19,19");
}

TEST_F(TimeScrollbarTest, BarWithoutRoomKeepsEverything) {
    Lay(200);
    for (const int length : {2, 1, 0}) {
        Lay(length);
        EXPECT_EQ(Text(bar.backArrowRect), "1,1,21,19");
        EXPECT_EQ(Text(bar.thumbRect), "60,1,139,19");
    }
}

TEST_F(TimeScrollbarTest, PageOfTheWholeRangeFillsTheTrack) {
    bar.page = 8.0f;
    Lay(200);
    EXPECT_EQ(Text(bar.thumbRect), "21,1,179,19");
    bar.page = 9.0f;
    Lay(200);
    EXPECT_EQ(Text(bar.thumbRect), "21,1,179,19");
}

TEST_F(TimeScrollbarTest, PageOfNothingHasNoThumb) {
    Lay(200);
    bar.page = 0.0f;
    bar.UpdateBar();
    EXPECT_EQ(Text(bar.thumbRect), "0,0,0,0");
}

TEST_F(TimeScrollbarTest, ThumbHasNoSmallestLength) {
    bar.page = 0.03125f;
    Lay(200);
    // 0.6 of a pixel.
    EXPECT_EQ(Text(bar.thumbRect), "60,1,60,19");
}

TEST_F(TimeScrollbarTest, RangeOfNoLengthFillsTheTrack) {
    bar.SetBarRange(3.0f, 3.0f);
    bar.SetBarPosition(3.0f);
    Lay(200);
    EXPECT_EQ(Text(bar.thumbRect), "21,1,179,19");
}

TEST_F(TimeScrollbarTest, LongAxesStayWithinTheTrack) {
    bar.SetBarRange(0.0f, 1e9f);
    bar.SetBarPosition(1e9f);
    bar.page = 1e-6f;
    Lay(200);
    EXPECT_EQ(Text(bar.thumbRect), "179,1,179,19");
    bar.page = std::numeric_limits<float>::max();
    bar.SetBarRange(0.0f, std::numeric_limits<float>::denorm_min());
    bar.UpdateBar();
    EXPECT_EQ(Text(bar.thumbRect), "21,1,179,19");
}

TEST_F(TimeScrollbarTest, PaintsGroundArrowsAndThumb) {
    Lay(200);
    // An arrow's box of 20 by 18 has thirds of 6 and its middle at 10 down: from 1 + 6 to 21 - 6.
    EXPECT_THAT(recorder.Paint(bar), ElementsAre("rect 0,0,200,20 pen 0/0/000000 brush E2E2E2",
                                                 "rect 1,1,21,19 pen 0/0/000000 brush C8C8C8",
                                                 "poly 7,10 15,13 15,7 pen 0/0/000000 brush 808080",
                                                 "rect 179,1,199,19 pen 0/0/000000 brush C8C8C8",
                                                 "poly 193,10 185,7 185,13 pen 0/0/000000 brush 808080",
                                                 "rect 60,1,139,19 pen 0/0/000000 brush C0C0C0"));
}

TEST_F(TimeScrollbarTest, PaintsUpAndDownArrowsOfAVerticalBar) {
    bar.vertical = 1;
    Lay(200);
    EXPECT_THAT(recorder.Paint(bar), ElementsAre("rect 0,0,20,200 pen 0/0/000000 brush E2E2E2",
                                                 "rect 1,1,19,21 pen 0/0/000000 brush C8C8C8",
                                                 "poly 10,7 7,15 13,15 pen 0/0/000000 brush 808080",
                                                 "rect 1,179,19,199 pen 0/0/000000 brush C8C8C8",
                                                 "poly 10,193 13,185 7,185 pen 0/0/000000 brush 808080",
                                                 "rect 1,60,19,139 pen 0/0/000000 brush C0C0C0"));
}

TEST_F(TimeScrollbarTest, PressOnArrowsScrollsALine) {
    Lay(200);
    EXPECT_EQ(Pressed(1, 1), "OnLineBack");
    EXPECT_EQ(Pressed(20, 18), "OnLineBack");
    EXPECT_EQ(Pressed(179, 10), "OnLineForward");
    EXPECT_EQ(Pressed(198, 18), "OnLineForward");
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

// Required: the trough's first and last pixel before the thumb, and the frame, page forward.
TEST_F(TimeScrollbarTest, PressBesideTheThumbScrollsAPage) {
    Lay(200);
    EXPECT_EQ(Pressed(21, 10), "OnPageForward");
    EXPECT_EQ(Pressed(22, 10), "OnPageBack");
    EXPECT_EQ(Pressed(58, 10), "OnPageBack");
    EXPECT_EQ(Pressed(59, 10), "OnPageForward");
    EXPECT_EQ(Pressed(60, 10), "thumb");
    EXPECT_EQ(Pressed(138, 10), "thumb");
    EXPECT_EQ(Pressed(139, 10), "OnPageForward");
    EXPECT_EQ(Pressed(178, 10), "OnPageForward");
    EXPECT_EQ(Pressed(40, 0), "OnPageForward");
    EXPECT_EQ(Pressed(40, 19), "OnPageForward");
    EXPECT_EQ(Pressed(0, 10), "OnPageForward");
    EXPECT_EQ(Pressed(199, 10), "OnPageForward");
}

TEST_F(TimeScrollbarTest, PressBesideTheThumbOfAVerticalBarScrollsAPage) {
    bar.vertical = 1;
    Lay(200);
    EXPECT_EQ(Pressed(10, 20), "OnLineBack");
    EXPECT_EQ(Pressed(10, 21), "OnPageForward");
    EXPECT_EQ(Pressed(10, 22), "OnPageBack");
    EXPECT_EQ(Pressed(1, 58), "OnPageBack");
    EXPECT_EQ(Pressed(0, 58), "OnPageForward");
    EXPECT_EQ(Pressed(19, 58), "OnPageForward");
    EXPECT_EQ(Pressed(10, 59), "OnPageForward");
    EXPECT_EQ(Pressed(10, 60), "thumb");
    EXPECT_EQ(Pressed(10, 139), "OnPageForward");
    EXPECT_EQ(Pressed(10, 179), "OnLineForward");
}

TEST_F(TimeScrollbarTest, EveryPressBetweenTheArrowsOfABarWithoutThumbIsForward) {
    bar.page = 0.0f;
    Lay(200);
    for (const int x : {21, 22, 60, 100, 178}) {
        EXPECT_EQ(Pressed(x, 10), "OnPageForward");
    }
    bar.vertical = 1;
    Lay(200);
    EXPECT_EQ(Pressed(10, 50), "OnPageForward");
}

TEST_F(TimeScrollbarTest, ArrowsWinOverAThumbLeftBehindByAShortTrack) {
    Lay(200);
    Lay(62); // the thumb's ends stay at 60 and 139, the forward arrow is 41..61
    EXPECT_EQ(Pressed(60, 10), "OnLineForward");
    EXPECT_EQ(Pressed(70, 10), "thumb");
}

// 128 pixels of track for 8 units: a sixteenth a pixel.
TEST_F(TimeScrollbarTest, ThumbFollowsTheMouseFromItsLastStep) {
    Lay(170);
    Press(70, 10);
    EXPECT_TRUE(bar.dragging);
    EXPECT_EQ(bar.dragX, 70);
    EXPECT_EQ(bar.dragY, 10);
    EXPECT_EQ(CWnd::GetCapture(), &bar);
    Move(78, 50);
    EXPECT_EQ(main.thumbPosition, 2.5f);
    EXPECT_EQ(bar.position, 2.0f); // the control decides
    EXPECT_EQ(bar.dragX, 78);
    EXPECT_EQ(bar.dragY, 50);
    // Far beyond the end, where the control stops the thumb at 4: it starts back at once.
    Move(1078, 10);
    EXPECT_EQ(main.thumbPosition, 2.0f + 1000.0f / 16.0f);
    bar.SetBarPosition(4.0f);
    Move(1070, 10);
    EXPECT_EQ(main.thumbPosition, 3.5f);
    Release(1070, 10);
    EXPECT_FALSE(bar.dragging);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_THAT(main.log, ElementsAre("OnThumbTrack", "OnThumbTrack", "OnThumbTrack"));
    Move(0, 0);
    EXPECT_EQ(main.log.size(), 3U);
}

TEST_F(TimeScrollbarTest, VerticalThumbFollowsTheMouseDown) {
    bar.vertical = 1;
    Lay(170);
    Press(10, 70);
    Move(100, 62);
    EXPECT_EQ(main.thumbPosition, 1.5f);
    Release(100, 62);
}

TEST_F(TimeScrollbarTest, UserDragsTheThumbOutOfTheWindow) {
    Lay(170);
    ShowForMouse(main);
    MouseScript(bar).Press(70, 10).Move(70 - 96, -9).Release(-26, -9);
    EXPECT_EQ(main.thumbPosition, 2.0f - 6.0f);
    EXPECT_FALSE(bar.dragging);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(TimeScrollbarTest, DragOnABarWithoutTrackIsIgnored) {
    Lay(170);
    Press(70, 10);
    Lay(30);
    Move(90, 10);
    EXPECT_THAT(main.log, IsEmpty());
    Release(90, 10);
}

TEST_F(TimeScrollbarTest, ReleaseWithoutADragKeepsAnothersMouse) {
    Lay(170);
    main.SetCapture();
    Release(10, 10);
    EXPECT_EQ(CWnd::GetCapture(), &main);
    ReleaseCapture();
}

TEST_F(TimeScrollbarTest, DestroyedInADragItLetsTheMouseGo) {
    Lay(170);
    Press(70, 10);
    bar.DestroyWindow();
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    bar.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(90, 10));
    EXPECT_THAT(main.log, IsEmpty());
}

TEST_F(TimeScrollbarTest, BarOfNoDirectionDoesNothing) {
    bar.vertical = 2;
    bar.MoveWindow(10, 10, 200, 20);
    bar.UpdateBar();
    EXPECT_EQ(Text(bar.backArrowRect), "0,0,0,0");
    EXPECT_EQ(Pressed(100, 10), "nothing");
    bar.dragging = true;
    Move(90, 10);
    EXPECT_THAT(main.log, IsEmpty());
    EXPECT_THAT(recorder.Paint(bar), ElementsAre("rect 0,0,200,20 pen 0/0/000000 brush E2E2E2",
                                                 "rect 0,0,0,0 pen 0/0/000000 brush C0C0C0"));
}

TEST_F(TimeScrollbarTest, WithoutAMainControlNothingHappens) {
    CWnd plain;
    plain.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 300, 100}, nullptr, 0);
    CTimeScrollbar alone;
    alone.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 200, 20}, &plain, 20);
    alone.SetBarRange(0.0f, 8.0f);
    alone.SetBarPosition(2.0f);
    alone.page = 4.0f;
    alone.UpdateBar();
    alone.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 10));
    EXPECT_FALSE(alone.dragging);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(TimeScrollbarTest, PicturesOfSeveralLengths) {
    for (const int length : {30, 43, 63, 200}) {
        Lay(length);
        ExpectGolden(PictureOf(bar), "tests/timeline", "bar_" + std::to_string(length));
    }
    bar.vertical = 1;
    Lay(200);
    ExpectGolden(PictureOf(bar), "tests/timeline", "bar_vertical_200");
}

#include "timeline/rows/GridCtrl.h"

#include "keys/rules/TicLayout.h"
#include "plugin/PluginImpl.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/FakeTimeline.h"
#include "tests/support/MouseScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// A grid that writes down the mouse.
class Grid : public CGridCtrl {
public:
    void OnLButtonDown(UINT flags, int x, int y) override { Note("down", flags, x, y); }
    void OnLButtonUp(UINT flags, int x, int y) override { Note("up", flags, x, y); }
    void OnLButtonDblClk(UINT flags, int x, int y) override { Note("double", flags, x, y); }
    void OnMouseMove(UINT flags, int x, int y) override { Note("move", flags, x, y); }
    void OnRButtonDown(UINT flags, int x, int y) override { Note("right", flags, x, y); }

    std::vector<std::string> log;

private:
    void Note(const char* what, UINT flags, int x, int y) {
        log.push_back(what + std::to_string(flags) + "@" + std::to_string(x) + "," + std::to_string(y));
    }
};

class GridCtrlTest : public testing::Test {
protected:
    GridCtrlTest() {
        dc.CreateCompatibleDC(nullptr);
        grid.SetTimeRange(0.0f, 10.0f);
        grid.SetView(0.0f, 10.0f);
        grid.SetTicDistance(5.0f);
        grid.SetBigTics(2);
    }

    std::vector<std::string> Draw(const CRect& rect, int labelDistance) {
        DrawRecorder recorder;
        grid.DrawGrid(&dc, rect, labelDistance);
        return recorder.Lines();
    }

    Grid grid;
    CDC dc;
};

std::string Line(int x, int from, int to) {
    return "line " + std::to_string(x) + "," + std::to_string(from) + " " + std::to_string(x) + "," +
           std::to_string(to) + " pen 0/0/000000";
}

std::string Axis(int from, int to, int y) {
    return "line " + std::to_string(from) + "," + std::to_string(y) + " " + std::to_string(to) + "," +
           std::to_string(y) + " pen 0/0/000000";
}

std::vector<int> Places(const std::vector<Tic>& tics) {
    std::vector<int> places;
    places.reserve(tics.size());
    for (const Tic& tic : tics) {
        places.push_back(tic.x);
    }
    return places;
}

/// The numbers of the big tics among the tics.
std::vector<int> BigOnes(const std::vector<Tic>& tics) {
    std::vector<int> numbers;
    for (std::size_t i = 0; i < tics.size(); ++i) {
        if (tics[i].big) {
            numbers.push_back(static_cast<int>(i));
        }
    }
    return numbers;
}

} // namespace

TEST_F(GridCtrlTest, StartsWithNoAxisInTheMiddle) {
    const Grid fresh;
    EXPECT_EQ(fresh.rangeStart, -1.0f);
    EXPECT_EQ(fresh.rangeEnd, -1.0f);
    EXPECT_EQ(fresh.ticDistance, -1.0f);
    EXPECT_EQ(fresh.bigTics, -1);
    EXPECT_EQ(fresh.viewStart, -1.0f);
    EXPECT_EQ(fresh.viewEnd, -1.0f);
    EXPECT_EQ(fresh.alignment, 1);
}

TEST_F(GridCtrlTest, ValuesAreBroughtIntoTheirLimits) {
    grid.SetTicDistance(0.0f);
    EXPECT_EQ(grid.ticDistance, 1.0f);
    grid.SetTicDistance(-3.0f);
    EXPECT_EQ(grid.ticDistance, 1.0f);
    grid.SetTicDistance(0.25f);
    EXPECT_EQ(grid.ticDistance, 0.25f);
    grid.SetBigTics(0);
    EXPECT_EQ(grid.bigTics, 1);
    grid.SetBigTics(-7);
    EXPECT_EQ(grid.bigTics, 1);
    grid.SetBigTics(3);
    EXPECT_EQ(grid.bigTics, 3);
}

TEST_F(GridCtrlTest, RangeIsSortedAndCutsTheView) {
    grid.SetTimeRange(8.0f, 2.0f);
    EXPECT_EQ(grid.rangeStart, 2.0f);
    EXPECT_EQ(grid.rangeEnd, 8.0f);
    EXPECT_EQ(grid.viewStart, 2.0f);
    EXPECT_EQ(grid.viewEnd, 8.0f);
}

TEST_F(GridCtrlTest, ViewIsSortedAndCut) {
    grid.SetView(12.0f, 3.0f);
    EXPECT_EQ(grid.viewStart, 3.0f);
    EXPECT_EQ(grid.viewEnd, 10.0f);
    grid.SetView(-5.0f, -1.0f);
    EXPECT_EQ(grid.viewStart, 0.0f);
    EXPECT_EQ(grid.viewEnd, 0.0f);
    grid.SetView(20.0f, 30.0f);
    EXPECT_EQ(grid.viewStart, 10.0f);
    EXPECT_EQ(grid.viewEnd, 10.0f);
}

// The rect 102 by 32 pulled in by 1 is 1,1,101,31: 100 pixels for 10 s, h = 30.
TEST_F(GridCtrlTest, TicsStandInTheMiddle) {
    // Axis at h/2; big h/4 to 3h/4 = 7 to 22; small 3h/8 to 5h/8 = 11 to 18.
    EXPECT_THAT(Draw({0, 0, 102, 32}, -1),
                ElementsAre(Axis(2, 100, 15), Line(1, 7, 22), Line(51, 11, 18), Line(101, 7, 22)));
}

TEST_F(GridCtrlTest, TicsStandAtTheTop) {
    grid.SetAlignment(0);
    // Axis at 2; big to h/2 = 15, small to h/4 = 7.
    EXPECT_THAT(Draw({0, 0, 102, 32}, -1),
                ElementsAre(Axis(2, 100, 2), Line(1, 2, 15), Line(51, 2, 7), Line(101, 2, 15)));
}

TEST_F(GridCtrlTest, TicsStandAtTheBottom) {
    grid.SetAlignment(2);
    // Axis at B-1 = 30; big from h/2 = 15, small from 3h/4 = 22.
    EXPECT_THAT(Draw({0, 0, 102, 32}, -1),
                ElementsAre(Axis(2, 100, 30), Line(1, 15, 30), Line(51, 22, 30), Line(101, 15, 30)));
}

TEST_F(GridCtrlTest, TicsOfAnUnknownAlignmentHaveNoLength) {
    grid.SetAlignment(3);
    EXPECT_THAT(Draw({0, 0, 102, 32}, -1),
                ElementsAre(Axis(2, 100, 0), Line(1, 0, 0), Line(51, 0, 0), Line(101, 0, 0)));
}

TEST_F(GridCtrlTest, ThirdsAndEighthsAreCutOnce) {
    // h = 13: 3h/4 = 9 where 3(h/4) would be 9, 3h/8 = 4 where 3(h/8) would be 3, 5h/8 = 8 where 5(h/8)
    // would be 5.
    const TicRows rows = TicRowsOf(1, 1, 14);
    EXPECT_EQ(rows.axisY, 6);
    EXPECT_EQ(rows.bigFrom, 3);
    EXPECT_EQ(rows.bigTo, 9);
    EXPECT_EQ(rows.smallFrom, 4);
    EXPECT_EQ(rows.smallTo, 8);
    // h = 15: 3h/4 = 11 where 3(h/4) would be 9.
    EXPECT_EQ(TicRowsOf(2, 1, 16).smallFrom, 11);
}

TEST_F(GridCtrlTest, SmallTicOfALowWindowRunsUpwards) {
    grid.SetAlignment(0);
    // 1,1,101,5: h = 4; small from 2 to h/4 = 1, big from 2 to h/2 = 2.
    EXPECT_THAT(Draw({0, 0, 102, 6}, -1),
                ElementsAre(Axis(2, 100, 2), Line(1, 2, 2), Line(51, 2, 1), Line(101, 2, 2)));
}

TEST_F(GridCtrlTest, OnlyTheTopAlignmentFollowsTheTopOfTheRect) {
    // 1,51,101,81: T = 51, h = 30. The starts at the top move, the ends never do.
    grid.SetAlignment(0);
    EXPECT_THAT(Draw({0, 50, 102, 82}, -1),
                ElementsAre(Axis(2, 100, 52), Line(1, 52, 15), Line(51, 52, 7), Line(101, 52, 15)));
    grid.SetAlignment(1);
    EXPECT_THAT(Draw({0, 50, 102, 82}, -1),
                ElementsAre(Axis(2, 100, 15), Line(1, 7, 22), Line(51, 11, 18), Line(101, 7, 22)));
}

TEST_F(GridCtrlTest, LabelsStandOnTicsDivisibleByBothNumbers) {
    grid.SetTicDistance(1.0f);
    grid.SetBigTics(2);
    // Tic i stands at 10i + 1; labels on multiples of lcm(2, 3) = 6, ten pixels above the big tic's start.
    const int halfZero = dc.GetTextExtent("0.00").cx / 2;
    const int halfSix = dc.GetTextExtent("6.00").cx / 2;
    const std::vector<std::string> lines = Draw({0, 0, 102, 32}, 3);
    ASSERT_THAT(lines, SizeIs(1 + 11 + 2));
    EXPECT_EQ(lines[1], Line(1, 7, 22));
    EXPECT_EQ(lines[2], "text " + std::to_string(1 - halfZero) + ",-3 '0.00'");
    EXPECT_EQ(lines[3], Line(11, 11, 18));
    EXPECT_EQ(lines[8], Line(61, 7, 22));
    EXPECT_EQ(lines[9], "text " + std::to_string(61 - halfSix) + ",-3 '6.00'");
}

TEST_F(GridCtrlTest, LabelDistanceNotAboveZeroDrawsNone) {
    for (const int distance : {0, -1, -4}) {
        for (const std::string& line : Draw({0, 0, 102, 32}, distance)) {
            EXPECT_EQ(line.find("text"), std::string::npos) << line;
        }
    }
}

TEST_F(GridCtrlTest, LabelsHaveTwoDecimals) {
    EXPECT_EQ(TicLabel(0.0), "0.00");
    EXPECT_EQ(TicLabel(0.125), "0.12"); // a half goes to the even digit
    EXPECT_EQ(TicLabel(1234.567), "1234.57");
    EXPECT_EQ(TicLabel(-2.5), "-2.50");
    EXPECT_EQ(TicLabel(1e9), "1000000000.00");
    EXPECT_EQ(TicLabel(1e308).size(), 309U + 3U);
}

TEST_F(GridCtrlTest, ViewOnATicDrawsItAndOneBehindStartsWithTheNext) {
    TicAxis axis{0.0, 1.0, 1.0, 11.0, 100, 0};
    // Tics 1..11 at (i-1)*10 + 1.
    EXPECT_THAT(Places(LayOutTics(axis, 1, 101)), ElementsAre(1, 11, 21, 31, 41, 51, 61, 71, 81, 91, 101));
    axis.viewStart = 1.25;
    axis.viewEnd = 11.25;
    // Tics 2..11 at (i-1.25)*10 + 1, cut: 8.5, 18.5 ... 98.5.
    EXPECT_THAT(Places(LayOutTics(axis, 1, 101)), ElementsAre(8, 18, 28, 38, 48, 58, 68, 78, 88, 98));
}

// Required: numbers count from the start of the range, positions from time 0.
TEST_F(GridCtrlTest, PositionsIgnoreTheStartOfTheRange) {
    const TicAxis axis{4.0, 2.0, 4.0, 14.0, 2, 0};
    // Numbers 0..5 at (2i - 4)*10 + 1: the first two left of the window. Big are 0, 2 and 4.
    const std::vector<Tic> tics = LayOutTics(axis, 1, 101);
    EXPECT_THAT(Places(tics), ElementsAre(-39, -19, 1, 21, 41, 61));
    EXPECT_THAT(BigOnes(tics), ElementsAre(0, 2, 4));
}

TEST_F(GridCtrlTest, PlacesLeftOfTheWindowAreCutTowardZero) {
    const TicAxis axis{4.0, 2.0, 4.25, 14.25, 2, 0};
    // Numbers 1..5 at (2i - 4.25)*10 + 1 = -21.5, -1.5, 18.5, 38.5, 58.5.
    EXPECT_THAT(Places(LayOutTics(axis, 1, 101)), ElementsAre(-21, -1, 18, 38, 58));
}

TEST_F(GridCtrlTest, CrowdedTicsKeepOneToAColumnTheBigOneFirst) {
    // Half a pixel from tic to tic: columns 0..4 hold 0 1, 2 3, 4 5, 6 7 and 8. Big are 0, 3 and 6, labelled
    // 0 and 6 (lcm of 3 and 2).
    const TicAxis axis{0.0, 1.0, 0.0, 8.0, 3, 2};
    const std::vector<Tic> tics = LayOutTics(axis, 0, 4);
    EXPECT_THAT(Places(tics), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(BigOnes(tics), ElementsAre(0, 1, 3));
    EXPECT_EQ(tics[0].label, "0.00");
    EXPECT_EQ(tics[1].label, "");
    EXPECT_EQ(tics[3].label, "6.00");
}

TEST_F(GridCtrlTest, CrowdedTicsAreThoseThatCountingEachWouldLeave) {
    for (const int perPixel : {2, 4, 8, 64}) {
        for (const double start : {0.0, 3.25, 17.5}) {
            const TicAxis axis{0.0, 1.0, start, start + 100.0 * perPixel, 7, 3};
            std::map<int, bool> bigByColumn;
            std::map<int, std::string> labelByColumn;
            for (int i = static_cast<int>(std::ceil(start)); i <= static_cast<int>(axis.viewEnd); ++i) {
                const int x = static_cast<int>((i - start) / perPixel + 1);
                bigByColumn[x] = bigByColumn[x] || i % 7 == 0;
                if (i % 21 == 0) {
                    labelByColumn.emplace(x, TicLabel(i));
                }
            }
            const std::vector<Tic> tics = LayOutTics(axis, 1, 101);
            ASSERT_EQ(tics.size(), bigByColumn.size()) << perPixel << " " << start;
            for (const Tic& tic : tics) {
                EXPECT_EQ(tic.big, bigByColumn[tic.x]) << perPixel << " " << start << " " << tic.x;
                EXPECT_EQ(tic.label, labelByColumn[tic.x]) << perPixel << " " << start << " " << tic.x;
            }
        }
    }
}

TEST_F(GridCtrlTest, TinyTicsOverALongAxisCostOnePerColumn) {
    const std::vector<Tic> tics = LayOutTics({0.0, 1e-6, 0.0, 1e9, 5, 4}, 1, 101);
    ASSERT_THAT(tics, SizeIs(101));
    for (std::size_t i = 0; i + 1 < tics.size(); ++i) {
        EXPECT_EQ(tics[i].x, static_cast<int>(i) + 1);
        EXPECT_TRUE(tics[i].big);
        EXPECT_FALSE(tics[i].label.empty());
    }
    EXPECT_LE(LayOutTics({0.0, std::numeric_limits<float>::denorm_min(), 0.0, 1e9, 1, 1}, 1, 101).size(),
              101U);
}

TEST_F(GridCtrlTest, ViewOfNoLengthHasNoTics) {
    grid.SetView(5.0f, 5.0f);
    EXPECT_THAT(Draw({0, 0, 102, 32}, 1), ElementsAre(Axis(2, 100, 15)));
    const float none = std::nanf("");
    EXPECT_THAT(LayOutTics({none, 1.0, none, none, 1, 1}, 1, 101), IsEmpty());
    EXPECT_THAT(LayOutTics({0.0, 1.0, 0.0, std::numeric_limits<double>::infinity(), 1, 1}, 1, 101),
                IsEmpty());
}

TEST_F(GridCtrlTest, UnsetTicDistanceDrawsTheAxisOnly) {
    grid.ticDistance = -1.0f;
    EXPECT_THAT(Draw({0, 0, 102, 32}, 4), ElementsAre(Axis(2, 100, 15)));
}

TEST_F(GridCtrlTest, RectWithoutRoomHasNoTics) {
    EXPECT_THAT(Draw({0, 0, 2, 32}, 4), ElementsAre(Axis(2, 0, 15)));
    EXPECT_THAT(Draw({0, 0, 0, 0}, 4), SizeIs(1));
}

TEST_F(GridCtrlTest, NullSurfaceIsLeftAlone) {
    DrawRecorder recorder;
    grid.DrawGrid(nullptr, {0, 0, 102, 32}, 4);
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST_F(GridCtrlTest, DrawingPutsThePenBackAndLeavesTextTransparent) {
    CPen pen(PS_SOLID, 0, 0x112233);
    dc.SelectObject(&pen);
    EXPECT_EQ(dc.GetBkMode(), OPAQUE);
    grid.DrawGrid(&dc, {0, 0, 102, 32}, 4);
    EXPECT_EQ(dc.GetBkMode(), TRANSPARENT);
    EXPECT_EQ(dc.SelectObject(&pen), &pen);
}

TEST_F(GridCtrlTest, WindowPaintsTheGridOnItsClientAreaWithoutLabels) {
    IPluginImpl plugin;
    FakeTimeline main{plugin};
    main.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 200, 100}, nullptr, 0);
    grid.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {10, 10, 112, 42}, &main, 1);
    EXPECT_EQ(grid.SendMessage(WM_ERASEBKGND), 0);
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(grid),
                ElementsAre(Axis(2, 100, 15), Line(1, 7, 22), Line(51, 11, 18), Line(101, 7, 22)));
}

TEST_F(GridCtrlTest, MouseReachesTheFiveOperations) {
    grid.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 2));
    grid.SendMessage(WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(-3, 4));
    grid.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, -6));
    grid.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON | MK_CONTROL, MAKELPARAM(7, 8));
    grid.SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(9, 10));
    EXPECT_THAT(grid.log, ElementsAre("down1@1,2", "move5@-3,4", "up0@5,-6", "double9@7,8", "right2@9,10"));
}

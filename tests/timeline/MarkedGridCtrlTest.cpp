#include "timeline/rows/MarkedGridCtrl.h"

#include "plugin/PluginImpl.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/FakeTimeline.h"
#include "tests/support/Golden.h"
#include "tests/support/MouseScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QImage>

#include <functional>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

/// A main control in which more happens while the cursor moves, as in a film that plays.
class BusyTimeline : public FakeTimeline {
public:
    using FakeTimeline::FakeTimeline;
    void SetCurrentFrame(float time, bool redraw) override {
        FakeTimeline::SetCurrentFrame(time, redraw);
        if (during) {
            during();
        }
    }
    std::function<void()> during;
};

/// A ruler of 102 by 32 pixels with 0 to 10 s in view of a range of 0 to 20 s.
class MarkedGridCtrlTest : public testing::Test {
protected:
    MarkedGridCtrlTest() : ruler(std::make_unique<CMarkedGridCtrl>()) {
        main.Create(nullptr, "main", WS_POPUP | WS_CAPTION, {0, 0, 300, 100}, nullptr, 0);
        info.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 20, 20}, &main, 3);
        main.infoWnd = &info;
        ruler->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {20, 30, 122, 62}, &main, 20);
        ruler->SetTimeRange(0.0f, 20.0f);
        ruler->SetView(0.0f, 10.0f);
        ruler->SetTicDistance(10.0f);
        ruler->SetBigTics(1);
        ruler->labelDistance = 0;
    }

    void Show() {
        ShowForMouse(main);
        info.ValidateRect();
        ruler->ValidateRect();
        main.log.clear();
    }
    std::vector<float> MarkTimes() const {
        std::vector<float> times;
        for (const CMark* mark : ruler->marks) {
            times.push_back(mark->time);
        }
        return times;
    }
    CMark* MarkAt(CPoint point) const { return ruler->FindMark(&point); }
    /// The lines of a paint that draw arrows.
    std::vector<std::string> Arrows() {
        std::vector<std::string> arrows;
        for (const std::string& line : recorder.Paint(*ruler)) {
            if (line.compare(0, 4, "poly") == 0) {
                arrows.push_back(line);
            }
        }
        return arrows;
    }
    void Press(UINT flags, int x) { ruler->SendMessage(WM_LBUTTONDOWN, flags, MAKELPARAM(x, 5)); }
    void Move(UINT flags, int x) { ruler->SendMessage(WM_MOUSEMOVE, flags, MAKELPARAM(x, 5)); }
    void Release(int x) { ruler->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, 5)); }
    /// Makes the ruler 100 pixels wide: 0.1 s a pixel.
    void UseTenthsPerPixel() { ruler->MoveWindow(20, 30, 100, 32); }

    IPluginImpl plugin;
    BusyTimeline main{plugin};
    CWnd info;
    std::unique_ptr<CMarkedGridCtrl> ruler;
    DrawRecorder recorder;
};

constexpr UINT kLeft = MK_LBUTTON;
constexpr UINT kShiftLeft = MK_LBUTTON | MK_SHIFT;

} // namespace

TEST_F(MarkedGridCtrlTest, StartsWithItsColoursAndTheCursorPointingDown) {
    const CMarkedGridCtrl fresh;
    EXPECT_EQ(fresh.markWidth, 10);
    EXPECT_EQ(fresh.markHitRange, 15);
    EXPECT_EQ(fresh.labelDistance, 4);
    EXPECT_EQ(fresh.dragMark, nullptr);
    EXPECT_EQ(fresh.dragMarkTime, -1.0f);
    ASSERT_NE(fresh.cursorMark, nullptr);
    EXPECT_EQ(fresh.cursorMark->time, 0.0f);
    EXPECT_FALSE(fresh.cursorMark->pointsUp);
    EXPECT_EQ(fresh.markColor, 0xFF0000U);
    EXPECT_EQ(fresh.dragMarkColor, 0x00FF00U);
    EXPECT_EQ(fresh.cursorColor, 0x0000FFU);
}

// 102 pixels for 10 s: the mark at 2.5 s stands at 25.5, cut to 25, the cursor at 5 s at 51. The arrows reach
// from 1 to 32/2 - 1 = 15, with their shoulders at 1 + 14/2 = 8 and stems 10/3 = 3 in from the sides.
TEST_F(MarkedGridCtrlTest, PaintsGroundTicsMarksAndCursorInThisOrder) {
    ruler->AddMark(2.5f);
    main.currentTime = 5.0f;
    EXPECT_THAT(recorder.Paint(*ruler),
                ElementsAre("rect 0,0,102,32 pen 0/0/000000 brush FAFAFA", "line 2,15 100,15 pen 0/0/000000",
                            "line 1,7 1,22 pen 0/0/000000", "line 101,7 101,22 pen 0/0/000000",
                            "poly 20,8 25,15 30,8 27,8 27,1 23,1 23,8 20,8 pen 0/0/000000 brush FF0000",
                            "poly 46,8 51,15 56,8 53,8 53,1 49,1 49,8 46,8 pen 0/0/000000 brush 0000FF"));
}

TEST_F(MarkedGridCtrlTest, PaintsLabels) {
    ruler->SetLabelDistance(1, /*redraw*/ false);
    main.currentTime = -1.0f;
    const std::vector<std::string> lines = recorder.Paint(*ruler);
    ASSERT_THAT(lines, SizeIs(6));
    EXPECT_NE(lines[3].find(",-3 '0.00'"), std::string::npos);
    EXPECT_NE(lines[5].find(",-3 '10.00'"), std::string::npos);
}

TEST_F(MarkedGridCtrlTest, MarksAtTheTopPointUp) {
    ruler->SetAlignment(0);
    ruler->AddMark(2.5f);
    main.currentTime = -1.0f;
    // From 1 to 32-2 = 30: h = 29, shoulders at 1 + 14 = 15. Required: the seventh point stands at 30 - 14
    // = 16.
    EXPECT_THAT(Arrows(), ElementsAre("poly 30,15 25,1 20,15 23,15 23,30 27,30 27,16 30,15 pen 0/0/000000 "
                                      "brush FF0000"));
}

TEST_F(MarkedGridCtrlTest, MarksAtTheBottomPointDown) {
    ruler->SetAlignment(2);
    ruler->AddMark(2.5f);
    main.currentTime = -1.0f;
    // From 2 to 31: shoulders at 2 + 29/2 = 16.
    EXPECT_THAT(Arrows(), ElementsAre("poly 20,16 25,31 30,16 27,16 27,2 23,2 23,16 20,16 pen 0/0/000000 "
                                      "brush FF0000"));
}

TEST_F(MarkedGridCtrlTest, CursorKeepsPointingDownInEveryAlignment) {
    ruler->SetAlignment(0);
    main.currentTime = 0.0f;
    EXPECT_FALSE(ruler->cursorMark->pointsUp);
    // From 1 to 30: shoulders at 15, the tip at the bottom; half of it left of the window.
    EXPECT_THAT(Arrows(),
                ElementsAre("poly -5,15 0,30 5,15 2,15 2,1 -2,1 -2,15 -5,15 pen 0/0/000000 brush 0000FF"));
}

TEST_F(MarkedGridCtrlTest, CursorIsDrawnAtTheControlsTimeNotAtItsMark) {
    ruler->cursorMark->time = 9.0f;
    main.currentTime = 5.0f;
    EXPECT_THAT(Arrows(), ElementsAre("poly 46,8 51,15 56,8 53,8 53,1 49,1 49,8 46,8 pen 0/0/000000 "
                                      "brush 0000FF"));
}

TEST_F(MarkedGridCtrlTest, ArrowsStandOnBothEndsOfTheViewAndNotBeyond) {
    ruler->SetView(2.0f, 6.0f);
    ruler->AddMark(1.5f);
    ruler->AddMark(2.0f);
    ruler->AddMark(6.0f);
    ruler->AddMark(6.5f);
    main.currentTime = 6.0f;
    EXPECT_THAT(Arrows(), SizeIs(3));
    main.currentTime = 2.0f;
    EXPECT_THAT(Arrows(), SizeIs(3));
    main.currentTime = 1.9f;
    EXPECT_THAT(Arrows(), SizeIs(2));
    main.currentTime = 6.1f;
    EXPECT_THAT(Arrows(), SizeIs(2));
}

TEST_F(MarkedGridCtrlTest, DraggedMarkIsGreenInItsPlaceOfTheOrder) {
    ruler->AddMark(1.0f);
    ruler->AddMark(2.0f);
    ruler->dragMark = ruler->marks.front();
    main.currentTime = -1.0f;
    const std::vector<std::string> arrows = Arrows();
    ASSERT_THAT(arrows, SizeIs(2));
    EXPECT_NE(arrows[0].find("brush 00FF00"), std::string::npos);
    EXPECT_NE(arrows[1].find("brush FF0000"), std::string::npos);
}

TEST_F(MarkedGridCtrlTest, ViewOfNoLengthDrawsNeitherTicsNorArrows) {
    ruler->AddMark(5.0f);
    ruler->SetView(5.0f, 5.0f);
    main.currentTime = 5.0f;
    EXPECT_THAT(recorder.Paint(*ruler), ElementsAre("rect 0,0,102,32 pen 0/0/000000 brush FAFAFA",
                                                    "line 2,15 100,15 pen 0/0/000000"));
}

TEST_F(MarkedGridCtrlTest, TimeOfAPointGoesOnOutsideTheWindow) {
    UseTenthsPerPixel();
    ruler->SetView(2.0f, 12.0f);
    EXPECT_FLOAT_EQ(ruler->TimeFromPoint({50, 0}), 7.0f);
    EXPECT_FLOAT_EQ(ruler->TimeFromPoint({-10, 0}), 1.0f);
    EXPECT_FLOAT_EQ(ruler->TimeFromPoint({110, 99}), 13.0f);
}

TEST_F(MarkedGridCtrlTest, RulerOfNoWidthTakesTheStartOfTheViewAndFindsNothing) {
    ruler->AddMark(0.0f);
    ruler->MoveWindow(20, 30, 0, 32);
    EXPECT_EQ(ruler->TimeFromPoint({50, 0}), 0.0f);
    EXPECT_EQ(MarkAt({0, 0}), nullptr);
}

TEST_F(MarkedGridCtrlTest, MarkIsAddedInsideTheRangeOnly) {
    EXPECT_EQ(ruler->AddMark(-0.1f), nullptr);
    EXPECT_EQ(ruler->AddMark(20.1f), nullptr);
    ASSERT_NE(ruler->AddMark(0.0f), nullptr);
    // Outside the view, inside the range.
    ASSERT_NE(ruler->AddMark(20.0f), nullptr);
    EXPECT_FALSE(ruler->marks.front()->pointsUp);
    ruler->SetAlignment(0);
    EXPECT_TRUE(ruler->AddMark(5.0f)->pointsUp);
    EXPECT_THAT(MarkTimes(), ElementsAre(0.0f, 20.0f, 5.0f));
}

TEST_F(MarkedGridCtrlTest, AlignmentTurnsAllMarks) {
    ruler->AddMark(1.0f);
    ruler->AddMark(2.0f);
    ruler->SetAlignment(0);
    EXPECT_TRUE(ruler->marks.front()->pointsUp);
    EXPECT_TRUE(ruler->marks.back()->pointsUp);
    ruler->SetAlignment(2);
    EXPECT_FALSE(ruler->marks.front()->pointsUp);
    EXPECT_EQ(ruler->alignment, 2);
}

TEST_F(MarkedGridCtrlTest, NewRangeDeletesTheMarksOutside) {
    for (const float time : {1.0f, 4.0f, 8.0f, 9.0f}) {
        ruler->AddMark(time);
    }
    ruler->SetTimeRange(8.0f, 4.0f);
    EXPECT_EQ(ruler->rangeStart, 4.0f);
    EXPECT_THAT(MarkTimes(), ElementsAre(4.0f, 8.0f));
}

TEST_F(MarkedGridCtrlTest, DeletingTheDraggedMarkEndsItsDrag) {
    UseTenthsPerPixel();
    ruler->AddMark(9.0f);
    Press(kShiftLeft, 90);
    ASSERT_NE(ruler->dragMark, nullptr);
    ruler->SetTimeRange(0.0f, 5.0f);
    EXPECT_EQ(ruler->dragMark, nullptr);
    EXPECT_EQ(ruler->dragMarkTime, -1.0f);
    Move(kShiftLeft, 20);
    Release(20);
    EXPECT_THAT(main.log, ElementsAre("SaveKeyTimes"));

    ruler->AddMark(1.0f);
    Press(kShiftLeft, 20);
    ASSERT_NE(ruler->dragMark, nullptr);
    ruler->DeleteMarks();
    EXPECT_EQ(ruler->dragMark, nullptr);
    EXPECT_THAT(ruler->marks, IsEmpty());
    Release(20);
}

TEST_F(MarkedGridCtrlTest, NearestMarkWithinFifteenPixelsIsFound) {
    UseTenthsPerPixel();
    EXPECT_EQ(MarkAt({20, 0}), nullptr);
    CMark* two = ruler->AddMark(2.0f);
    CMark* four = ruler->AddMark(4.0f);
    EXPECT_EQ(MarkAt({29, 0}), two);
    EXPECT_EQ(MarkAt({31, 0}), four);
    EXPECT_EQ(MarkAt({54, 0}), four);
    EXPECT_EQ(MarkAt({56, 0}), nullptr);
    EXPECT_EQ(ruler->FindMark(nullptr), nullptr);
    ruler->SetView(4.0f, 4.0f);
    EXPECT_EQ(MarkAt({40, 0}), nullptr);
}

TEST_F(MarkedGridCtrlTest, FifteenPixelsAwayIsStillFound) {
    // Ten seconds on 80 pixels: 0.125 s a pixel, without rounding. The mark at 2.5 s stands at 20.
    ruler->MoveWindow(20, 30, 80, 32);
    CMark* mark = ruler->AddMark(2.5f);
    EXPECT_EQ(MarkAt({35, 0}), mark);
    EXPECT_EQ(MarkAt({36, 0}), nullptr);
}

TEST_F(MarkedGridCtrlTest, EarlierOfTwoEquallyNearMarksIsFound) {
    ruler->MoveWindow(20, 30, 80, 32);
    CMark* late = ruler->AddMark(5.0f);
    ruler->AddMark(2.5f);
    // Pixel 30 is 3.75 s, 1.25 s from both.
    EXPECT_EQ(MarkAt({30, 0}), late);
    ruler->DeleteMarks();
    CMark* first = ruler->AddMark(5.0f);
    ruler->AddMark(5.0f);
    EXPECT_EQ(MarkAt({40, 0}), first);
}

TEST_F(MarkedGridCtrlTest, PressMovesTheCursorToTheTimeAsItIs) {
    Show();
    UseTenthsPerPixel();
    Press(kLeft, 33);
    EXPECT_FLOAT_EQ(main.mouseTime, 3.3f); // off a frame
    EXPECT_FLOAT_EQ(ruler->cursorMark->time, 3.3f);
    EXPECT_FLOAT_EQ(main.currentTime, 3.3f);
    EXPECT_THAT(main.log, ElementsAre("SetCurrentFrame true"));
    EXPECT_TRUE(info.GetUpdateRect(nullptr));
    EXPECT_EQ(CWnd::GetCapture(), ruler.get());
    Release(33);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_THAT(main.log, ElementsAre("SetCurrentFrame true"));
}

TEST_F(MarkedGridCtrlTest, DragMovesTheCursorBeyondTheWindow) {
    UseTenthsPerPixel();
    Press(kLeft, 33);
    Move(kLeft, -20);
    EXPECT_FLOAT_EQ(main.currentTime, -2.0f);
    EXPECT_FLOAT_EQ(ruler->cursorMark->time, -2.0f);
    EXPECT_THAT(main.log, ElementsAre("SetCurrentFrame true", "SetCurrentFrame true"));
}

TEST_F(MarkedGridCtrlTest, HoverWritesTheMouseTimeOnly) {
    Show();
    UseTenthsPerPixel();
    Move(0, 47);
    EXPECT_FLOAT_EQ(main.mouseTime, 4.7f);
    EXPECT_TRUE(info.GetUpdateRect(nullptr));
    EXPECT_THAT(main.log, IsEmpty());
}

TEST_F(MarkedGridCtrlTest, ShiftPressMakesAMarkAndKeepsTheCursor) {
    Show();
    UseTenthsPerPixel();
    QCoreApplication::processEvents();
    main.currentTime = 1.0f;
    Press(kShiftLeft, 60);
    EXPECT_THAT(MarkTimes(), ElementsAre(::testing::FloatEq(6.0f)));
    EXPECT_EQ(main.currentTime, 1.0f);
    EXPECT_FLOAT_EQ(main.mouseTime, 6.0f);
    EXPECT_THAT(main.log, ElementsAre("ArrangeRows true false"));
    EXPECT_TRUE(ruler->GetUpdateRect(nullptr));
    EXPECT_TRUE(info.GetUpdateRect(nullptr));
    EXPECT_EQ(CWnd::GetCapture(), ruler.get());
    // A new mark isn't held: it stays when the mouse moves on.
    Move(kShiftLeft, 80);
    Release(80);
    EXPECT_THAT(MarkTimes(), ElementsAre(::testing::FloatEq(6.0f)));
    EXPECT_THAT(main.log, ElementsAre("ArrangeRows true false"));
}

TEST_F(MarkedGridCtrlTest, ShiftPressFartherThanFifteenPixelsMakesAnotherMark) {
    UseTenthsPerPixel();
    ruler->AddMark(2.0f);
    Press(kShiftLeft, 36);
    EXPECT_THAT(ruler->marks, SizeIs(2));
    EXPECT_EQ(ruler->dragMark, nullptr);
}

TEST_F(MarkedGridCtrlTest, ShiftPressOutsideTheRangeMakesNoMark) {
    UseTenthsPerPixel();
    Press(kShiftLeft, -5);
    EXPECT_THAT(ruler->marks, IsEmpty());
    EXPECT_THAT(main.log, ElementsAre("ArrangeRows true false"));
}

TEST_F(MarkedGridCtrlTest, DraggedMarkShiftsKeysFromStepToStep) {
    ruler->MoveWindow(20, 30, 80, 32); // 0.125 s a pixel
    CMark* mark = ruler->AddMark(2.5f);
    Press(kShiftLeft, 22);
    EXPECT_EQ(ruler->dragMark, mark);
    EXPECT_EQ(ruler->dragMarkTime, 2.5f);
    EXPECT_EQ(CWnd::GetCapture(), ruler.get());
    Move(kShiftLeft, 24);
    EXPECT_EQ(mark->time, 3.0f);
    EXPECT_EQ(main.mouseTime, 3.0f);
    Move(kShiftLeft, 32);
    EXPECT_EQ(mark->time, 4.0f);
    Release(32);
    EXPECT_EQ(mark->time, 4.0f);
    EXPECT_EQ(ruler->dragMark, nullptr);
    EXPECT_EQ(ruler->dragMarkTime, -1.0f);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_THAT(main.log, ElementsAre("SaveKeyTimes", "ShiftKeysAtMark 2.500000 3.000000",
                                      "ShiftKeysAtMark 3.000000 4.000000", "RestoreKeyTimes true",
                                      "InvalidateControl true"));
}

TEST_F(MarkedGridCtrlTest, MarkDroppedOutOfViewIsGoneAndKeysGoBack) {
    ruler->MoveWindow(20, 30, 80, 32);
    ruler->AddMark(2.5f);
    ruler->AddMark(7.5f);
    Press(kShiftLeft, 20);
    Move(kShiftLeft, -8);
    Release(-8);
    EXPECT_THAT(MarkTimes(), ElementsAre(7.5f));
    EXPECT_EQ(ruler->dragMark, nullptr);
    EXPECT_THAT(main.log, ElementsAre("SaveKeyTimes", "ShiftKeysAtMark 2.500000 -1.000000",
                                      "RestoreKeyTimes false", "InvalidateControl true"));
}

TEST_F(MarkedGridCtrlTest, MarkDroppedOnTheEdgesOfTheViewStays) {
    ruler->MoveWindow(20, 30, 80, 32);
    ruler->AddMark(2.5f);
    Press(kShiftLeft, 20);
    Move(kShiftLeft, 80);
    Release(80); // 10 s, the end of the view
    EXPECT_THAT(MarkTimes(), ElementsAre(10.0f));
    Press(kShiftLeft, 80);
    Move(kShiftLeft, 0);
    Release(0);
    EXPECT_THAT(MarkTimes(), ElementsAre(0.0f));
    Press(kShiftLeft, 0);
    Release(81);
    EXPECT_THAT(ruler->marks, IsEmpty());
}

// Required: the button without Shift moves the cursor, even while a mark is held.
TEST_F(MarkedGridCtrlTest, ShiftLetGoDuringAMarksDragMovesTheCursor) {
    ruler->MoveWindow(20, 30, 80, 32);
    CMark* mark = ruler->AddMark(2.5f);
    Press(kShiftLeft, 20);
    main.log.clear();
    Move(kLeft, 40);
    EXPECT_EQ(mark->time, 2.5f);
    EXPECT_EQ(main.currentTime, 5.0f);
    EXPECT_THAT(main.log, ElementsAre("SetCurrentFrame true"));
    Move(kShiftLeft, 24);
    EXPECT_EQ(mark->time, 3.0f);
    Release(24);
    EXPECT_EQ(ruler->dragMark, nullptr);
}

TEST_F(MarkedGridCtrlTest, RightPressOpensTheMenuAtTheScreenPoint) {
    main.menuRow = reinterpret_cast<CTrackCtrl*>(&main);
    main.menuKey = reinterpret_cast<CTrackKey*>(&main);
    CPoint screen(7, 9);
    ruler->ClientToScreen(&screen);
    ruler->SendMessage(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(7, 9));
    EXPECT_THAT(main.log,
                ElementsAre("ShowContextMenu " + std::to_string(screen.x) + " " + std::to_string(screen.y)));
    EXPECT_EQ(main.menuRow, nullptr);
    EXPECT_EQ(main.menuKey, nullptr);
}

TEST_F(MarkedGridCtrlTest, DoubleClickDoesNothing) {
    main.mouseTime = 1.0f;
    ruler->SendMessage(WM_LBUTTONDBLCLK, kLeft, MAKELPARAM(40, 5));
    EXPECT_THAT(main.log, IsEmpty());
    EXPECT_EQ(main.mouseTime, 1.0f);
}

TEST_F(MarkedGridCtrlTest, WithoutAMainControlNothingHappens) {
    CWnd plain;
    plain.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 300, 100}, nullptr, 0);
    CMarkedGridCtrl alone;
    alone.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 100, 30}, &plain, 20);
    alone.SetTimeRange(0.0f, 10.0f);
    alone.SetView(0.0f, 10.0f);
    CMark* mark = alone.AddMark(5.0f);
    alone.dragMark = mark;
    alone.OnLButtonDown(kShiftLeft, 10, 5);
    alone.OnMouseMove(kShiftLeft, 20, 5);
    alone.OnLButtonUp(0, -50, 5);
    alone.OnRButtonDown(MK_RBUTTON, 10, 5);
    EXPECT_EQ(alone.dragMark, mark);
    EXPECT_EQ(mark->time, 5.0f);
    EXPECT_EQ(alone.cursorMark->time, 0.0f);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    alone.labelDistance = 0;
    alone.SetTicDistance(20.0f);
    // Ground, axis, the tic at 0 and the mark; no cursor.
    EXPECT_THAT(recorder.Paint(alone), SizeIs(4));
}

TEST_F(MarkedGridCtrlTest, NoInfoWindowIsNeeded) {
    main.infoWnd = nullptr;
    Press(kLeft, 40);
    Move(kLeft, 50);
    EXPECT_THAT(main.log, ElementsAre("SetCurrentFrame true", "SetCurrentFrame true"));
}

TEST_F(MarkedGridCtrlTest, LabelDistanceIsStoredAndRepaints) {
    Show();
    ruler->SetLabelDistance(7, /*redraw*/ false);
    EXPECT_EQ(ruler->labelDistance, 7);
    EXPECT_FALSE(ruler->GetUpdateRect(nullptr));
    ruler->SetLabelDistance(-2, /*redraw*/ true);
    EXPECT_EQ(ruler->labelDistance, -2);
    EXPECT_TRUE(ruler->GetUpdateRect(nullptr));
}

TEST_F(MarkedGridCtrlTest, ButtonReleasedWhileTheCursorMovesLeavesNoCapture) {
    main.during = [this] { Release(33); };
    Press(kLeft, 33);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(MarkedGridCtrlTest, RulerMayBeDeletedWhileTheCursorMoves) {
    main.during = [this] { ruler.reset(); };
    Press(kLeft, 33);
    EXPECT_EQ(ruler, nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(MarkedGridCtrlTest, RulerMayBeDeletedInADrag) {
    main.during = [this] { ruler.reset(); };
    Move(kLeft, 33);
    EXPECT_EQ(ruler, nullptr);
    EXPECT_THAT(main.log, ElementsAre("SetCurrentFrame true"));
}

TEST_F(MarkedGridCtrlTest, UserDragsAMarkOutOfTheWindowAndDropsIt) {
    Show();
    ruler->MoveWindow(20, 30, 80, 32);
    ruler->AddMark(2.5f);
    MouseScript(*ruler).Shift(true).Press(20, 5).Move(24, -15).Move(100, 40).Release(100, 40);
    EXPECT_THAT(ruler->marks, IsEmpty());
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_THAT(main.log, ElementsAre("SaveKeyTimes", "ShiftKeysAtMark 2.500000 3.000000",
                                      "ShiftKeysAtMark 3.000000 12.500000", "RestoreKeyTimes false",
                                      "InvalidateControl true"));
}

TEST_F(MarkedGridCtrlTest, UserDragsTheCursorOutOfTheWindow) {
    Show();
    ruler->MoveWindow(20, 30, 80, 32);
    MouseScript(*ruler).Press(40, 5).Move(-8, 90).Release(-8, 90);
    EXPECT_EQ(main.currentTime, -1.0f);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(MarkedGridCtrlTest, PictureOfTheRuler) {
    ruler->MoveWindow(0, 0, 402, 30);
    ruler->SetTicDistance(0.5f);
    ruler->SetBigTics(5);
    ruler->SetLabelDistance(4, /*redraw*/ false);
    ruler->AddMark(2.0f);
    ruler->AddMark(4.0f);
    ruler->AddMark(4.1f);
    ruler->dragMark = *std::next(ruler->marks.begin());
    main.currentTime = 7.0f;
    // Tic 0 and tic 20 have a label, of up to 40 pixels and in the top 20.
    ExpectGolden(PictureOf(*ruler), "tests/timeline", "ruler", {{0, 0, 40, 20}, {362, 0, 402, 20}});
}

TEST_F(MarkedGridCtrlTest, PictureOfTheRulerWithArrowsPointingUp) {
    ruler->MoveWindow(0, 0, 202, 31);
    ruler->SetTicDistance(1.0f);
    ruler->SetBigTics(5);
    ruler->SetAlignment(0);
    ruler->AddMark(3.0f);
    main.currentTime = 6.0f;
    ExpectGolden(PictureOf(*ruler), "tests/timeline", "ruler_top");
}

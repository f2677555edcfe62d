#include "timeline/rows/AdvWnd.h"

#include "tests/support/DrawRecorder.h"
#include "tests/support/MouseScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <QCoreApplication>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Draws its contents as one line and shows what is protected.
class Pane : public CadvWnd {
public:
    using CadvWnd::bitmap;
    using CadvWnd::GetSuperWndProcAddr;

    int CreateChildren() override { return children; }
    void InternalRedrawFG(CDC* dc, CRect rect) override {
        dc->MoveTo(rect.TopLeft());
        dc->LineTo(rect.right, 0);
    }

    int children = 1;
};

class AdvWndTest : public testing::Test {
protected:
    AdvWndTest() { top.Create(nullptr, "top", WS_POPUP | WS_CAPTION, {0, 0, 200, 100}, nullptr, 0); }

    void MakePane() { pane.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 40, 20}, &top, 7); }
    void ShowPane() {
        MakePane();
        ShowForMouse(top);
        pane.ValidateRect();
    }
    BITMAP Bitmap() const {
        BITMAP description;
        EXPECT_NE(pane.bitmap->GetBitmap(&description), 0);
        return description;
    }
    /// A control of the number 5 that no object of the test's own holds.
    void MakeControl() {
        CWnd control;
        control.Create("STATIC", "text", WS_CHILD, {0, 0, 30, 10}, &top, 5);
        control.UnsubclassWindow();
    }

    CWnd top;
    Pane pane;
};

} // namespace

TEST_F(AdvWndTest, IsMadeByItsNameAtRunTime) {
    const CRuntimeClass* description = CadvWnd::GetThisClass();
    EXPECT_STREQ(description->className, "CadvWnd");
    EXPECT_EQ(description->base, CWnd::GetThisClass());
    const std::unique_ptr<CObject> made(description->CreateObject());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->GetRuntimeClass(), description);
    EXPECT_NE(dynamic_cast<CadvWnd*>(made.get()), nullptr);
}

TEST_F(AdvWndTest, StartsWithoutABitmapOnTheSystemColour) {
    EXPECT_EQ(pane.IsFlickerFree(), 0);
    EXPECT_EQ(pane.bitmap, nullptr);
    EXPECT_EQ(pane.GetBackgroundMode(), 1);
}

TEST_F(AdvWndTest, ProcedureSlotIsOneForTheClass) {
    Pane other;
    EXPECT_EQ(pane.GetSuperWndProcAddr(), other.GetSuperWndProcAddr());
    EXPECT_EQ(*pane.GetSuperWndProcAddr(), nullptr);
}

TEST_F(AdvWndTest, PaintsBackgroundThenContents) {
    MakePane();
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(pane), ElementsAre("fill 0,0,40,20 FFFFFF", "line 0,0 40,0 pen 0/0/000000"));
}

TEST_F(AdvWndTest, PaintWithoutErasingDrawsTheContentsOnly) {
    ShowPane();
    DrawRecorder recorder;
    pane.Invalidate(FALSE);
    pane.UpdateWindow();
    EXPECT_THAT(recorder.Lines(), ElementsAre("line 0,0 40,0 pen 0/0/000000"));
}

TEST_F(AdvWndTest, UnchangedFlickerFreeWindowIsOneBlockCopy) {
    MakePane();
    pane.SetFlickerFree(1);
    EXPECT_NE(pane.IsContentsChanged(), 0);
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(pane),
                ElementsAre("fill 0,0,40,20 FFFFFF", "line 0,0 40,0 pen 0/0/000000", "copy 0,0,40,20"));
    EXPECT_NE(recorder.calls[0].surface, recorder.calls[2].surface);
    EXPECT_EQ(pane.IsContentsChanged(), 0);
    EXPECT_THAT(recorder.Paint(pane), ElementsAre("copy 0,0,40,20"));
    pane.SetContentsChanged(1);
    EXPECT_EQ(recorder.Paint(pane).size(), 3U);
}

TEST_F(AdvWndTest, FlickerFreePaintLeavesNoBitmapSelected) {
    MakePane();
    pane.SetFlickerFree(1);
    DrawRecorder recorder;
    recorder.Paint(pane);
    pane.SetFlickerFree(0);
    EXPECT_EQ(pane.bitmap, nullptr);
    EXPECT_THAT(recorder.Paint(pane), ElementsAre("fill 0,0,40,20 FFFFFF", "line 0,0 40,0 pen 0/0/000000"));
}

TEST_F(AdvWndTest, BackgroundFollowsTheModeAndFillsTheClipBox) {
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(nullptr, 60, 30);
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    dc.SelectObject(&bitmap);
    dc.IntersectClipRect({5, 6, 20, 10});
    DrawRecorder recorder;
    // Both bits clear is black; the own colour wins over the system's.
    for (const int mode : {0, 1, 2, 3}) {
        pane.SetBackgroundMode(0x123456, mode);
        EXPECT_EQ(pane.GetBackgroundMode(), mode);
        EXPECT_EQ(pane.GetBackgroundColor(), 0x123456U);
        pane.InternalRedrawBG(&dc, {0, 0, 1, 1});
    }
    EXPECT_THAT(recorder.Lines(), ElementsAre("fill 5,6,20,10 000000", "fill 5,6,20,10 FFFFFF",
                                              "fill 5,6,20,10 123456", "fill 5,6,20,10 123456"));
}

TEST_F(AdvWndTest, OtherOnNumberIsStoredAndKeepsTheBitmap) {
    MakePane();
    pane.SetFlickerFree(1);
    const CBitmap* bitmap = pane.bitmap;
    pane.SetContentsChanged(0);
    pane.SetFlickerFree(2);
    EXPECT_EQ(pane.IsFlickerFree(), 2);
    EXPECT_EQ(pane.bitmap, bitmap);
    EXPECT_EQ(pane.IsContentsChanged(), 0);
}

TEST_F(AdvWndTest, FlickerFreeBeforeTheWindowGetsItsBitmapWithTheSize) {
    pane.SetFlickerFree(1);
    ASSERT_NE(pane.bitmap, nullptr);
    BITMAP none;
    EXPECT_EQ(pane.bitmap->GetBitmap(&none), 0);
    pane.ReCreateBitmap();
    EXPECT_EQ(pane.bitmap->GetBitmap(&none), 0);
    MakePane();
    EXPECT_EQ(Bitmap().bmWidth, 40);
    EXPECT_EQ(Bitmap().bmHeight, 20);
}

TEST_F(AdvWndTest, WindowOfNoWidthHasABitmapOfNoWidth) {
    MakePane();
    pane.SetFlickerFree(1);
    pane.MoveWindow(0, 0, 0, 15);
    EXPECT_EQ(Bitmap().bmWidth, 0);
    EXPECT_EQ(Bitmap().bmHeight, 15);
    DrawRecorder recorder;
    EXPECT_THAT(recorder.Paint(top), IsEmpty());
}

TEST_F(AdvWndTest, NewSizeMakesABitmapAndAsksForNoPaint) {
    ShowPane();
    pane.SetFlickerFree(1);
    pane.MoveWindow(0, 0, 64, 30);
    EXPECT_EQ(Bitmap().bmWidth, 64);
    EXPECT_EQ(Bitmap().bmHeight, 30);
    QCoreApplication::processEvents();
    pane.ValidateRect();
    pane.SetContentsChanged(0);
    pane.SendMessage(WM_SIZE, 0, MAKELPARAM(64, 30));
    EXPECT_NE(pane.IsContentsChanged(), 0);
    EXPECT_FALSE(pane.GetUpdateRect(nullptr));
}

TEST_F(AdvWndTest, SizeOfAnOrdinaryWindowMakesNoBitmap) {
    MakePane();
    pane.MoveWindow(0, 0, 64, 30);
    EXPECT_EQ(pane.bitmap, nullptr);
}

TEST_F(AdvWndTest, NewSettingsRepaintAFlickerFreeWindowOnly) {
    ShowPane();
    pane.SendMessage(WM_WININICHANGE);
    EXPECT_FALSE(pane.GetUpdateRect(nullptr));
    pane.SetFlickerFree(1);
    pane.SetContentsChanged(0);
    pane.SendMessage(WM_WININICHANGE);
    EXPECT_TRUE(pane.GetUpdateRect(nullptr));
    EXPECT_NE(pane.IsContentsChanged(), 0);
}

TEST_F(AdvWndTest, NewPaletteRepaintsAnyWindow) {
    ShowPane();
    pane.SendMessage(WM_PALETTECHANGED);
    EXPECT_TRUE(pane.GetUpdateRect(nullptr));
    EXPECT_EQ(pane.bitmap, nullptr);
    pane.SetFlickerFree(1);
    pane.SetContentsChanged(0);
    pane.ValidateRect();
    pane.SendMessage(WM_PALETTECHANGED);
    EXPECT_TRUE(pane.GetUpdateRect(nullptr));
    EXPECT_NE(pane.IsContentsChanged(), 0);
}

TEST_F(AdvWndTest, SubclassingTakesTheControlAndMakesChildren) {
    MakeControl();
    EXPECT_EQ(pane.SubclassDlgItem(6, &top), 0);
    EXPECT_EQ(pane.GetSafeHwnd(), nullptr);
    EXPECT_EQ(pane.SubclassDlgItem(5, &top), 1);
    EXPECT_EQ(pane.GetWindowText(), "text");
}

TEST_F(AdvWndTest, SubclassingWithoutChildrenAnswersNoAndStands) {
    MakeControl();
    pane.children = 0;
    EXPECT_EQ(pane.SubclassDlgItem(5, &top), 0);
    EXPECT_NE(pane.GetSafeHwnd(), nullptr);
    EXPECT_EQ(top.GetDlgItem(5), &pane);
}

TEST_F(AdvWndTest, RegistersItsWindowClass) {
    CadvWnd::RegisterClass();
    WNDCLASS again;
    again.lpszClassName = "ADVANCED_WND";
    EXPECT_FALSE(RegisterClass(&again)) << "the name is taken";
    ASSERT_TRUE(pane.Create("ADVANCED_WND", "", WS_CHILD, {0, 0, 10, 10}, &top, 1));
    EXPECT_EQ(CadvWnd::DummyWndProc(pane.GetSafeHwnd(), WM_GETTEXTLENGTH, 0, 0), 0);
    pane.SetWindowText("four");
    EXPECT_EQ(CadvWnd::DummyWndProc(pane.GetSafeHwnd(), WM_GETTEXTLENGTH, 0, 0), 4);
}

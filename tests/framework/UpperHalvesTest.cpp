#include "tests/processor/UsedUpperHalves.h"

#include "framework/Constants.h"
#include "framework/FilmsApplication.h"
#include "framework/PaintDC.h"
#include "framework/Pump.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <vector>

namespace {

bool IsClean() {
    return processor::UpperHalvesInUse() == false;
}

/// A window whose handlers write down how they find the registers, and leave them in use.
class WatchingWnd : public CWnd {
public:
    std::vector<UINT> seen;
    std::vector<UINT> dirty; ///< messages that found the registers in use

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back(message);
        if (!IsClean()) {
            dirty.push_back(message);
        }
        const LRESULT result = CWnd::WindowProc(message, wParam, lParam);
        LeaveUpperHalvesInUse();
        return result;
    }
};

class UpperHalvesTest : public testing::Test {
protected:
    void SetUp() override {
        if (!processor::UpperHalvesInUse().has_value()) {
            GTEST_SKIP() << "this processor does not tell whether the upper halves are in use";
        }
        processor::ClearUpperHalves();
    }
    void Create() {
        window.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 200, 100}, nullptr, 0);
        inner.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {10, 10, 60, 60}, &window, 1);
        window.ShowWindow(SW_SHOW);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(window)));
        QCoreApplication::processEvents();
        window.dirty.clear();
        inner.dirty.clear();
    }
    bool Saw(UINT message) const { return std::ranges::find(inner.seen, message) != inner.seen.end(); }

    WatchingWnd window;
    WatchingWnd inner;
};

TEST_F(UpperHalvesTest, WhatWasLeftIsSeenAndCleared) {
    LeaveUpperHalvesInUse();
    EXPECT_EQ(processor::UpperHalvesInUse(), true);
    processor::ClearUpperHalves();
    EXPECT_EQ(processor::UpperHalvesInUse(), false);
}

TEST_F(UpperHalvesTest, HandlersOfEventsFindThemClean) {
    Create();
    QWidget* widget = NativeWidget(inner);
    const auto send = [widget](QEvent::Type type) {
        QMouseEvent event(type, QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        LeaveUpperHalvesInUse();
        QCoreApplication::sendEvent(widget, &event);
        EXPECT_TRUE(IsClean());
    };
    send(QEvent::MouseButtonPress);
    send(QEvent::MouseMove);
    send(QEvent::MouseButtonRelease);
    EXPECT_TRUE(Saw(WM_LBUTTONDOWN) && Saw(WM_MOUSEMOVE) && Saw(WM_LBUTTONUP));
    EXPECT_TRUE(inner.dirty.empty());
}

TEST_F(UpperHalvesTest, AnEventStraightToTheWindowIsClearedToo) {
    // A host may have an application of its own, which clears nothing.
    Create();
    QWidget* widget = NativeWidget(inner);
    QMouseEvent event(QEvent::MouseMove, QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    LeaveUpperHalvesInUse();
    static_cast<QObject*>(widget)->event(&event);
    EXPECT_TRUE(Saw(WM_MOUSEMOVE));
    EXPECT_TRUE(inner.dirty.empty());
}

TEST_F(UpperHalvesTest, PaintingLeavesThemClean) {
    Create();
    for (CWnd* painted : {static_cast<CWnd*>(&window), static_cast<CWnd*>(&inner)}) {
        painted->Invalidate();
        painted->UpdateWindow();
        EXPECT_TRUE(IsClean());
    }
    // The toolkit fills the background of the outer window before the inner one paints.
    window.Invalidate();
    inner.Invalidate();
    QTest::qWait(50);
    EXPECT_TRUE(Saw(WM_PAINT));
    EXPECT_TRUE(window.dirty.empty());
    EXPECT_TRUE(inner.dirty.empty());
    NativeWidget(window)->grab();
    EXPECT_TRUE(inner.dirty.empty());
}

TEST_F(UpperHalvesTest, PlacesAndSizesLeaveThemClean) {
    Create();
    window.MoveWindow(0, 0, 300, 200);
    EXPECT_TRUE(IsClean());
    inner.SetWindowPos(nullptr, 0, 0, 100, 90, SWP_NOZORDER);
    EXPECT_TRUE(IsClean());
    inner.ShowWindow(SW_HIDE);
    inner.ShowWindow(SW_SHOW);
    EXPECT_TRUE(IsClean());
    window.RedrawWindow();
    EXPECT_TRUE(IsClean());
    EXPECT_TRUE(window.dirty.empty());
    EXPECT_TRUE(inner.dirty.empty());
}

TEST_F(UpperHalvesTest, WhoPumpsGoesOnWithThemClean) {
    Create();
    QTimer::singleShot(0, LeaveUpperHalvesInUse);
    inner.SetTimer(1, 0);
    inner.Invalidate();
    MSG message;
    for (int i = 0; i < 20 && !(Saw(WM_TIMER) && Saw(WM_PAINT)); ++i) {
        PeekMessage(&message, nullptr, 0, 0, PM_REMOVE);
        EXPECT_TRUE(IsClean());
        QTest::qSleep(1);
    }
    EXPECT_TRUE(Saw(WM_TIMER) && Saw(WM_PAINT));
    EXPECT_TRUE(inner.dirty.empty());
}

TEST_F(UpperHalvesTest, AnExceptionInAHandlerLeavesThemClean) {
    auto* application = dynamic_cast<FilmsApplication*>(QCoreApplication::instance());
    ASSERT_NE(application, nullptr);
    application->SetExceptionReport([](const std::string&) {});
    class Thrower : public QObject {
        bool event(QEvent*) override {
            LeaveUpperHalvesInUse();
            throw 1;
        }
    } thrower;
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&thrower, &event);
    application->SetExceptionReport(nullptr);
    EXPECT_TRUE(IsClean());
}

/// By either route of drawing: straight into memory or through the toolkit's painter.
class UpperHalvesDrawingTest : public UpperHalvesTest, public testing::WithParamInterface<bool> {};

TEST_P(UpperHalvesDrawingTest, EachDrawingCallLeavesThemClean) {
    const HookScope scope;
    Hooks().paintersOnly = GetParam();
    CBitmap bitmap;
    CBitmap other;
    CDC dc;
    CDC source;
    dc.CreateCompatibleDC(nullptr);
    source.CreateCompatibleDC(nullptr);
    bitmap.CreateCompatibleBitmap(&dc, 200, 100);
    other.CreateCompatibleBitmap(&dc, 50, 50);
    dc.SelectObject(&bitmap);
    EXPECT_TRUE(IsClean()) << "select";
    source.SelectObject(&other);
    CPen pen(PS_SOLID, 2, 0x00FF00);
    CPen dashes(PS_DASH, 1, 0x0000FF);
    CBrush brush(0xFF0000);
    dc.SelectObject(&brush);
    dc.FillSolidRect({0, 0, 200, 100}, 0x808080);
    EXPECT_TRUE(IsClean()) << "fill";
    for (CPen* each : {&pen, &dashes}) {
        dc.SelectObject(each);
        dc.Rectangle(10, 10, 60, 60);
        EXPECT_TRUE(IsClean()) << "rectangle";
        dc.MoveTo(0, 0);
        dc.LineTo(100, 30);
        EXPECT_TRUE(IsClean()) << "line";
    }
    const CPoint corners[] = {{5, 5}, {50, 20}, {20, 80}};
    dc.Polygon(corners, 3);
    EXPECT_TRUE(IsClean()) << "polygon";
    dc.SetPixel(3, 3, 0xFFFFFF);
    EXPECT_TRUE(IsClean()) << "pixel";
    for (const int mode : {OPAQUE, TRANSPARENT}) {
        dc.SetBkMode(mode);
        dc.DrawText("Animation", CRect(5, 5, 150, 40), DT_SINGLELINE | DT_CENTER);
        EXPECT_TRUE(IsClean()) << "text";
        dc.TextOut(5, 60, "Robot");
        EXPECT_TRUE(IsClean()) << "text";
    }
    dc.BitBlt(0, 0, 50, 50, &source, 0, 0, SRCCOPY);
    EXPECT_TRUE(IsClean()) << "copy";
    dc.StretchBlt(0, 0, 120, 90, &source, 0, 0, 50, 50, SRCCOPY);
    EXPECT_TRUE(IsClean()) << "stretched copy";
    dc.BitBlt(0, 0, 50, 50, nullptr, 0, 0, BLACKNESS);
    EXPECT_TRUE(IsClean()) << "blackness";
}

INSTANTIATE_TEST_SUITE_P(Routes, UpperHalvesDrawingTest, testing::Bool());

} // namespace

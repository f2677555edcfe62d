#include "framework/Constants.h"
#include "framework/QtBridge.h"
#include "framework/Wnd.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

namespace {

constexpr quint32 kLeftAltSymbol = 0xFFE9;
constexpr quint32 kRightAltSymbol = 0xFFEA;

/// A window that asks for the control key while it is pressed and for the Alt keys while the mouse moves.
class AskingWindow : public CWnd {
public:
    short ctrlAtPress = 0;
    bool leftAlt = false;
    bool rightAlt = false;

protected:
    void OnLButtonDown(UINT /*flags*/, CPoint /*point*/) { ctrlAtPress = GetKeyState(VK_CONTROL); }
    void OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
        leftAlt = GetAsyncKeyState(VK_LMENU) < 0;
        rightAlt = GetAsyncKeyState(VK_RMENU) < 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(AskingWindow, CWnd)
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

class KeyStateTest : public ::testing::Test {
protected:
    void SetUp() override {
        top.Create(nullptr, "", WS_POPUP | WS_VISIBLE, {0, 0, 100, 100}, nullptr, 0);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(top)));
    }
    ~KeyStateTest() override { top.DestroyWindow(); }
    QWindow* Window() { return NativeWidget(top)->windowHandle(); }
    /// Tells which of the two keys it is; the toolkit's own key events don't.
    void PressAlt(quint32 symbol) {
        QTest::keyPress(Window(), Qt::Key_Alt, Qt::AltModifier);
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier, 0, symbol, 0);
        QCoreApplication::sendEvent(Window(), &event);
    }
    /// QTest's own moves tell the toolkit that no key is held.
    void Move(int x, int y, Qt::KeyboardModifiers held) {
        const QPointF place(x, y);
        QMouseEvent event(QEvent::MouseMove, place, Window()->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                          held);
        QCoreApplication::sendEvent(Window(), &event);
    }
    void ReleaseAlt() { QTest::keyRelease(Window(), Qt::Key_Alt, Qt::NoModifier); }

    AskingWindow top;
};

TEST_F(KeyStateTest, AltIsSeenWhileTheMouseMoves) {
    Move(10, 10, Qt::NoModifier);
    EXPECT_FALSE(top.leftAlt || top.rightAlt);
    PressAlt(kLeftAltSymbol);
    Move(12, 10, Qt::AltModifier);
    EXPECT_TRUE(top.leftAlt);
    EXPECT_FALSE(top.rightAlt);
    ReleaseAlt();
    Move(14, 10, Qt::NoModifier);
    EXPECT_FALSE(top.leftAlt || top.rightAlt);
}

TEST_F(KeyStateTest, RightAltIsAKeyOfItsOwn) {
    PressAlt(kRightAltSymbol);
    Move(12, 10, Qt::AltModifier);
    EXPECT_FALSE(top.leftAlt);
    EXPECT_TRUE(top.rightAlt);
    ReleaseAlt();
}

TEST_F(KeyStateTest, CtrlOfAPressIsThePressesOwn) {
    QTest::mousePress(Window(), Qt::LeftButton, Qt::ControlModifier, {10, 10});
    EXPECT_LT(top.ctrlAtPress, 0);
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, {10, 10});
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, {40, 10});
    EXPECT_EQ(top.ctrlAtPress, 0);
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, {40, 10});
}

} // namespace

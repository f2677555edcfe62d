#include "framework/Wnd.h"

#include "framework/Button.h"
#include "framework/PaintDC.h"
#include "framework/Pump.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <memory>
#include <sstream>
#include <vector>

namespace {

// Writes down what reaches it.
class Probe : public CWnd {
    DECLARE_DYNCREATE(Probe)
public:
    std::vector<std::string> log;
    COLORREF color = 0x00FF00;
    bool erased = false;
    bool eraseLeft = false;
    int paints = 0;

    std::string Log() {
        std::string all;
        for (const std::string& line : log) {
            all += (all.empty() ? "" : " ") + line;
        }
        log.clear();
        return all;
    }

protected:
    int OnCreate(CREATESTRUCT* cs) {
        log.push_back("create" + std::to_string(cs->id));
        return CWnd::OnCreate(cs);
    }
    void OnSize(UINT type, int w, int h) {
        CWnd::OnSize(type, w, h);
        log.push_back("size" + std::to_string(w) + "x" + std::to_string(h));
    }
    void OnDestroy() {
        CWnd::OnDestroy();
        log.emplace_back("destroy");
    }
    void OnLButtonDown(UINT flags, CPoint p) { Mouse("down", flags, p); }
    void OnLButtonUp(UINT flags, CPoint p) { Mouse("up", flags, p); }
    void OnLButtonDblClk(UINT flags, CPoint p) { Mouse("double", flags, p); }
    void OnRButtonDown(UINT flags, CPoint p) { Mouse("right", flags, p); }
    void OnMouseMove(UINT flags, CPoint p) { Mouse("move", flags, p); }
    BOOL OnMouseWheel(UINT flags, short delta, CPoint p) {
        log.push_back("wheel" + std::to_string(delta));
        return CWnd::OnMouseWheel(flags, delta, p);
    }
    void OnKeyDown(UINT key, UINT repeat, UINT flags) {
        log.push_back("key" + std::to_string(key) + (flags & 0x4000 ? "again" : ""));
        CWnd::OnKeyDown(key, repeat, flags);
    }
    void OnKeyUp(UINT key, UINT repeat, UINT flags) {
        if (key == VK_SPACE) {
            log.push_back("up" + std::to_string(key));
        }
        CWnd::OnKeyUp(key, repeat, flags);
    }
    void OnTimer(UINT_PTR id) {
        log.push_back("timer" + std::to_string(id));
        KillTimer(id);
    }
    void OnCaptureChanged(CWnd* next) { log.push_back(next ? "capturetaken" : "capturelost"); }
    void OnSetFocus(CWnd* old) {
        CWnd::OnSetFocus(old);
        log.emplace_back("focus");
    }
    void OnKillFocus(CWnd* next) {
        CWnd::OnKillFocus(next);
        log.emplace_back("blur");
    }
    void OnPaint() {
        CPaintDC dc(this);
        ++paints;
        eraseLeft = dc.ps.fErase != 0;
        CRect r;
        GetClientRect(&r);
        dc.FillSolidRect(r, color);
    }
    BOOL OnEraseBkgnd(CDC* /*dc*/) {
        erased = true;
        return FALSE;
    }
    LRESULT OnCustom(WPARAM w, LPARAM l) {
        log.push_back("custom" + std::to_string(w) + "," + std::to_string(l));
        return 77;
    }
    void OnCommand5() { log.emplace_back("command5"); }
    void OnRange(UINT id) { log.push_back("range" + std::to_string(id)); }

    DECLARE_MESSAGE_MAP()

private:
    void Mouse(const char* what, UINT flags, CPoint p) {
        std::ostringstream line;
        line << what << flags << "@" << p.x << "," << p.y;
        log.push_back(line.str());
    }
};

IMPLEMENT_DYNCREATE(Probe, CWnd)

BEGIN_MESSAGE_MAP(Probe, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_DESTROY()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_WM_MOUSEMOVE()
ON_WM_MOUSEWHEEL()
ON_WM_KEYDOWN()
ON_WM_KEYUP()
ON_WM_TIMER()
ON_WM_CAPTURECHANGED()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_MESSAGE(WM_USER + 1, &Probe::OnCustom)
ON_COMMAND(5, &Probe::OnCommand5)
ON_COMMAND_RANGE(10, 12, &Probe::OnRange)
END_MESSAGE_MAP()

constexpr DWORD kTop = WS_POPUP | WS_CAPTION;

class WndTest : public testing::Test {
protected:
    WndTest() { top.Create(nullptr, "top", kTop, {100, 100, 300, 250}, nullptr, 0); }

    void Show() {
        top.ShowWindow(SW_SHOW);
        ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
        QTest::mouseMove(Window(), QPoint(199, 149)); // no button is held, whatever the test before has pressed
        QCoreApplication::processEvents();
        top.log.clear();
        child.log.clear();
    }
    void MakeChild(DWORD style = WS_CHILD | WS_VISIBLE) {
        child.Create(nullptr, nullptr, style, {10, 20, 60, 70}, &top, 33);
    }
    QWindow* Window() { return NativeWidget(top)->windowHandle(); }

    Probe top;
    Probe child;
};

// Made before the application and destroyed after it: neither may touch the toolkit.
struct StaticHolder {
    Probe window;
    CFont font;
    CBitmap bitmap;
} holder;

TEST(StaticWndTest, WindowOfAStaticObjectOutlivesNothing) {
    ASSERT_TRUE(holder.window.Create(nullptr, "", kTop, {0, 0, 10, 10}, nullptr, 0));
    EXPECT_TRUE(IsWindow(holder.window.GetSafeHwnd()));
}

TEST_F(WndTest, CreationSendsCreateThenSize) {
    EXPECT_EQ(top.Log(), "create0 size200x150");
    MakeChild();
    EXPECT_EQ(child.Log(), "create33 size50x50");
    EXPECT_EQ(child.GetParent(), &top);
    EXPECT_EQ(top.GetDlgItem(33), &child);
    EXPECT_EQ(top.GetDlgItem(34), nullptr);
    EXPECT_EQ(CWnd::FromHandle(child.GetSafeHwnd()), &child);
}

TEST_F(WndTest, ChildNeedsAParent) {
    Probe orphan;
    EXPECT_FALSE(orphan.Create(nullptr, nullptr, WS_CHILD, {0, 0, 1, 1}, nullptr, 1));
    EXPECT_FALSE(orphan.GetSafeHwnd());
    EXPECT_EQ(orphan.Log(), "");
}

TEST_F(WndTest, MoveWindowSendsSizeAtOnceWhileHidden) {
    MakeChild(WS_CHILD);
    child.log.clear();
    child.MoveWindow(0, 0, 80, 40);
    EXPECT_EQ(child.Log(), "size80x40");
    child.MoveWindow(5, 5, 80, 40);
    EXPECT_EQ(child.Log(), "");
    child.SetWindowPos(nullptr, 0, 0, 20, 30, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(child.Log(), "size20x30");
    CRect r;
    child.GetClientRect(&r);
    EXPECT_EQ(r, CRect(0, 0, 20, 30));
    child.MoveWindow(0, 0, 0, 0);
    EXPECT_EQ(child.Log(), "size0x0");
}

TEST_F(WndTest, ShowingDoesNotRepeatTheSize) {
    MakeChild();
    child.MoveWindow(0, 0, 80, 40);
    child.log.clear();
    top.log.clear();
    top.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(top)));
    QCoreApplication::processEvents();
    EXPECT_EQ(child.Log(), "");
    EXPECT_TRUE(child.IsWindowVisible());
    child.ShowWindow(SW_HIDE);
    EXPECT_FALSE(child.IsWindowVisible());
}

TEST_F(WndTest, DestroyReachesChildrenAndKeepsTheObjects) {
    MakeChild();
    top.log.clear();
    child.log.clear();
    EXPECT_TRUE(top.DestroyWindow());
    EXPECT_EQ(top.Log(), "destroy");
    EXPECT_EQ(child.Log(), "destroy");
    EXPECT_FALSE(child.GetSafeHwnd());
    EXPECT_FALSE(top.DestroyWindow());
    EXPECT_TRUE(top.Create(nullptr, "again", kTop, {0, 0, 20, 20}, nullptr, 0));
}

TEST_F(WndTest, HostDeletingTheWidgetTellsTheObject) {
    MakeChild();
    top.log.clear();
    child.log.clear();
    delete NativeWidget(top);
    EXPECT_EQ(top.Log(), "destroy");
    EXPECT_EQ(child.Log(), "destroy");
    EXPECT_FALSE(top.GetSafeHwnd());
}

TEST_F(WndTest, MessagesReachHandlersWithAndWithoutAWindow) {
    Probe bare;
    EXPECT_EQ(bare.SendMessage(WM_USER + 1, 3, 4), 77);
    bare.SendMessage(WM_COMMAND, 5);
    bare.SendMessage(WM_COMMAND, 11);
    bare.SendMessage(WM_COMMAND, 13);
    bare.SendMessage(WM_COMMAND, MAKEWPARAM(5, 1));
    bare.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(-3, 7));
    EXPECT_EQ(bare.Log(), "custom3,4 command5 range11 down5@-3,7");
}

TEST_F(WndTest, PostedMessageArrivesLater) {
    top.log.clear();
    EXPECT_TRUE(top.PostMessage(WM_USER + 1, 1, 2));
    EXPECT_EQ(top.Log(), "");
    QCoreApplication::processEvents();
    EXPECT_EQ(top.Log(), "custom1,2");
}

TEST_F(WndTest, PostedMessageToADestroyedWindowIsDropped) {
    MakeChild();
    child.log.clear();
    child.PostMessage(WM_USER + 1, 1, 2);
    child.DestroyWindow();
    child.log.clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(child.Log(), "");
}

TEST_F(WndTest, MouseReachesTheChildInItsOwnCoordinates) {
    MakeChild();
    Show();
    QTest::mousePress(Window(), Qt::LeftButton, Qt::ControlModifier, QPoint(15, 26));
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    EXPECT_NE(child.Log().find("down9@5,6 up0@5,6"), std::string::npos);
    EXPECT_EQ(top.Log().find("down"), std::string::npos);
}

TEST_F(WndTest, DoubleClickIsDownUpDoubleUp) {
    MakeChild();
    Show();
    QTest::mouseDClick(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    std::string clicks;
    for (const std::string& line : child.log) {
        if (line.find("move") == std::string::npos) {
            clicks += line.substr(0, line.find('@')) + " ";
        }
    }
    EXPECT_EQ(clicks, "down1 up0 double1 up0 ");
}

TEST_F(WndTest, DragOutsideGivesNegativeCoordinates) {
    MakeChild();
    Show();
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    child.SetCapture();
    child.log.clear();
    QTest::mouseMove(Window(), QPoint(2, 3));
    EXPECT_EQ(child.Log(), "move1@-8,-17");
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 3));
    EXPECT_EQ(child.Log(), "up0@-8,-17 capturelost");
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(WndTest, CaptureBringsTheMouseOfOtherWindows) {
    MakeChild();
    Show();
    child.SetCapture();
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    EXPECT_NE(child.Log().find("down1@90,80"), std::string::npos);
    EXPECT_EQ(top.Log().find("down"), std::string::npos);
    top.SetCapture();
    EXPECT_EQ(child.Log(), "capturetaken");
    ReleaseCapture();
    EXPECT_EQ(top.Log(), "capturelost");
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
}

TEST_F(WndTest, CaptureEndsWhenTheMouseComesBackWithoutItsButton) {
    MakeChild();
    Show();
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    child.SetCapture();
    child.log.clear();
    top.log.clear();
    // The release went to a window of another program.
    QMouseEvent back(QEvent::MouseMove, QPointF(2, 3), Window()->mapToGlobal(QPointF(2, 3)), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(Window(), &back);
    // The toolkit hands the window of the press all moves until it sees a release; no button is in them.
    EXPECT_EQ(child.Log(), "capturelost move0@-8,-17");
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 3));
}

// Keeps a window's releases to itself, as a box does that comes up in mid-press.
class ReleaseThief : public QObject {
public:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        return receiver->isWindowType() && event->type() == QEvent::MouseButtonRelease;
    }
};

TEST_F(WndTest, PressWhoseReleaseWentElsewhereDoesNotEndTheNextCapture) {
    MakeChild();
    Show();
    QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    {
        ReleaseThief thief;
        Window()->installEventFilter(&thief);
        QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    }
    child.SetCapture();
    child.log.clear();
    QTest::mouseMove(Window(), QPoint(101, 100));
    EXPECT_EQ(child.Log(), "move0@91,80");
    EXPECT_EQ(CWnd::GetCapture(), &child);
    ReleaseCapture();
}

TEST_F(WndTest, CaptureEndsWithItsWindow) {
    MakeChild();
    child.SetCapture();
    child.DestroyWindow();
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    MakeChild();
    child.SetCapture();
    child.EnableWindow(FALSE);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(WndTest, UnhandledWheelGoesToTheParent) {
    MakeChild();
    CWnd plain;
    plain.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 50, 50}, &child, 1);
    Show();
    QWheelEvent wheel(QPointF(15, 26), NativeWidget(top)->mapToGlobal(QPointF(15, 26)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(Window(), &wheel);
    EXPECT_EQ(child.Log(), "wheel-120");
    EXPECT_EQ(top.Log(), "wheel-120");
}

TEST_F(WndTest, WheelOverAButtonReachesTheTopWindow) {
    MakeChild();
    CButton button;
    button.Create("+", WS_CHILD | WS_VISIBLE, {0, 0, 50, 50}, &child, 1);
    Show();
    const auto turn = [this] {
        QWheelEvent wheel(QPointF(15, 26), NativeWidget(top)->mapToGlobal(QPointF(15, 26)), QPoint(),
                          QPoint(0, 120), Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Window(), &wheel);
        return top.Log();
    };
    EXPECT_EQ(turn(), "wheel120");
    button.EnableWindow(FALSE);
    EXPECT_EQ(turn(), "wheel120") << "a disabled button does not swallow it";
    child.EnableWindow(FALSE);
    EXPECT_EQ(turn(), "wheel120");
}

TEST_F(WndTest, KeysReachTheFocusWindowWithTheirNumbers) {
    MakeChild();
    Show();
    child.SetFocus();
    EXPECT_EQ(child.Log(), "focus");
    EXPECT_EQ(CWnd::GetFocus(), &child);
    QTest::keyClick(Window(), Qt::Key_F2);
    QTest::keyClick(Window(), Qt::Key_Home);
    QTest::keyClick(Window(), Qt::Key_Space);
    QTest::keyClick(Window(), Qt::Key_A);
    EXPECT_EQ(child.Log(), "key113 key36 key32 up32 key65");
    EXPECT_EQ(top.Log().find("key"), std::string::npos);
    top.SetFocus();
    EXPECT_EQ(child.Log(), "blur");
}

TEST_F(WndTest, HeldKeyGoesDownAgainAndComesUpOnce) {
    Show();
    top.SetFocus();
    top.log.clear();
    const auto send = [this](QEvent::Type type, bool repeat) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, " ", repeat);
        QCoreApplication::sendEvent(Window(), &event);
    };
    send(QEvent::KeyPress, false);
    send(QEvent::KeyRelease, true);
    send(QEvent::KeyPress, true);
    EXPECT_LT(GetKeyState(VK_SPACE), 0);
    send(QEvent::KeyRelease, false);
    EXPECT_EQ(GetKeyState(VK_SPACE), 0);
    EXPECT_EQ(top.Log(), "key32 key32again up32");
}

TEST_F(WndTest, TimerMayHaveTheNumberZero) {
    top.log.clear();
    EXPECT_NE(top.SetTimer(0, 1), 0U);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !top.log.empty(); }));
    EXPECT_EQ(top.Log(), "timer0");
}

TEST_F(WndTest, ClickDoesNotTakeTheFocus) {
    MakeChild();
    Show();
    top.SetFocus();
    QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    EXPECT_EQ(CWnd::GetFocus(), &top);
}

TEST_F(WndTest, TimerTicksUntilKilledAndRestarts) {
    top.log.clear();
    EXPECT_EQ(top.SetTimer(4, 1), 4U);
    EXPECT_EQ(top.SetTimer(4, 2), 4U);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !top.log.empty(); }));
    QTest::qWait(10);
    EXPECT_EQ(top.Log(), "timer4");
    EXPECT_FALSE(top.KillTimer(4));
    Probe bare;
    EXPECT_EQ(bare.SetTimer(1, 1), 0U);
}

TEST_F(WndTest, TimerThatIsDueIsDroppedWhenKilledOrStartedAnew) {
    constexpr UINT kHour = 3600000;
    top.SetTimer(1, 1);
    top.SetTimer(2, 1);
    top.SetTimer(3, 1);
    // Both are due when the messages are looked at again.
    QTest::qSleep(20);
    top.log.clear();
    EXPECT_TRUE(top.KillTimer(1));
    EXPECT_EQ(top.SetTimer(2, kHour), 2U);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !top.log.empty(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(top.Log(), "timer3");
    EXPECT_TRUE(top.KillTimer(2));
}

TEST_F(WndTest, TimerOfMoreThanTheToolkitsLongestNeverFires) {
    top.log.clear();
    EXPECT_EQ(top.SetTimer(5, 0xFFFFFFFF), 5U);
    QCoreApplication::processEvents();
    EXPECT_EQ(top.Log(), "");
    EXPECT_TRUE(top.KillTimer(5));
}

TEST_F(WndTest, TimersEndWithTheirWindow) {
    MakeChild();
    child.SetTimer(1, 1);
    QTest::qSleep(20);
    child.DestroyWindow();
    child.log.clear();
    top.SetTimer(3, 1);
    top.log.clear();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !top.log.empty(); }));
    EXPECT_EQ(child.Log(), "");
    EXPECT_FALSE(child.KillTimer(1));
}

TEST_F(WndTest, InvalidationIsCoalescedAndAsksToErase) {
    Show();
    top.paints = 0;
    top.erased = false;
    top.Invalidate(FALSE);
    top.InvalidateRect(nullptr, FALSE);
    QCoreApplication::processEvents();
    EXPECT_EQ(top.paints, 1);
    EXPECT_FALSE(top.erased);
    EXPECT_FALSE(top.eraseLeft);
    top.Invalidate(TRUE);
    EXPECT_TRUE(top.GetUpdateRect(nullptr));
    top.UpdateWindow();
    EXPECT_EQ(top.paints, 2);
    EXPECT_TRUE(top.erased);
    EXPECT_TRUE(top.eraseLeft);
    EXPECT_FALSE(top.GetUpdateRect(nullptr));
}

TEST_F(WndTest, PaintsItsColourOverTheWholeWindow) {
    Show();
    top.color = 0x0000FF;
    top.RedrawWindow();
    EXPECT_EQ(NativeWidget(top)->grab().toImage().pixelColor(199, 149), QColor(255, 0, 0));
}

// Moves and shows its child whenever it paints.
class Arranger : public Probe {
public:
    Probe* child = nullptr;
    CRect place;
    CRect seen;

protected:
    void OnPaint() {
        CPaintDC dc(this);
        ++paints;
        child->MoveWindow(place);
        child->ShowWindow(SW_SHOW);
        child->Invalidate();
        child->GetClientRect(&seen);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Arranger, Probe)
ON_WM_PAINT()
END_MESSAGE_MAP()

TEST_F(WndTest, PaintingMayArrangeChildrenWithoutLooping) {
    Arranger arranger;
    arranger.child = &child;
    arranger.place = {5, 5, 45, 25};
    arranger.Create(nullptr, "", kTop, {0, 0, 100, 100}, nullptr, 0);
    child.Create(nullptr, nullptr, WS_CHILD, {0, 0, 10, 10}, &arranger, 1);
    child.log.clear();
    arranger.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(arranger)));
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(arranger.seen, CRect(0, 0, 40, 20));
    EXPECT_EQ(child.Log(), "size40x20");
    EXPECT_TRUE(child.IsWindowVisible());
    EXPECT_EQ(NativeWidget(child)->geometry(), QRect(5, 5, 40, 20));
    EXPECT_LE(arranger.paints, 5);
    EXPECT_GE(child.paints, 1);
}

// Asks for its button's painting and places it anew whenever it paints itself.
class ButtonKeeper : public Probe {
public:
    CButton button;
    CRect place{20, 20, 60, 40};

protected:
    void OnPaint() {
        CPaintDC dc(this);
        ++paints;
        button.MoveWindow(place);
        button.ShowWindow(SW_SHOW);
        button.Invalidate(paints % 2);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ButtonKeeper, Probe)
ON_WM_PAINT()
END_MESSAGE_MAP()

TEST_F(WndTest, AskingForATransparentChildWhilePaintingEnds) {
    ButtonKeeper keeper;
    keeper.Create(nullptr, "", kTop, {0, 0, 100, 100}, nullptr, 0);
    keeper.button.Create("+", WS_CHILD | WS_VISIBLE, {0, 0, 10, 10}, &keeper, 1);
    keeper.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(keeper)));
    const auto settle = [&keeper] {
        for (int before = -1; before != keeper.paints && keeper.paints < 100;) {
            before = keeper.paints;
            // A repaint is asked for within a few milliseconds.
            QTest::qWait(30);
        }
        return keeper.paints;
    };
    EXPECT_LT(settle(), 10);
    // A part of it next to, over and across the button.
    for (const CRect& part : {CRect(70, 70, 80, 80), CRect(25, 25, 30, 30), CRect(0, 0, 40, 30)}) {
        keeper.paints = 0;
        keeper.InvalidateRect(&part);
        EXPECT_LE(settle(), 3);
        EXPECT_GE(keeper.paints, 1);
    }
    keeper.paints = 0;
    keeper.place = {40, 40, 80, 60};
    keeper.Invalidate();
    EXPECT_LE(settle(), 4);
    EXPECT_EQ(NativeWidget(keeper.button)->geometry(), QRect(40, 40, 40, 20));
}

TEST_F(WndTest, DisabledChildLeavesTheClickToItsParent) {
    MakeChild();
    Show();
    EXPECT_FALSE(child.EnableWindow(FALSE));
    EXPECT_FALSE(child.IsWindowEnabled());
    QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    EXPECT_EQ(child.Log().find("down"), std::string::npos);
    EXPECT_NE(top.Log().find("down1@15,26"), std::string::npos);
    EXPECT_TRUE(child.EnableWindow(TRUE));
}

TEST_F(WndTest, DisabledButtonLeavesTheClickToItsParent) {
    MakeChild();
    CButton button;
    button.Create("+", WS_CHILD | WS_VISIBLE | WS_DISABLED, {0, 0, 50, 50}, &child, 1);
    Show();
    QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(15, 26));
    EXPECT_NE(child.Log().find("down1@5,6"), std::string::npos);
}

class SelfDeleting : public Probe {
public:
    explicit SelfDeleting(bool& flag) : gone(flag) {}
    ~SelfDeleting() override { gone = true; }

protected:
    void PostNcDestroy() override { delete this; }
    LRESULT OnDie(WPARAM, LPARAM) {
        DestroyWindow();
        return 1;
    }
    DECLARE_MESSAGE_MAP()

private:
    bool& gone;
};

BEGIN_MESSAGE_MAP(SelfDeleting, Probe)
ON_MESSAGE(WM_USER + 9, &SelfDeleting::OnDie)
END_MESSAGE_MAP()

TEST_F(WndTest, ObjectMayDeleteItselfInsideItsMessage) {
    bool gone = false;
    auto* window = new SelfDeleting(gone);
    window->Create(nullptr, "", kTop | WS_VISIBLE, {0, 0, 50, 50}, nullptr, 0);
    EXPECT_EQ(window->SendMessage(WM_USER + 9), 1);
    EXPECT_TRUE(gone);
}

TEST_F(WndTest, CloseDestroysByDefault) {
    Show();
    NativeWidget(top)->close();
    EXPECT_EQ(top.Log().find("destroy") != std::string::npos, true);
    EXPECT_FALSE(top.GetSafeHwnd());
}

TEST_F(WndTest, PopupFloatsWithoutTakingTheFocus) {
    Show();
    top.SetFocus();
    Probe popup;
    popup.Create("STATIC", "", WS_POPUP, {400, 300, 600, 450}, &top, 0);
    EXPECT_FALSE(popup.IsWindowVisible());
    popup.SetWindowPos(nullptr, 420, 320, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    popup.ShowWindow(SW_SHOWNOACTIVATE);
    QCoreApplication::processEvents();
    EXPECT_TRUE(popup.IsWindowVisible());
    EXPECT_EQ(CWnd::GetFocus(), &top);
    CRect r;
    popup.GetWindowRect(&r);
    EXPECT_EQ(r, CRect(420, 320, 620, 470));
    EXPECT_EQ(popup.GetParent(), &top);
}

TEST_F(WndTest, PopupShownAsActiveLeavesTheFocusAlone) {
    Show();
    top.SetFocus();
    Probe popup;
    popup.Create("STATIC", "tip", WS_POPUP | WS_VISIBLE, {400, 300, 600, 450}, &top, 0);
    popup.SetWindowPos(nullptr, 10, 20, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
    popup.ShowWindow(SW_SHOW);
    QCoreApplication::processEvents();
    EXPECT_TRUE(popup.IsWindowVisible());
    EXPECT_EQ(CWnd::GetActiveWindow(), &top);
    EXPECT_EQ(CWnd::GetFocus(), &top);
    EXPECT_EQ(top.Log().find("blur"), std::string::npos);
}

TEST_F(WndTest, PopupGoesWithItsOwnerAndIsNoneOfItsChildren) {
    MakeChild();
    Probe popup;
    popup.Create("STATIC", "", WS_POPUP, {400, 300, 600, 450}, &top, 33);
    EXPECT_EQ(top.GetDlgItem(33), &child);
    EXPECT_EQ(top.GetWindowChild(0), &child);
    EXPECT_EQ(top.GetWindowChild(1), nullptr);
    popup.log.clear();
    top.DestroyWindow();
    EXPECT_EQ(popup.Log(), "destroy");
    EXPECT_FALSE(popup.GetSafeHwnd());
}

TEST_F(WndTest, WindowThatStaysInPlaceIsNotPaintedAgain) {
    MakeChild();
    Show();
    child.paints = 0;
    child.MoveWindow(10, 20, 50, 50);
    QCoreApplication::processEvents();
    EXPECT_FALSE(child.GetUpdateRect(nullptr));
    EXPECT_EQ(child.paints, 0);
    child.MoveWindow(10, 20, 60, 50);
    EXPECT_TRUE(child.GetUpdateRect(nullptr));
}

TEST_F(WndTest, ScreenAndClientPointsConvertBothWays) {
    MakeChild();
    Show();
    CPoint p(3, 4);
    child.ClientToScreen(&p);
    CRect r;
    top.GetWindowRect(&r);
    EXPECT_EQ(p, CPoint(r.left + 13, r.top + 24));
    child.ScreenToClient(&p);
    EXPECT_EQ(p, CPoint(3, 4));
}

// Keeps itself at least 150 wide by moving the edge that is dragged.
class Sizer : public Probe {
public:
    std::vector<UINT> sides;

protected:
    void OnSizing(UINT side, CRect* rect) {
        sides.push_back(side);
        if (rect->Width() < 150) {
            rect->right = rect->left + 150;
        }
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Sizer, Probe)
ON_WM_SIZING()
END_MESSAGE_MAP()

TEST_F(WndTest, SizingByTheUserIsCorrectedByTheWindow) {
    Sizer sizer;
    sizer.Create(nullptr, "", kTop | WS_THICKFRAME | WS_VISIBLE, {50, 50, 250, 150}, nullptr, 0);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(sizer)));
    sizer.MoveWindow(50, 50, 120, 100);
    EXPECT_TRUE(sizer.sides.empty()) << "a program may make it smaller";
    sizer.MoveWindow(50, 50, 200, 100);
    // The window system changes the window itself, as when its edge is dragged.
    NativeWidget(sizer)->windowHandle()->resize(100, 100);
    ASSERT_TRUE(QTest::qWaitFor([&sizer] { return !sizer.sides.empty(); }));
    EXPECT_EQ(sizer.sides.front(), 2U);
    CRect r;
    sizer.GetClientRect(&r);
    EXPECT_EQ(r.Width(), 150);
}

TEST_F(WndTest, ClassProcedureGetsWhatTheWindowLeavesOver) {
    static UINT last = 0;
    const WNDCLASS windowClass{0x400B,
                               [](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
                                   last = message;
                                   return 5;
                               },
                               nullptr, "TEST_CLASS"};
    EXPECT_TRUE(RegisterClass(&windowClass));
    EXPECT_FALSE(RegisterClass(&windowClass));
    CWnd window;
    ASSERT_TRUE(window.Create("TEST_CLASS", "", WS_CHILD, {0, 0, 5, 5}, &top, 9));
    EXPECT_EQ(window.SendMessage(WM_USER + 40), 5);
    EXPECT_EQ(last, WM_USER + 40);
}

TEST_F(WndTest, KeyStateHookAnswersBeforeTheKeyboard) {
    const HookScope scope;
    EXPECT_EQ(GetKeyState(VK_CONTROL), 0);
    Hooks().keyState = [](int key) -> std::optional<bool> {
        return key == VK_LMENU ? std::optional(true) : std::nullopt;
    };
    EXPECT_LT(GetAsyncKeyState(VK_LMENU), 0);
    EXPECT_EQ(GetAsyncKeyState(VK_RMENU), 0);
}

TEST(ObjectTest, RunTimeClassesCreateAndTellTheirKin) {
    EXPECT_STREQ(RUNTIME_CLASS(Probe)->className, "Probe");
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(Probe)->CreateObject());
    EXPECT_EQ(made->GetRuntimeClass(), Probe::GetThisClass());
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CWnd)));
    EXPECT_FALSE(made->IsKindOf(RUNTIME_CLASS(CDC)));
    EXPECT_EQ(RUNTIME_CLASS(CDC)->CreateObject(), nullptr);
}

} // namespace

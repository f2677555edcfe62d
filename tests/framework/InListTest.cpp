// Controls as children of a list, where editors of its rows stand.
#include "framework/Button.h"
#include "framework/ComboBox.h"
#include "framework/DataExchange.h"
#include "framework/Dialog.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/TestHooks.h"
#include "TestResources.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QWheelEvent>

#include <functional>
#include <string>
#include <vector>

namespace {

// Writes down what reaches a control, and lets the test act when the focus goes.
template <class Control> class Tracing : public Control {
public:
    std::string log;
    std::function<void()> onKillFocus;

    std::string Log() { return std::exchange(log, {}); }

protected:
    void OnSetFocus(CWnd* old) {
        Control::OnSetFocus(old);
        log += "in ";
    }
    void OnKillFocus(CWnd* next) {
        Control::OnKillFocus(next);
        log += "out ";
        if (onKillFocus) {
            onKillFocus();
        }
    }
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) {
        log += "wheel" + std::to_string(delta) + " ";
        return Control::OnMouseWheel(flags, delta, point);
    }
    void OnLButtonDown(UINT flags, CPoint point) {
        log += "down ";
        Control::OnLButtonDown(flags, point);
    }
    void OnMove(int x, int y) {
        Control::OnMove(x, y);
        log += "move ";
    }

    const MessageMap* GetMessageMap() const override { return GetThisMessageMap(); }
    // The macros that open a map know no templates.
    static const MessageMap* GetThisMessageMap() {
        using ThisClass = Tracing;
        using BaseClass = Control;
        static constexpr MessageEntry entries[] = {ON_WM_SETFOCUS() ON_WM_KILLFOCUS() ON_WM_MOUSEWHEEL()
                                                       ON_WM_LBUTTONDOWN() ON_WM_MOVE() message_map::kEnd};
        static const MessageMap map{BaseClass::GetThisMessageMap(), entries, std::size(entries) - 1};
        return &map;
    }
};

class InListDlg : public CDialog {
public:
    CListBox list;
    CEdit first;
    int oks = 0;
    int cancels = 0;

protected:
    void DoDataExchange(CDataExchange* dx) override {
        CDialog::DoDataExchange(dx);
        DDX_Control(dx, 1782, list);
        DDX_Control(dx, 1758, first);
    }
    void OnOK() override { ++oks; }
    void OnCancel() override { ++cancels; }
};

constexpr CRect kPlace(4, 12, 74, 34);

class InListTest : public testing::Test {
protected:
    InListTest() {
        dlg.Create(1749);
        for (int i = 0; i < 50; ++i) {
            dlg.list.AddString("row " + std::to_string(i));
        }
        edit.Create(WS_CHILD | ES_AUTOHSCROLL, {0, 0, 10, 10}, &dlg.list, 0);
        combo.Create(WS_CHILD | CBS_DROPDOWN, {0, 0, 10, 10}, &dlg.list, 1);
        button.Create("...", WS_CHILD | BS_PUSHBUTTON, {0, 0, 10, 10}, &dlg.list, 2);
        dlg.ShowWindow(SW_SHOW);
        EXPECT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dlg)));
        dlg.first.SetFocus();
    }

    void Place(CWnd& control) {
        control.MoveWindow(kPlace);
        control.BringWindowToTop();
        control.ShowWindow(SW_SHOW);
    }
    QWindow* Window() { return NativeWidget(dlg)->windowHandle(); }
    // A point of the list's client area in the dialog's.
    QPoint InDialog(CPoint inList) {
        dlg.list.ClientToScreen(&inList);
        dlg.ScreenToClient(&inList);
        return {inList.x, inList.y};
    }
    void Click(CPoint inList) {
        QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, InDialog(inList));
    }
    // A notch down with the pointer there.
    void Wheel(CPoint inList) {
        const QPointF local = InDialog(inList);
        QWheelEvent wheel(local, NativeWidget(dlg)->mapToGlobal(local), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(Window(), &wheel);
    }
    CRect PlaceOf(const CWnd& control) {
        CRect r;
        control.GetWindowRect(&r);
        dlg.list.ScreenToClient(&r);
        return r;
    }

    ResourceScope scope{TestResources()};
    HookScope hooks;
    InListDlg dlg;
    Tracing<CEdit> edit;
    Tracing<CComboBox> combo;
    Tracing<CButton> button;
};

TEST_F(InListTest, ControlsBelongToTheListAndStandInItsClientArea) {
    for (CWnd* control : std::initializer_list<CWnd*>{&edit, &combo, &button}) {
        EXPECT_FALSE(control->IsWindowVisible());
        EXPECT_EQ(control->GetParent(), &dlg.list);
        EXPECT_EQ(dlg.list.GetDlgItem(control->GetDlgCtrlID()), control);
        Place(*control);
        EXPECT_TRUE(control->IsWindowVisible());
        EXPECT_EQ(PlaceOf(*control).TopLeft(), kPlace.TopLeft());
        control->ShowWindow(SW_HIDE);
        EXPECT_FALSE(control->IsWindowVisible());
    }
    EXPECT_EQ(PlaceOf(edit), kPlace);
    EXPECT_EQ(PlaceOf(button), kPlace);
    dlg.ShowWindow(SW_HIDE);
    edit.ShowWindow(SW_SHOW);
    EXPECT_FALSE(edit.IsWindowVisible()) << "the dialog is hidden";
}

TEST_F(InListTest, ControlsStayInPlaceWhenTheListScrolls) {
    Place(edit);
    edit.Log();
    dlg.list.SetTopIndex(7);
    EXPECT_EQ(dlg.list.GetTopIndex(), 7);
    EXPECT_EQ(PlaceOf(edit), kPlace);
    Wheel({80, 5});
    EXPECT_GT(dlg.list.GetTopIndex(), 7);
    dlg.list.ResetContent();
    EXPECT_EQ(PlaceOf(edit), kPlace);
    EXPECT_EQ(edit.Log(), "") << "no WM_MOVE";
}

TEST_F(InListTest, ScrolledRowsAreDrawnAnewAroundAControl) {
    Place(edit);
    QCoreApplication::processEvents();
    dlg.list.SetTopIndex(3);
    QCoreApplication::processEvents();
    const QImage scrolled = NativeWidget(dlg.list)->grab().toImage();
    edit.ShowWindow(SW_HIDE);
    dlg.list.SetTopIndex(0);
    dlg.list.SetTopIndex(3);
    edit.ShowWindow(SW_SHOW);
    QCoreApplication::processEvents();
    EXPECT_EQ(NativeWidget(dlg.list)->grab().toImage(), scrolled);
}

TEST_F(InListTest, TopmostControlGetsTheMouse) {
    Place(edit);
    Place(button);
    Click({40, 20});
    EXPECT_EQ(button.Log(), "move in down ");
    EXPECT_EQ(edit.Log(), "move ");
    edit.BringWindowToTop();
    Click({40, 20});
    EXPECT_EQ(edit.Log(), "in down ");
    EXPECT_EQ(button.Log(), "out ");
    EXPECT_EQ(CWnd::GetFocus(), &edit);
}

TEST_F(InListTest, FocusGoesInAndOutByProgramAndByUser) {
    Place(edit);
    edit.Log();
    edit.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &edit);
    EXPECT_EQ(edit.Log(), "in ");
    QTest::keyClicks(NativeWidget(edit), "12");
    EXPECT_EQ(edit.GetWindowText(), "12");
    Click({10, 3});
    EXPECT_EQ(CWnd::GetFocus(), &dlg.list);
    EXPECT_EQ(edit.Log(), "out ");
    Place(combo);
    combo.Log();
    combo.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &combo);
    dlg.first.SetFocus();
    EXPECT_EQ(combo.Log(), "in out ");
}

TEST_F(InListTest, WheelGoesToTheControlUnderThePointerWithoutItsFocus) {
    combo.AddString("a");
    combo.AddString("b");
    combo.SetCurSel(0);
    for (CWnd* control : std::initializer_list<CWnd*>{&edit, &combo, &button}) {
        Place(*control);
        edit.Log();
        combo.Log();
        button.Log();
        Wheel({40, 20});
        EXPECT_EQ(edit.Log() + combo.Log() + button.Log(), "wheel-120 ");
        EXPECT_EQ(CWnd::GetFocus(), &dlg.first);
        EXPECT_EQ(dlg.list.GetTopIndex(), 0);
        control->ShowWindow(SW_HIDE);
    }
    EXPECT_EQ(combo.GetCurSel(), 0);
}

TEST_F(InListTest, ControlMayHideItselfWhenTheFocusGoes) {
    for (CWnd* control : std::initializer_list<CWnd*>{&edit, &combo, &button}) {
        const auto hide = [control] { control->ShowWindow(SW_HIDE); };
        edit.onKillFocus = hide;
        combo.onKillFocus = hide;
        button.onKillFocus = hide;
        Place(*control);
        control->SetFocus();
        dlg.first.SetFocus();
        EXPECT_FALSE(control->IsWindowVisible());
        EXPECT_EQ(CWnd::GetFocus(), &dlg.first);
        Place(*control);
        control->SetFocus();
        Click({10, 3});
        EXPECT_FALSE(control->IsWindowVisible());
        EXPECT_EQ(CWnd::GetFocus(), &dlg.list);
        Place(*control);
        control->SetFocus();
        control->ShowWindow(SW_HIDE);
        EXPECT_FALSE(control->IsWindowVisible());
        EXPECT_EQ((edit.Log() + combo.Log() + button.Log()), "move in out in out in out ");
    }
}

TEST_F(InListTest, ControlHidByOneThatFollowsKeepsTheNewFocus) {
    Place(edit);
    edit.SetFocus();
    edit.onKillFocus = [this] { edit.ShowWindow(SW_HIDE); };
    Place(combo);
    combo.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &combo);
    EXPECT_FALSE(edit.IsWindowVisible());
    QTest::keyClick(Window(), 'x');
    EXPECT_EQ(combo.GetWindowText(), "x");
}

TEST_F(InListTest, ListMayBeDestroyedWhenTheFocusOfItsControlGoes) {
    const std::vector<std::function<void()>> ways{
        [this] { dlg.first.SetFocus(); },
        [this] { dlg.GetDlgItem(1819)->SetFocus(); },
        [this] { QTest::keyClick(Window(), Qt::Key_Tab); },
        [this] {
            Click({10, 3});
        },
    };
    int destroyed = 0;
    for (const auto& leave : ways) {
        for (int which = 0; which < 3; ++which) {
            CListBox list;
            Tracing<CEdit> ownEdit;
            Tracing<CComboBox> ownCombo;
            Tracing<CButton> ownButton;
            ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, {150, 0, 250, 100}, &dlg, 2100));
            ownEdit.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, kPlace, &list, 0);
            ownCombo.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWN, kPlace, &list, 1);
            ownButton.Create("...", WS_CHILD | WS_VISIBLE | WS_TABSTOP, kPlace, &list, 2);
            CWnd* const all[] = {&ownEdit, &ownCombo, &ownButton};
            all[which]->SetFocus();
            ASSERT_EQ(CWnd::GetFocus(), all[which]);
            const auto destroy = [&list, &destroyed] { destroyed += list.DestroyWindow() ? 1 : 0; };
            ownEdit.onKillFocus = destroy;
            ownCombo.onKillFocus = destroy;
            ownButton.onKillFocus = destroy;
            leave();
            EXPECT_FALSE(list.GetSafeHwnd());
            EXPECT_FALSE(ownEdit.GetSafeHwnd());
            EXPECT_FALSE(ownCombo.GetSafeHwnd());
            EXPECT_FALSE(ownButton.GetSafeHwnd());
            QCoreApplication::processEvents();
        }
    }
    EXPECT_EQ(destroyed, 4 * 3);
}

TEST_F(InListTest, ListMayBeDestroyedWhenItsControlIsHidden) {
    for (CWnd* control : std::initializer_list<CWnd*>{&edit, &combo, &button}) {
        Place(*control);
    }
    button.SetFocus();
    button.onKillFocus = [this] { dlg.list.DestroyWindow(); };
    button.ShowWindow(SW_HIDE);
    EXPECT_FALSE(dlg.list.GetSafeHwnd());
    EXPECT_FALSE(button.GetSafeHwnd());
    QCoreApplication::processEvents();
    EXPECT_FALSE(edit.ShowWindow(SW_SHOW));
}

TEST_F(InListTest, DialogMayBeDestroyedWhenTheFocusOfAControlInItsListGoes) {
    Place(edit);
    edit.SetFocus();
    edit.onKillFocus = [this] { dlg.DestroyWindow(); };
    Click({10, 3});
    EXPECT_FALSE(dlg.GetSafeHwnd());
    EXPECT_FALSE(edit.GetSafeHwnd());
    QCoreApplication::processEvents();
}

TEST_F(InListTest, EnterAndEscapeAreTheDialogs) {
    int expected = 0;
    for (CWnd* control : std::initializer_list<CWnd*>{&edit, &combo, &button}) {
        Place(*control);
        control->SetWindowText("abc");
        control->SetFocus();
        ++expected;
        QTest::keyClick(Window(), Qt::Key_Return);
        EXPECT_EQ(dlg.oks, expected);
        QTest::keyClick(Window(), Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_EQ(dlg.oks, ++expected);
        QTest::keyClick(Window(), Qt::Key_Escape);
        EXPECT_EQ(dlg.cancels, expected / 2);
        EXPECT_EQ(control->GetWindowText(), "abc");
        control->ShowWindow(SW_HIDE);
    }
    EXPECT_EQ(combo.GetCount(), 0);
}

TEST_F(InListTest, ArrowsStayInTheControl) {
    dlg.list.SetCurSel(3);
    combo.AddString("a");
    combo.AddString("b");
    Place(combo);
    combo.SetFocus();
    QTest::keyClick(Window(), Qt::Key_Down);
    EXPECT_EQ(combo.GetCurSel(), 0);
    QTest::keyClick(Window(), Qt::Key_Down);
    EXPECT_EQ(combo.GetCurSel(), 1);
    QTest::keyClick(Window(), Qt::Key_Up);
    EXPECT_EQ(combo.GetCurSel(), 0);
    Place(edit);
    edit.SetFocus();
    QTest::keyClick(Window(), Qt::Key_Down);
    EXPECT_EQ(dlg.list.GetCurSel(), 3);
}

} // namespace

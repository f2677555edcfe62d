#include "framework/ComboBox.h"

#include "framework/Dialog.h"
#include "framework/Edit.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "TestResources.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QTest>

#include <string>

namespace {

class TracingCombo : public CComboBox {
public:
    std::string log;
    CWnd* nextFocus = nullptr;

    std::string Log() { return std::exchange(log, {}); }

protected:
    void OnSetFocus(CWnd* old) {
        CComboBox::OnSetFocus(old);
        log += "in ";
    }
    void OnKillFocus(CWnd* next) {
        CComboBox::OnKillFocus(next);
        log += "out ";
        nextFocus = next;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TracingCombo, CComboBox)
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

class ComboDlg : public CDialog {
public:
    std::string log;
    int oks = 0;
    int cancels = 0;

    std::string Log() { return std::exchange(log, {}); }

protected:
    void OnOK() override { ++oks; }
    void OnCancel() override { ++cancels; }
    void OnChosen() { log += "chosen "; }
    void OnIn() { log += "in "; }
    void OnOut() { log += "out "; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ComboDlg, CDialog)
ON_CBN_SELCHANGE(2000, &ComboDlg::OnChosen)
ON_CONTROL(CBN_SETFOCUS, 2000, &ComboDlg::OnIn)
ON_CONTROL(CBN_KILLFOCUS, 2000, &ComboDlg::OnOut)
END_MESSAGE_MAP()

class ComboBoxTest : public testing::TestWithParam<DWORD> {
protected:
    ComboBoxTest() {
        dlg.Create(1749);
        combo.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | GetParam(), {0, 0, 100, 220}, &dlg, 2000);
        for (const char* text : {"a", "b", "c"}) {
            combo.AddString(text);
        }
        dlg.ShowWindow(SW_SHOW);
        EXPECT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dlg)));
        other = dlg.GetDlgItem(1758);
        other->SetFocus();
        Native()->view(); // made at its first use, with events of its own
    }

    QComboBox* Native() { return qobject_cast<QComboBox*>(NativeWidget(combo)); }
    bool IsOpen() { return Native()->view()->isVisible(); }
    void Open() {
        Native()->showPopup();
        QCoreApplication::processEvents();
        ASSERT_TRUE(IsOpen());
    }
    QWindow* Window() { return NativeWidget(dlg)->windowHandle(); }
    void Press(Qt::Key key) {
        QTest::keyClick(Window(), key);
        QCoreApplication::processEvents();
    }

    ResourceScope scope{TestResources()};
    ComboDlg dlg;
    TracingCombo combo;
    CWnd* other = nullptr;
};

INSTANTIATE_TEST_SUITE_P(All, ComboBoxTest, testing::Values(CBS_DROPDOWN, CBS_DROPDOWNLIST),
                         [](const auto& test) { return test.param == CBS_DROPDOWN ? "Editable" : "List"; });

TEST_P(ComboBoxTest, NothingIsSelectedUntilSomeonePicks) {
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.GetWindowText(), "");
    combo.SetFocus();
    Open();
    Press(Qt::Key_Escape);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR) << "looked at, not picked";
    EXPECT_EQ(dlg.Log(), "in ");
}

TEST_P(ComboBoxTest, OwnListOnlyBorrowsTheFocus) {
    combo.SetFocus();
    EXPECT_EQ(combo.Log(), "in ");
    Open();
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_FALSE(IsOpen());
    Open();
    Press(Qt::Key_Escape);
    EXPECT_EQ(combo.Log(), "");
    EXPECT_EQ(CWnd::GetFocus(), &combo);
    other->SetFocus();
    EXPECT_EQ(combo.Log(), "out ");
    EXPECT_EQ(combo.nextFocus, other);
    EXPECT_EQ(dlg.Log(), "in chosen out ");
}

TEST_P(ComboBoxTest, FocusThatIsTakenFromTheOpenListGoesForGood) {
    combo.SetFocus();
    combo.Log();
    Open();
    other->SetFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(combo.Log(), "out ");
    EXPECT_EQ(combo.nextFocus, other);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(CWnd::GetFocus(), other);
}

TEST_P(ComboBoxTest, HidingClosesTheOpenList) {
    combo.SetFocus();
    combo.Log();
    Open();
    combo.ShowWindow(SW_HIDE);
    QCoreApplication::processEvents();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(combo.Log(), "out ");
}

TEST_P(ComboBoxTest, DestroyingClosesTheOpenList) {
    combo.SetFocus();
    Open();
    combo.DestroyWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    Press(Qt::Key_Escape);
    EXPECT_EQ(dlg.cancels, 1);
}

TEST_P(ComboBoxTest, EnterAndEscapeAreTheDialogsWhileTheListIsClosed) {
    combo.SetWindowText("b");
    combo.SetFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(dlg.oks, 1);
    Press(Qt::Key_Escape);
    EXPECT_EQ(dlg.cancels, 1);
    EXPECT_EQ(combo.GetCount(), 3) << "Enter adds no text to the list";
    Open();
    Press(Qt::Key_Escape);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(dlg.cancels, 1) << "the open list's own";
    EXPECT_EQ(combo.GetWindowText(), "b");
}

TEST_P(ComboBoxTest, ArrowsPickAndTell) {
    combo.SetFocus();
    dlg.Log();
    Press(Qt::Key_Down);
    EXPECT_EQ(combo.GetCurSel(), 0);
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(combo.GetCurSel(), 2);
    Press(Qt::Key_Up);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.GetWindowText(), "b");
    EXPECT_EQ(dlg.Log(), "chosen chosen chosen chosen ");
    EXPECT_EQ(dlg.oks + dlg.cancels, 0);
}

TEST(EditableComboTest, ProgramsTextSurvivesWhole) {
    const ResourceScope scope(TestResources());
    ComboDlg dlg;
    ASSERT_TRUE(dlg.Create(1749));
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | CBS_DROPDOWN, {0, 0, 100, 220}, &dlg, 2000));
    const std::string text(40000, 'x');
    combo.SetWindowText(text);
    EXPECT_EQ(combo.GetWindowText(), text);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
}

TEST(EditableComboTest, TextThatEqualsAnItemIsNoChoiceWhenTheEditIsLeft) {
    const ResourceScope scope(TestResources());
    ComboDlg dlg;
    ASSERT_TRUE(dlg.Create(1749));
    CComboBox combo;
    ASSERT_TRUE(
        combo.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWN, {0, 0, 100, 220}, &dlg, 2000));
    combo.AddString("a");
    combo.AddString("b");
    dlg.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dlg)));
    combo.SetFocus();
    dlg.Log();
    QTest::keyClick(NativeWidget(dlg)->windowHandle(), 'b');
    dlg.GetDlgItem(1758)->SetFocus();
    EXPECT_EQ(combo.GetWindowText(), "b");
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(dlg.Log(), "out ");
}

} // namespace

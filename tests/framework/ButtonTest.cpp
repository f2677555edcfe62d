#include "framework/Button.h"

#include "framework/Edit.h"
#include "framework/QtBridge.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QTest>

namespace {

// Hides itself when the focus goes.
class ShyButton : public CButton {
protected:
    void OnKillFocus(CWnd* next) {
        CButton::OnKillFocus(next);
        ShowWindow(SW_HIDE);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ShyButton, CButton)
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

// Comes up again in the middle of its press, as after a dialog.
class BrowseButton : public CButton {
public:
    bool wasVisible = true;

protected:
    void OnLButtonDown(UINT flags, CPoint point) {
        wasVisible = IsWindowVisible() != FALSE;
        CButton::OnLButtonDown(flags, point);
        ShowWindow(SW_SHOW);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(BrowseButton, CButton)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

// Hides a button when the focus goes.
class HidingEdit : public CEdit {
public:
    CWnd* hidden = nullptr;

protected:
    void OnKillFocus(CWnd* next) {
        CEdit::OnKillFocus(next);
        hidden->ShowWindow(SW_HIDE);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(HidingEdit, CEdit)
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

class ButtonOwner : public CWnd {
public:
    int clicks = 0;

protected:
    void OnClick() { ++clicks; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ButtonOwner, CWnd)
ON_BN_CLICKED(7, &ButtonOwner::OnClick)
END_MESSAGE_MAP()

class ButtonTest : public testing::Test {
protected:
    ButtonTest() {
        top.Create(nullptr, "top", WS_POPUP | WS_CAPTION, {100, 100, 400, 250}, nullptr, 0);
        other.Create("other", WS_CHILD | WS_VISIBLE | WS_TABSTOP, {10, 100, 100, 130}, &top, 8);
        top.ShowWindow(SW_SHOW);
        EXPECT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
    }

    void Make(CButton& button, DWORD style = BS_PUSHBUTTON) {
        ASSERT_TRUE(
            button.Create("...", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, {10, 10, 60, 40}, &top, 7));
    }
    static bool IsDown(const CButton& button) {
        return qobject_cast<QAbstractButton*>(NativeWidget(button))->isDown();
    }
    QWindow* Window() { return NativeWidget(top)->windowHandle(); }
    void Press() { QTest::mousePress(Window(), Qt::LeftButton, Qt::NoModifier, kInside); }
    void Release() { QTest::mouseRelease(Window(), Qt::LeftButton, Qt::NoModifier, kInside); }

    static constexpr QPoint kInside{20, 25};
    ButtonOwner top;
    CButton other;
};

TEST_F(ButtonTest, HiddenWhilePressedItIsUpAgainAndTheReleaseIsNoClick) {
    CButton button;
    Make(button);
    Press();
    ASSERT_TRUE(IsDown(button));
    button.ShowWindow(SW_HIDE);
    button.ShowWindow(SW_SHOW);
    EXPECT_FALSE(IsDown(button));
    QTest::mouseMove(Window(), kInside + QPoint(2, 2));
    EXPECT_FALSE(IsDown(button));
    Release();
    EXPECT_EQ(top.clicks, 0);
    Press();
    EXPECT_TRUE(IsDown(button));
    Release();
    EXPECT_EQ(top.clicks, 1) << "the next press counts";
}

TEST_F(ButtonTest, MoveWithTheOldPressDoesNotPressAgain) {
    CButton button;
    Make(button);
    button.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ASSERT_TRUE(IsDown(button));
    button.ShowWindow(SW_HIDE);
    button.ShowWindow(SW_SHOW);
    button.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(6, 6));
    EXPECT_FALSE(IsDown(button));
    button.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(6, 6));
    EXPECT_EQ(top.clicks, 0);
}

TEST_F(ButtonTest, HiddenByItsOwnLossOfFocusItIsUpAgain) {
    ShyButton button;
    Make(button);
    Press();
    ASSERT_TRUE(IsDown(button));
    ASSERT_EQ(CWnd::GetFocus(), &button);
    other.SetFocus();
    EXPECT_FALSE(button.IsWindowVisible());
    button.ShowWindow(SW_SHOW);
    EXPECT_FALSE(IsDown(button));
    Release();
    EXPECT_EQ(top.clicks, 0);
}

TEST_F(ButtonTest, HiddenWithItsParentItIsUpAgain) {
    CButton button;
    Make(button);
    Press();
    top.ShowWindow(SW_HIDE);
    top.ShowWindow(SW_SHOW);
    EXPECT_FALSE(IsDown(button));
    Release();
    EXPECT_EQ(top.clicks, 0);
}

TEST_F(ButtonTest, HiddenWhileTheKeyIsDownItIsUpAgain) {
    CButton button;
    Make(button);
    button.SetFocus();
    QTest::keyPress(Window(), Qt::Key_Space);
    ASSERT_TRUE(IsDown(button));
    button.ShowWindow(SW_HIDE);
    button.ShowWindow(SW_SHOW);
    button.SetFocus();
    EXPECT_FALSE(IsDown(button));
    QTest::keyRelease(Window(), Qt::Key_Space);
    EXPECT_EQ(top.clicks, 0);
}

TEST_F(ButtonTest, CheckBoxHiddenWhilePressedKeepsItsState) {
    CButton button;
    Make(button, BS_AUTOCHECKBOX);
    Press();
    ASSERT_TRUE(IsDown(button));
    button.ShowWindow(SW_HIDE);
    button.ShowWindow(SW_SHOW);
    Release();
    EXPECT_EQ(button.GetCheck(), BST_UNCHECKED);
    EXPECT_EQ(top.clicks, 0);
}

TEST_F(ButtonTest, HiddenByTheFocusThatItsPressTakesItIsUpWhenShown) {
    BrowseButton button;
    Make(button);
    HidingEdit edit;
    edit.hidden = &button;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, {100, 10, 200, 40}, &top, 9));
    edit.SetFocus();
    Press();
    EXPECT_FALSE(button.wasVisible);
    EXPECT_TRUE(button.IsWindowVisible());
    EXPECT_FALSE(IsDown(button));
    QTest::mouseMove(Window(), kInside + QPoint(2, 2));
    Release();
    EXPECT_EQ(top.clicks, 0);
    EXPECT_FALSE(IsDown(button));
    other.SetFocus();
    button.ShowWindow(SW_SHOW);
    Press();
    EXPECT_TRUE(button.wasVisible);
    EXPECT_TRUE(IsDown(button));
    Release();
    EXPECT_EQ(top.clicks, 1);
}

// Four radio buttons in a group of their own behind a button, the third disabled, and one of another group.
class RadioKeysTest : public ButtonTest {
protected:
    explicit RadioKeysTest(DWORD type = BS_AUTORADIOBUTTON) {
        for (int i = 0; i < 5; ++i) {
            const DWORD group = i == 0 || i == 4 ? WS_GROUP : 0;
            radios[i].Create("mode", WS_CHILD | WS_VISIBLE | WS_TABSTOP | type | group,
                             {150, 10 + 20 * i, 250, 28 + 20 * i}, &top, 7);
        }
        radios[2].EnableWindow(FALSE);
    }
    void Key(Qt::Key key) { QTest::keyClick(Window(), key); }
    int Focused() const {
        for (int i = 0; i < 5; ++i) {
            if (CWnd::GetFocus() == &radios[i]) {
                return i;
            }
        }
        return -1;
    }
    std::string Checks() const {
        std::string checks;
        for (const CButton& radio : radios) {
            checks += radio.GetCheck() == BST_CHECKED ? '1' : '0';
        }
        return checks;
    }

    CButton radios[5];
};

class PlainRadioKeysTest : public RadioKeysTest {
protected:
    PlainRadioKeysTest() : RadioKeysTest(BS_RADIOBUTTON) {}
};

TEST_F(RadioKeysTest, ArrowsGoRoundTheGroupAndCheck) {
    radios[0].SetFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(Focused(), 1);
    EXPECT_EQ(Checks(), "01000");
    Key(Qt::Key_Right); // past the disabled one
    EXPECT_EQ(Focused(), 3);
    EXPECT_EQ(Checks(), "00010");
    Key(Qt::Key_Down); // round, not into the next group
    EXPECT_EQ(Focused(), 0);
    EXPECT_EQ(Checks(), "10000");
    Key(Qt::Key_Up);
    EXPECT_EQ(Focused(), 3);
    Key(Qt::Key_Left);
    EXPECT_EQ(Focused(), 1);
    EXPECT_EQ(Checks(), "01000");
    EXPECT_EQ(top.clicks, 5);
}

TEST_F(RadioKeysTest, OneAloneStaysAsItIs) {
    radios[4].SetFocus();
    Key(Qt::Key_Down);
    Key(Qt::Key_Up);
    EXPECT_EQ(Focused(), 4);
    EXPECT_EQ(Checks(), "00000");
    EXPECT_EQ(top.clicks, 0);
}

TEST_F(PlainRadioKeysTest, ArrowsOnlyTellTheOwnerWhichOneWasReached) {
    radios[0].SetFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(Focused(), 1);
    EXPECT_EQ(top.clicks, 1);
    EXPECT_EQ(Checks(), "00000");
}

TEST_F(ButtonTest, ArrowOnAPushButtonPressesNothing) {
    CButton button;
    Make(button);
    button.SetFocus();
    QTest::keyClick(Window(), Qt::Key_Down);
    EXPECT_EQ(top.clicks, 0);
}

} // namespace

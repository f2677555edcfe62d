#include "framework/Edit.h"

#include "framework/QtBridge.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTest>

#include <string>

namespace {

// Hears of changes.
class EditOwner : public CWnd {
public:
    int changes = 0;

protected:
    void OnTextChanged() { ++changes; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(EditOwner, CWnd)
ON_EN_CHANGE(7, &EditOwner::OnTextChanged)
END_MESSAGE_MAP()

class EditTest : public testing::Test {
protected:
    EditTest() {
        top.Create(nullptr, "top", WS_POPUP | WS_CAPTION, {100, 100, 400, 250}, nullptr, 0);
        edit.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, {10, 10, 200, 40}, &top, 7);
        top.ShowWindow(SW_SHOW);
        EXPECT_TRUE(QTest::qWaitForWindowActive(NativeWidget(top)));
        edit.SetFocus();
    }

    QWindow* Window() { return NativeWidget(top)->windowHandle(); }
    void Type(const char* keys) {
        for (; *keys; ++keys) {
            QTest::keyClick(Window(), *keys);
        }
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(Window(), key, modifiers);
    }
    void Paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        Press(Qt::Key_V, Qt::ControlModifier);
    }
    void Drop(const QString& text) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(NativeWidget(edit), &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(NativeWidget(edit), &drop);
    }

    EditOwner top;
    CEdit edit;
};

TEST_F(EditTest, ProgramsTextSurvivesTheLimitWhole) {
    const std::string text(300, 'x');
    edit.SetWindowText(text);
    edit.SetLimitText(256);
    EXPECT_EQ(edit.GetWindowText(), text) << "set before the limit";
    const std::string longer(10000, 'y');
    edit.SetWindowText(longer);
    EXPECT_EQ(edit.GetWindowText(), longer) << "set after it";
    const std::string huge(70000, 'z');
    edit.SetLimitText(0);
    edit.SetWindowText(huge);
    EXPECT_EQ(edit.GetWindowText(), huge) << "without one";
}

TEST_F(EditTest, ProgramsTextSurvivesInAnyScript) {
    edit.SetLimitText(3);
    for (const std::string text :
         {"Gr\u00FC\u00DFe aus K\u00F6ln", "\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD",
          "\u0645\u0631\u062D\u0628\u0627 abc 12", "\U0001F600\U0001F601\U0001F602\U0001F603",
          "one\ntwo\tthree", "e\u0301e\u0301e\u0301"}) {
        edit.SetWindowText(text);
        EXPECT_EQ(edit.GetWindowText(), text);
        edit.SetSel(0, 0);
        Type("q");
        EXPECT_EQ(edit.GetWindowText(), text);
    }
}

TEST_F(EditTest, TypingStopsAtTheLimitAndFollowsItsChanges) {
    edit.SetLimitText(3);
    Type("12345");
    EXPECT_EQ(edit.GetWindowText(), "123");
    edit.SetLimitText(5);
    Type("678");
    EXPECT_EQ(edit.GetWindowText(), "12367");
    edit.SetSel(1, 3);
    Type("a");
    EXPECT_EQ(edit.GetWindowText(), "1a67");
    edit.SetLimitText(0);
    edit.SetSel(4, 4);
    Type("bcdef");
    EXPECT_EQ(edit.GetWindowText(), "1a67bcdef");
}

TEST_F(EditTest, TooLongATextTakesNothingButMayBeShortened) {
    edit.SetWindowText("123456");
    edit.SetLimitText(4);
    edit.SetSel(2, 2);
    Type("x");
    EXPECT_EQ(edit.GetWindowText(), "123456");
    int start = 0;
    int end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(start, 2) << "the caret stays";
    Press(Qt::Key_Backspace);
    EXPECT_EQ(edit.GetWindowText(), "13456");
    Type("x");
    EXPECT_EQ(edit.GetWindowText(), "13456") << "five are still too many";
    edit.SetSel(0, 2);
    Type("x");
    EXPECT_EQ(edit.GetWindowText(), "x456") << "three are left, so one fits";
    edit.SetSel(0, 1);
    Press(Qt::Key_Delete);
    EXPECT_EQ(edit.GetWindowText(), "456");
    Type("yz");
    EXPECT_EQ(edit.GetWindowText(), "y456");
}

TEST_F(EditTest, SelectionOfTooLongATextIsReplacedByWhatFits) {
    edit.SetWindowText("123456");
    edit.SetLimitText(3);
    edit.SetSel(1, 3);
    Type("x");
    EXPECT_EQ(edit.GetWindowText(), "1456") << "the four left are too many already";
}

TEST_F(EditTest, PasteIsCutToTheRoomAtTheCaret) {
    edit.SetLimitText(5);
    edit.SetWindowText("ab");
    edit.SetSel(1, 1);
    Paste("123456");
    EXPECT_EQ(edit.GetWindowText(), "a123b");
    int start = 0;
    int end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(start, 4) << "behind what was pasted";
    Paste("9");
    EXPECT_EQ(edit.GetWindowText(), "a123b");
    edit.SetSel(0, -1);
    Paste("\U0001F600\U0001F601\U0001F602");
    EXPECT_EQ(edit.GetWindowText(), "\U0001F600\U0001F601") << "no half of a character";
}

TEST_F(EditTest, PasteFromTheMenuIsLimitedToo) {
    edit.SetLimitText(3);
    QApplication::clipboard()->setText("12345");
    QMenu* menu = qobject_cast<QLineEdit*>(NativeWidget(edit))->createStandardContextMenu();
    for (QAction* action : menu->actions()) {
        if (action->text().contains("aste")) {
            action->trigger();
        }
    }
    delete menu;
    EXPECT_EQ(edit.GetWindowText(), "123");
}

TEST_F(EditTest, ComposedTextIsLimitedToo) {
    edit.SetLimitText(3);
    QInputMethodEvent composed;
    composed.setCommitString("\u3042\u3044\u3046\u3048");
    QCoreApplication::sendEvent(NativeWidget(edit), &composed);
    EXPECT_EQ(edit.GetWindowText(), "\u3042\u3044\u3046");
}

TEST_F(EditTest, DroppedTextIsLimitedToo) {
    edit.SetLimitText(3);
    Drop("12345");
    EXPECT_EQ(edit.GetWindowText(), "123");
}

TEST_F(EditTest, UndoBringsBackATooLongText) {
    edit.SetWindowText("123456");
    edit.SetLimitText(4);
    edit.SetSel(6, 6);
    Press(Qt::Key_Backspace);
    EXPECT_EQ(edit.GetWindowText(), "12345");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit.GetWindowText(), "123456");
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(edit.GetWindowText(), "12345");
    Type("x");
    EXPECT_EQ(edit.GetWindowText(), "12345");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit.GetWindowText(), "123456") << "what was refused left no trace";
}

TEST_F(EditTest, NewLimitKeepsCaretAndSelection) {
    Type("123456");
    edit.SetSel(1, 4);
    edit.SetLimitText(4);
    int start = 0;
    int end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 4);
    Press(Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(edit.GetWindowText(), "123456");
    Type("x");
    EXPECT_EQ(edit.GetWindowText(), "1x56");
}

TEST_F(EditTest, ReturnIsNotRefusedInATooLongText) {
    edit.SetWindowText("123456");
    edit.SetLimitText(4);
    int returns = 0;
    QObject::connect(qobject_cast<QLineEdit*>(NativeWidget(edit)), &QLineEdit::returnPressed,
                     NativeWidget(edit), [&returns] { ++returns; });
    Press(Qt::Key_Return);
    EXPECT_EQ(returns, 1);
}

TEST_F(EditTest, OnlyTheUsersChangesAreTold) {
    edit.SetWindowText("abcd");
    edit.SetWindowText("");
    edit.SetWindowText("abcd");
    edit.SetLimitText(6);
    edit.SetSel(4, 4);
    EXPECT_EQ(top.changes, 0);
    Type("e");
    EXPECT_EQ(top.changes, 1);
    Paste("f");
    EXPECT_EQ(top.changes, 2);
    Type("g");
    EXPECT_EQ(top.changes, 2) << "refused by the limit";
    Press(Qt::Key_Backspace);
    EXPECT_EQ(top.changes, 3);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(top.changes, 4);
    edit.SetSel(0, 2);
    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(top.changes, 5);
    EXPECT_EQ(edit.GetWindowText(), "cdef");
    Press(Qt::Key_Left);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(top.changes, 5);
    Drop("x");
    EXPECT_EQ(top.changes, 6);
}

} // namespace

#include "framework/Dialog.h"

#include "framework/Button.h"
#include "framework/ColorDialog.h"
#include "framework/ComboBox.h"
#include "framework/DataExchange.h"
#include "framework/Edit.h"
#include "framework/FormView.h"
#include "framework/ListBox.h"
#include "framework/MessageBox.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "framework/TabCtrl.h"
#include "framework/TestHooks.h"
#include "TestResources.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>
#include <vector>

namespace {

class SettingsDlg : public CDialog {
public:
    explicit SettingsDlg(CWnd* parent = nullptr) : CDialog(1749, parent) {}

    float begin = 1.5F;
    int toEnd = 1;
    int mode = 2;
    CListBox list;
    int does = 0;
    int changes = 0;
    int listChanges = 0;
    int listDoubles = 0;
    bool failOpening = false;

protected:
    void DoDataExchange(CDataExchange* dx) override {
        CDialog::DoDataExchange(dx);
        DDX_Text(dx, 1758, begin);
        DDX_Check(dx, 1822, toEnd);
        DDX_Radio(dx, 1804, mode);
        DDX_Control(dx, 1782, list);
    }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        if (failOpening) {
            EndDialog(IDCANCEL);
        }
        return TRUE;
    }
    void OnDo() { ++does; }
    void OnBeginChanged() { ++changes; }
    void OnListChanged() { ++listChanges; }
    void OnListDouble() { ++listDoubles; }

    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SettingsDlg, CDialog)
ON_BN_CLICKED(1819, &SettingsDlg::OnDo)
ON_EN_CHANGE(1758, &SettingsDlg::OnBeginChanged)
ON_LBN_SELCHANGE(1782, &SettingsDlg::OnListChanged)
ON_LBN_DBLCLK(1782, &SettingsDlg::OnListDouble)
END_MESSAGE_MAP()

class DialogTest : public testing::Test {
protected:
    ResourceScope scope{TestResources()};
    HookScope hooks;
    SettingsDlg dlg;

    void Open() {
        ASSERT_TRUE(dlg.Create(1749));
        dlg.ShowWindow(SW_SHOW);
        ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dlg)));
    }
    QWindow* Window() { return NativeWidget(dlg)->windowHandle(); }
    QPoint Centre(int id) {
        QWidget* widget = NativeWidget(*dlg.GetDlgItem(id));
        return widget->mapTo(NativeWidget(dlg), widget->rect().center());
    }
    void Click(int id) { QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, Centre(id)); }
};

TEST_F(DialogTest, TemplateIsPlacedInFixedDialogUnits) {
    ASSERT_TRUE(dlg.Create(1749));
    EXPECT_EQ(dlg.GetWindowText(), "Settings");
    CRect r;
    dlg.GetClientRect(&r);
    EXPECT_EQ(r, CRect(0, 0, 300, 162)); // 200 * 6 / 4 by 100 * 13 / 8
    CRect button;
    dlg.GetDlgItem(1)->GetWindowRect(&button);
    dlg.ScreenToClient(&button);
    EXPECT_EQ(button, CRect(60, 130, 60 + 75, 130 + 22)); // 40, 80, 50 by 14 units
    EXPECT_FALSE(dlg.IsWindowVisible());
    EXPECT_EQ(dlg.GetDlgItem(1)->GetWindowText(), "OK");
    EXPECT_FALSE(dlg.Create(1749)) << "it stands already";
}

TEST_F(DialogTest, WithoutASizingFrameItKeepsTheSizeThatTheProgramGivesIt) {
    ASSERT_TRUE(dlg.Create(1749));
    const QWidget* widget = NativeWidget(dlg);
    EXPECT_EQ(widget->minimumSize(), QSize(300, 162));
    EXPECT_EQ(widget->maximumSize(), QSize(300, 162));
    dlg.MoveWindow(10, 10, 400, 200);
    EXPECT_EQ(widget->size(), QSize(400, 200));
    EXPECT_EQ(widget->maximumSize(), QSize(400, 200));
}

TEST_F(DialogTest, ModelessWithoutASizingFrameStandsAtTheUpperRightOfItsOwner) {
    CWnd owner;
    ASSERT_TRUE(owner.Create(nullptr, "owner", WS_CAPTION | WS_THICKFRAME | WS_VISIBLE,
                             CRect(20, 30, 620, 430), nullptr, 0));
    ASSERT_TRUE(dlg.Create(1749, &owner));
    const QRect around = NativeWidget(owner)->geometry();
    const QRect place = NativeWidget(dlg)->geometry();
    EXPECT_EQ(place.right(), around.right() - 48);
    EXPECT_EQ(place.top(), around.top() + 120);
    dlg.DestroyWindow();
    owner.DestroyWindow();
}

TEST_F(DialogTest, MissingTemplateFails) {
    EXPECT_FALSE(dlg.Create(1));
    CDialog missing(1);
    EXPECT_EQ(missing.DoModal(), -1);
}

TEST_F(DialogTest, DataGoToTheControlsAndBack) {
    ASSERT_TRUE(dlg.Create(1749));
    EXPECT_EQ(dlg.GetDlgItemText(1758), "1.5");
    EXPECT_EQ(dlg.IsDlgButtonChecked(1822), 1U);
    EXPECT_EQ(dlg.IsDlgButtonChecked(1806), 1U);
    EXPECT_EQ(dlg.IsDlgButtonChecked(1804), 0U);
    dlg.SetDlgItemText(1758, " 0.25 ");
    dlg.CheckDlgButton(1822, 0);
    dlg.CheckDlgButton(1806, 0);
    EXPECT_TRUE(dlg.UpdateData(TRUE));
    EXPECT_EQ(dlg.begin, 0.25F);
    EXPECT_EQ(dlg.toEnd, 0);
    EXPECT_EQ(dlg.mode, -1);
    EXPECT_EQ(dlg.GetDlgItem(1782), &dlg.list);
}

TEST_F(DialogTest, WrongNumberIsRefusedWithAMessageAndKeepsTheField) {
    ASSERT_TRUE(dlg.Create(1749));
    std::string said;
    Hooks().messageBox = [&said](const std::string& text, UINT) {
        said = text;
        return IDOK;
    };
    dlg.SetDlgItemText(1758, "1.5x");
    EXPECT_FALSE(dlg.UpdateData(TRUE));
    EXPECT_EQ(said, "Please enter a number.");
    EXPECT_EQ(dlg.begin, 1.5F);
}

TEST_F(DialogTest, ClicksReachTheMessageMap) {
    Open();
    Click(1819);
    EXPECT_EQ(dlg.does, 1);
    dlg.GetDlgItem(1819)->EnableWindow(FALSE);
    Click(1819);
    EXPECT_EQ(dlg.does, 1);
    dlg.changes = 0;
    QTest::keyClick(Window(), Qt::Key_7);
    EXPECT_EQ(dlg.changes, 1) << "the first control has the focus";
    dlg.SetDlgItemText(1758, "new");
    EXPECT_EQ(dlg.changes, 1) << "the program knows what it sets";
}

TEST_F(DialogTest, TypingReplacesTheTextOfTheEditThatTheDialogGivesTheKeyboard) {
    dlg.begin = 12.5F;
    Open();
    QTest::keyClick(Window(), Qt::Key_7);
    EXPECT_EQ(dlg.GetDlgItemText(1758), "7");
    dlg.GotoDlgCtrl(dlg.GetDlgItem(1758));
    QTest::keyClick(Window(), Qt::Key_8);
    EXPECT_EQ(dlg.GetDlgItemText(1758), "8");
}

TEST_F(DialogTest, CheckBoxesAndRadioButtonsArePressedBesideTheirTextToo) {
    Open();
    for (const int id : {1822, 1805}) {
        auto* button = NativeWidget(*dlg.GetDlgItem(id));
        const QPoint corner(button->width() - 2, button->height() - 2);
        const UINT before = dlg.IsDlgButtonChecked(id);
        QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier, button->mapTo(NativeWidget(dlg), corner));
        EXPECT_NE(dlg.IsDlgButtonChecked(id), before) << id;
    }
}

TEST_F(DialogTest, RadioButtonsOfAGroupExcludeEachOther) {
    Open();
    auto* first = NativeWidget(*dlg.GetDlgItem(1804));
    QTest::mouseClick(Window(), Qt::LeftButton, Qt::NoModifier,
                      first->mapTo(NativeWidget(dlg), QPoint(6, 8)));
    EXPECT_EQ(dlg.IsDlgButtonChecked(1804), 1U);
    EXPECT_EQ(dlg.IsDlgButtonChecked(1806), 0U);
    dlg.UpdateData(TRUE);
    EXPECT_EQ(dlg.mode, 0);
}

TEST_F(DialogTest, EnterIsOkAndEscapeIsCancelFromInsideAnEdit) {
    Open();
    dlg.GetDlgItem(1758)->SetFocus();
    dlg.SetDlgItemText(1758, "3");
    QTest::keyClick(Window(), Qt::Key_Return);
    EXPECT_FALSE(dlg.IsWindowVisible());
    EXPECT_TRUE(dlg.GetSafeHwnd()) << "a modeless dialog is only hidden";
    EXPECT_EQ(dlg.begin, 3.0F);
    dlg.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dlg)));
    dlg.SetDlgItemText(1758, "4");
    QTest::keyClick(Window(), Qt::Key_Escape);
    EXPECT_FALSE(dlg.IsWindowVisible());
    EXPECT_EQ(dlg.begin, 3.0F);
    dlg.ShowWindow(SW_SHOW);
    NativeWidget(dlg)->close();
    EXPECT_TRUE(dlg.GetSafeHwnd());
    EXPECT_FALSE(dlg.IsWindowVisible());
}

TEST_F(DialogTest, EnterOnAFocusedButtonPressesThatButton) {
    Open();
    dlg.GetDlgItem(1819)->SetFocus();
    QTest::keyClick(Window(), Qt::Key_Return);
    EXPECT_EQ(dlg.does, 1);
    EXPECT_TRUE(dlg.IsWindowVisible());
}

TEST_F(DialogTest, EscapeEndsADragBeforeItClosesTheDialog) {
    Open();
    CWnd* held = dlg.GetDlgItem(1819);
    held->SetCapture();
    QTest::keyClick(Window(), Qt::Key_Escape);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_TRUE(dlg.IsWindowVisible());
    QTest::keyClick(Window(), Qt::Key_Escape);
    EXPECT_FALSE(dlg.IsWindowVisible());
}

// Presses a key in each box that comes up over a dialog, once, and closes the boxes that stay.
class BoxVisitor : public QObject {
public:
    explicit BoxVisitor(Qt::Key keyToPress) : key(keyToPress) { VisitSoon(); }

    int boxes = 0;

private:
    // Not by one timer, which would rest in the loop of a box that comes up meanwhile.
    void VisitSoon() {
        QTimer::singleShot(1, this, [this] { Visit(); });
    }
    void Visit() {
        constexpr int kMost = 3;
        VisitSoon();
        auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            return;
        }
        if (box == last || boxes == kMost) {
            box->reject();
            return;
        }
        last = box;
        ++boxes;
        QTest::keyClick(box->windowHandle(), key);
    }

    Qt::Key key;
    QPointer<QDialog> last;
};

TEST_F(DialogTest, EnterInAWarningDoesNotReachTheDialogBehind) {
    Open();
    dlg.SetDlgItemText(1758, "1.5x");
    BoxVisitor visitor(Qt::Key_Return);
    QTest::keyClick(Window(), Qt::Key_Return); // OK, which warns of the number
    EXPECT_EQ(visitor.boxes, 1);
    EXPECT_TRUE(dlg.IsWindowVisible());
    EXPECT_EQ(dlg.begin, 1.5F);
}

TEST_F(DialogTest, EscapeInAWarningClosesTheWarningAlone) {
    Open();
    BoxVisitor visitor(Qt::Key_Escape);
    AfxMessageBox("Really?", MB_YESNOCANCEL);
    EXPECT_EQ(visitor.boxes, 1);
    EXPECT_TRUE(dlg.IsWindowVisible());
}

TEST_F(DialogTest, KeysInAColourDialogDoNotReachTheDialogBehind) {
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        Open();
        BoxVisitor visitor(key);
        CColorDialog colours(RGB(1, 2, 3), 0, &dlg);
        EXPECT_EQ(colours.DoModal(), key == Qt::Key_Return ? IDOK : IDCANCEL);
        EXPECT_EQ(visitor.boxes, 1);
        EXPECT_TRUE(dlg.IsWindowVisible());
        dlg.DestroyWindow();
    }
}

TEST_F(DialogTest, BoxBelongsToTheMainWindowWhileNoWindowIsActive) {
    QWidget host;
    host.show();
    AfxSetMainWnd(WrapWidget(&host));
    QApplication::setActiveWindow(nullptr);
    QWidget* owner = nullptr;
    QTimer::singleShot(0, [&owner] {
        QWidget* box = QApplication::activeModalWidget();
        owner = box->parentWidget();
        box->close();
    });
    AfxMessageBox("Really?");
    AfxSetMainWnd(nullptr);
    EXPECT_EQ(owner, &host);
}

TEST_F(DialogTest, ModalRunsUntilItIsAnswered) {
    QTimer::singleShot(0, [this] {
        ASSERT_TRUE(dlg.IsWindowVisible());
        dlg.SetDlgItemText(1758, "8");
        dlg.SendMessage(WM_COMMAND, IDOK);
    });
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_EQ(dlg.begin, 8.0F);
    EXPECT_FALSE(dlg.GetSafeHwnd());
    QTimer::singleShot(0, [this] { dlg.SendMessage(WM_CLOSE); });
    EXPECT_EQ(dlg.DoModal(), IDCANCEL) << "a dialog can run again";
}

TEST_F(DialogTest, DialogEndedWhileOpeningNeverShows) {
    dlg.failOpening = true;
    bool asked = false;
    Hooks().modalDialog = [&asked](CDialog&) {
        asked = true;
        return IDOK;
    };
    EXPECT_EQ(dlg.DoModal(), IDCANCEL);
    EXPECT_FALSE(asked);
}

TEST_F(DialogTest, HookDrivesAModalDialog) {
    Hooks().modalDialog = [](CDialog& shown) {
        EXPECT_TRUE(shown.IsWindowVisible());
        shown.SetDlgItemText(1758, "2");
        shown.SendMessage(WM_COMMAND, IDOK);
        return IDCANCEL;
    };
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_EQ(dlg.begin, 2.0F);
}

TEST_F(DialogTest, WindowDestroyedDuringTheLoopEndsIt) {
    QTimer::singleShot(0, [this] { dlg.DestroyWindow(); });
    EXPECT_EQ(dlg.DoModal(), -1);
}

TEST_F(DialogTest, ObjectDestroyedDuringTheLoopEndsIt) {
    auto owned = std::make_unique<SettingsDlg>();
    SettingsDlg* raw = owned.get();
    QTimer::singleShot(0, [&owned] { owned.reset(); });
    EXPECT_EQ(raw->DoModal(), -1);
}

TEST_F(DialogTest, ListTellsOfTheUserOnly) {
    Open();
    dlg.list.AddString("one");
    dlg.list.AddString("two");
    dlg.list.SetCurSel(0);
    EXPECT_EQ(dlg.listChanges, 0);
    CRect r;
    ASSERT_EQ(dlg.list.GetItemRect(1, &r), 0);
    CPoint p((r.left + r.right) / 2, (r.top + r.bottom) / 2);
    dlg.list.ClientToScreen(&p);
    dlg.ScreenToClient(&p);
    QTest::mouseDClick(Window(), Qt::LeftButton, Qt::NoModifier, QPoint(p.x, p.y));
    EXPECT_EQ(dlg.list.GetCurSel(), 1);
    EXPECT_EQ(dlg.listChanges, 1);
    EXPECT_EQ(dlg.listDoubles, 1);
}

TEST_F(DialogTest, SubclassingTakesOverTheControlOnce) {
    ASSERT_TRUE(dlg.Create(1749));
    CEdit edit;
    CEdit second;
    EXPECT_TRUE(edit.SubclassDlgItem(1758, &dlg));
    EXPECT_FALSE(second.SubclassDlgItem(1758, &dlg));
    EXPECT_FALSE(second.SubclassDlgItem(4711, &dlg));
    EXPECT_EQ(edit.GetWindowText(), "1.5");
    EXPECT_EQ(dlg.GetDlgItem(1758), &edit);
}

// The default box and the default handling of real controls.
class TracingEdit : public CEdit {
public:
    std::string log;

protected:
    void OnSetFocus(CWnd* old) {
        CEdit::OnSetFocus(old);
        log += "in ";
    }
    void OnKillFocus(CWnd* next) {
        CEdit::OnKillFocus(next);
        log += "out ";
    }
    BOOL OnMouseWheel(UINT flags, short delta, CPoint p) {
        log += "wheel ";
        return CEdit::OnMouseWheel(flags, delta, p);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TracingEdit, CEdit)
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

TEST_F(DialogTest, EditKeepsItsOwnBehaviourUnderHandlersThatCallTheDefault) {
    TracingEdit edit;
    ASSERT_TRUE(dlg.Create(1749));
    ASSERT_TRUE(edit.SubclassDlgItem(1758, &dlg));
    dlg.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowActive(NativeWidget(dlg)));
    edit.SetFocus();
    edit.SetSel(0, -1);
    QTest::keyClicks(NativeWidget(edit), "12");
    EXPECT_EQ(edit.GetWindowText(), "12");
    dlg.GetDlgItem(1819)->SetFocus();
    EXPECT_EQ(edit.log.substr(edit.log.size() - 4), "out ");
    edit.SetFocus();
    edit.log.clear();
    edit.ShowWindow(SW_HIDE);
    EXPECT_EQ(edit.log, "out ") << "hiding a focused edit takes its focus at once";
}

TEST_F(DialogTest, LimitedTextIsCut) {
    CEdit edit;
    ASSERT_TRUE(dlg.Create(1749));
    edit.SubclassDlgItem(1758, &dlg);
    edit.SetWindowText("");
    edit.SetLimitText(3);
    QTest::keyClicks(NativeWidget(edit), "12345");
    EXPECT_EQ(edit.GetWindowText(), "123");
    int start = 0;
    int end = 0;
    edit.SetSel(1, 2);
    edit.GetSel(start, end);
    EXPECT_EQ(start, 1);
    EXPECT_EQ(end, 2);
}

TEST_F(DialogTest, ComboSelectsNothingUntilSomeoneChooses) {
    ASSERT_TRUE(dlg.Create(1749));
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWN, {0, 0, 100, 220}, &dlg, 2000));
    combo.SetWindowText("typed before");
    combo.AddString("false");
    combo.AddString("true");
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.GetWindowText(), "typed before");
    EXPECT_EQ(combo.SetCurSel(1), 1);
    EXPECT_EQ(combo.GetWindowText(), "true");
    QTest::keyClicks(NativeWidget(combo), "x");
    EXPECT_EQ(combo.GetCurSel(), CB_ERR) << "typing is no choice";
    EXPECT_EQ(combo.GetCount(), 2);
    EXPECT_EQ(combo.SetCurSel(5), CB_ERR);
    CRect closed;
    combo.GetClientRect(&closed);
    EXPECT_LT(closed.Height(), 40) << "the rest of the rect is for the open list";
    combo.ResetContent();
    EXPECT_EQ(combo.GetCount(), 0);
}

TEST_F(DialogTest, WheelOverAComboWithoutTheFocusChangesNothing) {
    Open();
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, {0, 0, 100, 220}, &dlg, 2000));
    combo.AddString("a");
    combo.AddString("b");
    combo.SetCurSel(0);
    const auto turn = [this, &combo] {
        const QPointF local(5, 5);
        QWheelEvent wheel(local, NativeWidget(combo)->mapToGlobal(local), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(NativeWidget(combo), &wheel);
    };
    dlg.GetDlgItem(1758)->SetFocus();
    turn();
    EXPECT_EQ(combo.GetCurSel(), 0);
    combo.SetFocus();
    turn();
    EXPECT_EQ(combo.GetCurSel(), 1);
}

TEST_F(DialogTest, OpenListTakesEnterAndEscapeForItself) {
    for (const DWORD style : {CBS_DROPDOWNLIST, CBS_DROPDOWN}) {
        Open();
        CComboBox combo;
        ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | style, {0, 0, 100, 220}, &dlg, 2000));
        combo.AddString("a");
        combo.AddString("b");
        combo.SetCurSel(0);
        combo.SetFocus();
        auto* native = qobject_cast<QComboBox*>(NativeWidget(combo));
        const auto press = [native, this](Qt::Key key) {
            // The system's keyboard goes to the window, the toolkit's list takes it from there.
            QTest::keyClick(Window(), key);
            QCoreApplication::processEvents();
            return native->view()->isVisible();
        };
        native->showPopup();
        EXPECT_TRUE(press(Qt::Key_Down));
        EXPECT_FALSE(press(Qt::Key_Escape));
        EXPECT_EQ(combo.GetCurSel(), 0);
        EXPECT_TRUE(dlg.IsWindowVisible());
        native->showPopup();
        EXPECT_TRUE(press(Qt::Key_Down));
        EXPECT_FALSE(press(Qt::Key_Return));
        EXPECT_EQ(combo.GetCurSel(), 1);
        EXPECT_TRUE(dlg.IsWindowVisible());
        press(Qt::Key_Escape);
        EXPECT_FALSE(dlg.IsWindowVisible()) << "with the list closed the key is the dialog's";
        combo.DestroyWindow();
        dlg.DestroyWindow();
    }
}

class OwnerDrawn : public CListBox {
public:
    std::vector<DRAWITEMSTRUCT> drawn;

protected:
    void DrawItem(DRAWITEMSTRUCT* item) override {
        drawn.push_back(*item);
        item->hDC->FillSolidRect(item->rcItem, item->itemState & ODS_SELECTED ? 0x0000FF : 0x00FF00);
    }
};

TEST_F(DialogTest, OwnerDrawnListPaintsItsRowsAtTheirHeight) {
    ASSERT_TRUE(dlg.Create(1749));
    OwnerDrawn list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY,
                            {0, 0, 120, 100}, &dlg, 2001));
    list.SetItemHeight(0, 20);
    list.SetItemData(list.AddString("a"), 11);
    list.SetItemData(list.AddString("b"), 22);
    list.SetCurSel(1);
    dlg.ShowWindow(SW_SHOW);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(NativeWidget(dlg)));
    CRect r;
    list.GetItemRect(1, &r);
    CRect client;
    list.GetClientRect(&client);
    EXPECT_EQ(r, CRect(0, 20, client.right, 40));
    const QImage picture = NativeWidget(list)->grab().toImage();
    ASSERT_GE(list.drawn.size(), 2U);
    EXPECT_EQ(list.drawn.back().itemData, 22U);
    EXPECT_EQ(list.drawn.back().itemState, ODS_SELECTED);
    const QPoint frame = NativeWidget(list)->findChild<QWidget*>("qt_scrollarea_viewport")->pos();
    EXPECT_EQ(picture.pixelColor(frame + QPoint(5, 5)), QColor(0, 255, 0));
    EXPECT_EQ(picture.pixelColor(frame + QPoint(5, 25)), QColor(255, 0, 0));
    CEdit inPlace;
    ASSERT_TRUE(inPlace.Create(WS_CHILD, {0, 0, 10, 10}, &list, 0));
    EXPECT_EQ(inPlace.GetParent(), &list);
}

TEST_F(DialogTest, ListKeepsSelectionsDataAndFindsTexts) {
    ASSERT_TRUE(dlg.Create(1749));
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | LBS_EXTENDEDSEL, {0, 0, 120, 100}, &dlg, 2002));
    for (const char* text : {"Camera", "camera2", "Lamp"}) {
        list.AddString(text);
    }
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
    EXPECT_EQ(list.SelectString(-1, "CAM"), 0);
    EXPECT_EQ(list.FindString(0, "cam"), 1);
    EXPECT_EQ(list.FindString(1, "cam"), 0) << "the search goes round";
    EXPECT_EQ(list.FindStringExact(-1, "lamp"), 2);
    EXPECT_EQ(list.SelectString(-1, "zzz"), LB_ERR);
    list.SetSel(-1, TRUE);
    list.SetSel(1, FALSE);
    int chosen[5];
    ASSERT_EQ(list.GetSelItems(5, chosen), 2);
    EXPECT_EQ(chosen[1], 2);
    EXPECT_EQ(list.SetItemData(9, 1), LB_ERR);
    EXPECT_EQ(list.DeleteString(0), 2);
    EXPECT_EQ(list.GetText(0), "camera2");
    EXPECT_EQ(list.SendMessage(LB_GETCOUNT), 2);
    list.ResetContent();
    EXPECT_EQ(list.GetCount(), 0);
}

// A check box that the program toggles itself, as "default handling, then ..." handlers do.
TEST_F(DialogTest, PlainCheckBoxChangesOnlyByProgram) {
    ASSERT_TRUE(dlg.Create(1749));
    CButton box;
    ASSERT_TRUE(box.Create("", WS_CHILD | WS_VISIBLE | BS_CHECKBOX, {0, 0, 15, 15}, &dlg, 2003));
    box.Click();
    EXPECT_EQ(box.GetCheck(), 0);
    box.SetCheck(1);
    box.Click();
    EXPECT_EQ(box.GetCheck(), 1);
    box.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_TRUE(qobject_cast<QAbstractButton*>(NativeWidget(box))->isDown());
    box.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_FALSE(qobject_cast<QAbstractButton*>(NativeWidget(box))->isDown());
    EXPECT_EQ(box.GetCheck(), 1);
}

class TestView : public CFormView {
    DECLARE_DYNCREATE(TestView)
public:
    static TestView* current;
    CTabCtrl tabs;
    CDialog page;
    int updates = 0;
    int changes = 0;

    ~TestView() override { current = nullptr; }

protected:
    TestView() : CFormView(1744) { current = this; }
    void DoDataExchange(CDataExchange* dx) override {
        CFormView::DoDataExchange(dx);
        DDX_Control(dx, 1743, tabs);
    }
    void OnUpdate(CView*, LPARAM, CObject*) override {
        if (++updates == 1) {
            page.Create(1745, &tabs);
            tabs.InsertItem(0, "Movies");
            tabs.InsertItem(1, "Other");
            page.ShowWindow(SW_SHOW);
        }
    }
    void OnTabChanged(NMHDR* header, LRESULT* result) {
        changes += header->idFrom == 1743 ? 1 : 100;
        *result = 0;
    }
    DECLARE_MESSAGE_MAP()
};

TestView* TestView::current = nullptr;

IMPLEMENT_DYNCREATE(TestView, CFormView)

BEGIN_MESSAGE_MAP(TestView, CFormView)
ON_NOTIFY(TCN_SELCHANGE, 1743, &TestView::OnTabChanged)
END_MESSAGE_MAP()

TEST_F(DialogTest, FormViewLivesInAHostsPanelAndDiesWithIt) {
    auto panel = std::make_unique<QWidget>();
    panel->resize(400, 600);
    CWnd* made = CreateFormView(RUNTIME_CLASS(TestView), panel.get(), 7);
    ASSERT_NE(made, nullptr);
    TestView* view = TestView::current;
    ASSERT_EQ(made, view);
    EXPECT_EQ(view->updates, 1);
    UpdateView(*view);
    EXPECT_EQ(view->updates, 2);
    EXPECT_EQ(view->tabs.GetItemCount(), 2);
    EXPECT_EQ(view->tabs.GetCurSel(), 0);
    EXPECT_EQ(view->page.GetParent(), &view->tabs);
    EXPECT_EQ(NativeWidget(*view)->parentWidget(), panel.get());
    CRect tab;
    view->tabs.GetClientRect(&tab);
    EXPECT_EQ(tab, CRect(0, 0, 273, 474)); // 182 by 292 units
    EXPECT_EQ(view->changes, 0);
    view->tabs.SetCurSel(1);
    EXPECT_EQ(view->changes, 0) << "only the user's change is told";
    panel.reset();
    EXPECT_EQ(TestView::current, nullptr);
}

TEST_F(DialogTest, UsersTabChangeIsNotified) {
    QWidget panel;
    panel.resize(400, 600);
    CreateFormView(RUNTIME_CLASS(TestView), &panel, 7);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
    auto* bar = NativeWidget(TestView::current->tabs)->findChild<QWidget*>();
    ASSERT_NE(bar, nullptr);
    QTest::keyClick(bar, Qt::Key_Right);
    EXPECT_EQ(TestView::current->changes, 1);
    EXPECT_EQ(TestView::current->tabs.GetCurSel(), 1);
}

TEST_F(DialogTest, EscapeInsideAPageDoesNotHideThePage) {
    QWidget panel;
    panel.resize(400, 600);
    CreateFormView(RUNTIME_CLASS(TestView), &panel, 7);
    panel.show();
    panel.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    TestView::current->page.GetDlgItem(1745)->SetFocus();
    QTest::keyClick(panel.windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(TestView::current->page.IsWindowVisible());
}

TEST_F(DialogTest, ViewClassesWithoutATemplateAreRefused) {
    QWidget panel;
    const ResourceScope none(nullptr);
    EXPECT_EQ(CreateFormView(RUNTIME_CLASS(TestView), &panel, 7), nullptr);
    EXPECT_EQ(CreateFormView(RUNTIME_CLASS(CWnd), &panel, 7), nullptr);
    EXPECT_EQ(TestView::current, nullptr);
}

TEST_F(DialogTest, EveryTruncatedTemplateIsRefused) {
    const auto whole = FindResource(TestResources(), RT_DIALOG, 1749);
    ASSERT_GT(whole.size(), 100U);
    for (std::size_t cut = 0; cut < whole.size(); ++cut) {
        std::vector<std::byte> file;
        const auto put = [&file](std::uint64_t value) {
            for (int i = 0; i < 4; ++i) {
                file.push_back(static_cast<std::byte>(value >> (8 * i)));
            }
        };
        for (const std::uint64_t word :
             {std::uint64_t{cut}, std::uint64_t{32}, std::uint64_t{0xFFFF | RT_DIALOG << 16},
              std::uint64_t{0xFFFF | 1749U << 16}, std::uint64_t{0}, std::uint64_t{0}, std::uint64_t{0},
              std::uint64_t{0}}) {
            put(word);
        }
        file.insert(file.end(), whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(cut));
        const ResourceModule module(file);
        const ResourceScope damaged(&module);
        SettingsDlg truncated;
        EXPECT_FALSE(truncated.Create(1749)) << cut;
    }
}

} // namespace

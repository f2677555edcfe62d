#include "tests/keys/AttrListFixture.h"

#include "framework/QtBridge.h"
#include "tests/support/MouseScript.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

void NotingAttrParent::FillList() {
    list.ResetContent();
    for (AttrRow* row : rows) {
        row->member->UpdateVisibility();
        if (!row->member->IsHidden()) {
            list.SetItemDataPtr(list.AddString(row->member->name), row);
        }
    }
}

void NotingAttrParent::UpdateRows() {
    log.push_back("UpdateRows");
    const int selected = list.GetCurSel();
    FillList();
    list.SetCurSel(selected);
}

void NotingAttrParent::ApplyChanges() {
    log.push_back("ApplyChanges");
    if (onApply) {
        onApply();
    }
}

void NotingAttrParent::Refresh() {
    log.push_back("Refresh");
    list.ResetRows();
    FillList();
}

AttrListTest::AttrListTest() {
    frame.Create(nullptr, "frame", WS_POPUP | WS_VISIBLE, CRect(0, 0, 400, 300), nullptr, 0);
    elsewhere.Create("EDIT", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(250, 0, 390, 20), &frame, 5);
    list.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY,
                CRect(0, 0, kWidth, kHeight), &frame, 6);
    // A frame that the toolkit draws round the list is outside of what counts here.
    CRect inside;
    list.GetClientRect(&inside);
    list.MoveWindow(0, 0, 2 * kWidth - inside.Width(), 2 * kHeight - inside.Height());
    list.InitControls(&around);
    ShowForMouse(frame);
    NativeWidget(frame)->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(NativeWidget(frame)));
}

AttrListTest::~AttrListTest() {
    list.ResetRows();
    frame.DestroyWindow();
    QCoreApplication::processEvents();
}

CMember& AttrListTest::AddRow(const char* name, std::uint32_t type, const void* initial, AttrBrowse browse) {
    return around.rows.Append(AttrRows::Make(name, type, initial, "CATEGORY", 0, browse));
}

CMember& AttrListTest::AddChoice(const char* name, const std::vector<std::string>& items, int chosen) {
    CMember& member = AddRow(name, MemberType::Int, &chosen);
    member.mode = CMember::kEnumerated;
    member.SetItemCount(static_cast<int>(items.size()));
    for (std::size_t i = 0; i < items.size(); ++i) {
        member.SetItem(static_cast<int>(i), items[i].c_str());
    }
    return member;
}

void AttrListTest::ClickAt(int x, int y) {
    MouseScript(list).Press(x, y).Release(x, y);
    QCoreApplication::processEvents();
}

void AttrListTest::Click(int row) {
    ClickAt(40, row * 20 + 10);
}

void AttrListTest::Type(const std::string& text) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
}

void AttrListTest::Wheel(int delta) {
    QWidget* edit = NativeWidget(list.inPlaceEdit);
    const QPointF place = edit->mapTo(edit->window(), edit->rect().center());
    QWheelEvent wheel(place, edit->window()->mapToGlobal(place), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel); // as the user's
    qApp->notify(edit->window()->windowHandle(), &wheel);
}

void AttrListTest::LeaveEditor() {
    elsewhere.SetFocus();
    QCoreApplication::processEvents();
}

CRect AttrListTest::PlaceOf(const CWnd& child) const {
    CRect rect;
    child.GetWindowRect(&rect);
    list.ScreenToClient(&rect);
    return rect;
}

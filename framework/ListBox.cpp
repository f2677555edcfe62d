#include "framework/ListBox.h"

#include "framework/private/NativeControls.h"

IMPLEMENT_DYNCREATE(CListBox, CWnd)

namespace {

NativeListBoxControl* Of(const CListBox& list) {
    return ControlOf<NativeListBoxControl>(list);
}

} // namespace

BOOL CListBox::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return CWnd::Create("LISTBOX", nullptr, style, rect, parent, id);
}

int CListBox::GetCount() const {
    const auto* list = Of(*this);
    return list ? list->Count() : LB_ERR;
}

int CListBox::AddString(const std::string& text) {
    auto* list = Of(*this);
    return list ? list->InsertItem(-1, QString::fromStdString(text)) : LB_ERR;
}

int CListBox::InsertString(int index, const std::string& text) {
    auto* list = Of(*this);
    return list && index <= list->Count()
               ? list->InsertItem(index < 0 ? list->Count() : index, QString::fromStdString(text))
               : LB_ERR;
}

int CListBox::DeleteString(UINT index) {
    auto* list = Of(*this);
    return list && list->RemoveItem(static_cast<int>(index)) ? list->Count() : LB_ERR;
}

void CListBox::ResetContent() {
    if (auto* list = Of(*this)) {
        list->Clear();
    }
}

int CListBox::GetCurSel() const {
    const auto* list = Of(*this);
    return list ? list->Current() : LB_ERR;
}

int CListBox::SetCurSel(int index) {
    auto* list = Of(*this);
    return list && list->SetCurrent(index) ? index : LB_ERR;
}

int CListBox::GetSel(int index) const {
    const auto* list = Of(*this);
    return list && index >= 0 && index < list->Count() ? list->IsSelected(index) : LB_ERR;
}

int CListBox::SetSel(int index, BOOL select) {
    auto* list = Of(*this);
    return list && list->Select(index, select != FALSE) ? 0 : LB_ERR;
}

int CListBox::GetSelItems(int most, int* indices) const {
    int stored = 0;
    for (int i = 0; i < GetCount() && stored < most; ++i) {
        if (GetSel(i) > 0) {
            indices[stored++] = i;
        }
    }
    return stored;
}

UINT_PTR CListBox::GetItemData(int index) const {
    const auto* list = Of(*this);
    return list ? list->ItemData(index) : 0;
}

int CListBox::SetItemData(int index, UINT_PTR data) {
    auto* list = Of(*this);
    return list && list->SetItemData(index, data) ? 0 : LB_ERR;
}

std::string CListBox::GetText(int index) const {
    const auto* list = Of(*this);
    return list ? list->ItemText(index).toStdString() : std::string();
}

int CListBox::GetText(int index, std::string& text) const {
    text = GetText(index);
    return static_cast<int>(text.size());
}

int CListBox::FindString(int after, const std::string& text) const {
    const auto* list = Of(*this);
    return list ? FindText(*list, after, QString::fromStdString(text), /*exact*/ false) : LB_ERR;
}

int CListBox::FindStringExact(int after, const std::string& text) const {
    const auto* list = Of(*this);
    return list ? FindText(*list, after, QString::fromStdString(text), /*exact*/ true) : LB_ERR;
}

int CListBox::SelectString(int after, const std::string& text) {
    const int found = FindString(after, text);
    return found >= 0 ? SetCurSel(found) : LB_ERR;
}

int CListBox::GetItemRect(int index, CRect* rect) const {
    const auto* list = Of(*this);
    if (!list || index < 0 || index >= list->Count()) {
        return LB_ERR;
    }
    *rect = list->ItemRect(index);
    return 0;
}

int CListBox::SetItemHeight(int /*index*/, UINT height) {
    auto* list = Of(*this);
    if (list) {
        list->SetItemHeight(static_cast<int>(height));
    }
    return list ? 0 : LB_ERR;
}

int CListBox::GetTopIndex() const {
    const auto* list = Of(*this);
    return list ? list->TopIndex() : 0;
}

int CListBox::SetTopIndex(int index) {
    auto* list = Of(*this);
    if (list) {
        list->SetTopIndex(index);
    }
    return list ? 0 : LB_ERR;
}

UINT CListBox::ItemFromPoint(CPoint point, BOOL& outside) const {
    const auto* list = Of(*this);
    const int found = list ? list->ItemAt(point) : -1;
    outside = found < 0;
    return static_cast<UINT>(outside ? std::max(0, GetCount() - 1) : found);
}

void CListBox::DrawItem(DRAWITEMSTRUCT* /*item*/) {
}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_DRAWITEM) {
        DrawItem(reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
        *result = TRUE;
        return TRUE;
    }
    return CWnd::OnChildNotify(message, wParam, lParam, result);
}

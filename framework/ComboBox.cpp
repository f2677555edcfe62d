#include "framework/ComboBox.h"

#include "framework/private/NativeControls.h"

IMPLEMENT_DYNCREATE(CComboBox, CWnd)

namespace {

NativeListControl* Of(const CComboBox& combo) {
    return ControlOf<NativeListControl>(combo);
}

} // namespace

BOOL CComboBox::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return CWnd::Create("COMBOBOX", nullptr, style, rect, parent, id);
}

int CComboBox::GetCount() const {
    const auto* list = Of(*this);
    return list ? list->Count() : CB_ERR;
}

int CComboBox::AddString(const std::string& text) {
    return InsertString(-1, text);
}

int CComboBox::InsertString(int index, const std::string& text) {
    auto* list = Of(*this);
    return list ? list->InsertItem(index, QString::fromStdString(text)) : CB_ERR;
}

int CComboBox::DeleteString(UINT index) {
    auto* list = Of(*this);
    return list && list->RemoveItem(static_cast<int>(index)) ? list->Count() : CB_ERR;
}

void CComboBox::ResetContent() {
    if (auto* list = Of(*this)) {
        list->Clear();
    }
}

int CComboBox::GetCurSel() const {
    const auto* list = Of(*this);
    return list ? list->Current() : CB_ERR;
}

int CComboBox::SetCurSel(int index) {
    auto* list = Of(*this);
    return list && list->SetCurrent(index) ? index : CB_ERR;
}

UINT_PTR CComboBox::GetItemData(int index) const {
    const auto* list = Of(*this);
    return list ? list->ItemData(index) : 0;
}

int CComboBox::SetItemData(int index, UINT_PTR data) {
    auto* list = Of(*this);
    return list && list->SetItemData(index, data) ? 0 : CB_ERR;
}

std::string CComboBox::GetLBText(int index) const {
    const auto* list = Of(*this);
    return list ? list->ItemText(index).toStdString() : std::string();
}

int CComboBox::FindStringExact(int after, const std::string& text) const {
    const auto* list = Of(*this);
    return list ? FindText(*list, after, QString::fromStdString(text), /*exact*/ true) : CB_ERR;
}

int CComboBox::SelectString(int after, const std::string& text) {
    const auto* list = Of(*this);
    const int found = list ? FindText(*list, after, QString::fromStdString(text), /*exact*/ false) : CB_ERR;
    return found >= 0 ? SetCurSel(found) : CB_ERR;
}

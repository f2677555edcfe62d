#include "framework/TabCtrl.h"

#include "framework/private/NativeControls.h"

IMPLEMENT_DYNCREATE(CTabCtrl, CWnd)

namespace {

NativeTabControl* Of(const CTabCtrl& tab) {
    return ControlOf<NativeTabControl>(tab);
}

} // namespace

BOOL CTabCtrl::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return CWnd::Create("SysTabControl32", nullptr, style, rect, parent, id);
}

int CTabCtrl::InsertItem(int index, const std::string& label) {
    auto* tab = Of(*this);
    return tab ? tab->InsertTab(index, QString::fromStdString(label)) : -1;
}

int CTabCtrl::GetItemCount() const {
    const auto* tab = Of(*this);
    return tab ? tab->TabCount() : 0;
}

int CTabCtrl::GetCurSel() const {
    const auto* tab = Of(*this);
    return tab ? tab->CurrentTab() : -1;
}

int CTabCtrl::SetCurSel(int index) {
    const int before = GetCurSel();
    if (auto* tab = Of(*this)) {
        tab->SetCurrentTab(index);
    }
    return before;
}

void CTabCtrl::AdjustRect(BOOL larger, CRect* rect) const {
    const auto* tab = Of(*this);
    if (!tab || larger) {
        return;
    }
    CRect whole;
    GetClientRect(&whole);
    const CRect page = tab->PageRect();
    *rect = CRect(rect->left + page.left, rect->top + page.top, rect->right - (whole.right - page.right),
                  rect->bottom - (whole.bottom - page.bottom));
}

#include "framework/Button.h"

IMPLEMENT_DYNCREATE(CButton, CWnd)

BOOL CButton::Create(const char* caption, DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return CWnd::Create("BUTTON", caption, style, rect, parent, id);
}

int CButton::GetCheck() const {
    // Asking changes nothing, though messages need an object that could change.
    return static_cast<int>(const_cast<CButton*>(this)->SendMessage(BM_GETCHECK));
}

void CButton::SetCheck(int check) {
    SendMessage(BM_SETCHECK, static_cast<WPARAM>(check));
}

void CButton::Click() {
    SendMessage(BM_CLICK);
}

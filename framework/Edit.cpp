#include "framework/Edit.h"

#include "framework/private/NativeControls.h"

IMPLEMENT_DYNCREATE(CEdit, CWnd)

BOOL CEdit::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return CWnd::Create("EDIT", nullptr, style, rect, parent, id);
}

void CEdit::SetSel(int start, int end, BOOL /*noScroll*/) {
    if (auto* edit = ControlOf<NativeEditControl>(*this)) {
        edit->SetSelection(start, end);
    }
}

void CEdit::GetSel(int& start, int& end) const {
    start = 0;
    end = 0;
    if (const auto* edit = ControlOf<NativeEditControl>(*this)) {
        edit->GetSelection(start, end);
    }
}

void CEdit::SetLimitText(UINT characters) {
    if (auto* edit = ControlOf<NativeEditControl>(*this)) {
        edit->SetLimit(static_cast<int>(characters));
    }
}

BOOL CEdit::SetReadOnly(BOOL readOnly) {
    auto* edit = ControlOf<NativeEditControl>(*this);
    if (edit) {
        edit->SetReadOnly(readOnly != FALSE);
    }
    return edit != nullptr;
}

#include "files/FilterDlgCheckbox.h"

#include "files/KeyFiltersListBox.h"

BEGIN_MESSAGE_MAP(CFilterDlgCheckbox, CButton)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

void CFilterDlgCheckbox::OnLButtonDown(UINT flags, CPoint point) {
    CButton::OnLButtonDown(flags, point);
    Press();
}

/// A double click is two presses.
void CFilterDlgCheckbox::OnLButtonDblClk(UINT flags, CPoint point) {
    CButton::OnLButtonDblClk(flags, point);
    Press();
}

void CFilterDlgCheckbox::OnLButtonUp(UINT flags, CPoint point) {
    CButton::OnLButtonUp(flags, point);
    CRect client;
    GetClientRect(&client);
    if (pressed && !client.PtInRect(point)) {
        Toggle();
    }
    pressed = false;
}

void CFilterDlgCheckbox::Press() {
    pressed = true;
    Toggle();
}

void CFilterDlgCheckbox::Toggle() {
    auto* list = dynamic_cast<CKeyFiltersListBox*>(GetParent());
    if (kind != -1 && list != nullptr) {
        SetCheck(list->ToggleVisible(kind) ? BST_CHECKED : BST_UNCHECKED);
    }
}

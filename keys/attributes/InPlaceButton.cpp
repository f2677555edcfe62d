#include "keys/attributes/InPlaceButton.h"

#include "keys/attributes/AttrPropCtrl.h"

BEGIN_MESSAGE_MAP(CInPlaceButton, CButton)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

void CInPlaceButton::OnLButtonDown(UINT flags, CPoint point) {
    CButton::OnLButtonDown(flags, point);
    OnBrowse();
}

void CInPlaceButton::OnBrowse() {
    if (CAttrPropCtrl* list = PropertyListOf(this)) {
        list->Browse(*this); // this may be gone now
    }
}

#include "keys/InPlaceCombobox.h"

#include "keys/AttrPropCtrl.h"

BEGIN_MESSAGE_MAP(CInPlaceCombobox, CComboBox)
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

void CInPlaceCombobox::OnKillFocus(CWnd* next) {
    CComboBox::OnKillFocus(next);
    if (CAttrPropCtrl* list = PropertyListOf(this)) {
        list->Commit();
    }
}

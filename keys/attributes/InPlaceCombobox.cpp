#include "keys/attributes/InPlaceCombobox.h"

#include "keys/attributes/AttrPropCtrl.h"

BEGIN_MESSAGE_MAP(CInPlaceCombobox, CComboBox)
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

void CInPlaceCombobox::OnKillFocus(CWnd* next) {
    CComboBox::OnKillFocus(next);
    if (CAttrPropCtrl* list = PropertyListOf(this)) {
        list->Commit();
    }
}

#pragma once

#include "framework/ComboBox.h"

/// The choice that lies over the value of the row under edit. A child of the property list.
class CInPlaceCombobox : public CComboBox {
    DECLARE_MESSAGE_MAP()

protected:
    void OnKillFocus(CWnd* next);
};

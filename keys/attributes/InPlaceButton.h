#pragma once

#include "framework/Button.h"
#include "keys/attributes/AttrRows.h"

/// The "..." beside the value of a row that can be browsed for. A child of the property list. Its fields are
/// those of the row under edit.
class CInPlaceButton : public CButton {
    DECLARE_MESSAGE_MAP()

public:
    std::string value;
    EditorObject* object = nullptr; ///< compared and handed on; the browser looks whether it is still there
    std::int32_t fxKind = 0;
    AttrBrowse browse = nullptr;

protected:
    void OnLButtonDown(UINT flags, CPoint point);

private:
    void OnBrowse();
};

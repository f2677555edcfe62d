#pragma once

#include "framework/Edit.h"

class CAttrPropCtrl;

/// The text field that lies over the value of the row under edit. A child of the property list.
class CInPlaceEdit : public CEdit {
    DECLARE_MESSAGE_MAP()

public:
    float step = 1.0f; ///< of a notch of the wheel
    float minimum = 0.0f;
    float current = 0.0f; ///< the number in the field when it got the focus or the wheel last
    float maximum = 0.0f;
    bool hasMinimum = false;
    bool hasMaximum = false;
    bool wrap = false; ///< past one end to the other

protected:
    void OnSetFocus(CWnd* old);
    void OnKillFocus(CWnd* next);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint screenPoint);

private:
    void Step(bool up);
};

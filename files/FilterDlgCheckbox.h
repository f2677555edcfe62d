#pragma once

#include "framework/Button.h"

/// The check box beside a line of the list of key kinds, which is its parent. It changes at the press, and
/// back where the mouse is let go outside it.
class CFilterDlgCheckbox : public CButton {
    DECLARE_MESSAGE_MAP()

public:
    int kind = -1; ///< of the line; -1 changes nothing
    bool pressed = false;

protected:
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);

private:
    void Press();
    void Toggle();
};

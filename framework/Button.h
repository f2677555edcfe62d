#pragma once

#include "framework/Wnd.h"

/// A push button, check box, radio button or group box, by its BS_ style.
class FILMS_API CButton : public CWnd {
    DECLARE_DYNCREATE(CButton)
public:
    using CWnd::Create;
    BOOL Create(const char* caption, DWORD style, const CRect& rect, CWnd* parent, UINT id);
    int GetCheck() const;
    void SetCheck(int check);
    /// Acts as a press by the user.
    void Click();
};

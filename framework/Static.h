#pragma once

#include "framework/Wnd.h"

/// A text or frame that takes no input.
class FILMS_API CStatic : public CWnd {
    DECLARE_DYNCREATE(CStatic)
public:
    using CWnd::Create;
    BOOL Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id = 0xFFFF);
};

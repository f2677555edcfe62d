#pragma once

#include "framework/Wnd.h"

inline constexpr DWORD CC_RGBINIT = 1, CC_FULLOPEN = 2, CC_ANYCOLOR = 0x100;

/// Asks for a colour, beginning with the given one.
class FILMS_API CColorDialog : public CWnd {
    DECLARE_DYNAMIC(CColorDialog)
public:
    explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parentWindow = nullptr);
    /// IDOK or IDCANCEL; after Cancel the colour is the first one.
    virtual int DoModal();
    COLORREF GetColor() const { return color; }
    void SetCurrentColor(COLORREF chosen) { color = chosen & 0xFFFFFF; }

private:
    COLORREF color;
    CWnd* owner;
};

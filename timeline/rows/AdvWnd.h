#pragma once

#include "framework/PaintDC.h"
#include "framework/Wnd.h"
#include "plugin/base/Export.h"

/// A child window that can paint through an off-screen bitmap: the common base of the timeline's windows, and
/// the one class that the library exports, under these very names. Its operations stand out of line, or they
/// would not be exported.
class FILMS_PLUGIN_API CadvWnd : public CWnd {
    DECLARE_DYNCREATE(CadvWnd)
    DECLARE_MESSAGE_MAP()

public:
    /// Bits of the background mode.
    static constexpr int kSystemColor = 1;
    static constexpr int kOwnColor = 2; ///< wins over the system colour

    CadvWnd();
    ~CadvWnd() override;

    BOOL Create(const char* className, const char* windowName, DWORD style, const CRect& rect, CWnd* parent,
                UINT id, CCreateContext* context = nullptr) override;
    /// 0 too when CreateChildren answers 0; the window is subclassed all the same.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    /// For derived classes that build children; above 0 on success.
    virtual int CreateChildren();
    virtual void InternalRedrawFG(CDC* dc, CRect rect);
    /// Fills the clip box of the surface; the rect plays no part.
    virtual void InternalRedrawBG(CDC* dc, CRect rect);

    void SetBackgroundMode(COLORREF color, int mode);
    int GetBackgroundMode() const;
    COLORREF GetBackgroundColor() const;
    /// Any number but 0 is on and kept as it is.
    void SetFlickerFree(int flag);
    int IsFlickerFree() const;
    /// The next paint draws the bitmap anew; without it an unchanged window is one block copy.
    void SetContentsChanged(int flag);
    int IsContentsChanged() const;
    /// Makes the bitmap anew in the size of the client area. Nothing without a window.
    void ReCreateBitmap();

    /// Registers the class "ADVANCED_WND" for users of the library.
    static void RegisterClass();
    static LRESULT DummyWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

protected:
    WNDPROC* GetSuperWndProcAddr() override;

    void OnPaint();
    void OnWinIniChange(const char* section);
    void OnSize(UINT type, int width, int height);
    void OnPaletteChanged(CWnd* focus);

    int flickerFree = 0;
    int contentsChanged = 0;
    CBitmap* bitmap = nullptr; ///< owned
    int backgroundMode = kSystemColor;
    COLORREF backgroundColor = 0;
};

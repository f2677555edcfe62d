#pragma once

#include "framework/Gdi.h"

#include <memory>
#include <span>

class CWnd;
struct SurfaceState;

struct TEXTMETRIC {
    int tmHeight = 0;
    int tmAscent = 0;
    int tmDescent = 0;
    int tmAveCharWidth = 0;
    int tmMaxCharWidth = 0;
};

/// A surface to draw on, in logical pixels. Lines leave out their end point, rects their right and bottom
/// edge; nothing is smoothed but text. Objects selected into it must outlive their selection or be put back.
class FILMS_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC();
    ~CDC() override;

    /// A memory surface; it draws nothing until a bitmap is selected.
    BOOL CreateCompatibleDC(const CDC* like);

    CPen* SelectObject(CPen* object);
    CBrush* SelectObject(CBrush* object);
    CFont* SelectObject(CFont* object);
    CBitmap* SelectObject(CBitmap* object);
    CGdiObject* SelectStockObject(int number);

    CPoint MoveTo(int x, int y);
    CPoint MoveTo(CPoint p) { return MoveTo(p.x, p.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(CPoint p) { return LineTo(p.x, p.y); }
    /// An inverted rect is turned round, one of no width or height draws nothing. With the null pen the same
    /// pixels are filled that a pen of width 1 would cover.
    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(const CRect& r) { return Rectangle(r.left, r.top, r.right, r.bottom); }
    BOOL Polygon(const CPoint* points, int count);
    BOOL FillRect(const CRect& rect, CBrush* brush);
    void FillSolidRect(const CRect& rect, COLORREF color);
    COLORREF SetPixel(int x, int y, COLORREF color);
    /// Memory surfaces only; 0xFFFFFFFF elsewhere and outside the bitmap.
    COLORREF GetPixel(int x, int y) const;

    /// SRCCOPY from a memory surface; BLACKNESS and WHITENESS need none.
    BOOL BitBlt(int x, int y, int width, int height, const CDC* source, int sourceX, int sourceY, DWORD rop);
    BOOL StretchBlt(int x, int y, int width, int height, const CDC* source, int sourceX, int sourceY,
                    int sourceWidth, int sourceHeight, DWORD rop);

    BOOL TextOut(int x, int y, const std::string& text);
    /// Returns the height of the text in pixels. DT_CALCRECT changes the rect and draws nothing.
    int DrawText(const std::string& text, CRect* rect, UINT format);
    int DrawText(const std::string& text, const CRect& rect, UINT format);
    CSize GetTextExtent(const std::string& text) const;
    BOOL GetTextMetrics(TEXTMETRIC* metrics) const;

    COLORREF SetTextColor(COLORREF color);
    COLORREF SetBkColor(COLORREF color);
    int SetBkMode(int mode);
    int GetBkMode() const;

    /// What drawing can reach, in the surface's coordinates; empty for a surface that only measures.
    int GetClipBox(CRect* box) const;
    int IntersectClipRect(const CRect& rect);
    /// Undoes IntersectClipRect.
    void ResetClip();

    static CDC* FromHandle(HDC handle) { return handle; }
    SurfaceState& State() const { return *state; }

private:
    std::unique_ptr<SurfaceState> state;
};

#pragma once

#include "framework/Object.h"
#include "framework/Types.h"

#include <memory>
#include <string>

class BitmapData;

/// Pens, brushes, fonts and bitmaps are plain values until they are drawn with: they may be made before the
/// application and outlive it.
class FILMS_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    /// Back to the state after construction. A surface that still has the object selected keeps drawing with
    /// it.
    virtual BOOL DeleteObject() = 0;
};

class FILMS_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    /// Styles PS_SOLID, PS_DASH, PS_DOT, PS_NULL; a width of 0 is one pixel.
    CPen(int penStyle, int penWidth, COLORREF penColor) : style(penStyle), width(penWidth), color(penColor) {}
    BOOL CreatePen(int penStyle, int penWidth, COLORREF penColor);
    BOOL DeleteObject() override;

    int style = 0;
    int width = 0;
    COLORREF color = 0;
};

class FILMS_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    explicit CBrush(COLORREF brushColor) : color(brushColor) {}
    BOOL CreateSolidBrush(COLORREF brushColor);
    BOOL DeleteObject() override;

    bool hollow = false;
    COLORREF color = 0xFFFFFF;
};

class FILMS_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    /// Tenths of a point at 96 pixels an inch: 80 is 8 points, 11 pixels.
    BOOL CreatePointFont(int tenthsOfPoint, const char* faceName, CDC* dc = nullptr);
    BOOL DeleteObject() override;

    std::string face;
    int pixelHeight = 12;
    bool bold = false;
    bool italic = false;
};

struct BITMAP {
    int bmWidth = 0;
    int bmHeight = 0;
    int bmBitsPixel = 0;
};

class FILMS_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap();
    ~CBitmap() override;
    /// A bitmap of the current resource module. FALSE when there is none or it cannot be read.
    BOOL LoadBitmap(UINT id);
    /// Black pixels. A width or height of 0 is allowed and holds nothing; more than 64 million pixels are
    /// refused.
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    /// The number of bytes of BITMAP filled in; 0 without a bitmap.
    int GetBitmap(BITMAP* out) const;
    BOOL DeleteObject() override;
    BOOL SavePng(const std::string& path) const;

    const std::shared_ptr<BitmapData>& Data() const { return data; }

private:
    std::shared_ptr<BitmapData> data;
};

/// Shared, never deleted; null for an unknown number.
FILMS_API CGdiObject* StockObject(int number);
FILMS_API COLORREF GetSysColor(int index);

#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

class CDC;
class NativeWindow;
class ResourceModule;

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using UINT_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
/// 0x00BBGGRR: 0x0000FF is pure red.
using COLORREF = std::uint32_t;
/// Handles are the objects behind the wrappers; null is "no window", "no surface", "no module".
using HWND = NativeWindow*;
using HDC = CDC*;
using HINSTANCE = const ResourceModule*;

#ifndef TRUE
inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;
#endif

constexpr COLORREF RGB(int r, int g, int b) {
    return static_cast<COLORREF>((r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16));
}
constexpr int GetRValue(COLORREF c) {
    return static_cast<int>(c & 0xFF);
}
constexpr int GetGValue(COLORREF c) {
    return static_cast<int>((c >> 8) & 0xFF);
}
constexpr int GetBValue(COLORREF c) {
    return static_cast<int>((c >> 16) & 0xFF);
}

constexpr WORD LOWORD(std::uintptr_t v) {
    return static_cast<WORD>(v & 0xFFFF);
}
constexpr WORD HIWORD(std::uintptr_t v) {
    return static_cast<WORD>((v >> 16) & 0xFFFF);
}
constexpr WPARAM MAKEWPARAM(UINT low, UINT high) {
    return (low & 0xFFFFU) | ((high & 0xFFFFU) << 16);
}
/// Two signed 16-bit numbers in one word, as points and sizes travel in messages.
constexpr LPARAM MAKELPARAM(int low, int high) {
    return static_cast<LPARAM>((static_cast<UINT>(low) & 0xFFFFU) |
                               ((static_cast<UINT>(high) & 0xFFFFU) << 16));
}
constexpr int GET_X_LPARAM(LPARAM v) {
    return static_cast<std::int16_t>(LOWORD(static_cast<UINT_PTR>(v)));
}
constexpr int GET_Y_LPARAM(LPARAM v) {
    return static_cast<std::int16_t>(HIWORD(static_cast<UINT_PTR>(v)));
}

struct CSize {
    int cx = 0;
    int cy = 0;

    bool operator==(const CSize&) const = default;
};

struct CPoint {
    int x = 0;
    int y = 0;

    constexpr CPoint() = default;
    constexpr CPoint(int px, int py) : x(px), y(py) {}

    constexpr void Offset(int dx, int dy) {
        x += dx;
        y += dy;
    }
    constexpr CPoint operator+(CPoint o) const { return {x + o.x, y + o.y}; }
    constexpr CPoint operator-(CPoint o) const { return {x - o.x, y - o.y}; }
    bool operator==(const CPoint&) const = default;
};

/// Left and top belong to the rect, right and bottom do not.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr CRect() = default;
    constexpr CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    constexpr CRect(CPoint topLeft, CSize size)
        : left(topLeft.x), top(topLeft.y), right(topLeft.x + size.cx), bottom(topLeft.y + size.cy) {}

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CSize Size() const { return {Width(), Height()}; }
    constexpr CPoint TopLeft() const { return {left, top}; }
    constexpr CPoint BottomRight() const { return {right, bottom}; }
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr bool PtInRect(CPoint p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }

    constexpr void SetRectEmpty() { *this = CRect(); }
    constexpr void OffsetRect(int dx, int dy) { *this = CRect(left + dx, top + dy, right + dx, bottom + dy); }
    constexpr void InflateRect(int dx, int dy) {
        *this = CRect(left - dx, top - dy, right + dx, bottom + dy);
    }
    constexpr void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
    constexpr void NormalizeRect() {
        *this =
            CRect(std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom));
    }
    /// False, and an empty rect, when the two have no pixel in common.
    constexpr bool IntersectRect(const CRect& a, const CRect& b) {
        *this = CRect(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                      std::min(a.bottom, b.bottom));
        if (IsRectEmpty()) {
            SetRectEmpty();
            return false;
        }
        return true;
    }
    bool operator==(const CRect&) const = default;
};

using POINT = CPoint;
using RECT = CRect;
using SIZE = CSize;

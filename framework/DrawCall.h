#pragma once

#include "framework/Types.h"

#include <string>
#include <vector>

enum class DrawKind { Line, Rectangle, Polygon, FillRect, Text, Copy, Pixel };

/// One call as it reached a surface, for tests that look at order, pens and places rather than at pixels.
struct DrawCall {
    DrawKind kind = DrawKind::Line;
    const CDC* surface = nullptr;
    int penStyle = 0;
    int penWidth = 0;
    COLORREF penColor = 0;
    bool hollow = false;
    COLORREF brushColor = 0;
    COLORREF textColor = 0;
    CRect rect;                 // a line runs from its top left to its bottom right
    std::vector<CPoint> points; // of a polygon
    std::string text;
    UINT format = 0; // of DrawText
};

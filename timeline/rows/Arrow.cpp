#include "timeline/rows/Arrow.h"

#include "framework/Constants.h"
#include "framework/SelectionScope.h"

std::array<CPoint, 8> ArrowPoints(const CRect& rect, bool pointsUp) {
    const auto [l, t, r, b] = rect;
    const int w3 = (r - l) / 3;
    const int midX = l + (r - l) / 2;
    const int midY = t + (b - t) / 2;
    if (pointsUp) {
        // Required: the seventh point is measured from the bottom, which in an odd height is one pixel off.
        return {CPoint{r, midY},           {midX, t}, {l, midY}, {l + w3, midY}, {l + w3, b}, {r - w3, b},
                {r - w3, b - (b - t) / 2}, {r, midY}};
    }
    return {CPoint{l, midY}, {midX, b},   {r, midY},      {r - w3, midY},
            {r - w3, t},     {l + w3, t}, {l + w3, midY}, {l, midY}};
}

void DrawArrow(CDC* dc, const CRect& rect, bool pointsUp, COLORREF color) {
    CPen pen(PS_SOLID, 0, 0);
    CBrush brush(color);
    const SelectionScope<CPen> penScope(*dc, pen);
    const SelectionScope<CBrush> brushScope(*dc, brush);
    const std::array<CPoint, 8> points = ArrowPoints(rect, pointsUp);
    dc->Polygon(points.data(), static_cast<int>(points.size()));
}

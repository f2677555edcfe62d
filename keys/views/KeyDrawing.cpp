#include "keys/views/KeyDrawing.h"

#include "framework/Constants.h"

CFont& TimelineFont() {
    constexpr int kTenthsOfPoint = 80;
    static CFont font;
    if (font.face.empty()) {
        font.CreatePointFont(kTenthsOfPoint, "Arial");
    }
    return font;
}

void DrawKeyOutline(CDC& dc, const CRect& rect, const CRect* clip) {
    constexpr int kGrow = 5;
    CRect frame = rect;
    frame.InflateRect(kGrow, kGrow);
    if (clip != nullptr && !frame.IntersectRect(frame, *clip)) {
        return;
    }
    SelectionScope<CBrush> hollow(dc, *static_cast<CBrush*>(StockObject(NULL_BRUSH)));
    dc.Rectangle(frame);
}

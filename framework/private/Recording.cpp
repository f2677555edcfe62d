#include "framework/private/Recording.h"

#include "framework/private/Surface.h"
#include "framework/TestHooks.h"

namespace recording {
namespace {

bool IsOn() {
    return static_cast<bool>(Hooks().drawing);
}

DrawCall CallOf(const CDC& dc, DrawKind kind, const CRect& rect) {
    const SurfaceState& s = dc.State();
    DrawCall call;
    call.kind = kind;
    call.surface = &dc;
    call.penStyle = s.penStyle;
    call.penWidth = s.penWidth;
    call.penColor = s.penColor;
    call.hollow = s.hollow;
    call.brushColor = s.brushColor;
    call.textColor = s.textColor;
    call.rect = rect;
    return call;
}

} // namespace

void Note(const CDC& dc, DrawKind kind, const CRect& rect) {
    if (IsOn()) {
        Hooks().drawing(CallOf(dc, kind, rect));
    }
}

void NoteFill(const CDC& dc, const CRect& rect, COLORREF color, DrawKind kind) {
    if (IsOn()) {
        DrawCall call = CallOf(dc, kind, rect);
        call.hollow = false;
        call.brushColor = color;
        Hooks().drawing(call);
    }
}

void NotePolygon(const CDC& dc, std::span<const CPoint> points) {
    if (IsOn()) {
        DrawCall call = CallOf(dc, DrawKind::Polygon, {});
        call.points.assign(points.begin(), points.end());
        Hooks().drawing(call);
    }
}

void NoteText(const CDC& dc, const CRect& rect, const std::string& text, UINT format) {
    if (IsOn()) {
        DrawCall call = CallOf(dc, DrawKind::Text, rect);
        call.text = text;
        call.format = format;
        Hooks().drawing(call);
    }
}

} // namespace recording

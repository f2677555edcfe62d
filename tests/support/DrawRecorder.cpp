#include "tests/support/DrawRecorder.h"

#include "framework/QtBridge.h"
#include "framework/Wnd.h"

#include <QPixmap>
#include <QWidget>

#include <cstdio>

namespace {

std::string Hex(COLORREF color) {
    char text[16];
    std::snprintf(text, sizeof text, "%06X", static_cast<unsigned>(color));
    return text;
}

std::string At(CPoint p) {
    return std::to_string(p.x) + "," + std::to_string(p.y);
}

std::string Area(const CRect& r) {
    return At(r.TopLeft()) + "," + At(r.BottomRight());
}

std::string PenOf(const DrawCall& call) {
    return " pen " + std::to_string(call.penStyle) + "/" + std::to_string(call.penWidth) + "/" +
           Hex(call.penColor);
}

std::string BrushOf(const DrawCall& call) {
    return " brush " + (call.hollow ? "none" : Hex(call.brushColor));
}

std::string Points(const DrawCall& call) {
    std::string all;
    for (const CPoint& p : call.points) {
        all += " " + At(p);
    }
    return all;
}

std::string TextOf(const DrawCall& call) {
    const std::string words = " '" + call.text + "'";
    return call.format == 0 ? "text " + At(call.rect.TopLeft()) + words
                            : "text " + Area(call.rect) + words + " format " + std::to_string(call.format);
}

} // namespace

std::string DescribeCall(const DrawCall& call) {
    switch (call.kind) {
    case DrawKind::Line:
        return "line " + At(call.rect.TopLeft()) + " " + At(call.rect.BottomRight()) + PenOf(call);
    case DrawKind::Rectangle:
        return "rect " + Area(call.rect) + PenOf(call) + BrushOf(call);
    case DrawKind::Polygon:
        return "poly" + Points(call) + PenOf(call) + BrushOf(call);
    case DrawKind::FillRect:
        return "fill " + Area(call.rect) + " " + Hex(call.brushColor);
    case DrawKind::Text:
        return TextOf(call);
    case DrawKind::Copy:
        return "copy " + Area(call.rect);
    case DrawKind::Pixel:
        return "pixel " + At(call.rect.TopLeft()) + " " + Hex(call.brushColor);
    }
    return {};
}

DrawRecorder::DrawRecorder() {
    Hooks().drawing = [this](const DrawCall& call) { calls.push_back(call); };
}

std::vector<std::string> DrawRecorder::Paint(CWnd& window) {
    calls.clear();
    NativeWidget(window)->grab();
    return Lines();
}

std::vector<std::string> DrawRecorder::Lines() const {
    std::vector<std::string> lines;
    lines.reserve(calls.size());
    for (const DrawCall& call : calls) {
        lines.push_back(DescribeCall(call));
    }
    return lines;
}

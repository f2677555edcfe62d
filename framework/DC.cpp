#include "framework/DC.h"

#include "framework/Constants.h"
#include "framework/private/Face.h"
#include "framework/private/Rasterizer.h"
#include "framework/private/Recording.h"
#include "framework/private/Surface.h"
#include "processor/UpperHalves.h"

#include <utility>

IMPLEMENT_DYNAMIC(CDC, CObject)

CDC::CDC() : state(std::make_unique<SurfaceState>()) {
}
CDC::~CDC() = default;

BOOL CDC::CreateCompatibleDC(const CDC* /*like*/) {
    state = std::make_unique<SurfaceState>();
    state->isMemory = true;
    return TRUE;
}

CPen* CDC::SelectObject(CPen* object) {
    if (!object) {
        return nullptr;
    }
    CPen* old = state->selectedPen ? state->selectedPen : static_cast<CPen*>(StockObject(BLACK_PEN));
    state->selectedPen = object;
    state->penStyle = object->style;
    state->penWidth = object->width;
    state->penColor = object->color & 0xFFFFFF;
    return old;
}

CBrush* CDC::SelectObject(CBrush* object) {
    if (!object) {
        return nullptr;
    }
    CBrush* old =
        state->selectedBrush ? state->selectedBrush : static_cast<CBrush*>(StockObject(WHITE_BRUSH));
    state->selectedBrush = object;
    state->hollow = object->hollow;
    state->brushColor = object->color & 0xFFFFFF;
    return old;
}

CFont* CDC::SelectObject(CFont* object) {
    if (!object) {
        return nullptr;
    }
    CFont* old = state->selectedFont ? state->selectedFont : static_cast<CFont*>(StockObject(SYSTEM_FONT));
    state->selectedFont = object;
    state->face = &surface::FaceOf(*object);
    return old;
}

CBitmap* CDC::SelectObject(CBitmap* object) {
    // The bitmap of a memory surface that has none selected: one that holds nothing.
    static CBitmap nothing;
    if (!object || !state->isMemory) {
        return nullptr;
    }
    CBitmap* old = state->selectedBitmap ? state->selectedBitmap : &nothing;
    state->SelectBitmap(object);
    return old;
}

CGdiObject* CDC::SelectStockObject(int number) {
    CGdiObject* object = StockObject(number);
    if (auto* pen = dynamic_cast<CPen*>(object)) {
        return SelectObject(pen);
    }
    if (auto* brush = dynamic_cast<CBrush*>(object)) {
        return SelectObject(brush);
    }
    return SelectObject(dynamic_cast<CFont*>(object));
}

CPoint CDC::MoveTo(int x, int y) {
    const CPoint old = state->position;
    state->position = {x, y};
    state->dashPhase = 0;
    return old;
}

namespace {

raster::Pen PenOf(const SurfaceState& s) {
    return {s.penStyle, s.penWidth};
}

CRect RectOf(const raster::Run& run) {
    return {run.x, run.y, run.x + run.w, run.y + run.h};
}

// Fills runs in the pen's colour; the gaps of a dashed pen only show in opaque mode.
class PenSink final : public raster::Sink {
public:
    explicit PenSink(SurfaceState& s) : state(s) {}
    void Take(const raster::Run& run) override {
        if (!run.gap || state.backMode == OPAQUE) {
            state.Fill(RectOf(run), run.gap ? state.backColor : state.penColor);
        }
    }

private:
    SurfaceState& state;
};

class BrushSink final : public raster::Sink {
public:
    explicit BrushSink(SurfaceState& s) : state(s) {}
    void Take(const raster::Run& run) override { state.Fill(RectOf(run), state.brushColor); }

private:
    SurfaceState& state;
};

} // namespace

BOOL CDC::LineTo(int x, int y) {
    const CPoint from = state->position;
    recording::Note(*this, DrawKind::Line, CRect(from.x, from.y, x, y));
    if (state->painter) {
        PenSink pen(*state);
        raster::Line(from, {x, y}, PenOf(*state), state->clip, state->dashPhase, pen);
    }
    state->position = {x, y};
    return TRUE;
}

BOOL CDC::Rectangle(int left, int top, int right, int bottom) {
    CRect r(left, top, right, bottom);
    recording::Note(*this, DrawKind::Rectangle, r);
    r.NormalizeRect();
    if (!state->painter || r.IsRectEmpty()) {
        return TRUE;
    }
    CRect inside;
    if (!state->hollow && inside.IntersectRect(r, state->clip)) {
        state->Fill(inside, state->brushColor);
    }
    PenSink pen(*state);
    raster::Frame(r, PenOf(*state), state->clip, pen);
    return TRUE;
}

BOOL CDC::Polygon(const CPoint* points, int count) {
    if (!points || count < 2) {
        return FALSE;
    }
    const std::span<const CPoint> all(points, static_cast<std::size_t>(count));
    recording::NotePolygon(*this, all);
    if (!state->painter) {
        return TRUE;
    }
    if (!state->hollow) {
        BrushSink brush(*state);
        raster::FillPolygon(all, state->clip, brush);
    }
    PenSink pen(*state);
    int phase = 0;
    for (int i = 0; i < count; ++i) {
        raster::Line(points[i], points[(i + 1) % count], PenOf(*state), state->clip, phase, pen);
    }
    return TRUE;
}

BOOL CDC::FillRect(const CRect& rect, CBrush* brush) {
    if (!brush) {
        return FALSE;
    }
    if (!brush->hollow) {
        FillSolidRect(rect, brush->color);
    }
    return TRUE;
}

void CDC::FillSolidRect(const CRect& rect, COLORREF color) {
    recording::NoteFill(*this, rect, color);
    CRect r;
    if (state->painter && r.IntersectRect(rect, state->clip)) {
        state->Fill(r, color);
    }
}

COLORREF CDC::SetPixel(int x, int y, COLORREF color) {
    recording::NoteFill(*this, CRect(x, y, x + 1, y + 1), color, DrawKind::Pixel);
    if (state->painter && state->clip.PtInRect({x, y})) {
        state->Fill({x, y, x + 1, y + 1}, color);
    }
    return color & 0xFFFFFF;
}

COLORREF CDC::GetPixel(int x, int y) const {
    constexpr COLORREF kInvalid = 0xFFFFFFFF;
    if (!state->bitmap || !state->bounds.PtInRect({x, y})) {
        return kInvalid;
    }
    const QImage& image = state->bitmap->Image();
    const double ratio = image.devicePixelRatio();
    const QRgb p = image.pixel(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
    return RGB(qRed(p), qGreen(p), qBlue(p));
}

BOOL CDC::BitBlt(int x, int y, int width, int height, const CDC* source, int sourceX, int sourceY,
                 DWORD rop) {
    return StretchBlt(x, y, width, height, source, sourceX, sourceY, width, height, rop);
}

BOOL CDC::StretchBlt(int x, int y, int width, int height, const CDC* source, int sourceX, int sourceY,
                     int sourceWidth, int sourceHeight, DWORD rop) {
    const CRect target(x, y, x + width, y + height);
    if (rop == BLACKNESS || rop == WHITENESS) {
        FillSolidRect(target, rop == WHITENESS ? 0xFFFFFF : 0);
        return TRUE;
    }
    recording::Note(*this, DrawKind::Copy, target);
    BitmapData* from = source ? source->State().bitmap.get() : nullptr;
    if (rop != SRCCOPY || !from || width < 0 || height < 0 || sourceWidth < 0 || sourceHeight < 0) {
        return FALSE;
    }
    if (!state->painter || from->Image().isNull() || target.IsRectEmpty()) {
        return TRUE;
    }
    const double ratio = from->Image().devicePixelRatio();
    const QRectF part(sourceX * ratio, sourceY * ratio, sourceWidth * ratio, sourceHeight * ratio);
    // A copy within one bitmap must not read what it has just written.
    const QImage image = from == state->bitmap.get() ? from->Image().copy() : from->Image();
    state->ClippedPainter().drawImage(QRectF(x, y, width, height), image, part);
    processor::ClearUpperHalves();
    return TRUE;
}

COLORREF CDC::SetTextColor(COLORREF color) {
    return std::exchange(state->textColor, color & 0xFFFFFF);
}
COLORREF CDC::SetBkColor(COLORREF color) {
    return std::exchange(state->backColor, color & 0xFFFFFF);
}
int CDC::SetBkMode(int mode) {
    return std::exchange(state->backMode, mode);
}
int CDC::GetBkMode() const {
    return state->backMode;
}

int CDC::GetClipBox(CRect* box) const {
    constexpr int kNullRegion = 1;
    constexpr int kSimpleRegion = 2;
    *box = state->clip;
    return state->clip.IsRectEmpty() ? kNullRegion : kSimpleRegion;
}

int CDC::IntersectClipRect(const CRect& rect) {
    CRect cut;
    cut.IntersectRect(rect, state->clip);
    state->SetClip(cut);
    return GetClipBox(&cut);
}

void CDC::ResetClip() {
    state->SetClip(state->bounds);
}

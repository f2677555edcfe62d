#include "framework/private/Surface.h"

#include "framework/private/Face.h"

#include <QColor>

void SurfaceState::Borrow(QPainter& p, const CRect& area) {
    painter = &p;
    bounds = area;
    SetClip(area);
}

void SurfaceState::SelectBitmap(CBitmap* b) {
    ownPainter.reset();
    painter = nullptr;
    selectedBitmap = b;
    bitmap = b->Data();
    bounds = bitmap ? CRect(CPoint(), bitmap->size) : CRect();
    if (bitmap && !bitmap->image.isNull()) {
        ownPainter = std::make_unique<QPainter>(&bitmap->image);
        painter = ownPainter.get();
    }
    SetClip(bounds);
}

void SurfaceState::SetClip(const CRect& rect) {
    clip = rect;
    if (painter) {
        painter->setClipRect(rect.left, rect.top, rect.Width(), rect.Height());
    }
}

surface::Face& SurfaceState::Font() {
    if (!face) {
        face = &surface::DefaultFace();
    }
    return *face;
}

namespace surface {

QColor ColorOf(COLORREF c) {
    return {GetRValue(c), GetGValue(c), GetBValue(c)};
}

QImage ImageOf(const CBitmap& bitmap) {
    return bitmap.Data() ? bitmap.Data()->image : QImage();
}

} // namespace surface

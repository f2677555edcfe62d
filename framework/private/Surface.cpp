#include "framework/private/Surface.h"

#include "framework/private/Face.h"
#include "framework/TestHooks.h"
#include "processor/UpperHalves.h"

#include <QColor>

#include <cmath>
#include <utility>

void SurfaceState::Borrow(QPainter& p, const CRect& area) {
    painter = &p;
    pixels = Pixels();
    bounds = area;
    SetClip(area);
}

void SurfaceState::WriteDirectly(const QRegion& visible) {
    if (!Hooks().paintersOnly) {
        pixels = Pixels(*painter, visible);
        pixels.SetClip(clip);
    }
}

BitmapData::BitmapData(QImage made, bool alpha)
    : size{made.width(), made.height()}, hasAlpha(alpha), image(std::move(made)) {
}

QImage& BitmapData::Image() {
    if (image.isNull() && size.cx > 0 && size.cy > 0) {
        image = QImage(static_cast<int>(std::ceil(size.cx * pixelRatio)),
                       static_cast<int>(std::ceil(size.cy * pixelRatio)), QImage::Format_RGB32);
        image.setDevicePixelRatio(pixelRatio);
        image.fill(Qt::black);
        processor::ClearUpperHalves();
    }
    return image;
}

void SurfaceState::SelectBitmap(CBitmap* b) {
    ownPainter.reset();
    painter = nullptr;
    pixels = Pixels();
    selectedBitmap = b;
    bitmap = b->Data();
    bounds = bitmap ? CRect(CPoint(), bitmap->size) : CRect();
    if (bitmap && !bitmap->Image().isNull()) {
        ownPainter = std::make_unique<QPainter>(&bitmap->Image());
        painter = ownPainter.get();
    }
    SetClip(bounds);
    if (painter) {
        WriteDirectly(QRect(0, 0, bounds.Width(), bounds.Height()));
    }
}

void SurfaceState::SetClip(const CRect& rect) {
    clip = rect;
    clipIsNew = true;
    pixels.SetClip(rect);
}

void SurfaceState::Fill(const CRect& rect, COLORREF color) {
    if (pixels.Usable()) {
        pixels.Fill(rect, qRgb(GetRValue(color), GetGValue(color), GetBValue(color)));
    } else {
        ClippedPainter().fillRect(rect.left, rect.top, rect.Width(), rect.Height(), surface::ColorOf(color));
        processor::ClearUpperHalves();
    }
}

QPainter& SurfaceState::ClippedPainter() {
    if (std::exchange(clipIsNew, false)) {
        painter->setClipRect(clip.left, clip.top, clip.Width(), clip.Height());
    }
    return *painter;
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
    return bitmap.Data() ? bitmap.Data()->Image() : QImage();
}

} // namespace surface

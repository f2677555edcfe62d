#include "framework/private/Pixels.h"

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

bool HasPlainPixels(const QImage& image) {
    const QImage::Format format = image.format();
    // A shared image must not be written behind the toolkit's back.
    return (format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 ||
            format == QImage::Format_ARGB32_Premultiplied) &&
           image.isDetached();
}

bool DrawsPlainly(const QPainter& painter) {
    return painter.compositionMode() == QPainter::CompositionMode_SourceOver && painter.opacity() == 1.0 &&
           !painter.hasClipping();
}

// The image that the painter writes into by itself; null when it does something else.
const QImage* ImageUnder(const QPainter& painter) {
    const QPaintEngine* engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster || !DrawsPlainly(painter)) {
        return nullptr;
    }
    const QPaintDevice* device = engine->paintDevice();
    if (!device || device->devType() != QInternal::Image) {
        return nullptr;
    }
    const auto* image = static_cast<const QImage*>(device);
    return HasPlainPixels(*image) ? image : nullptr;
}

CRect RectOf(const QRect& r) {
    return {r.x(), r.y(), r.x() + r.width(), r.y() + r.height()};
}

} // namespace

void Pixels::Parts::Add(const CRect& rect, const CRect& limit) {
    if (rects[count].IntersectRect(rect, limit)) {
        ++count;
    }
}

Pixels::Pixels(const QPainter& painter, const QRegion& visible) {
    const QImage* image = ImageUnder(painter);
    const QTransform place = painter.deviceTransform();
    const bool isWhole = place.dx() == std::floor(place.dx()) && place.dy() == std::floor(place.dy());
    if (!image || place.type() > QTransform::TxTranslate || !isWhole || visible.rectCount() > kMostParts) {
        return;
    }
    const QPoint corner(static_cast<int>(place.dx()), static_cast<int>(place.dy()));
    const QRegion system = painter.paintEngine()->systemClip();
    const QRegion shown = system.isEmpty() ? visible : visible & system.translated(-corner);
    if (shown.rectCount() > kMostParts) {
        return;
    }
    const CRect all = RectOf(image->rect().translated(-corner));
    for (const QRect& part : shown) {
        visibleParts.Add(RectOf(part), all);
    }
    clipped = visibleParts;
    stride = image->bytesPerLine();
    format = image->format();
    // The painter has made the image its own; asking for writable bits here could give it others.
    base = const_cast<std::byte*>(reinterpret_cast<const std::byte*>(image->constBits()));
    origin = {corner.x(), corner.y()};
}

void Pixels::SetClip(const CRect& rect) {
    clipped.count = 0;
    for (std::size_t i = 0; i < visibleParts.count; ++i) {
        clipped.Add(visibleParts.rects[i], rect);
    }
}

// The row of the painter's coordinate; its first pixel is the image's.
QRgb* Pixels::RowAt(int y) const {
    return reinterpret_cast<QRgb*>(base + (y + origin.y) * stride);
}

void Pixels::Fill(const CRect& rect, QRgb color) const {
    for (std::size_t i = 0; i < clipped.count; ++i) {
        CRect cut;
        if (!cut.IntersectRect(rect, clipped.rects[i])) {
            continue;
        }
        auto* row = reinterpret_cast<std::byte*>(RowAt(cut.top) + origin.x + cut.left);
        for (int rows = cut.Height(); rows > 0; --rows, row += stride) {
            std::fill_n(reinterpret_cast<QRgb*>(row), cut.Width(), color);
        }
    }
}

bool Pixels::IsOneColor(const CRect& rect, QRgb* color) const {
    bool any = false;
    for (std::size_t i = 0; i < clipped.count; ++i) {
        CRect cut;
        cut.IntersectRect(rect, clipped.rects[i]);
        for (int y = cut.top; y < cut.bottom; ++y) {
            const QRgb* row = RowAt(y) + origin.x;
            *color = any ? *color : row[cut.left];
            any = true;
            if (!std::all_of(row + cut.left, row + cut.right, [color](QRgb p) { return p == *color; })) {
                return false;
            }
        }
    }
    return any;
}

void Pixels::Copy(const QImage& picture, CPoint place) const {
    const CRect rect(place, {picture.width(), picture.height()});
    for (std::size_t i = 0; i < clipped.count; ++i) {
        CRect cut;
        cut.IntersectRect(rect, clipped.rects[i]);
        for (int y = cut.top; y < cut.bottom; ++y) {
            const auto* from = reinterpret_cast<const QRgb*>(picture.constScanLine(y - place.y));
            std::copy_n(from + (cut.left - place.x), cut.Width(), RowAt(y) + origin.x + cut.left);
        }
    }
}

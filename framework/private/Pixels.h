#pragma once

#include "framework/Types.h"

#include <QImage>
#include <QRegion>

#include <array>
#include <cstddef>

class QPainter;

// The memory under a painter, for filling rects without the painter's own cost per rect. It stands only over
// 32-bit images of the program's memory on which a logical pixel is one pixel; elsewhere it is not usable,
// and the painter has to draw. Valid as long as the painter is active.
class Pixels {
public:
    Pixels() = default;
    // `visible` is what may be written, in the painter's coordinates.
    Pixels(const QPainter& painter, const QRegion& visible);

    bool Usable() const { return base != nullptr; }
    // What is written from now on: the visible region's part inside `rect`.
    void SetClip(const CRect& rect);
    void Fill(const CRect& rect, QRgb color) const;
    // Whether what shows of the rect has one colour; false when nothing shows.
    bool IsOneColor(const CRect& rect, QRgb* color) const;
    // Copies a picture of the same format to where it is asked for.
    void Copy(const QImage& picture, CPoint place) const;
    QImage::Format Format() const { return format; }

private:
    // A window of which more parts show is drawn by the painter.
    static constexpr int kMostParts = 8;
    struct Parts {
        std::array<CRect, kMostParts> rects;
        std::size_t count = 0;

        void Add(const CRect& rect, const CRect& limit);
    };

    QRgb* RowAt(int y) const;

    std::byte* base = nullptr;
    QImage::Format format = QImage::Format_Invalid;
    std::ptrdiff_t stride = 0; // bytes
    CPoint origin;             // of the painter, in the image
    Parts visibleParts;
    Parts clipped;
};

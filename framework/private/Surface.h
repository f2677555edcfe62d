#pragma once

#include "framework/DC.h"
#include "framework/private/Pixels.h"

#include <QImage>
#include <QPainter>

#include <memory>
#include <optional>

namespace surface {
class Face;
}

// The pixels of a bitmap. They are made when first looked at: a window that keeps a bitmap up and never draws on
// it costs nothing.
class BitmapData {
public:
    // Black.
    BitmapData(CSize logicalSize, double ratio) : size(logicalSize), pixelRatio(ratio) {}
    BitmapData(QImage made, bool alpha);

    // Null for an empty size.
    QImage& Image();

    CSize size; // logical pixels
    double pixelRatio = 1.0;
    bool hasAlpha = false;

private:
    QImage image;
};

// What a CDC draws on and with.
struct SurfaceState {
    // Outlives the painter on it, whatever order the caller's objects go in.
    std::shared_ptr<BitmapData> bitmap;
    std::unique_ptr<QPainter> ownPainter;
    // Null while there is nothing to draw on. Drawing goes through Fill and ClippedPainter.
    QPainter* painter = nullptr;
    Pixels pixels;
    bool isMemory = false;
    CBitmap* selectedBitmap = nullptr;
    CPen* selectedPen = nullptr;
    CBrush* selectedBrush = nullptr;
    CFont* selectedFont = nullptr;
    int penStyle = 0;
    int penWidth = 0;
    COLORREF penColor = 0;
    bool hollow = false;
    COLORREF brushColor = 0xFFFFFF;
    surface::Face* face = nullptr;
    CPoint position;
    int dashPhase = 0;
    COLORREF textColor = 0;
    COLORREF backColor = 0xFFFFFF;
    int backMode = OPAQUE_MODE;
    CRect bounds;
    CRect clip;
    bool clipIsNew = false; // the painter has not been told yet

    static constexpr int OPAQUE_MODE = 2;

    // Draws through a painter that someone else owns, inside `area`.
    void Borrow(QPainter& p, const CRect& area);
    // Writes to the memory under the painter where it is possible. `visible` is what may be written.
    void WriteDirectly(const QRegion& visible);
    void SelectBitmap(CBitmap* b);
    void SetClip(const CRect& rect);
    // The rect must lie inside the clip; the painter must not be null.
    void Fill(const CRect& rect, COLORREF color);
    // The painter with the clip set. Must not be called without a painter.
    QPainter& ClippedPainter();
    // The selected font, or the default one of the application.
    surface::Face& Font();
};

namespace surface {

QColor ColorOf(COLORREF c);
// A bitmap as an image whose pixel ratio is set; null image for an empty bitmap.
QImage ImageOf(const CBitmap& bitmap);

} // namespace surface

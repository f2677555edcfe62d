#pragma once

#include "framework/DC.h"

#include <QImage>
#include <QPainter>

#include <memory>
#include <optional>

namespace surface {
class Face;
}

struct BitmapData {
    CSize size;   // logical pixels
    QImage image; // null for an empty size
    bool hasAlpha = false;
};

// What a CDC draws on and with.
struct SurfaceState {
    std::unique_ptr<QPainter> ownPainter;
    QPainter* painter = nullptr;
    std::shared_ptr<BitmapData> bitmap;
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

    static constexpr int OPAQUE_MODE = 2;

    // Draws through a painter that someone else owns, inside `area`.
    void Borrow(QPainter& p, const CRect& area);
    void SelectBitmap(CBitmap* b);
    void SetClip(const CRect& rect);
    // The selected font, or the default one of the application.
    surface::Face& Font();
};

namespace surface {

QColor ColorOf(COLORREF c);
// A bitmap as an image whose pixel ratio is set; null image for an empty bitmap.
QImage ImageOf(const CBitmap& bitmap);

} // namespace surface

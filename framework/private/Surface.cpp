#include "framework/private/Surface.h"

#include <QApplication>

#include <map>
#include <tuple>

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

const QFont& SurfaceState::Font() {
    if (!fontSet) {
        font = surface::DefaultFont();
        fontSet = true;
    }
    return font;
}

namespace surface {
namespace {

using FontKey = std::tuple<std::string, int, bool, bool>;

// Fonts and their metrics are costly to look up and must be gone before the application is.
struct FontCache {
    std::map<FontKey, QFont> fonts;
    std::map<QString, QFontMetrics> metrics;
};

FontCache* cache = nullptr;

FontCache& Cache() {
    if (!cache) {
        cache = new FontCache;
        qAddPostRoutine([] {
            delete cache;
            cache = nullptr;
        });
    }
    return *cache;
}

} // namespace

QColor ColorOf(COLORREF c) {
    return {GetRValue(c), GetGValue(c), GetBValue(c)};
}

QFont FontOf(const CFont& font) {
    const FontKey key{font.face, font.pixelHeight, font.bold, font.italic};
    const auto found = Cache().fonts.find(key);
    if (found != Cache().fonts.end()) {
        return found->second;
    }
    QFont made = font.face.empty() ? QApplication::font() : QFont();
    if (font.face == "Arial") {
        made.setFamilies({"Arial", "Liberation Sans", "DejaVu Sans"});
    } else if (!font.face.empty()) {
        made.setFamily(QString::fromStdString(font.face));
    }
    made.setPixelSize(font.pixelHeight);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    Cache().fonts.emplace(key, made);
    return made;
}

QFont DefaultFont() {
    return FontOf(CFont());
}

const QFontMetrics& MetricsOf(const QFont& font) {
    const QString key = font.key();
    const auto found = Cache().metrics.find(key);
    if (found != Cache().metrics.end()) {
        return found->second;
    }
    return Cache().metrics.emplace(key, QFontMetrics(font)).first->second;
}

QImage ImageOf(const CBitmap& bitmap) {
    return bitmap.Data() ? bitmap.Data()->image : QImage();
}

} // namespace surface

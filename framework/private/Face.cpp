#include "framework/private/Face.h"

#include "framework/Gdi.h"
#include "framework/private/TextLayout.h"
#include "processor/UpperHalves.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <map>
#include <memory>
#include <tuple>

namespace surface {
namespace {

// Bounds of the caches: more than the labels that a screen can hold.
constexpr int kMostTextBytes = 4 << 20;
constexpr int kMostPrepared = 4096;
constexpr int kMostShortened = 16384;
constexpr int kMostPicturePixels = 8 << 20;
constexpr int kWidestPicture = 1024;

// The caches own what they keep, and drop what alone exceeds them: every cost must be below the bound.
template <class Key, class Value>
Value& Keep(QCache<Key, Value>& cache, const Key& key, std::unique_ptr<Value> made, int cost) {
    cache.insert(key, made.release(), cost);
    return *cache.object(key);
}

using FaceKey = std::tuple<std::string, int, bool, bool>;
using Faces = std::map<FaceKey, Face>;

Faces* faces = nullptr;

Faces& AllFaces() {
    if (!faces) {
        faces = new Faces;
        qAddPostRoutine([] {
            delete faces;
            faces = nullptr;
        });
    }
    return *faces;
}

QFont MakeFont(const CFont& font) {
    // What templates call the system's own font.
    const bool isSystem = font.face.empty() || font.face == "MS Shell Dlg" || font.face == "MS Shell Dlg 2";
    QFont made = isSystem ? QApplication::font() : QFont();
    if (font.face == "Arial") {
        made.setFamilies({"Arial", "Liberation Sans", "DejaVu Sans"});
    } else if (!isSystem) {
        made.setFamily(QString::fromStdString(font.face));
    } else {
        // Said outright, a window's own font cannot replace it.
        made.setFamilies(made.families());
    }
    made.setPixelSize(font.pixelHeight);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    return made;
}

} // namespace

Face::Face(const QFont& f) : font(f), metrics(f) {
    for (auto& cache : lines) {
        cache.setMaxCost(kMostTextBytes);
    }
    prepared.setMaxCost(kMostPrepared);
    shortened.setMaxCost(kMostShortened);
    pictures.setMaxCost(kMostPicturePixels);
}

namespace {

QString LineText(const std::string& text, LineKind kind) {
    QString line = QString::fromStdString(text);
    if (kind == LineKind::OneLineShortcut) {
        line = text_layout::WithoutPrefix(line);
    }
    return kind == LineKind::AsIs ? line : line.replace('\n', ' ').remove('\r');
}

// The touched pixels of a picture that was filled with the ground before.
QRect TouchedPart(const QImage& image, QRgb ground) {
    int left = image.width();
    int top = image.height();
    int right = -1;
    int bottom = -1;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (row[x] != ground) {
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x);
                bottom = y;
            }
        }
    }
    return {left, top, right - left + 1, bottom - top + 1};
}

} // namespace

TextLine& Face::LineOf(const std::string& text, LineKind kind) {
    QCache<std::string, TextLine>& cache = lines[static_cast<std::size_t>(kind)];
    if (TextLine* known = cache.object(text)) {
        return *known;
    }
    auto made = std::make_unique<TextLine>();
    made->whole.text = LineText(text, kind);
    made->whole.width = Width(made->whole.text);
    return Keep(cache, text, std::move(made),
                static_cast<int>(std::min<std::size_t>(text.size(), kMostTextBytes / 2)) + 64);
}

const QStaticText& Face::Prepared(const QString& text) {
    if (const QStaticText* known = prepared.object(text)) {
        return *known;
    }
    auto made = std::make_unique<QStaticText>(text);
    made->setTextFormat(Qt::PlainText);
    made->setPerformanceHint(QStaticText::AggressiveCaching);
    made->prepare(QTransform(), font);
    return Keep(prepared, text, std::move(made), 1);
}

const DrawnText* Face::FindShortened(const QString& text, int width) const {
    return shortened.object({text, width});
}

const DrawnText& Face::KeepShortened(const QString& text, int width, const QString& result) {
    return Keep(shortened, {text, width}, std::make_unique<DrawnText>(DrawnText{result, Width(result)}), 1);
}

const TextPicture* Face::PictureOf(const QString& text, QRgb color, QRgb ground, QImage::Format format) {
    const PictureKey key{text, color, ground, format};
    if (const TextPicture* known = pictures.object(key)) {
        return known;
    }
    if (text.size() > kWidestPicture || Width(text) > kWidestPicture || text.contains('\n')) {
        return nullptr;
    }
    auto made = std::make_unique<TextPicture>(Draw(key));
    const int cost = made->image.width() * made->image.height() + 64;
    return &Keep(pictures, key, std::move(made), std::min(cost, kMostPicturePixels));
}

TextPicture Face::Draw(const PictureKey& key) const {
    // Letters may reach out of the box they advance in; smoothing touches a pixel more.
    constexpr int kMargin = 2;
    const QRect ink = metrics.boundingRect(key.text).translated(0, metrics.ascent());
    const QRect area =
        ink.united(QRect(0, 0, Width(key.text), Height())).adjusted(-kMargin, -kMargin, kMargin, kMargin);
    QImage image(area.size(), key.format);
    image.fill(key.ground);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(QColor(key.color));
    QStaticText text(key.text);
    text.setTextFormat(Qt::PlainText);
    painter.drawStaticText(-area.x(), -area.y(), text);
    painter.end();
    processor::ClearUpperHalves();
    const QRect touched = TouchedPart(image, key.ground);
    return {touched.isEmpty() ? QImage() : image.copy(touched),
            {area.x() + touched.x(), area.y() + touched.y()}};
}

Face& FaceOf(const CFont& font) {
    const FaceKey key{font.face, font.pixelHeight, font.bold, font.italic};
    const auto found = AllFaces().find(key);
    return found != AllFaces().end() ? found->second : AllFaces().emplace(key, MakeFont(font)).first->second;
}

CFont& KeptFont(const CFont& font) {
    static std::map<FaceKey, CFont> kept;
    const auto [place, isNew] =
        kept.try_emplace(FaceKey{font.face, font.pixelHeight, font.bold, font.italic});
    CFont& own = place->second;
    if (isNew) {
        own.face = font.face;
        own.pixelHeight = font.pixelHeight;
        own.bold = font.bold;
        own.italic = font.italic;
    }
    return own;
}

Face& DefaultFace() {
    return FaceOf(CFont());
}

} // namespace surface

#pragma once

#include "framework/Types.h"

#include <QCache>
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QStaticText>

#include <array>
#include <optional>
#include <string>

class CFont;

namespace surface {

// How a caller's text becomes the line that is drawn.
enum class LineKind {
    AsIs,
    OneLine,        // line breaks are spaces
    OneLineShortcut // and a mnemonic's '&' vanishes
};

// A text as it is drawn, and its width in pixels.
struct DrawnText {
    QString text;
    int width = 0;
};

struct TextLine {
    DrawnText whole;
    // The least that a path may be shortened to: the dots and what stands behind the last separator.
    std::optional<DrawnText> narrow;
};

// A text on a ground of one colour, drawn by the toolkit and copied from then on. It holds the touched pixels
// only, each 32 bits.
struct TextPicture {
    QImage image;  // null when nothing shows
    CPoint offset; // from the text's top left
};

// A font with what is costly to find out about it, kept from one paint to the next. What has not been used
// for longest is forgotten first. All faces go with the application.
class Face {
public:
    explicit Face(const QFont& f);

    const QFont& Font() const { return font; }
    const QFontMetrics& Metrics() const { return metrics; }
    int Height() const { return metrics.height(); }
    int Width(const QString& text) const { return metrics.horizontalAdvance(text); }
    // Valid until the next text is asked for.
    TextLine& LineOf(const std::string& text, LineKind kind);
    // The text laid out for drawing from its top left; valid until the next is asked for.
    const QStaticText& Prepared(const QString& text);
    // A text shortened to a width before; null when it has not been.
    const DrawnText* FindShortened(const QString& text, int width) const;
    const DrawnText& KeepShortened(const QString& text, int width, const QString& result);
    // Null for a text that is too wide to be kept or has more than one line. `format` is that of the pixels
    // it will be copied to.
    const TextPicture* PictureOf(const QString& text, QRgb color, QRgb ground, QImage::Format format);

private:
    struct PictureKey {
        QString text;
        QRgb color;
        QRgb ground;
        QImage::Format format;

        bool operator==(const PictureKey&) const = default;
        friend std::size_t qHash(const PictureKey& key, std::size_t seed) {
            return qHashMulti(seed, key.text, key.color, key.ground, int{key.format});
        }
    };

    TextPicture Draw(const PictureKey& key) const;

    QFont font;
    QFontMetrics metrics;
    std::array<QCache<std::string, TextLine>, 3> lines;
    QCache<QString, QStaticText> prepared;
    QCache<QPair<QString, int>, DrawnText> shortened;
    QCache<PictureKey, TextPicture> pictures;
};

Face& FaceOf(const CFont& font);
// A font of the same description that is never deleted, whatever becomes of the caller's.
CFont& KeptFont(const CFont& font);
Face& DefaultFace();

} // namespace surface

#pragma once

#include "framework/Types.h"

#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QStaticText>

class CFont;

namespace surface {

// A font with what is costly to find out about it, kept from one paint to the next. All faces go with the
// application.
class Face {
public:
    explicit Face(const QFont& f) : font(f), metrics(f) {}

    const QFont& Font() const { return font; }
    const QFontMetrics& Metrics() const { return metrics; }
    int Height() const { return metrics.height(); }
    int Width(const QString& text) const;
    // The text laid out for drawing from its top left.
    const QStaticText& Prepared(const QString& text);
    // A text shortened to a width before; null when it has not been.
    const QString* FindShortened(const QString& text, int width) const;
    void KeepShortened(const QString& text, int width, const QString& result);

private:
    QFont font;
    QFontMetrics metrics;
    mutable QHash<QString, int> widths;
    QHash<QString, QStaticText> prepared;
    QHash<QPair<QString, int>, QString> shortened;
};

Face& FaceOf(const CFont& font);
Face& DefaultFace();

} // namespace surface

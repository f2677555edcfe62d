#include "framework/private/TextLayout.h"

#include "framework/Constants.h"
#include "framework/private/Face.h"

namespace text_layout {
namespace {

const QString kDots = QStringLiteral("...");

// The longest start of `text` for which start + tail fits, found by halving.
QString FitStart(const QString& text, const QString& tail, const surface::Face& face, int width) {
    int low = 0;
    // No more letters than pixels, but for marks that take no room; a long text is not worth measuring whole.
    int high = static_cast<int>(std::min<qsizetype>(text.size(), 2 * qsizetype{std::max(width, 0)} + 64));
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (face.Width(text.left(middle) + tail) <= width) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return text.left(low) + tail;
}

// Where the part begins that a path keeps; the length of a text without separators.
int TailStart(const QString& text) {
    const int slash = static_cast<int>(std::max(text.lastIndexOf('/'), text.lastIndexOf('\\')));
    return slash < 0 ? static_cast<int>(text.size()) : slash;
}

QString Shorten(const QString& text, const surface::Face& face, int width) {
    const int tail = TailStart(text);
    return FitStart(text.left(tail), kDots + text.mid(tail), face, width);
}

void Wrap(const QString& paragraph, const surface::Face& face, int width, QStringList& lines) {
    QString line;
    for (const QString& word : paragraph.split(' ')) {
        const QString longer = line.isNull() ? word : line + ' ' + word;
        if (line.isNull() || face.Width(longer) <= width) {
            line = longer.isNull() ? QString("") : longer;
        } else {
            lines.append(line);
            line = word;
        }
    }
    lines.append(line);
}

} // namespace

QString WithoutPrefix(const QString& text) {
    QString out;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size()) {
            ++i;
        } else if (text[i] == '&') {
            continue;
        }
        out.append(text[i]);
    }
    return out;
}

surface::DrawnText PathEllipsis(surface::TextLine& line, surface::Face& face, int width) {
    if (line.whole.width <= width) {
        return line.whole;
    }
    const QString& text = line.whole.text;
    if (!line.narrow) {
        const QString least = kDots + text.mid(TailStart(text));
        line.narrow = surface::DrawnText{least, face.Width(least)};
    }
    if (width < line.narrow->width) {
        return *line.narrow;
    }
    const surface::DrawnText* known = face.FindShortened(text, width);
    return known ? *known : face.KeepShortened(text, width, Shorten(text, face, width));
}

surface::DrawnText SingleLine(const std::string& text, surface::Face& face, int width, UINT format) {
    using surface::LineKind;
    surface::TextLine& line =
        face.LineOf(text, format & DT_NOPREFIX ? LineKind::OneLine : LineKind::OneLineShortcut);
    if (format & DT_PATH_ELLIPSIS) {
        return PathEllipsis(line, face, width);
    }
    if (!(format & DT_END_ELLIPSIS) || line.whole.width <= width) {
        return line.whole;
    }
    const QString cut = FitStart(line.whole.text, kDots, face, width);
    return {cut, face.Width(cut)};
}

QStringList Lines(const QString& text, surface::Face& face, int width, UINT format) {
    const QString shown = format & DT_NOPREFIX ? text : WithoutPrefix(text);
    QStringList lines;
    for (QString paragraph : shown.split('\n')) {
        paragraph.remove('\r');
        if (format & DT_WORDBREAK) {
            Wrap(paragraph, face, width, lines);
        } else {
            lines.append(paragraph);
        }
    }
    return lines;
}

} // namespace text_layout

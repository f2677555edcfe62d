#include "framework/private/TextLayout.h"

#include "framework/Constants.h"
#include "framework/private/Face.h"

namespace text_layout {
namespace {

const QString kDots = QStringLiteral("...");

// The longest start of `text` for which start + tail fits, found by halving.
QString FitStart(const QString& text, const QString& tail, const surface::Face& face, int width) {
    int low = 0;
    int high = static_cast<int>(text.size());
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

QString Shorten(const QString& text, const surface::Face& face, int width) {
    const int slash = static_cast<int>(std::max(text.lastIndexOf('/'), text.lastIndexOf('\\')));
    return slash < 0 ? FitStart(text, kDots, face, width)
                     : FitStart(text.left(slash), kDots + text.mid(slash), face, width);
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

QString PathEllipsis(const QString& text, surface::Face& face, int width) {
    const QString* known = face.FindShortened(text, width);
    if (known) {
        return *known;
    }
    const QString result = face.Width(text) <= width ? text : Shorten(text, face, width);
    face.KeepShortened(text, width, result);
    return result;
}

QStringList Lines(const QString& text, surface::Face& face, int width, UINT format) {
    const QString shown = format & DT_NOPREFIX ? text : WithoutPrefix(text);
    if (format & DT_SINGLELINE) {
        QString line = shown;
        line.replace('\n', ' ').remove('\r');
        if (format & DT_PATH_ELLIPSIS) {
            line = PathEllipsis(line, face, width);
        } else if (format & DT_END_ELLIPSIS) {
            line = face.Width(line) <= width ? line : FitStart(line, kDots, face, width);
        }
        return {line};
    }
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

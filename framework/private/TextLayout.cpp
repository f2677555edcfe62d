#include "framework/private/TextLayout.h"

#include "framework/Constants.h"
#include "framework/private/Surface.h"

#include <QCoreApplication>
#include <QHash>

namespace text_layout {
namespace {

const QString kDots = QStringLiteral("...");

// The longest start of `text` for which start + tail fits, found by halving.
QString FitStart(const QString& text, const QString& tail, const QFontMetrics& metrics, int width) {
    int low = 0;
    int high = static_cast<int>(text.size());
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (metrics.horizontalAdvance(text.left(middle) + tail) <= width) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return text.left(low) + tail;
}

QString Shorten(const QString& text, const QFontMetrics& metrics, int width) {
    const int slash = static_cast<int>(std::max(text.lastIndexOf('/'), text.lastIndexOf('\\')));
    return slash < 0 ? FitStart(text, kDots, metrics, width)
                     : FitStart(text.left(slash), kDots + text.mid(slash), metrics, width);
}

void Wrap(const QString& paragraph, const QFontMetrics& metrics, int width, QStringList& lines) {
    QString line;
    for (const QString& word : paragraph.split(' ')) {
        const QString longer = line.isNull() ? word : line + ' ' + word;
        if (line.isNull() || metrics.horizontalAdvance(longer) <= width) {
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

QString PathEllipsis(const QString& text, const QFont& font, int width) {
    constexpr int kMaxEntries = 4096;
    static QHash<QString, QString> shortened;
    const QFontMetrics& metrics = surface::MetricsOf(font);
    const QString key = font.key() + QChar(0x1F) + QString::number(width) + QChar(0x1F) + text;
    const auto found = shortened.constFind(key);
    if (found != shortened.constEnd()) {
        return *found;
    }
    if (shortened.size() >= kMaxEntries) {
        shortened.clear();
    }
    const QString result = metrics.horizontalAdvance(text) <= width ? text : Shorten(text, metrics, width);
    shortened.insert(key, result);
    return result;
}

QStringList Lines(const QString& text, const QFont& font, int width, UINT format) {
    const QString shown = format & DT_NOPREFIX ? text : WithoutPrefix(text);
    if (format & DT_SINGLELINE) {
        QString line = shown;
        line.replace('\n', ' ').remove('\r');
        if (format & DT_PATH_ELLIPSIS) {
            line = PathEllipsis(line, font, width);
        } else if (format & DT_END_ELLIPSIS) {
            const QFontMetrics& metrics = surface::MetricsOf(font);
            line = metrics.horizontalAdvance(line) <= width ? line : FitStart(line, kDots, metrics, width);
        }
        return {line};
    }
    QStringList lines;
    for (QString paragraph : shown.split('\n')) {
        paragraph.remove('\r');
        if (format & DT_WORDBREAK) {
            Wrap(paragraph, surface::MetricsOf(font), width, lines);
        } else {
            lines.append(paragraph);
        }
    }
    return lines;
}

} // namespace text_layout

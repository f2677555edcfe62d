#include "framework/Constants.h"
#include "framework/DC.h"
#include "framework/private/Recording.h"
#include "framework/private/Surface.h"
#include "framework/private/TextLayout.h"

namespace {

void DrawLine(SurfaceState& s, int x, int y, const QString& line) {
    const QFont& font = s.Font();
    const QFontMetrics& metrics = surface::MetricsOf(font);
    if (s.backMode == OPAQUE) {
        s.painter->fillRect(x, y, metrics.horizontalAdvance(line), metrics.height(),
                            surface::ColorOf(s.backColor));
    }
    s.painter->setFont(font);
    s.painter->setPen(surface::ColorOf(s.textColor));
    s.painter->drawText(x, y + metrics.ascent(), line);
}

int LeftOf(const CRect& rect, int width, UINT format) {
    if (format & DT_CENTER) {
        return rect.left + (rect.Width() - width) / 2;
    }
    return format & DT_RIGHT ? rect.right - width : rect.left;
}

int TopOf(const CRect& rect, int height, UINT format) {
    // Only a single line can stand in the middle or at the bottom.
    if ((format & DT_SINGLELINE) && (format & DT_VCENTER)) {
        return rect.top + (rect.Height() - height) / 2;
    }
    return (format & DT_SINGLELINE) && (format & DT_BOTTOM) ? rect.bottom - height : rect.top;
}

int WidestOf(const QStringList& lines, const QFontMetrics& metrics) {
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, metrics.horizontalAdvance(line));
    }
    return width;
}

void DrawLines(SurfaceState& s, const QStringList& lines, const CRect& rect, UINT format) {
    const QFontMetrics& metrics = surface::MetricsOf(s.Font());
    const CRect oldClip = s.clip;
    if (!(format & DT_NOCLIP)) {
        CRect cut;
        cut.IntersectRect(rect, oldClip);
        s.SetClip(cut);
    }
    int y = TopOf(rect, metrics.height() * static_cast<int>(lines.size()), format);
    for (const QString& line : lines) {
        if (y >= s.clip.bottom) {
            break;
        }
        DrawLine(s, LeftOf(rect, metrics.horizontalAdvance(line), format), y, line);
        y += metrics.height();
    }
    s.SetClip(oldClip);
}

} // namespace

BOOL CDC::TextOut(int x, int y, const std::string& text) {
    recording::NoteText(*this, CRect(x, y, x, y), text, 0);
    if (state->painter) {
        DrawLine(*state, x, y, QString::fromStdString(text));
    }
    return TRUE;
}

int CDC::DrawText(const std::string& text, const CRect& rect, UINT format) {
    CRect copy = rect;
    return DrawText(text, &copy, format & ~DT_CALCRECT);
}

int CDC::DrawText(const std::string& text, CRect* rect, UINT format) {
    const QFont& font = state->Font();
    const QFontMetrics& metrics = surface::MetricsOf(font);
    const QStringList lines = text_layout::Lines(QString::fromStdString(text), font, rect->Width(), format);
    const int height = metrics.height() * static_cast<int>(lines.size());
    if (format & DT_CALCRECT) {
        rect->right = rect->left + WidestOf(lines, metrics);
        rect->bottom = rect->top + height;
        return height;
    }
    recording::NoteText(*this, *rect, text, format);
    if (state->painter) {
        DrawLines(*state, lines, *rect, format);
    }
    return height;
}

CSize CDC::GetTextExtent(const std::string& text) const {
    const QFontMetrics& metrics = surface::MetricsOf(state->Font());
    return {metrics.horizontalAdvance(QString::fromStdString(text)), metrics.height()};
}

BOOL CDC::GetTextMetrics(TEXTMETRIC* out) const {
    const QFontMetrics& metrics = surface::MetricsOf(state->Font());
    *out = TEXTMETRIC{metrics.height(), metrics.ascent(), metrics.descent(), metrics.averageCharWidth(),
                      metrics.maxWidth()};
    return TRUE;
}

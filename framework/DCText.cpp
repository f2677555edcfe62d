#include "framework/Constants.h"
#include "framework/DC.h"
#include "framework/private/Face.h"
#include "framework/private/Recording.h"
#include "framework/private/Surface.h"
#include "framework/private/TextLayout.h"

namespace {

void DrawLine(SurfaceState& s, int x, int y, const QString& line) {
    surface::Face& face = s.Font();
    CRect back;
    if (s.backMode == OPAQUE &&
        back.IntersectRect(CRect(CPoint(x, y), {face.Width(line), face.Height()}), s.clip)) {
        s.Fill(back, s.backColor);
    }
    QPainter& painter = s.ClippedPainter();
    painter.setFont(face.Font());
    painter.setPen(surface::ColorOf(s.textColor));
    painter.drawStaticText(x, y, face.Prepared(line));
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

int WidestOf(const QStringList& lines, const surface::Face& face) {
    int width = 0;
    for (const QString& line : lines) {
        width = std::max(width, face.Width(line));
    }
    return width;
}

void DrawLines(SurfaceState& s, const QStringList& lines, const CRect& rect, UINT format) {
    surface::Face& face = s.Font();
    const CRect oldClip = s.clip;
    if (!(format & DT_NOCLIP)) {
        CRect cut;
        cut.IntersectRect(rect, oldClip);
        s.SetClip(cut);
    }
    int y = TopOf(rect, face.Height() * static_cast<int>(lines.size()), format);
    for (const QString& line : lines) {
        if (y >= s.clip.bottom) {
            break;
        }
        DrawLine(s, LeftOf(rect, face.Width(line), format), y, line);
        y += face.Height();
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
    surface::Face& face = state->Font();
    const QStringList lines = text_layout::Lines(QString::fromStdString(text), face, rect->Width(), format);
    const int height = face.Height() * static_cast<int>(lines.size());
    if (format & DT_CALCRECT) {
        rect->right = rect->left + WidestOf(lines, face);
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
    const surface::Face& face = state->Font();
    return {face.Width(QString::fromStdString(text)), face.Height()};
}

BOOL CDC::GetTextMetrics(TEXTMETRIC* out) const {
    const surface::Face& face = state->Font();
    *out = TEXTMETRIC{face.Height(), face.Metrics().ascent(), face.Metrics().descent(),
                      face.Metrics().averageCharWidth(), face.Metrics().maxWidth()};
    return TRUE;
}

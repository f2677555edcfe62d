#include "framework/Constants.h"
#include "framework/DC.h"
#include "framework/private/Face.h"
#include "framework/private/Recording.h"
#include "framework/private/Surface.h"
#include "framework/private/TextLayout.h"
#include "processor/UpperHalves.h"

#include <algorithm>
#include <span>
#include <vector>

namespace {

using surface::DrawnText;

QRgb PixelOf(COLORREF color) {
    return qRgb(GetRValue(color), GetGValue(color), GetBValue(color));
}

bool Contains(const CRect& outer, const CRect& inner) {
    CRect common;
    common.IntersectRect(outer, inner);
    return common == inner;
}

// Text on one colour, as almost all of it is, was drawn before and only has to be copied.
bool CopyLine(const SurfaceState& s, surface::Face& face, const CRect& box, const DrawnText& line) {
    QRgb ground = 0;
    if (!s.pixels.Usable() || !s.pixels.IsOneColor(box, &ground)) {
        return false;
    }
    const surface::TextPicture* picture =
        face.PictureOf(line.text, PixelOf(s.textColor), ground, s.pixels.Format());
    if (!picture) {
        return false;
    }
    const CPoint place = box.TopLeft() + picture->offset;
    const CRect touched(place, {picture->image.width(), picture->image.height()});
    QRgb around = ground;
    if (!Contains(box, touched) && (!s.pixels.IsOneColor(touched, &around) || around != ground)) {
        return false;
    }
    s.pixels.Copy(picture->image, place);
    return true;
}

void DrawLine(SurfaceState& s, int x, int y, const DrawnText& line) {
    surface::Face& face = s.Font();
    const CRect box(CPoint(x, y), {line.width, face.Height()});
    // Letters hardly reach further out of their box than its height.
    CRect shown = box;
    shown.InflateRect(face.Height(), face.Height());
    if (!shown.IntersectRect(shown, s.clip)) {
        return;
    }
    if (s.backMode == OPAQUE && shown.IntersectRect(box, s.clip)) {
        s.Fill(shown, s.backColor);
    }
    if (CopyLine(s, face, box, line)) {
        return;
    }
    QPainter& painter = s.ClippedPainter();
    painter.setFont(face.Font());
    painter.setPen(surface::ColorOf(s.textColor));
    painter.drawStaticText(x, y, face.Prepared(line.text));
    processor::ClearUpperHalves();
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

std::vector<DrawnText> LinesOf(const std::string& text, surface::Face& face, int width, UINT format) {
    if (format & DT_SINGLELINE) {
        return {text_layout::SingleLine(text, face, width, format)};
    }
    std::vector<DrawnText> lines;
    for (const QString& line : text_layout::Lines(QString::fromStdString(text), face, width, format)) {
        lines.push_back({line, face.Width(line)});
    }
    return lines;
}

void DrawLines(SurfaceState& s, std::span<const DrawnText> lines, const CRect& rect, UINT format) {
    const int lineHeight = s.Font().Height();
    const CRect oldClip = s.clip;
    CRect cut;
    if (!(format & DT_NOCLIP)) {
        cut.IntersectRect(rect, oldClip);
        if (cut.IsRectEmpty()) {
            return;
        }
        s.SetClip(cut);
    }
    int y = TopOf(rect, lineHeight * static_cast<int>(lines.size()), format);
    for (const DrawnText& line : lines) {
        if (y >= s.clip.bottom) {
            break;
        }
        DrawLine(s, LeftOf(rect, line.width, format), y, line);
        y += lineHeight;
    }
    s.SetClip(oldClip);
}

// A rect as far out as sums of its sides still fit.
CRect Near(const CRect& rect) {
    constexpr int kFar = 1 << 28;
    return {std::clamp(rect.left, -kFar, kFar), std::clamp(rect.top, -kFar, kFar),
            std::clamp(rect.right, -kFar, kFar), std::clamp(rect.bottom, -kFar, kFar)};
}

} // namespace

BOOL CDC::TextOut(int x, int y, const std::string& text) {
    recording::NoteText(*this, CRect(x, y, x, y), text, 0);
    const CRect place = Near({x, y, x, y});
    if (state->painter && place.left < state->clip.right && place.top < state->clip.bottom) {
        const DrawnText line = state->Font().LineOf(text, surface::LineKind::AsIs).whole;
        DrawLine(*state, place.left, place.top, line);
    }
    return TRUE;
}

int CDC::DrawText(const std::string& text, const CRect& rect, UINT format) {
    CRect copy = rect;
    return DrawText(text, &copy, format & ~DT_CALCRECT);
}

int CDC::DrawText(const std::string& text, CRect* rect, UINT format) {
    surface::Face& face = state->Font();
    const CRect place = Near(*rect);
    const std::vector<DrawnText> lines = LinesOf(text, face, place.Width(), format);
    const int height = face.Height() * static_cast<int>(lines.size());
    if (format & DT_CALCRECT) {
        int widest = 0;
        for (const DrawnText& line : lines) {
            widest = std::max(widest, line.width);
        }
        rect->right = rect->left + widest;
        rect->bottom = rect->top + height;
        return height;
    }
    recording::NoteText(*this, *rect, text, format);
    if (state->painter) {
        DrawLines(*state, lines, place, format);
    }
    return height;
}

CSize CDC::GetTextExtent(const std::string& text) const {
    surface::Face& face = state->Font();
    return {face.LineOf(text, surface::LineKind::AsIs).whole.width, face.Height()};
}

BOOL CDC::GetTextMetrics(TEXTMETRIC* out) const {
    const surface::Face& face = state->Font();
    *out = TEXTMETRIC{face.Height(), face.Metrics().ascent(), face.Metrics().descent(),
                      face.Metrics().averageCharWidth(), face.Metrics().maxWidth()};
    return TRUE;
}

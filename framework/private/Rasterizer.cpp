#include "framework/private/Rasterizer.h"

#include "framework/Constants.h"

#include <cstdlib>
#include <vector>

namespace raster {
namespace {

using Wide = std::int64_t;

// Products of two 33-bit distances do not fit 64 bits.
__extension__ using Product = __int128;

Wide CeilDivProduct(Product a, Product b) {
    const Product q = a / b;
    return static_cast<Wide>((a % b != 0 && (a < 0) == (b < 0)) ? q + 1 : q);
}

bool InGap(int style, int phase) {
    switch (style) {
    case PS_DASH:
        return phase % 24 >= 18; // 18 on, 6 off
    case PS_DOT:
        return phase % 6 >= 3; // 3 on, 3 off
    default:
        return false;
    }
}

void EmitClipped(const Run& run, const CRect& clip, Sink& sink) {
    CRect r;
    if (r.IntersectRect(CRect(run.x, run.y, run.x + run.w, run.y + run.h), clip)) {
        sink.Take(Run{r.left, r.top, r.Width(), r.Height(), run.gap});
    }
}

// One pixel of the thin line, widened to the pen: a width of 2 covers the pixel and the one left of or above
// it.
Run Stamp(Wide x, Wide y, int width) {
    const int back = width / 2;
    return Run{static_cast<int>(x) - back, static_cast<int>(y) - back, width, width, false};
}

struct Axis {
    Wide start;
    Wide length; // signed
};

// The steps of the major axis that can touch the clip interval, so that far-off ends cost nothing.
void CutSteps(const Axis& major, Wide low, Wide high, Wide& first, Wide& last) {
    const Wide a = major.length > 0 ? low - major.start : major.start - high;
    const Wide b = major.length > 0 ? high - major.start : major.start - low;
    first = std::max<Wide>(first, a);
    last = std::min<Wide>(last, b + 1);
}

void SolidStraight(CPoint from, CPoint to, int width, const CRect& clip, Sink& sink) {
    const int back = width / 2;
    const bool vertical = from.x == to.x;
    const Wide across = vertical ? from.x : from.y;
    if (across < Wide{vertical ? clip.left : clip.top} - width ||
        across > Wide{vertical ? clip.right : clip.bottom} + width) {
        return;
    }
    const Wide a = vertical ? from.y : from.x;
    const Wide b = vertical ? to.y : to.x;
    // A thin line leaves out the pixel it runs to; a wide one is capped at both ends.
    const Wide low = width > 1 ? std::min(a, b) - back : (a < b ? a : b + 1);
    const Wide high = width > 1 ? std::max(a, b) - back + width : (a < b ? b : a + 1);
    const Wide cutLow = std::max<Wide>(low, vertical ? clip.top : clip.left);
    const Wide cutHigh = std::min<Wide>(high, vertical ? clip.bottom : clip.right);
    if (cutHigh <= cutLow) {
        return;
    }
    const int length = static_cast<int>(cutHigh - cutLow);
    const int start = static_cast<int>(cutLow);
    EmitClipped(vertical ? Run{from.x - back, start, width, length, false}
                         : Run{start, from.y - back, length, width, false},
                clip, sink);
}

bool IsDashed(const Pen& pen) {
    return pen.style == PS_DASH || pen.style == PS_DOT;
}

} // namespace

void Line(CPoint from, CPoint to, const Pen& pen, const CRect& clip, int& phase, Sink& sink) {
    if (pen.style == PS_NULL || from == to || clip.IsRectEmpty()) {
        return;
    }
    const int width = std::max(pen.width, 1);
    if (!IsDashed(pen) && (from.x == to.x || from.y == to.y)) {
        SolidStraight(from, to, width, clip, sink);
        return;
    }
    const Wide dx = Wide{to.x} - from.x;
    const Wide dy = Wide{to.y} - from.y;
    const bool alongX = std::llabs(dx) >= std::llabs(dy);
    const Axis major = alongX ? Axis{from.x, dx} : Axis{from.y, dy};
    const Axis minor = alongX ? Axis{from.y, dy} : Axis{from.x, dx};
    const Wide steps = std::llabs(major.length);
    Wide first = 0;
    Wide last = width > 1 ? steps + 1 : steps;
    CutSteps(major, Wide{alongX ? clip.left : clip.top} - width,
             Wide{alongX ? clip.right : clip.bottom} + width, first, last);
    for (Wide i = first; i < last; ++i) {
        const Wide m = major.start + (major.length > 0 ? i : -i);
        // Nearest pixel of the minor axis; halves go to the top and to the left.
        const Wide n =
            minor.start + CeilDivProduct(Product{2} * i * minor.length - steps, Product{2} * steps);
        Run run = Stamp(alongX ? m : n, alongX ? n : m, width);
        run.gap = InGap(pen.style, static_cast<int>((phase + i) % 24));
        EmitClipped(run, clip, sink);
    }
    phase = static_cast<int>((phase + steps) % 24);
}

void FillPolygon(std::span<const CPoint> points, const CRect& clip, Sink& sink) {
    if (points.size() < 2 || clip.IsRectEmpty()) {
        return;
    }
    int top = points[0].y;
    int bottom = points[0].y;
    for (const CPoint& p : points) {
        top = std::min(top, p.y);
        bottom = std::max(bottom, p.y);
    }
    std::vector<Wide> crossings;
    for (int y = std::max(top, clip.top); y < std::min(bottom, clip.bottom); ++y) {
        crossings.clear();
        for (std::size_t i = 0; i < points.size(); ++i) {
            CPoint a = points[i];
            CPoint b = points[(i + 1) % points.size()];
            if (a.y > b.y) {
                std::swap(a, b);
            }
            if (y >= a.y && y < b.y) {
                crossings.push_back(
                    a.x + CeilDivProduct(Product{Wide{y} - a.y} * (Wide{b.x} - a.x), Wide{b.y} - a.y));
            }
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const Wide left = std::max<Wide>(crossings[i], clip.left);
            const Wide right = std::min<Wide>(crossings[i + 1], clip.right);
            if (left < right) {
                sink.Take(Run{static_cast<int>(left), y, static_cast<int>(right - left), 1, false});
            }
        }
    }
}

void Frame(const CRect& rect, const Pen& pen, const CRect& clip, Sink& sink) {
    if (pen.style == PS_NULL || rect.IsRectEmpty()) {
        return;
    }
    if (IsDashed(pen)) {
        const int r = rect.right - 1;
        const int b = rect.bottom - 1;
        int phase = 0;
        const CPoint corners[] = {
            {rect.left, rect.top}, {r, rect.top}, {r, b}, {rect.left, b}, {rect.left, rect.top}};
        for (int i = 0; i < 4; ++i) {
            Line(corners[i], corners[i + 1], pen, clip, phase, sink);
        }
        return;
    }
    const int w = std::max(pen.width, 1);
    const int back = w / 2;
    // Sides far outside are brought near, where they are as invisible and their distances fit.
    const int left = std::max(rect.left, clip.left - 2 * w);
    const int top = std::max(rect.top, clip.top - 2 * w);
    const int r = std::min(rect.right, clip.right + 2 * w) - 1;
    const int b = std::min(rect.bottom, clip.bottom + 2 * w) - 1;
    if (r < left || b < top) {
        return;
    }
    const int outerWidth = r - left + w;
    const int outerHeight = b - top + w;
    EmitClipped(Run{left - back, top - back, outerWidth, w, false}, clip, sink);
    EmitClipped(Run{left - back, b - back, outerWidth, w, false}, clip, sink);
    EmitClipped(Run{left - back, top - back, w, outerHeight, false}, clip, sink);
    EmitClipped(Run{r - back, top - back, w, outerHeight, false}, clip, sink);
}

} // namespace raster

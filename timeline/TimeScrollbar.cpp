#include "timeline/TimeScrollbar.h"

#include "framework/SelectionScope.h"
#include "keys/rules/Pixels.h"
#include "timeline/rows/TimelineContext.h"

#include <algorithm>
#include <array>

BEGIN_MESSAGE_MAP(CTimeScrollbar, CadvWnd)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

namespace {

constexpr int kFrame = 1;          // pixels, at each edge of the bar
constexpr int kArrowLength = 20;   // pixels
constexpr int kShortBar = 41;      // pixels inside the frame; a shorter bar is all arrows
constexpr int kShortestTrack = 20; // pixels; on a shorter one the thumb stays where it was
constexpr COLORREF kTrackColor = 0xE2E2E2;
constexpr COLORREF kArrowBackColor = 0xC8C8C8;
constexpr COLORREF kArrowColor = 0x808080;
constexpr COLORREF kThumbColor = 0xC0C0C0;

// A rect by its ends along and across the bar.
CRect BarRect(bool vertical, int from, int to, int acrossFrom, int acrossTo) {
    return vertical ? CRect(acrossFrom, from, acrossTo, to) : CRect(from, acrossFrom, to, acrossTo);
}

void DrawBox(CDC* dc, const CRect& rect, COLORREF color) {
    CBrush brush(color);
    const SelectionScope<CBrush> scope(*dc, brush);
    dc->Rectangle(rect);
}

using Triangle = std::array<CPoint, 3>;

// The triangle of an arrow, its tip first where it points back.
Triangle TriangleOf(const CRect& r, bool vertical, bool back) {
    const int w3 = r.Width() / 3;
    const int h3 = r.Height() / 3;
    const int midX = r.left + r.Width() / 2;
    const int midY = r.top + r.Height() / 2;
    const int left = r.left + w3;
    const int right = r.right - w3;
    const int top = r.top + h3;
    const int bottom = r.bottom - h3;
    if (vertical) {
        return back ? Triangle{CPoint{midX, top}, {left, bottom}, {right, bottom}}
                    : Triangle{CPoint{midX, bottom}, {right, top}, {left, top}};
    }
    return back ? Triangle{CPoint{left, midY}, {right, bottom}, {right, top}}
                : Triangle{CPoint{right, midY}, {left, top}, {left, bottom}};
}

void DrawBarArrow(CDC* dc, const CRect& rect, const Triangle& triangle) {
    DrawBox(dc, rect, kArrowBackColor);
    CBrush brush(kArrowColor);
    const SelectionScope<CBrush> scope(*dc, brush);
    dc->Polygon(triangle.data(), static_cast<int>(triangle.size()));
}

} // namespace

void CTimeScrollbar::SetBarRange(float a, float b) {
    rangeStart = std::min(a, b);
    rangeEnd = std::max(a, b);
}

void CTimeScrollbar::SetBarPosition(float p) {
    position = std::min(std::max(p, rangeStart), rangeEnd);
}

void CTimeScrollbar::UpdateBar() {
    if (!IsHorizontal() && !IsVertical()) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    const bool down = IsVertical();
    const int start = (down ? client.top : client.left) + kFrame;
    const int end = (down ? client.bottom : client.right) - kFrame;
    const int acrossStart = (down ? client.left : client.top) + kFrame;
    const int acrossEnd = (down ? client.right : client.bottom) - kFrame;
    const int length = end - start;
    if (length <= 0) {
        return;
    }
    const int arrow = length < kShortBar ? length / 2 : kArrowLength;
    backArrowRect = BarRect(down, start, start + arrow, acrossStart, acrossEnd);
    forwardArrowRect = BarRect(down, end - arrow, end, acrossStart, acrossEnd);
    const int track = length - 2 * arrow;
    if (track <= 0 || page == 0.0f) {
        thumbRect.SetRectEmpty();
        return;
    }
    // Required: on a short track the thumb keeps the ends of the last layout.
    int from = down ? thumbRect.top : thumbRect.left;
    int to = down ? thumbRect.bottom : thumbRect.right;
    if (track > kShortestTrack) {
        from = start + arrow;
        to = end - arrow;
        PlaceThumb(from, to);
    }
    thumbRect = BarRect(down, from, to, acrossStart, acrossEnd);
}

// Narrows the thumb from the whole track to its page. There is no shortest thumb.
void CTimeScrollbar::PlaceThumb(int& from, int& to) const {
    const double range = double{rangeEnd} - rangeStart;
    const int track = to - from;
    if (!(range > 0.0) || track <= CutToPixel(track * double{page} / range)) {
        return;
    }
    const double scale = track / range;
    from += CutToPixel((double{position} - rangeStart) * scale);
    to = from + CutToPixel(scale * page);
}

void CTimeScrollbar::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    CPen pen(PS_SOLID, 0, 0);
    const SelectionScope<CPen> scope(dc, pen);
    DrawBox(&dc, client, kTrackColor);
    if (IsHorizontal() || IsVertical()) {
        DrawBarArrow(&dc, backArrowRect, TriangleOf(backArrowRect, IsVertical(), /*back*/ true));
        DrawBarArrow(&dc, forwardArrowRect, TriangleOf(forwardArrowRect, IsVertical(), /*back*/ false));
    }
    DrawBox(&dc, thumbRect, kThumbColor);
}

// The trough between the back arrow and the thumb. Required: one pixel at each of its ends, and all of it
// while there is no thumb, counts as forward.
CRect CTimeScrollbar::PageBackRect() const {
    return IsVertical()
               ? CRect(backArrowRect.left, backArrowRect.bottom + 1, backArrowRect.right, thumbRect.top - 1)
               : CRect(backArrowRect.right + 1, backArrowRect.top, thumbRect.left - 1, backArrowRect.bottom);
}

void CTimeScrollbar::OnLButtonDown(UINT /*flags*/, CPoint point) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    if (backArrowRect.PtInRect(point)) {
        timeline->OnLineBack(this);
    } else if (forwardArrowRect.PtInRect(point)) {
        timeline->OnLineForward(this);
    } else if (thumbRect.PtInRect(point)) {
        SetCapture();
        ThumbDrag::Begin(point);
    } else if (!IsHorizontal() && !IsVertical()) {
        return;
    } else if (PageBackRect().PtInRect(point)) {
        timeline->OnPageBack(this);
    } else {
        timeline->OnPageForward(this);
    }
}

void CTimeScrollbar::OnMouseMove(UINT /*flags*/, CPoint point) {
    TimelineContext* timeline = TimelineOf(this);
    if (!dragging || timeline == nullptr || (!IsHorizontal() && !IsVertical())) {
        return;
    }
    CRect client;
    GetClientRect(&client);
    const int delta = ThumbDrag::Step(point, IsVertical());
    const int track = IsVertical()
                          ? client.Height() - backArrowRect.Height() - forwardArrowRect.Height() - 2 * kFrame
                          : client.Width() - backArrowRect.Width() - forwardArrowRect.Width() - 2 * kFrame;
    if (track <= 0) {
        return;
    }
    ThumbDrag::MoveTo(point);
    const double wanted = position + (double{rangeEnd} - rangeStart) / track * delta;
    timeline->OnThumbTrack(this, static_cast<float>(wanted));
}

void CTimeScrollbar::OnLButtonUp(UINT /*flags*/, CPoint /*point*/) {
    if (ThumbDrag::End()) {
        ReleaseCapture();
    }
}

/// Another window took the mouse: the thumb stays where it is.
void CTimeScrollbar::OnCaptureChanged(CWnd* next) {
    CadvWnd::OnCaptureChanged(next);
    ThumbDrag::End();
}

#include "timeline/rows/GridCtrl.h"

#include "framework/SelectionScope.h"
#include "keys/rules/TicLayout.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(CGridCtrl, CadvWnd)
ON_WM_ERASEBKGND()
ON_WM_PAINT()
FILMS_WM(WM_LBUTTONDOWN, Mouse, ForwardLButtonDown)
FILMS_WM(WM_LBUTTONUP, Mouse, ForwardLButtonUp)
FILMS_WM(WM_LBUTTONDBLCLK, Mouse, ForwardLButtonDblClk)
FILMS_WM(WM_MOUSEMOVE, Mouse, ForwardMouseMove)
FILMS_WM(WM_RBUTTONDOWN, Mouse, ForwardRButtonDown)
END_MESSAGE_MAP()

void CGridCtrl::SetTimeRange(float a, float b) {
    rangeStart = std::min(a, b);
    rangeEnd = std::max(a, b);
    ClampView();
}

void CGridCtrl::SetAlignment(int value) {
    alignment = value;
}

void CGridCtrl::SetTicDistance(float seconds) {
    ticDistance = seconds > 0.0f ? seconds : 1.0f;
}

void CGridCtrl::SetBigTics(int count) {
    bigTics = std::max(count, 1);
}

void CGridCtrl::SetView(float a, float b) {
    viewStart = std::min(a, b);
    viewEnd = std::max(a, b);
    ClampView();
}

void CGridCtrl::ClampView() {
    viewStart = std::min(std::max(viewStart, rangeStart), rangeEnd);
    viewEnd = std::min(std::max(viewEnd, rangeStart), rangeEnd);
}

namespace {

void DrawVertical(CDC* dc, int x, int from, int to) {
    dc->MoveTo(x, from);
    dc->LineTo(x, to);
}

void DrawTic(CDC* dc, const Tic& tic, const TicRows& rows) {
    constexpr int kLabelRise = 10; // pixels above the start of a big tic
    if (!tic.big) {
        DrawVertical(dc, tic.x, rows.smallFrom, rows.smallTo);
        return;
    }
    DrawVertical(dc, tic.x, rows.bigFrom, rows.bigTo);
    if (!tic.label.empty()) {
        dc->TextOut(tic.x - dc->GetTextExtent(tic.label).cx / 2, rows.bigFrom - kLabelRise, tic.label);
    }
}

} // namespace

void CGridCtrl::DrawGrid(CDC* dc, const CRect& rect, int labelDistance) {
    if (dc == nullptr) {
        return;
    }
    CPen pen(PS_SOLID, 0, 0);
    const SelectionScope<CPen> selected(*dc, pen);
    CRect inner = rect;
    inner.DeflateRect(1, 1);
    const TicRows rows = TicRowsOf(alignment, inner.top, inner.bottom);
    dc->MoveTo(inner.left + 1, rows.axisY);
    dc->LineTo(inner.right - 1, rows.axisY);
    // The mode stays: what is drawn on the grid afterwards relies on it.
    dc->SetBkMode(TRANSPARENT);
    const TicAxis axis{rangeStart, ticDistance, viewStart, viewEnd, bigTics, labelDistance};
    for (const Tic& tic : LayOutTics(axis, inner.left, inner.right)) {
        DrawTic(dc, tic, rows);
    }
}

BOOL CGridCtrl::OnEraseBkgnd(CDC* /*dc*/) {
    return FALSE;
}

void CGridCtrl::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    DrawGrid(&dc, client, /*labelDistance*/ -1);
}

void CGridCtrl::ForwardLButtonDown(UINT flags, CPoint point) {
    OnLButtonDown(flags, point.x, point.y);
}

void CGridCtrl::ForwardLButtonUp(UINT flags, CPoint point) {
    OnLButtonUp(flags, point.x, point.y);
}

void CGridCtrl::ForwardLButtonDblClk(UINT flags, CPoint point) {
    OnLButtonDblClk(flags, point.x, point.y);
}

void CGridCtrl::ForwardMouseMove(UINT flags, CPoint point) {
    OnMouseMove(flags, point.x, point.y);
}

void CGridCtrl::ForwardRButtonDown(UINT flags, CPoint point) {
    OnRButtonDown(flags, point.x, point.y);
}

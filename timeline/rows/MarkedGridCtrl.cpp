#include "timeline/rows/MarkedGridCtrl.h"

#include "framework/SelectionScope.h"
#include "keys/rules/Pixels.h"
#include "timeline/rows/Arrow.h"
#include "timeline/rows/TimelineContext.h"

#include <cmath>

BEGIN_MESSAGE_MAP(CMarkedGridCtrl, CGridCtrl)
ON_WM_PAINT()
ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

CMarkedGridCtrl::CMarkedGridCtrl() : cursorMark(new CMark(0.0f)) {
    cursorMark->pointsUp = alignment == kTop;
}

CMarkedGridCtrl::~CMarkedGridCtrl() {
    DeleteMarks();
    delete cursorMark;
}

void CMarkedGridCtrl::SetTimeRange(float a, float b) {
    CGridCtrl::SetTimeRange(a, b);
    const std::list<CMark*> before = marks;
    for (CMark* mark : before) {
        if (mark->time < rangeStart || mark->time > rangeEnd) {
            DeleteMark(mark);
        }
    }
}

// Required: the cursor's arrow keeps its direction.
void CMarkedGridCtrl::SetAlignment(int value) {
    for (CMark* mark : marks) {
        mark->pointsUp = value == kTop;
    }
    CGridCtrl::SetAlignment(value);
}

CMark* CMarkedGridCtrl::AddMark(float time) {
    if (!(time >= rangeStart && time <= rangeEnd)) {
        return nullptr;
    }
    auto* mark = new CMark(time);
    mark->pointsUp = alignment == kTop;
    marks.push_back(mark);
    return mark;
}

void CMarkedGridCtrl::DeleteMark(CMark* mark) {
    if (mark == dragMark) {
        MarkDrag::Drop();
    }
    marks.remove(mark);
    delete mark;
}

void CMarkedGridCtrl::DeleteMarks() {
    while (!marks.empty()) {
        DeleteMark(marks.front());
    }
}

float CMarkedGridCtrl::TimeFromPoint(CPoint point) const {
    CRect client;
    GetClientRect(&client);
    if (client.Width() <= 0) {
        return viewStart;
    }
    const double secondsPerPixel = (double{viewEnd} - viewStart) / client.Width();
    return static_cast<float>(secondsPerPixel * (point.x - client.left) + viewStart);
}

CMark* CMarkedGridCtrl::FindMark(const CPoint* point) const {
    CRect client;
    GetClientRect(&client);
    if (point == nullptr || viewEnd == viewStart || client.Width() <= 0) {
        return nullptr;
    }
    const double time = TimeFromPoint(*point);
    CMark* nearest = nullptr;
    double least = 0.0;
    for (CMark* mark : marks) {
        const double distance = std::fabs(time - mark->time);
        if (nearest == nullptr || distance < least) {
            nearest = mark;
            least = distance;
        }
    }
    const double secondsPerPixel = (double{viewEnd} - viewStart) / client.Width();
    return nearest != nullptr && least <= markHitRange * secondsPerPixel ? nearest : nullptr;
}

void CMarkedGridCtrl::SetLabelDistance(int distance, bool redraw) {
    labelDistance = distance;
    if (redraw) {
        Invalidate(FALSE);
    }
}

void CMarkedGridCtrl::DrawMarkAt(CDC* dc, const CRect& client, float time, bool pointsUp,
                                 COLORREF color) const {
    if (!(viewEnd > viewStart) || !(time >= viewStart && time <= viewEnd)) {
        return;
    }
    const double scale = client.Width() / (double{viewEnd} - viewStart);
    const int center = CutToPixel((double{time} - viewStart) * scale);
    CRect rect(center - markWidth / 2, 0, center + markWidth / 2, 0);
    switch (alignment) {
    case kTop:
        rect.top = client.top + 1;
        rect.bottom = client.bottom - 2;
        break;
    case kMiddle:
        rect.top = client.top + 1;
        rect.bottom = client.Height() / 2 - 1;
        break;
    case kBottom:
        rect.top = client.top + 2;
        rect.bottom = client.bottom - 1;
        break;
    default:
        return;
    }
    DrawArrow(dc, rect, pointsUp, color);
}

void CMarkedGridCtrl::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    {
        CPen pen(PS_SOLID, 0, 0);
        CBrush brush(kBackground);
        const SelectionScope<CPen> penScope(dc, pen);
        const SelectionScope<CBrush> brushScope(dc, brush);
        dc.Rectangle(client);
    }
    DrawGrid(&dc, client, labelDistance);
    for (const CMark* mark : marks) {
        DrawMarkAt(&dc, client, mark->time, mark->pointsUp, mark == dragMark ? dragMarkColor : markColor);
    }
    // Required: the cursor stands at the control's time; cursorMark keeps the raw time of the mouse.
    if (const TimelineContext* timeline = TimelineOf(this)) {
        DrawMarkAt(&dc, client, timeline->currentTime, cursorMark->pointsUp, cursorColor);
    }
}

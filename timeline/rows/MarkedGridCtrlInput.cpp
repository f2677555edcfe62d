#include "timeline/rows/MarkedGridCtrl.h"
#include "timeline/rows/TimelineContext.h"

#include <utility>

// The ruler writes the time under the mouse as it is; rows write it snapped to a frame. Required.

void CMarkedGridCtrl::MoveCursor(TimelineContext& timeline, float time) {
    cursorMark->time = time;
    timeline.SetCurrentFrame(time, /*redraw*/ true);
}

void CMarkedGridCtrl::BeginMarkDrag(TimelineContext& timeline, CMark* mark) {
    MarkDrag::Hold(*mark);
    SetCapture();
    MarkDrag::Begin(timeline);
}

void CMarkedGridCtrl::OnLButtonDown(UINT flags, int x, int y) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    const CPoint point(x, y);
    const float time = TimeFromPoint(point);
    const HWND self = GetSafeHwnd();
    if (dragMark != nullptr) {
        EndMarkDrag(*timeline, /*keep*/ true); // the release never came
    }
    timeline->mouseTime = time;
    timeline->InvalidateInfo();
    pressed = true;
    if ((flags & MK_SHIFT) != 0) {
        if (CMark* mark = FindMark(&point)) {
            BeginMarkDrag(*timeline, mark);
            return;
        }
        AddMark(time);
        timeline->ArrangeRows(/*invalidate*/ true, /*move*/ false);
        Invalidate(FALSE);
    } else {
        MoveCursor(*timeline, time);
    }
    // A film that plays runs its message loop inside the move of the cursor: by now the button may be up, or
    // this window gone.
    if (IsWindow(self) && pressed) {
        SetCapture();
    }
}

void CMarkedGridCtrl::OnMouseMove(UINT flags, int x, int y) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    const float time = TimeFromPoint({x, y});
    const HWND self = GetSafeHwnd();
    timeline->mouseTime = time;
    // Required: a mark's drag whose Shift is let go moves the cursor until Shift is down again.
    if ((flags & MK_LBUTTON) != 0 && (flags & MK_SHIFT) == 0) {
        MoveCursor(*timeline, time);
    } else if (dragMark != nullptr) {
        MarkDrag::Update(*timeline, time);
    }
    if (IsWindow(self)) {
        timeline->InvalidateInfo();
    }
}

void CMarkedGridCtrl::OnLButtonUp(UINT /*flags*/, int x, int y) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    pressed = false;
    if (dragMark != nullptr) {
        ReleaseCapture();
        const float time = TimeFromPoint({x, y});
        EndMarkDrag(*timeline, /*keep*/ time >= viewStart && time <= viewEnd);
    }
    ReleaseCapture();
}

/// Another window took the mouse: a mark stays where it stands, and the keys that it carried too.
void CMarkedGridCtrl::OnCaptureChanged(CWnd* next) {
    CGridCtrl::OnCaptureChanged(next);
    TimelineContext* timeline = TimelineOf(this);
    if (std::exchange(pressed, false) && dragMark != nullptr && timeline != nullptr) {
        EndMarkDrag(*timeline, /*keep*/ true);
    }
}

/// A mark that isn't kept goes, and the keys that it carried go back.
void CMarkedGridCtrl::EndMarkDrag(TimelineContext& timeline, bool keep) {
    CMark* mark = MarkDrag::End(timeline, keep);
    if (!keep) {
        DeleteMark(mark);
    }
    timeline.InvalidateControl(/*erase*/ true);
}

void CMarkedGridCtrl::OnLButtonDblClk(UINT /*flags*/, int /*x*/, int /*y*/) {
}

void CMarkedGridCtrl::OnRButtonDown(UINT /*flags*/, int x, int y) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    CPoint point(x, y);
    ClientToScreen(&point);
    timeline->ShowContextMenu(point.x, point.y, nullptr, nullptr);
}

#include "keys/rules/DragInput.h"
#include "keys/rules/Pixels.h"
#include "keys/rules/TimedKeyDrag.h"
#include "keys/views/KeyRow.h"
#include "keys/views/TimedTrackKey.h"

#include <cmath>

void CTimedTrackKey::OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) {
    if (state == kHidden) {
        return;
    }
    const int start = CutToPixel(x);
    const int top = CutToPixel(y);
    // Required: the sum is cut, while HitGrip cuts the width alone, and the far sides don't belong to the
    // grips here.
    const int end = CutToPixel(static_cast<float>(start) + pixelsPerSecond * duration);
    const int side = GetDrawnHeight();
    const CRect left(start - side - kGripDistance, top, start - kGripDistance, top + side);
    const CRect right(end + kGripDistance, top, end + side + kGripDistance, top + side);
    dragMode = left.PtInRect(point) ? kDragLeft : right.PtInRect(point) ? kDragRight : kDragMove;
    lastMouseTime = pressTime;
    CTrackKey::OnLButtonDown(x, y, pixelsPerSecond, point, pressTime);
}

void CTimedTrackKey::OnMouseMove(UINT /*flags*/, float mouseTime, KeyRow* row) {
    if (row == nullptr || !std::isfinite(mouseTime)) {
        return;
    }
    const TimedKeyDrag drag{dragMode, {time, duration}, lastMouseTime, mouseTime};
    const bool free = IsAltDown();
    float target = row->SnapTime(this, drag.Edge(), drag.IsForward(), free);
    target = free ? drag.HoldBack(target) : drag.HoldAtStart(target);
    target = ClampToAxis(target, row->GetAxis());
    if (!free && !IsPastHalfWay(lastMouseTime, target, mouseTime)) {
        return;
    }
    KeySpan proposed = drag.Propose(target);
    lastMouseTime = mouseTime;
    if (row->FitTimedKey(this, mouseTime, proposed.start, proposed.duration, duration) &&
        std::isfinite(proposed.End())) {
        // Required: a key can't be pulled shorter than SetDuration allows, but its start still moves.
        SetDuration(proposed.duration, /*viewOnly*/ false);
        SetPosition(proposed.start, /*viewOnly*/ false);
    }
}

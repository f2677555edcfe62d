#include "keys/TimedTrackKey.h"

void CTimedTrackKey::OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) {
    CTrackKey::OnLButtonDown(x, y, pixelsPerSecond, point, pressTime);
}

void CTimedTrackKey::OnMouseMove(UINT /*flags*/, float /*mouseTime*/, CTrackCtrl* /*row*/) {
}

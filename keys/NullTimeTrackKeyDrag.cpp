#include "keys/NullTimeTrackKey.h"

void CNullTimeTrackKey::OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) {
    CTrackKey::OnLButtonDown(x, y, pixelsPerSecond, point, pressTime);
}

void CNullTimeTrackKey::OnMouseMove(UINT /*flags*/, float /*mouseTime*/, CTrackCtrl* /*row*/) {
}

bool CNullTimeTrackKey::CheckGroupMove(const CTrackCtrl* /*row*/, float /*target*/) const {
    return false;
}

#include "framework/Wnd.h"
#include "keys/rules/DragInput.h"
#include "keys/rules/TimedKeyDrag.h"
#include "keys/views/GroupDrag.h"
#include "keys/views/KeyRow.h"
#include "keys/views/KeyViewContext.h"
#include "keys/views/NullTimeTrackKey.h"
#include "resources/resource.h"

#include <cmath>

void CNullTimeTrackKey::OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) {
    if (state == kHidden) {
        return;
    }
    if (GetKeyState(VK_CONTROL) < 0) {
        marked = !marked;
    }
    if (context != nullptr && context->session.scenarioDlg != nullptr) {
        context->session.scenarioDlg->PressButton(IDC_SELECT_KEY, marked);
    }
    dragging = true;
    lastMouseTime = pressTime;
    if (context != nullptr) {
        context->InvalidateControl(/*erase*/ false);
    }
    CTrackKey::OnLButtonDown(x, y, pixelsPerSecond, point, pressTime);
}

void CNullTimeTrackKey::OnMouseMove(UINT /*flags*/, float mouseTime, KeyRow* row) {
    if (!dragging || row == nullptr || !std::isfinite(mouseTime)) {
        return;
    }
    const float oldTime = time;
    const bool free = IsAltDown();
    const float target = row->SnapTime(this, oldTime, mouseTime - lastMouseTime > 0.0f, free);
    if (free && context != nullptr) {
        context->mouseTime = target;
    }
    const bool moves = free || IsPastHalfWay(lastMouseTime, target, mouseTime);
    if (moves) {
        if (!CheckGroupMove(row, target)) {
            return; // the whole group waits where it is
        }
        SetPosition(target, /*viewOnly*/ false);
    }
    // Required: also when the key was held, so that only a mouse that comes to the tic itself takes it along.
    lastMouseTime = mouseTime;
    if (moves && marked) {
        GroupDrag(*this, *row).Follow(oldTime, target);
    }
}

bool CNullTimeTrackKey::CheckGroupMove(const KeyRow* row, float target) const {
    if (row == nullptr || !row->GetGroup()) {
        return false;
    }
    return !marked || GroupDrag(*this, *row).StaysOnAxis(target);
}

void CNullTimeTrackKey::ClearMarks(KeyRow* row) {
    if (row == nullptr || !row->GetGroup() || !marked) {
        return;
    }
    GroupDrag(*this, *row).ClearMarks();
    if (context != nullptr) {
        context->InvalidateControl(/*erase*/ false);
    }
}

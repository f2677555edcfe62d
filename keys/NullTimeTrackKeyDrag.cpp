#include "framework/Wnd.h"
#include "keys/DragInput.h"
#include "keys/NullTimeTrackKey.h"
#include "keys/TimedKeyDrag.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"
#include "timeline/TimelineContext.h"
#include "timeline/TrackCtrl.h"

#include <algorithm>
#include <cmath>

void CNullTimeTrackKey::OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) {
    if (state == kHidden) {
        return;
    }
    if (GetKeyState(VK_CONTROL) < 0) {
        marked = !marked;
    }
    if (IScenarioWindow* window = GetPlugin().scenarioDlg) {
        window->PressButton(IDC_SELECT_KEY, marked);
    }
    dragging = true;
    lastMouseTime = pressTime;
    if (TimelineContext* timeline = GetTimeline()) {
        timeline->InvalidateControl(/*erase*/ false);
    }
    CTrackKey::OnLButtonDown(x, y, pixelsPerSecond, point, pressTime);
}

void CNullTimeTrackKey::OnMouseMove(UINT /*flags*/, float mouseTime, CTrackCtrl* row) {
    if (!dragging || row == nullptr || !std::isfinite(mouseTime)) {
        return;
    }
    const float oldTime = time;
    const bool free = IsAltDown();
    const float target = row->SnapTime(this, oldTime, mouseTime - lastMouseTime > 0.0f, free);
    TimelineContext* timeline = GetTimeline();
    if (free && timeline != nullptr) {
        timeline->mouseTime = target;
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
        MoveGroup(*row, oldTime, target);
    }
}

bool CNullTimeTrackKey::CheckGroupMove(const CTrackCtrl* row, float target) const {
    if (row == nullptr || row->parent == nullptr) {
        return false;
    }
    if (!marked) {
        return true;
    }
    const auto isOutside = [row](float moved) { return moved < row->rangeStart || moved > row->rangeEnd; };
    if (isOutside(target)) {
        return false;
    }
    const auto wouldLeave = [&](const CTrackKey* key) {
        return key->marked && key->time != time && isOutside(target - time + key->time);
    };
    return std::ranges::none_of(row->parent->children, [&](const CTrackCtrl* sibling) {
        return std::ranges::any_of(sibling->keys, wouldLeave);
    });
}

/// The other marked keys go along, this one has moved. Required: the neighbours of none of them are looked
/// at.
void CNullTimeTrackKey::MoveGroup(const CTrackCtrl& row, float oldTime, float target) {
    for (CTrackCtrl* sibling : row.parent->children) {
        bool anyMoved = false;
        for (CTrackKey* key : sibling->keys) {
            if (!key->marked || key == this) {
                continue;
            }
            const float moved = key->time == oldTime ? target : key->time + (target - oldTime);
            key->SetPosition(moved, /*viewOnly*/ false);
            key->lastMouseTime = lastMouseTime;
            anyMoved = true;
        }
        if (anyMoved) {
            sibling->Invalidate(FALSE);
        }
    }
}

void CNullTimeTrackKey::ClearMarks(CTrackCtrl* row) {
    if (row == nullptr || row->parent == nullptr || !marked) {
        return;
    }
    for (const CTrackCtrl* sibling : row->parent->children) {
        for (CTrackKey* key : sibling->keys) {
            key->marked = false;
        }
    }
    if (TimelineContext* timeline = GetTimeline()) {
        timeline->InvalidateControl(/*erase*/ false);
    }
}

// Time that is put into the film, taken out or stretched moves the keys of a row.
#include "keys/rules/KeyStretch.h"
#include "keys/views/RowAdjust.h"
#include "keys/views/TrackKey.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>

void CTrackCtrl::AdjustKeys(float time, float from, float to) {
    if (IsRoot()) {
        std::ranges::for_each(children, [=](CTrackCtrl* child) { child->AdjustKeys(time, from, to); });
        return;
    }
    const TimeStretch stretch(time, from, to);
    if (track == nullptr || !stretch.IsFinite()) {
        return;
    }
    for (const IFilmKey* record : StretchRecords(*track, kind, keys, stretch)) {
        TellWritten(record);
    }
}

void CTrackCtrl::ShiftKeys(float time, float delta) {
    const Watch watched(this);
    if (IsRoot()) {
        const std::list<CTrackCtrl*> asked = children;
        for (CTrackCtrl* child : asked) {
            if (watched.IsAlive() && std::ranges::find(children, child) != children.end()) {
                child->ShiftKeys(time, delta);
            }
        }
        return;
    }
    const ShiftedRow shifted = ShiftRecords(keys, kind, time, delta);
    std::ranges::for_each(shifted.moved, [this](const IFilmKey* record) { TellWritten(record); });
    for (CTrackKey* view : shifted.fallen) {
        // Letting go of a selected key may let anything in.
        if (!watched.IsAlive()) {
            return;
        }
        if (keys.Contains(view)) {
            RemoveKey(view, /*destroy*/ false, /*redraw*/ false, /*noUndo*/ false);
        }
    }
}

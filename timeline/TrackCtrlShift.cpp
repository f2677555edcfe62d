// Time that is put into the film or taken out moves the keys of a row.
#include "keys/KeyEnd.h"
#include "keys/KeyShift.h"
#include "keys/TrackKey.h"
#include "timeline/TrackCtrl.h"

#include <algorithm>
#include <cmath>

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
    for (CTrackKey* view : ShiftRecords(time, delta)) {
        // Letting go of a selected key may let anything in.
        if (!watched.IsAlive()) {
            return;
        }
        if (keys.Contains(view)) {
            RemoveKey(view, /*destroy*/ false, /*redraw*/ false, /*noUndo*/ false);
        }
    }
}

/// Moves the records of the keys that start at the time or later. The answer are the views of those that fall
/// out of the film; their records stay as they are.
std::vector<CTrackKey*> CTrackCtrl::ShiftRecords(float time, float delta) const {
    std::vector<CTrackKey*> fallen;
    for (CTrackKey* view : keys) {
        IFilmKey* record = view->record;
        if (record == nullptr || record->kind != kind || !(record->time >= time)) {
            continue;
        }
        const KeyTimes old{record->time, EndOf(*record)};
        if (!std::isfinite(old.start + delta) || !std::isfinite(old.end + delta)) {
            continue; // beyond what a time can be
        }
        const std::optional<KeyTimes> shifted = ShiftedKey(old, delta);
        if (!shifted) {
            fallen.push_back(view);
            continue;
        }
        record->SetTime(shifted->start);
        record->SetEndTime(shifted->end);
        TellWritten(record);
    }
    return fallen;
}

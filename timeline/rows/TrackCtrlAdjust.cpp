// Time that is put into the film, taken out or stretched moves the keys of a row.
#include "keys/rules/KeyStretch.h"
#include "keys/views/RowAdjust.h"
#include "keys/views/TrackKey.h"
#include "plugin/session/FilmSession.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>

namespace {

/// A row's session is asked for once: the way to it costs more than a key's move.
template <class Records> void TellAllWritten(const FilmSession* session, const Records& records) {
    if (session != nullptr) {
        std::ranges::for_each(records, [&](const IFilmKey* record) { session->TellKeyWritten(record); });
    }
}

} // namespace

void CTrackCtrl::AdjustKeys(float time, float from, float to) {
    if (IsRoot()) {
        std::ranges::for_each(children, [=](CTrackCtrl* child) { child->AdjustKeys(time, from, to); });
        return;
    }
    const TimeStretch stretch(time, from, to);
    if (track == nullptr || !stretch.IsFinite()) {
        return;
    }
    TellAllWritten(GetSession(), StretchRecords(*track, kind, keys, stretch));
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
    TellAllWritten(GetSession(), shifted.moved);
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

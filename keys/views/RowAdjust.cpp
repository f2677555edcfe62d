#include "keys/views/RowAdjust.h"

#include "keys/rules/KeyEnd.h"
#include "keys/rules/KeyShift.h"
#include "keys/rules/KeyStretch.h"
#include "keys/rules/RowTimes.h"
#include "keys/views/KeyPlaces.h"
#include "keys/views/TrackKey.h"
#include "plugin/contract/FilmTrack.h"
#include "plugin/contract/KeyKindTable.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

/// The neighbour before a record doesn't reach into it. One that starts behind it is none.
void CutNeighbour(const IFilmKey& record, IFilmKey* neighbour) {
    const bool mayOverlap = (record.flags & KeyFlag::MayOverlap) != 0;
    if (neighbour != nullptr && neighbour != &record && !mayOverlap && !(neighbour->time > record.time) &&
        EndOf(*neighbour) > record.time) {
        neighbour->SetEndTime(record.time);
    }
}

/// Neighbours are cut when all have moved.
void StretchSpans(const std::vector<IFilmKey*>& records, const KeyViewList& keys, const TimeStretch& stretch,
                  bool scale) {
    std::vector<const IFilmKey*> concerned;
    for (IFilmKey* record : records) {
        if (stretch.ApplyToSpan(*record, scale)) {
            concerned.push_back(record);
        }
    }
    // Required: the neighbour is looked for by the views, which keep their times of before.
    const std::vector<RowKey> views = RowKeysOf(keys);
    const RowTimes times(views);
    for (const IFilmKey* record : concerned) {
        const std::optional<std::size_t> before = times.NearestBefore(record->time);
        CutNeighbour(*record, before ? keys[*before]->record : nullptr);
    }
}

} // namespace

std::vector<IFilmKey*> StretchRecords(const CFilmTrack& track, int kind, const KeyViewList& views,
                                      const TimeStretch& stretch) {
    std::vector<IFilmKey*> records;
    std::ranges::copy_if(track.keys, std::back_inserter(records),
                         [kind](const IFilmKey* record) { return record->kind == kind; });
    if (!IsTimedKind(kind)) {
        std::ranges::for_each(records, [&](IFilmKey* record) { stretch.ApplyToMoment(*record); });
    } else {
        StretchSpans(records, views, stretch, FindKeyKind(kind)->duration == KeyDuration::Free);
    }
    return records;
}

ShiftedRow ShiftRecords(const KeyViewList& views, int kind, float time, float delta) {
    ShiftedRow row;
    row.moved.reserve(views.size());
    for (CTrackKey* view : views) {
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
            row.fallen.push_back(view);
            continue;
        }
        record->SetTime(shifted->start);
        record->SetEndTime(shifted->end);
        row.moved.push_back(record);
    }
    return row;
}

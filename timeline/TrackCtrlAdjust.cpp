#include "keys/KeyEnd.h"
#include "keys/KeyStretch.h"
#include "keys/RowTimes.h"
#include "keys/TrackKey.h"
#include "timeline/TrackCtrl.h"

#include <algorithm>

namespace {

enum class StretchRule { KeepDurations, ScaleDurations, Moments };

StretchRule RuleOf(int kind) {
    switch (kind) {
    case KeyKind::Animation:
    case KeyKind::Speech:
    case KeyKind::Sound:
        return StretchRule::KeepDurations; // what plays keeps its length
    case KeyKind::Camera:
    case KeyKind::FxSequence:
    case KeyKind::FxParticle:
    case KeyKind::FxTrace:
    case KeyKind::FxRain:
    case KeyKind::FxBlind:
    case KeyKind::FxFlare:
        return StretchRule::ScaleDurations;
    default:
        return StretchRule::Moments;
    }
}

/// The neighbour before a record doesn't reach into it. One that starts behind it is none.
void CutNeighbour(const IFilmKey& record, IFilmKey* neighbour) {
    const bool mayOverlap = (record.flags & KeyFlag::MayOverlap) != 0;
    if (neighbour != nullptr && neighbour != &record && !mayOverlap && !(neighbour->time > record.time) &&
        EndOf(*neighbour) > record.time) {
        neighbour->SetEndTime(record.time);
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
    std::vector<IFilmKey*> records;
    std::ranges::copy_if(track->keys, std::back_inserter(records),
                         [this](const IFilmKey* record) { return record->kind == kind; });
    const StretchRule rule = RuleOf(kind);
    if (rule == StretchRule::Moments) {
        std::ranges::for_each(records, [&](IFilmKey* record) { stretch.ApplyToMoment(*record); });
    } else {
        StretchSpans(records, stretch, rule == StretchRule::ScaleDurations);
    }
    std::ranges::for_each(records, [this](const IFilmKey* record) { TellWritten(record); });
}

/// Neighbours are cut when all have moved.
void CTrackCtrl::StretchSpans(const std::vector<IFilmKey*>& records, const TimeStretch& stretch, bool scale) {
    std::vector<const IFilmKey*> concerned;
    for (IFilmKey* record : records) {
        if (stretch.ApplyToSpan(*record, scale)) {
            concerned.push_back(record);
        }
    }
    // Required: the neighbour is looked for by the views, which keep their times of before.
    const std::vector<RowKey> views = RowKeys();
    const RowTimes times(views);
    for (const IFilmKey* record : concerned) {
        const std::optional<std::size_t> before = times.NearestBefore(record->time);
        CutNeighbour(*record, before ? keys[*before]->record : nullptr);
    }
}

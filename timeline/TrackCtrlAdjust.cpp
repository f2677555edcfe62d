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

/// The neighbour before a record doesn't reach into it.
void CutNeighbour(const IFilmKey& record, IFilmKey* neighbour) {
    const bool mayOverlap = (record.flags & KeyFlag::MayOverlap) != 0;
    if (neighbour != nullptr && neighbour != &record && !mayOverlap && neighbour->endTime > record.time) {
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
        return;
    }
    // Required: the neighbour is looked for by the views, which keep their times of before.
    const std::vector<RowKey> views = RowKeys();
    const RowTimes times(views);
    for (IFilmKey* record : records) {
        if (stretch.ApplyToSpan(*record, rule == StretchRule::ScaleDurations)) {
            const std::optional<std::size_t> before = times.NearestBefore(record->time);
            CutNeighbour(*record, before ? keys[*before]->record : nullptr);
        }
    }
}

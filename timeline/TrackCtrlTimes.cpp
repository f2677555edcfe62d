#include "keys/RowTimes.h"
#include "keys/TimedTrackKey.h"
#include "timeline/TimelineContext.h"
#include "timeline/TrackCtrl.h"

#include <algorithm>
#include <cmath>

namespace {

int KindOf(const CTrackKey& key) {
    return key.record != nullptr ? key.record->kind : RowKey::kForeign;
}

/// A key without a record has nothing that tells its kind, so none of its neighbours limits it.
bool IsBounded(const CTrackKey& key) {
    return key.record != nullptr && (key.record->flags & KeyFlag::MayOverlap) == 0;
}

KeySpan SpanOf(const CTrackKey& key) {
    return {key.time, key.GetDuration()};
}

} // namespace

TimeAxis CTrackCtrl::GetAxis() const {
    return {rangeStart, rangeEnd, ticDistance};
}

std::optional<std::vector<KeyRow*>> CTrackCtrl::GetGroup() const {
    if (parent == nullptr) {
        return std::nullopt;
    }
    return std::vector<KeyRow*>(parent->children.begin(), parent->children.end());
}

/// The other keys of the same kind as a key of this or any other row that has a record.
std::vector<KeySpan> CTrackCtrl::SpansBeside(const CTrackKey& key) const {
    std::vector<KeySpan> spans;
    spans.reserve(keys.size());
    for (const CTrackKey* other : keys) {
        if (other != &key && KindOf(*other) == key.record->kind) {
            spans.push_back(SpanOf(*other));
        }
    }
    return spans;
}

std::vector<RowKey> CTrackCtrl::RowKeys() const {
    std::vector<RowKey> all;
    all.reserve(keys.size());
    for (const CTrackKey* key : keys) {
        all.push_back({SpanOf(*key), KindOf(*key), IsBounded(*key)});
    }
    return all;
}

float CTrackCtrl::SnapTime(CTrackKey* key, float ref, bool forward, bool free) const {
    if (key == nullptr) {
        return rangeStart - 1.0f;
    }
    const TimeAxis axis = GetAxis();
    KeyLimits limits;
    GetKeyLimits(key, limits.lo, limits.hi);
    if (free) {
        const TimelineContext* timeline = TimelineOf(this);
        const float mouseTime = timeline != nullptr ? timeline->mouseTime : ref;
        return ClampToAxis(FollowMouse(SpanOf(*key), limits, mouseTime, forward), axis);
    }
    const float tic = NextTic(axis, ref, forward);
    if (limits.Ahead(forward) != tic) {
        return ClampToAxis(tic, axis);
    }
    return ClampToAxis(StepOverKeys(RowKeys(), limits, tic, forward, axis), axis);
}

void CTrackCtrl::GetKeyLimits(const CTrackKey* key, float& lo, float& hi) const {
    if (key != nullptr && IsBounded(*key)) {
        const KeyLimits limits = FindKeyLimits(SpanOf(*key), SpansBeside(*key), GetAxis());
        lo = limits.lo;
        hi = limits.hi;
    }
}

CTrackKey* CTrackCtrl::KeyAtTime(float time) const {
    const auto found =
        std::ranges::find_if(keys, [time](const CTrackKey* key) { return IsSameMoment(key->time, time); });
    return found != keys.end() ? *found : nullptr;
}

CTrackKey* CTrackCtrl::FindNearestKey(float time, bool after) const {
    CTrackKey* nearest = nullptr;
    double least = kFarthestSeconds;
    for (CTrackKey* key : keys) {
        const double ahead = static_cast<double>(key->time) - time;
        const double distance = after ? ahead : -ahead;
        if (distance > kPassedOverSeconds && distance < least) {
            nearest = key;
            least = distance;
        }
    }
    return nearest;
}

bool CTrackCtrl::IsTimeFree(const CTrackKey* key, float time) const {
    if (key == nullptr || key->record == nullptr || !(time >= rangeStart && time <= rangeEnd)) {
        return false;
    }
    return !IsBounded(*key) || IsFreeAmong(SpansBeside(*key), time);
}

bool CTrackCtrl::CanPlaceKey(CTrackKey* key, float time) const {
    if (!IsTimeFree(key, time)) {
        return false;
    }
    auto* timed = dynamic_cast<CTimedTrackKey*>(key);
    if ((key->record->flags & KeyFlag::NoDuration) != 0 || timed == nullptr) {
        return true;
    }
    // Required: shortens also a key that may overlap, and also when the caller only asks; the record's end is
    // told from where the key stands now.
    const float room = RoomBehind(SpansBeside(*key), time, GetAxis());
    if (timed->duration > room) {
        timed->SetDuration(room, /*viewOnly*/ false);
    }
    return true;
}

bool CTrackCtrl::FitTimedKey(CTrackKey* key, float /*time*/, float& start, float& duration,
                             float oldDuration) const {
    if (key == nullptr || key->record == nullptr) {
        return false;
    }
    const KeySpan present = SpanOf(*key);
    if (present.start > present.End()) {
        return false;
    }
    if (!IsBounded(*key)) {
        return true;
    }
    KeySpan proposed{start, duration};
    const bool fits = FitAmong(SpansBeside(*key), present, proposed, oldDuration);
    start = proposed.start;
    duration = proposed.duration;
    return fits;
}

void CTrackCtrl::ShiftKeysNear(float from, float to) {
    const float step = to - from;
    if (!std::isfinite(step)) {
        return;
    }
    for (CTrackKey* key : keys) {
        if (IsNearMark(SpanOf(*key), from)) {
            key->SetPosition(key->time + step, /*viewOnly*/ false);
        }
    }
}

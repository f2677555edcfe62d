#include "keys/views/KeyPlaces.h"

#include "keys/rules/RowTimes.h"
#include "keys/views/TimedTrackKey.h"

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

/// The other keys of the same kind as a key of this or any other row that has a record.
std::vector<KeySpan> KeyPlaces::SpansBeside(const CTrackKey& key) const {
    std::vector<KeySpan> spans;
    spans.reserve(keys.size());
    for (const CTrackKey* other : keys) {
        if (other != &key && KindOf(*other) == key.record->kind) {
            spans.push_back(SpanOf(*other));
        }
    }
    return spans;
}

std::vector<RowKey> RowKeysOf(const KeyViewList& keys) {
    std::vector<RowKey> all;
    all.reserve(keys.size());
    for (const CTrackKey* key : keys) {
        all.push_back({SpanOf(*key), KindOf(*key), IsBounded(*key)});
    }
    return all;
}

float KeyPlaces::FollowMouse(const CTrackKey& key, float mouseTime, bool forward) const {
    const KeyLimits limits = LimitsOf(key).value_or(KeyLimits());
    return ClampToAxis(::FollowMouse(SpanOf(key), limits, mouseTime, forward), axis);
}

float KeyPlaces::SnapToTics(const CTrackKey& key, float ref, bool forward) const {
    const KeyLimits limits = LimitsOf(key).value_or(KeyLimits());
    const float tic = NextTic(axis, ref, forward);
    if (limits.Ahead(forward) != tic) {
        return ClampToAxis(tic, axis);
    }
    return ClampToAxis(StepOverKeys(RowKeysOf(keys), limits, tic, forward, axis), axis);
}

std::optional<KeyLimits> KeyPlaces::LimitsOf(const CTrackKey& key) const {
    if (!IsBounded(key)) {
        return std::nullopt;
    }
    return FindKeyLimits(SpanOf(key), SpansBeside(key), axis);
}

CTrackKey* KeyPlaces::KeyAt(float time) const {
    const auto found =
        std::ranges::find_if(keys, [time](const CTrackKey* key) { return IsSameMoment(key->time, time); });
    return found != keys.end() ? *found : nullptr;
}

CTrackKey* KeyPlaces::NearestTo(float time, bool after) const {
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

bool KeyPlaces::IsFree(const CTrackKey& key, float time) const {
    if (!(time >= axis.start && time <= axis.end)) {
        return false;
    }
    return !IsBounded(key) || IsFreeAmong(SpansBeside(key), time);
}

bool KeyPlaces::CanPlace(CTrackKey& key, float time) const {
    if (!IsFree(key, time)) {
        return false;
    }
    auto* timed = dynamic_cast<CTimedTrackKey*>(&key);
    if ((key.record->flags & KeyFlag::NoDuration) != 0 || timed == nullptr) {
        return true;
    }
    // Required: shortens also a key that may overlap, and also when the caller only asks; the record's end is
    // told from where the key stands now.
    const float room = RoomBehind(SpansBeside(key), time, axis);
    if (timed->duration > room) {
        timed->SetDuration(room, /*viewOnly*/ false);
    }
    return true;
}

bool KeyPlaces::Fit(const CTrackKey& key, KeySpan& proposed, float oldDuration) const {
    const KeySpan present = SpanOf(key);
    if (present.start > present.End()) {
        return false;
    }
    return !IsBounded(key) || FitAmong(SpansBeside(key), present, proposed, oldDuration);
}

void KeyPlaces::ShiftNear(float from, float to) const {
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

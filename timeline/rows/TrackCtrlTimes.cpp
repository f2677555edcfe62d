// What a row says about the times of its keys, by the rules of KeyPlaces.
#include "keys/views/KeyPlaces.h"
#include "keys/views/TrackKey.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

TimeAxis CTrackCtrl::GetAxis() const {
    return {rangeStart, rangeEnd, ticDistance};
}

std::optional<std::vector<KeyRow*>> CTrackCtrl::GetGroup() const {
    if (parent == nullptr) {
        return std::nullopt;
    }
    return std::vector<KeyRow*>(parent->children.begin(), parent->children.end());
}

float CTrackCtrl::SnapTime(CTrackKey* key, float ref, bool forward, bool free) const {
    if (key == nullptr) {
        return rangeStart - 1.0f;
    }
    if (!free) {
        return Places().SnapToTics(*key, ref, forward);
    }
    const TimelineContext* timeline = TimelineOf(this);
    return Places().FollowMouse(*key, timeline != nullptr ? timeline->mouseTime : ref, forward);
}

void CTrackCtrl::GetKeyLimits(const CTrackKey* key, float& lo, float& hi) const {
    const std::optional<KeyLimits> limits = key != nullptr ? Places().LimitsOf(*key) : std::nullopt;
    if (limits) {
        lo = limits->lo;
        hi = limits->hi;
    }
}

CTrackKey* CTrackCtrl::KeyAtTime(float time) const {
    return Places().KeyAt(time);
}

CTrackKey* CTrackCtrl::FindNearestKey(float time, bool after) const {
    return Places().NearestTo(time, after);
}

bool CTrackCtrl::IsTimeFree(const CTrackKey* key, float time) const {
    return key != nullptr && key->record != nullptr && Places().IsFree(*key, time);
}

bool CTrackCtrl::CanPlaceKey(CTrackKey* key, float time) const {
    return key != nullptr && key->record != nullptr && Places().CanPlace(*key, time);
}

bool CTrackCtrl::FitTimedKey(CTrackKey* key, float /*time*/, float& start, float& duration,
                             float oldDuration) const {
    if (key == nullptr || key->record == nullptr) {
        return false;
    }
    KeySpan proposed{start, duration};
    const bool fits = Places().Fit(*key, proposed, oldDuration);
    start = proposed.start;
    duration = proposed.duration;
    return fits;
}

void CTrackCtrl::ShiftKeysNear(float from, float to) {
    Places().ShiftNear(from, to);
}

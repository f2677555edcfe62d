#pragma once

#include "keys/rules/KeyTimeRules.h"
#include "keys/views/KeyViewList.h"

#include <optional>
#include <vector>

class CTrackKey;
struct RowKey;

/// Where the keys of a row may stand: what its views and its axis say about times, which are seconds. A key
/// that is asked about may be one of the row or of any other. Looks at the views as long as it lives.
class KeyPlaces {
public:
    KeyPlaces(const KeyViewList& views, const TimeAxis& rowAxis) : keys(views), axis(rowAxis) {}

    /// Where an edge at `ref` goes by tics.
    float SnapToTics(const CTrackKey& key, float ref, bool forward) const;
    /// Where a key that follows the mouse by frames stops.
    float FollowMouse(const CTrackKey& key, float mouseTime, bool forward) const;
    /// The gap around the key; nothing for a key that may overlap.
    std::optional<KeyLimits> LimitsOf(const CTrackKey& key) const;
    /// The first key that starts at the time, within 0.00001 seconds.
    CTrackKey* KeyAt(float time) const;
    /// The nearest key at or after a time (or at or before it); one that stands at the time is passed over.
    CTrackKey* NearestTo(float time, bool after) const;
    /// Whether the key, which has a record, may start at a time. Another's start and end are taken.
    bool IsFree(const CTrackKey& key, float time) const;
    /// IsFree, and a timed key is shortened so that it ends before the next.
    bool CanPlace(CTrackKey& key, float time) const;
    /// Fits a proposed place of a key with a record between the others; false if it can't be taken at all.
    bool Fit(const CTrackKey& key, KeySpan& proposed, float oldDuration) const;
    /// Keys that start or end near a mark at `from` go along to `to`.
    void ShiftNear(float from, float to) const;

private:
    std::vector<KeySpan> SpansBeside(const CTrackKey& key) const;

    const KeyViewList& keys;
    TimeAxis axis;
};

/// The keys of a row as rules for many of them see them, in draw order.
std::vector<RowKey> RowKeysOf(const KeyViewList& keys);

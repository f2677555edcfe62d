#include "tests/editing/RowInvariants.h"

#include "keys/views/TimedTrackKey.h"
#include "tests/editing/Living.h"
#include "tests/editing/World.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace editing {

std::string Name(const CTrackCtrl& row) {
    return "row '" + row.name + "' of kind " + std::to_string(row.kind);
}

std::string Name(const CTrackKey& key) {
    const std::string kind = key.record != nullptr ? std::to_string(key.record->kind) : "none";
    return "key of kind " + kind + " at " + std::to_string(key.time);
}

namespace {

using Answer = std::optional<Failure>;

Answer CheckTimes(const CTrackCtrl& row, const CTrackKey& key) {
    const IFilmKey& record = *key.record;
    const float duration = key.GetDuration();
    if (!std::isfinite(key.time) || !std::isfinite(duration) || !std::isfinite(record.time) ||
        !std::isfinite(record.endTime)) {
        return Failure{"not-a-time", Name(key) + " has a time that is no number"};
    }
    if (key.time != record.time) {
        return Failure{"view-time", Name(key) + " has a record at " + std::to_string(record.time)};
    }
    const bool timed = dynamic_cast<const CTimedTrackKey*>(&key) != nullptr;
    if (timed && key.time + duration != record.endTime && record.endTime - record.time != duration) {
        return Failure{"view-end", Name(key) + " of " + std::to_string(duration) + " has a record until " +
                                       std::to_string(record.endTime)};
    }
    std::vector<CTrackKey*> found;
    row.keys.Overlapping(key.time, key.time, found);
    // A stretch of time may cut a neighbour to an end before its start, and such a key covers no moment.
    const bool coversItsStart = key.time + duration >= key.time;
    if ((std::ranges::find(found, &key) != found.end()) != coversItsStart) {
        return Failure{"time-index", Name(key) + " is not found at its time in " + Name(row)};
    }
    return std::nullopt;
}

/// So many keys of a row, spread over it, are looked at in full each time.
constexpr std::size_t kLookedAt = 12;

Answer CheckRow(const CTrackCtrl& row, const std::unordered_set<const IFilmKey*>& records) {
    const std::size_t stride = std::max<std::size_t>(row.keys.size() / kLookedAt, 1);
    for (std::size_t i = 0; i < row.keys.size(); ++i) {
        const CTrackKey& key = *row.keys[i];
        if (key.record == nullptr || key.record->kind != row.kind || key.record->track != row.track ||
            !records.contains(key.record)) {
            return Failure{"view-record", Name(key) + " in " + Name(row) + " has no record of its track"};
        }
        if (i % stride == 0) {
            if (Answer wrong = CheckTimes(row, key)) {
                return wrong;
            }
        }
        if (row.kind == KeyKind::Camera &&
            static_cast<const CFilmCameraKey&>(*key.record).priority != row.subIndex) {
            return Failure{"camera-row", Name(key) + " is not of " + Name(row)};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Failure> CheckTree(const CFilmsMainCtrl& control, const Living& living) {
    for (const CTrackCtrl* row : control.visibleTracks) {
        if (!living.rows.contains(row)) {
            return Failure{"visible-row", "a row is shown that is gone"};
        }
    }
    for (const CTrackCtrl* row : control.tracks) {
        const bool hasParent = row->parent != nullptr;
        if (hasParent &&
            (!living.rows.contains(row->parent) || std::ranges::count(row->parent->children, row) != 1)) {
            return Failure{"row-parent", Name(*row) + " is not its parent's"};
        }
        for (const CTrackCtrl* child : row->children) {
            if (!living.rows.contains(child) || child->parent != row) {
                return Failure{"row-child", Name(*row) + " has a child that is gone or another's"};
            }
        }
        if (row->track != nullptr && !living.tracks.contains(row->track)) {
            return Failure{"row-track", Name(*row) + " stands for a track that is gone"};
        }
    }
    return std::nullopt;
}

std::optional<Failure> CheckRows(const World& world, const CFilmsMainCtrl& control) {
    const IFilm* film = world.plugin.GetCurrentFilm();
    std::unordered_set<const IFilmKey*> records;
    for (const CFilmTrack* track : film != nullptr ? film->tracks : std::list<CFilmTrack*>{}) {
        records.insert(track->keys.begin(), track->keys.end());
    }
    std::unordered_set<const IFilmKey*> shown;
    for (const CTrackCtrl* row : control.tracks) {
        if (Answer wrong = CheckRow(*row, records)) {
            return wrong;
        }
        for (const CTrackKey* key : row->keys) {
            if (!shown.insert(key->record).second) {
                return Failure{"shown-twice", Name(*key) + " is shown twice"};
            }
        }
    }
    for (const IFilmKey* record : records) {
        if (!shown.contains(record) && !world.hidden.contains(record)) {
            return Failure{"not-shown", "a key of kind " + std::to_string(record->kind) + " at " +
                                            std::to_string(record->time) + " has no view"};
        }
    }
    return std::nullopt;
}

} // namespace editing

#pragma once

#include <unordered_set>

class CFilmsMainCtrl;
class CFilmTrack;
class CTrackCtrl;
class CTrackKey;
class IFilmKey;

namespace editing {

class World;

/// What exists now. Pointers are compared with it, never followed.
struct Living {
    Living(const World& world, const CFilmsMainCtrl& control);

    std::unordered_set<const CTrackCtrl*> rows;
    std::unordered_set<const CFilmTrack*> tracks;
    /// In rows, or removed and kept by the undo action that took them.
    std::unordered_set<const CTrackKey*> views;
    /// In tracks, or owned by an undo action.
    std::unordered_set<const IFilmKey*> records;
};

} // namespace editing

#pragma once

#include <unordered_set>

class CFilmsMainCtrl;
class CFilmTrack;
class CTrackCtrl;
class CTrackKey;
class EditorObject;
class IFilmKey;

namespace editing {

class World;

/// What exists now. Pointers are compared with it, never followed.
struct Living {
    Living(const World& world, const CFilmsMainCtrl& control);

    std::unordered_set<const CTrackCtrl*> rows;
    std::unordered_set<const CFilmTrack*> tracks;
    std::unordered_set<const EditorObject*> objects; ///< of the level
    /// In rows, or removed or never placed and still owned by somebody.
    std::unordered_set<const CTrackKey*> views;
    /// In tracks, of such views, or kept for an undo action.
    std::unordered_set<const IFilmKey*> records;

private:
    void AddLoose(const CTrackKey* view);
};

} // namespace editing

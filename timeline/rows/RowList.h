#pragma once

#include "plugin/contract/KeyKind.h"

#include <cstddef>
#include <list>
#include <optional>
#include <vector>

class CFilmTrack;
class CTrackCtrl;
class CTrackKey;
class IFilmKey;

/// Names a row across a rebuild.
struct RowHandle {
    CFilmTrack* track = nullptr;
    int kind = KeyKind::None;
    int subIndex = -1;
};

/// The rows of the main control: all of them, those that show, and the first on the screen. Looks at no
/// window; who holds it makes, places and deletes the rows. `fitting` is the number of rows that the window
/// has room for, as GetVisibleRowCount of the main control tells it.
class RowList {
public:
    /// Place of topRow among the visible rows; their number if it is none of them.
    std::size_t TopIndex() const;
    /// A visible row; null behind their end.
    CTrackCtrl* RowAt(std::size_t index) const;
    /// The visible row that stands before another or, with none there, behind it; null if no other shows.
    CTrackCtrl* NearestVisibleRow(const CTrackCtrl* row) const;
    CTrackCtrl* RootRowOf(const CFilmTrack* track) const;
    CTrackCtrl* FindRowOfKeyView(const CTrackKey* view, bool byValue) const;
    /// The row that a record's view is in by its track and kind, or null. For an animation key the first
    /// animation row.
    CTrackCtrl* RowOfRecord(const IFilmKey* record) const;
    void GetTopRowHandle(RowHandle& handle) const;
    /// The top row stays as it is if no row has the handle.
    void SetTopRowHandle(const RowHandle& handle);

    /// Behind a change of the visible rows: the top row is one of them, and the last page is full but for one
    /// row.
    void MendTopRow(int fitting);
    /// A row that goes: it is no top row, no visible row and no child or parent any more. It stays in
    /// `tracks`.
    void Unlink(CTrackCtrl* row);

    // Where scrolling goes: the new top row, or nothing where it stays.
    std::optional<CTrackCtrl*> LineAhead(int fitting) const;
    std::optional<CTrackCtrl*> LineBack() const;
    std::optional<CTrackCtrl*> PageAhead(int fitting) const;
    CTrackCtrl* PageBack(int fitting) const;
    /// Where the thumb of the row bar ends up when it is dragged to a position; rows, may be negative.
    float FitThumb(float position, int fitting) const;

    std::list<CTrackCtrl*> tracks;          ///< every row in display order; owned by the main control
    std::vector<CTrackCtrl*> visibleTracks; ///< the rows of tracks whose visible flag is set
    CTrackCtrl* topRow = nullptr;           ///< first row shown
};

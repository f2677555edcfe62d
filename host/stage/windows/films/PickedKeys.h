#pragma once

#include "framework/Types.h"

#include <vector>

class CWnd;
class IFilmKey;

namespace stage {

class TimelineHand;

/// The keys that the user pressed last in the timeline: one, or with Ctrl several. The timeline tells nobody
/// which keys it has selected, so Stage looks what lies under each press. What is no longer there, or can't
/// be seen any more, is passed over.
class PickedKeys {
public:
    explicit PickedKeys(const TimelineHand& timelineHand) : hand(timelineHand) {}

    /// Before the row gets the press. Pixels of the row.
    void NotePress(CWnd& row, CPoint place, bool ctrl);
    /// Behind the release, when the key may have been dragged there.
    void NoteRelease(CPoint place);
    /// A press beside the keys.
    void Clear() { keys.clear(); }
    std::size_t Size() const { return keys.size(); }

    /// Removes all of them by the timeline's own menu. The number that is gone.
    int Remove();
    /// Copies the one that was pressed last. False if it isn't there.
    bool Copy();

private:
    struct Picked {
        HWND row = nullptr;
        CPoint place;
        const IFilmKey* key = nullptr; ///< compared only
    };

    CWnd* Find(Picked& picked) const;

    const TimelineHand& hand;
    std::vector<Picked> keys; ///< oldest first
};

} // namespace stage

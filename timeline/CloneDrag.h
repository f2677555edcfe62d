#pragma once

class CFilmKeyDuplicator;
class CTrackCtrl;
class CTrackKey;

/// The drag of a clone: the key itself stays where it is, its ghost follows the mouse until the button is
/// released. The duplicator has the key and the ghost's time.
class CloneDrag {
public:
    void Begin(CFilmKeyDuplicator& duplicator, CTrackKey& key, CTrackCtrl& row);
    /// The mouse has moved by so many seconds. Required: over any row, and also for a clone whose gesture is
    /// over. False if no clone hangs on the mouse.
    static bool Update(CFilmKeyDuplicator& duplicator, float from, float to);
    /// Something took the mouse: the clone is not made. False if no gesture was under way.
    bool Lose(CFilmKeyDuplicator& duplicator);
    /// The gesture is over, or the row or the key goes.
    void End() { on = false; }

private:
    bool on = false; ///< a clone of a key of this row hangs on the mouse
};

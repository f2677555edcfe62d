#pragma once

class CopiedKey;
class CTrackCtrl;
class CTrackKey;

/// The drag of a clone: the key itself stays where it is, its ghost follows the mouse until the button is
/// released. `CopiedKey` has the key and the ghost's time.
class CloneDrag {
public:
    void Begin(CopiedKey& copied, CTrackKey& key, CTrackCtrl& row);
    /// The mouse has moved by so many seconds. Required: over any row, and also for a clone whose gesture is
    /// over. False if no clone hangs on the mouse.
    static bool Update(CopiedKey& copied, float from, float to);
    /// Something took the mouse: the clone is not made. False if no gesture was under way.
    bool Lose(CopiedKey& copied);
    /// The gesture is over, or the row or the key goes.
    void End() { on = false; }

private:
    bool on = false; ///< a clone of a key of this row hangs on the mouse
};

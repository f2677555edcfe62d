#pragma once

class CTrackCtrl;
class CTrackKey;

/// The key whose attributes wait to be pasted, or whose clone hangs on the mouse.
class CopiedKey {
public:
    static constexpr float kNoTime = -1.0f;

    /// False, and nothing changes, without a key or a row.
    bool Set(CTrackKey* key, CTrackCtrl* row, bool clone);
    /// Forgets the key and nothing else.
    void ClearSource() { sourceKey = nullptr; }
    bool HasSource() const { return sourceKey != nullptr; }

    CTrackKey* sourceKey = nullptr; ///< a view of sourceRow, or removed from it with undo
    CTrackCtrl* sourceRow = nullptr;
    float sourceTime = kNoTime; ///< seconds; in clone mode where the ghost stands
    bool cloneMode = false;     ///< false: attributes are pasted; true: a clone is made
};

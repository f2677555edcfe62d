#pragma once

#include "framework/Types.h"

class CTrackKey;
class KeyRow;

/// Where a key stands and how long it is; seconds.
struct KeyPlace {
    float time = 0.0f;
    float duration = 0.0f;

    /// Back to this place.
    void GiveTo(CTrackKey& key) const;
};

/// The drag of a key by the mouse, from the press in a row to the release there.
class KeyDrag {
public:
    /// The press: from here on the mouse holds the key, or none for null.
    void Hold(CTrackKey* key) { dragKey = key; }
    /// Notes what the drag starts from; the key is shown as pressed.
    void Begin();
    /// A step: `mouseTime` is the time under the mouse, snapped to a frame.
    void Update(UINT flags, float mouseTime, KeyRow& row) const;
    /// The end, whether the button was released, something took the mouse, or the key goes. The answer is
    /// what was held, or null: nothing is dragged any more, so neither a lost mouse nor what a question lets
    /// in ends it again.
    CTrackKey* LetGo();

    KeyPlace GetStart() const { return {dragTime, dragDuration}; }
    /// Whether a key that was let go stands elsewhere than at the press, or has another length.
    bool HasMoved(const CTrackKey& key) const;
    /// Whether it was dragged until nothing was left of it.
    bool IsShut(const CTrackKey& key) const;

    CTrackKey* dragKey = nullptr; ///< what the mouse drags; may be a key of another row, or of none
    float dragDuration = 0.0f;    ///< seconds, of dragKey at the press
    float dragTime = 0.0f;        ///< seconds, likewise
};

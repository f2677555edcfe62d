#pragma once

#include "keys/rules/KeyTimeRules.h"

#include <optional>
#include <vector>

class CTrackKey;
class KeyViewList;

/// The row of a dragged key, as the drag sees it: it says where the key may go. Times are seconds.
class KeyRow {
public:
    /// The row's own axis, which limits where keys may go.
    virtual TimeAxis GetAxis() const = 0;
    /// Where an edge of the key may lie next: `ref` is the dragged edge now, `forward` the way the mouse
    /// goes, `free` whether it follows the mouse by frames and not by tics.
    virtual float SnapTime(CTrackKey* key, float ref, bool forward, bool free) const = 0;
    /// Fits a proposed start and duration between the other keys; false if they can't be taken at all.
    /// `time` plays no part.
    virtual bool FitTimedKey(CTrackKey* key, float time, float& start, float& duration,
                             float oldDuration) const = 0;
    virtual const KeyViewList& GetKeys() const = 0;
    /// The rows whose marked keys move together: all of one parent. Nothing for a row without a parent.
    virtual std::optional<std::vector<KeyRow*>> GetGroup() const = 0;
    virtual void Repaint() = 0;

protected:
    ~KeyRow() = default;
};

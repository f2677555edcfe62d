#pragma once

#include "keys/rules/KeyTimeRules.h"

#include <vector>

class CTrackKey;
class KeyRow;

/// A step of the drag of a marked key: the marked keys of all rows of its track go along. Looks at the rows
/// as long as it lives.
class GroupDrag {
public:
    /// `row` is the one that drags; without a parent nothing goes along.
    GroupDrag(const CTrackKey& key, const KeyRow& row);

    /// Whether the dragged key and all that go along are on the axis when it goes to `target`; seconds.
    bool StaysOnAxis(float target) const;
    /// The others go along, the dragged key has moved already. Required: the neighbours of none of them are
    /// looked at.
    void Follow(float oldTime, float target) const;
    void ClearMarks() const;

private:
    const CTrackKey& dragged;
    TimeAxis axis;
    std::vector<KeyRow*> rows;
};

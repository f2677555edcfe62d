#pragma once

#include "tests/timeline/GestureFixture.h"

#include <string>
#include <vector>

/// A press with Shift: a ghost of the key follows the mouse and becomes a clone at the release.
class CloneTest : public GestureTest {
protected:
    /// The mouse comes over the row before it presses, as a user's does.
    void TakeClone(CTrackCtrl& row, float time);
    static std::vector<std::string> Lines(CTrackCtrl& row);
    /// Ghosts alone have frames that aren't filled.
    static std::vector<std::string> Frames(CTrackCtrl& row);
    /// The frame around a ghost of a bar: 5 pixels around the bar of 6 by 15, cut to the row.
    static std::string GhostFrame(int x);
    static CTrackKey* KeyAt(const CTrackCtrl& row, float time);
    void ExpectNoClone(const CTrackCtrl& row, float onlyTime) const;

    CFilmKeyDuplicator& duplicator = timeline.keyDuplicator;
};

#pragma once

#include "framework/Wnd.h"
#include "tests/timeline/TrackCtrlFixture.h"

#include <vector>

/// One step of a drag: the time under the mouse, and what the key is then. Seconds.
struct DragStep {
    float mouse;
    float time;
    float duration = 0.0f;
};

/// Rows over 0 to 100 seconds, and a mouse over them that is told its time.
class KeyDragTest : public TrackCtrlTest {
protected:
    static constexpr int kMove = CTimedTrackKey::kDragMove;
    static constexpr int kLeft = CTimedTrackKey::kDragLeft;
    static constexpr int kRight = CTimedTrackKey::kDragRight;
    /// The float 1/30, as tics and as the hop over a neighbour.
    static constexpr float kFrame = 0.0333333351f;

    KeyDragTest();
    ~KeyDragTest() override { CurrentKey() = nullptr; }

    /// A row of boxes with these tics.
    CTrackCtrl& BoxRow(float tic);
    /// A row of bars below a root row of its own.
    CTrackCtrl& BarRow(float tic);
    CTrackCtrl& AddBarRow(CTrackCtrl& root, int kind, float tic);
    /// The mouse takes hold of the key at a time.
    static void Take(CTimedTrackKey& key, int mode, float mouse);
    static void Take(CNullTimeTrackKey& key, float mouse);
    void Drag(CTrackKey& key, CTrackCtrl& row, float mouse);
    /// Drags on; after every step key and record must have the times of the script.
    void Follow(CTrackKey& key, CTrackCtrl& row, const std::vector<DragStep>& script);

    bool alt = false; ///< the left Alt key
    bool rightAlt = false;
    bool ctrl = false;
};

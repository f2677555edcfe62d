#pragma once

#include "tests/support/FakeAttributes.h"
#include "tests/timeline/TrackCtrlFixture.h"
#include "undo/KeyActions.h"

#include <functional>
#include <string>
#include <vector>

/// A user's mouse over the rows of one actor, one below the other: positions, rotations and sounds. Each
/// shows 0 to 10 seconds of an axis of 100 with 50 pixels a second, and has tics of 2 seconds.
class GestureTest : public TrackCtrlTest {
protected:
    GestureTest();
    ~GestureTest() override;

    /// A view in the row with its record in the track; nothing is selected or current behind it.
    CNullTimeTrackKey* PutBar(CTrackCtrl& row, float time);
    CTimedTrackKey* PutBox(float time, float duration);
    /// The pixel of a time that lies on a pixel.
    static int X(float time) { return static_cast<int>(time * 50.0f) + 150; }
    static void PressAt(CTrackCtrl& row, float time, UINT flags = 0) {
        Press(row, X(time), kMiddle, MK_LBUTTON | flags);
    }
    static void DragTo(CTrackCtrl& row, float time, UINT flags = 0) {
        Move(row, X(time), kMiddle, MK_LBUTTON | flags);
    }
    static void HoverAt(CTrackCtrl& row, float time) { Move(row, X(time), kMiddle); }
    static void ReleaseAt(CTrackCtrl& row, float time) { Release(row, X(time), kMiddle); }
    /// What is in logs or waits for a repaint from now on is the test's own doing.
    void StartWatching();
    const std::vector<CFilmsUndoAction*>& Edits() const { return timeline.undoMgr.retired.Actions(); }
    /// The only edit, which must change a key's size; null otherwise.
    CFUAChangeSize* TheChange() const;
    static void ExpectBox(const CTimedTrackKey& key, float time, float duration);
    static std::vector<float> TimesOf(const CTrackCtrl& row);
    bool WantsInfo() const;

    static constexpr int kMiddle = kHeight / 2;

    CWnd info;
    CTrackCtrl& root;
    CTrackCtrl& bars;
    CTrackCtrl& turns;
    CTrackCtrl& sounds;
    bool ctrl = false;
    bool alt = false;

private:
    void Enter(CTrackCtrl& row, CTrackKey* view);
    void Lay(CTrackCtrl& row, int line);
};

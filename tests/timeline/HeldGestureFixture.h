#pragma once

#include "tests/timeline/CommandFixture.h"

#include <string>
#include <vector>

enum class Gesture {
    BarDrag,
    BoxDrag,
    LeftGrip,
    RightGrip,
    GripInAnotherRow,
    GroupMove,
    CloneDrag,
    CursorDrag,
    MarkDrag,
    NamePress,
    TimeThumb,
    RowThumb
};

constexpr Gesture kAllGestures[] = {Gesture::BarDrag,   Gesture::BoxDrag,    Gesture::LeftGrip,
                                    Gesture::RightGrip, Gesture::GroupMove,  Gesture::GripInAnotherRow,
                                    Gesture::CloneDrag, Gesture::CursorDrag, Gesture::MarkDrag,
                                    Gesture::NamePress, Gesture::TimeThumb,  Gesture::RowThumb};

/// For the names of parameterized tests.
std::string NameOf(Gesture gesture);

/// Gestures in the real control that are held in the middle, with the Alt key down: keys follow the mouse
/// frame by frame. The rows show the film's 10 seconds on 630 pixels: positions at 2, 5 and 8 seconds, a
/// rotation at 2, and a sound from 4 to 6. The ruler has a mark at 8.
class HeldGestureTest : public CommandTest {
protected:
    static constexpr int kSecond = 63; ///< pixels
    static constexpr int kMiddle = 8;  ///< pixels from the top of a row

    HeldGestureTest();
    ~HeldGestureTest() override;

    /// Shows the film anew and finds the rows and keys again.
    void ShowRows();
    /// Presses and drags on by a second.
    void Begin(Gesture gesture);
    /// The mouse of a user who noticed nothing moves on and lets go, in whatever is there.
    void MoveOnAndRelease();
    /// Records, marks of keys, times of the ruler's marks, the view and the cursor, as lines.
    std::vector<std::string> Picture() const;
    void ExpectNothingHeld() const;
    /// Drags the key at 5 seconds a second on in the rows that are there now.
    void ExpectNextGestureWorks();

    CTrackCtrl* bars = nullptr;
    CTrackCtrl* turns = nullptr;
    CTrackCtrl* sounds = nullptr;
    CTrackKey* heldKey = nullptr; ///< of gestures that hold one
    CTrackCtrl* heldRow = nullptr;

private:
    static int X(float time);
    static CTrackKey* KeyAt(const CTrackCtrl& row, float time);
    void Press(CWnd& window, int x, UINT flags = 0);
    void Move(int x, UINT flags = 0);
    void Release(CWnd& window);
    void Grip(CTrackCtrl& row, int x);
    void PressThumb(const CTimeScrollbar& bar);

    CWnd* pressed = nullptr;
    CPoint mouse;
    bool alt = true;
};

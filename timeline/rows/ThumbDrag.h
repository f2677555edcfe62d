#pragma once

#include "framework/Types.h"

/// The drag of a scroll bar's thumb. Each step is measured from the last one, so that a thumb that is stopped
/// at an end starts back as soon as the mouse does.
class ThumbDrag {
public:
    void Begin(CPoint point) {
        dragX = point.x;
        dragY = point.y;
        dragging = true;
    }
    /// Pixels from the last step along the bar.
    int Step(CPoint point, bool isVertical) const { return isVertical ? point.y - dragY : point.x - dragX; }
    /// The step is done.
    void MoveTo(CPoint point) {
        dragX = point.x;
        dragY = point.y;
    }
    /// False if there was none. The thumb stays where it is, also when something else took the mouse.
    bool End() {
        const bool was = dragging;
        dragging = false;
        return was;
    }

    bool dragging = false;
    int dragX = 0; ///< the mouse at the last drag step
    int dragY = 0;
};

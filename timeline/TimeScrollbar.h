#pragma once

#include "timeline/rows/AdvWnd.h"
#include "timeline/rows/ThumbDrag.h"

/// A scroll bar with positions in any unit. It keeps no policy: clicks and drags become calls of the main
/// control.
class CTimeScrollbar : public CadvWnd, public ThumbDrag {
    DECLARE_MESSAGE_MAP()

public:
    void SetBarRange(float a, float b);
    void SetBarPosition(float p);
    /// Places arrows and thumb in the client area; call after each change of size or values.
    void UpdateBar();

    float rangeStart = -1.0f;
    float rangeEnd = -1.0f;
    float position = -1.0f; ///< where the thumb begins, in units of the range
    float page = 0.0f;      ///< length of the thumb, in units of the range
    int vertical = 0;       ///< 0 horizontal, 1 vertical; any other value makes a bar that does nothing
    CRect thumbRect;
    CRect backArrowRect;
    CRect forwardArrowRect;

protected:
    void OnPaint();
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnCaptureChanged(CWnd* next);

private:
    bool IsHorizontal() const { return vertical == 0; }
    bool IsVertical() const { return vertical == 1; }
    void PlaceThumb(int& from, int& to) const;
    CRect PageBackRect() const;
};

#pragma once

#include "timeline/rows/AdvWnd.h"

/// A window that knows a time axis and draws its tics: the base of the ruler and of the rows. Times are
/// seconds.
class CGridCtrl : public CadvWnd {
    DECLARE_MESSAGE_MAP()

public:
    /// Where tics, keys and marks stand in the window.
    static constexpr int kTop = 0;
    static constexpr int kMiddle = 1;
    static constexpr int kBottom = 2;
    static constexpr COLORREF kBackground = 0xFAFAFA;

    virtual void SetTimeRange(float a, float b);
    virtual void SetAlignment(int value);
    virtual void OnLButtonDown(UINT flags, int x, int y) = 0;
    virtual void OnLButtonUp(UINT flags, int x, int y) = 0;
    virtual void OnLButtonDblClk(UINT flags, int x, int y) = 0;
    virtual void OnMouseMove(UINT flags, int x, int y) = 0;
    virtual void OnRButtonDown(UINT flags, int x, int y) = 0;

    /// A value not above 0 becomes 1.0.
    void SetTicDistance(float seconds);
    /// A value below 1 becomes 1.
    void SetBigTics(int count);
    void SetView(float a, float b);
    void ClampView();
    /// Labels stand on tics divisible by labelDistance, none for one not above 0. Nothing for a null dc.
    void DrawGrid(CDC* dc, const CRect& rect, int labelDistance);

    float rangeStart = -1.0f;
    float rangeEnd = -1.0f;
    float ticDistance = -1.0f; ///< seconds between two tics
    int bigTics = -1;          ///< every so many tics one is a big one
    float viewStart = -1.0f;
    float viewEnd = -1.0f;
    int alignment = kMiddle;

protected:
    BOOL OnEraseBkgnd(CDC* dc);
    void OnPaint();

private:
    void ForwardLButtonDown(UINT flags, CPoint point);
    void ForwardLButtonUp(UINT flags, CPoint point);
    void ForwardLButtonDblClk(UINT flags, CPoint point);
    void ForwardMouseMove(UINT flags, CPoint point);
    void ForwardRButtonDown(UINT flags, CPoint point);
};

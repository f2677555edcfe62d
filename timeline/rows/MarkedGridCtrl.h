#pragma once

#include "timeline/rows/GridCtrl.h"
#include "timeline/rows/MarkDrag.h"

#include <list>

class TimelineContext;

/// A time that the user noted on the ruler.
class CMark {
public:
    explicit CMark(float markTime) : time(markTime) {}
    virtual ~CMark() = default;

    float time; ///< seconds
    bool pointsUp = false;
};

/// The ruler: labels, marks and the cursor above the rows.
class CMarkedGridCtrl : public CGridCtrl, public MarkDrag {
    DECLARE_MESSAGE_MAP()

public:
    CMarkedGridCtrl();
    ~CMarkedGridCtrl() override;

    void SetTimeRange(float a, float b) override;
    void SetAlignment(int value) override;
    void OnLButtonDown(UINT flags, int x, int y) override;
    void OnLButtonUp(UINT flags, int x, int y) override;
    void OnLButtonDblClk(UINT flags, int x, int y) override;
    void OnMouseMove(UINT flags, int x, int y) override;
    void OnRButtonDown(UINT flags, int x, int y) override;

    /// Null outside the range.
    CMark* AddMark(float time);
    /// The nearest mark within markHitRange pixels, the earlier of two; null for a null point.
    CMark* FindMark(const CPoint* point) const;
    /// Seconds at a client point, also outside the window; the start of the view for a ruler of no width.
    float TimeFromPoint(CPoint point) const;
    void SetLabelDistance(int distance, bool redraw);
    /// Ends a mark's drag, too.
    void DeleteMarks();

    std::list<CMark*> marks;     ///< owned, oldest first
    int markWidth = 10;          ///< pixels
    int markHitRange = 15;       ///< pixels
    int labelDistance = 4;       ///< in tics; see DrawGrid
    CMark* cursorMark = nullptr; ///< owned, not in marks
    COLORREF markColor = 0xFF0000;
    COLORREF dragMarkColor = 0x00FF00;
    COLORREF cursorColor = 0x0000FF;

protected:
    void OnPaint();
    void OnCaptureChanged(CWnd* next);

private:
    void DeleteMark(CMark* mark);
    void BeginMarkDrag(TimelineContext& timeline, CMark* mark);
    void EndMarkDrag(TimelineContext& timeline, bool keep);
    void MoveCursor(TimelineContext& timeline, float time);
    void DrawMarkAt(CDC* dc, const CRect& client, float time, bool pointsUp, COLORREF color) const;

    bool pressed = false; ///< between a press and its release
};

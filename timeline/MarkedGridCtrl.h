#pragma once

#include "timeline/GridCtrl.h"

#include <list>
#include <memory>

/// A time that the user noted on the ruler.
class CMark {
public:
    explicit CMark(float markTime) : time(markTime) {}
    virtual ~CMark() = default;

    float time; ///< seconds
    bool pointsUp = false;
};

/// The ruler: labels, marks and the cursor above the rows.
class CMarkedGridCtrl : public CGridCtrl {
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
    float TimeFromPoint(CPoint point) const;
    void SetLabelDistance(int distance, bool redraw);
    void DeleteMarks();

    std::list<CMark*> marks; ///< owned
    int markWidth = 10;      ///< pixels
    int markHitRange = 15;   ///< pixels
    CMark* dragMark = nullptr;
    float dragMarkTime = -1.0f;
    int labelDistance = 4;
    CMark* cursorMark = nullptr; ///< owned, not in marks
    COLORREF markColor = 0xFF0000;
    COLORREF dragMarkColor = 0x00FF00;
    COLORREF cursorColor = 0x0000FF;

protected:
    void OnPaint();
};

#pragma once

#include "keys/views/TrackKey.h"

/// A key without a duration: a bar of fixed width in pixels.
class CNullTimeTrackKey : public CTrackKey {
public:
    void SetRecord(IFilmKey* newRecord, bool takeTimes) override;
    float GetDuration() const override { return 0.0f; }
    void Draw(CDC* dc, int x, int y, float pixelsPerSecond, const CRect* clip, bool outline) override;
    bool HitTime(float mouseTime, float secondsPerPixel) const override;
    void OnDoubleClick() override;
    void OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) override;
    void OnMouseMove(UINT flags, float mouseTime, KeyRow* row) override;
    /// Whether the whole group of marked keys stays on the axis when this key goes to `target`.
    bool CheckGroupMove(const KeyRow* row, float target) const;
    void OnLButtonUp() override { dragging = false; }
    bool CopyFrom(const CTrackKey* other, bool copyTime) override;
    bool Equals(const CTrackKey* other, bool compareTime) const override;
    void ClearMarks(KeyRow* row) override;

    int width = 6; ///< pixels of the hit test, never negative; the bar is always 6 wide
    bool dragging = false;

private:
    COLORREF GetFill() const;
};

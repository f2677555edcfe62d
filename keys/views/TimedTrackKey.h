#pragma once

#include "keys/rules/TimedKeyDrag.h"
#include "keys/views/TrackKey.h"

/// A key with a duration: a box with a grip at each end while it is selected.
class CTimedTrackKey : public CTrackKey {
public:
    /// Values of `dragMode`.
    static constexpr int kDragNone = TimedKeyDrag::kNone;
    static constexpr int kDragMove = TimedKeyDrag::kMove;
    static constexpr int kDragLeft = TimedKeyDrag::kLeftGrip;
    static constexpr int kDragRight = TimedKeyDrag::kRightGrip;
    /// Pixels between the box and a grip.
    static constexpr int kGripDistance = 3;

    /// Destroys the record that it holds first: through the record's track, or the factory without one.
    void SetRecord(IFilmKey* newRecord, bool takeTimes) override;
    float GetDuration() const override { return duration; }
    void Draw(CDC* dc, int x, int y, float pixelsPerSecond, const CRect* clip, bool outline) override;
    bool HitTime(float mouseTime, float secondsPerPixel) const override;
    void OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime) override;
    void OnMouseMove(UINT flags, float mouseTime, KeyRow* row) override;
    void OnLButtonUp() override { dragMode = kDragNone; }
    bool CopyFrom(const CTrackKey* other, bool copyTime) override;
    bool Equals(const CTrackKey* other, bool compareTime) const override;
    bool HitGrip(int x, int keyX, float pixelsPerSecond) const override;

    /// 0.001 seconds or less is ignored whole. With `viewOnly` the record keeps its end.
    void SetDuration(float newDuration, bool viewOnly);

    float duration = 0.0f; ///< seconds
    int dragMode = kDragNone;

private:
    void DestroyRecord(IFilmKey* old);
    CRect GetBox(int x, int y, float pixelsPerSecond) const;
};

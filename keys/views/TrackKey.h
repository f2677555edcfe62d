#pragma once

#include "framework/DC.h"
#include "keys/rules/KeyKindParams.h"
#include "plugin/base/Watch.h"
#include "plugin/contract/FilmKey.h"

#include <string>

class CMenu;
class IKeyAttributesDlg;
class KeyRow;
class KeyViewContext;
class KeyViewList;

/// What the user sees and grips of one key record. Owned by its row; the record is the host's. Times are
/// seconds in the film.
class CTrackKey : public Watched {
public:
    /// Values of `state`. A hidden view stays hidden whatever its selection.
    static constexpr int kNormal = 0;
    static constexpr int kHighlighted = 1;
    static constexpr int kHidden = 2;

    CTrackKey() = default;
    virtual ~CTrackKey();
    CTrackKey(const CTrackKey&) = delete;
    CTrackKey& operator=(const CTrackKey&) = delete;

    virtual void SetRecord(IFilmKey* newRecord, bool takeTimes) = 0;
    virtual void SetSelected(bool flag);
    virtual float GetDuration() const = 0;
    /// x: pixel of the key's start, y: top of the key, both in the row; clip: the row's time area, may be
    /// null.
    virtual void Draw(CDC* dc, int x, int y, float pixelsPerSecond, const CRect* clip, bool outline) = 0;
    virtual void SaveTime();
    /// Without `keep` the key goes back to the saved time. With none saved that is -1.0.
    virtual void RestoreTime(bool keep);
    virtual bool HitTime(float mouseTime, float secondsPerPixel) const = 0;
    virtual void OnDoubleClick();
    /// x, y: left top of the key in the row; point: the press in the row; pressTime: the time under it.
    virtual void OnLButtonDown(int x, int y, float pixelsPerSecond, CPoint point, float pressTime);
    virtual void OnLButtonUp() = 0;
    /// A drag step: `mouseTime` is the time under the mouse, snapped to a frame; `row` the row that drags.
    virtual void OnMouseMove(UINT flags, float mouseTime, KeyRow* row) = 0;
    /// `other` must be of the same class.
    virtual bool CopyFrom(const CTrackKey* other, bool copyTime);
    virtual bool Equals(const CTrackKey* other, bool compareTime) const;
    virtual void ClearMarks(KeyRow* /*row*/) {}
    /// Whether x is on one of the grips of a key that starts at keyX.
    virtual bool HitGrip(int /*x*/, int /*keyX*/, float /*pixelsPerSecond*/) const { return false; }

    /// With `viewOnly` the record keeps its times.
    void SetPosition(float newTime, bool viewOnly);
    bool IsInRow() const { return list != nullptr; }
    /// Out of the list of the row that it is in, if it is in one.
    void LeaveRow();
    /// Takes colours and height, and shows or hides the view; a selected view loses its highlight. Null is
    /// ignored.
    void ApplyKeyParams(const KeyKindParams* params);
    /// Takes colours and height alone; a negative height is left out.
    void TakeLook(const KeyKindParams& params);
    /// Order in a row: tall before short, at one height long before short.
    bool IsDrawnBefore(const CTrackKey* other) const;
    /// Of the record; -1.0 without one.
    float GetNaturalDuration() const;
    /// Fills the context menu of this key from the menu resource `source`.
    void FillKeyMenu(CMenu* menu, CMenu* source);
    static void CopyMenuItems(CMenu* menu, CMenu* source);

    std::string name;
    COLORREF normalColor = KeyKindParams::kDefaultNormal;
    COLORREF highlightColor = KeyKindParams::kDefaultHighlight;
    float time = 0.0f;
    int rectHeight = KeyKindParams::kDefaultHeight; ///< pixels
    int state = kNormal;
    float savedTime = -1.0f;
    IFilmKey* record = nullptr;
    KeyViewContext* context = nullptr; ///< the timeline that shows it, which outlives it; a row gives its own
    float lastMouseTime = 0.0f;        ///< time under the mouse at the last drag step
    bool marked = false;               ///< takes part in a group move
    bool selected = false;

protected:
    /// Times and durations closer than this are the same.
    static constexpr float kSameTimeSeconds = 0.000001f;

    /// Must follow every change of time or duration.
    void TimesChanged();
    /// Null while there is none.
    IKeyAttributesDlg* GetAttributesDlg() const;
    /// Shows the key in the attributes window, if there is one that isn't locked.
    void ShowAttributes();
    /// The height within what pixel sums can hold.
    int GetDrawnHeight() const;

private:
    friend class KeyViewList;
    KeyViewList* list = nullptr; ///< the row's list while the view is in one
};

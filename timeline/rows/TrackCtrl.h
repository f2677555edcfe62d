#pragma once

#include "framework/Button.h"
#include "keys/views/KeyPlaces.h"
#include "keys/views/KeyRow.h"
#include "keys/views/KeyViewList.h"
#include "keys/views/Selection.h"
#include "plugin/base/Watch.h"
#include "plugin/contract/EditorObject.h"
#include "plugin/contract/FilmTrack.h"
#include "plugin/rules/PluginFilmsParams.h"
#include "timeline/rows/CloneDrag.h"
#include "timeline/rows/GridCtrl.h"
#include "timeline/rows/KeyDrag.h"
#include "timeline/rows/TimelineLink.h"

#include <list>
#include <string>
#include <vector>

class CMenu;
class CTrackKey;
class FilmSession;
class TimelineContext;

/// One line of the timeline: a name cell and the keys of one kind of one track. A root row (kind 21) holds no
/// keys and folds the kind rows of its track. Rows are children of the main control, which owns them. Calls
/// that may make the rows anew (a modal window, the host's selection, the attributes window) stand behind a
/// Watch.
class CTrackCtrl : public CGridCtrl, public Watched, public KeyRow, public KeyDrag {
    DECLARE_MESSAGE_MAP()

public:
    /// Matches every row in FindChild.
    static constexpr int kAnySubIndex = -2;
    /// Camera keys from this priority on are never in force, so they need no row.
    static constexpr int kMaxCameraRows = 2000;

    CTrackCtrl();
    /// Deletes the views; their records stay with the host.
    ~CTrackCtrl() override;

    /// Makes the fold button too; always 1.
    BOOL Create(const char* className, const char* windowName, DWORD style, const CRect& rect, CWnd* parent,
                UINT id, CCreateContext* context = nullptr) override;
    void SetTimeRange(float a, float b) override;
    void OnLButtonDown(UINT flags, int x, int y) override;
    void OnLButtonUp(UINT flags, int x, int y) override;
    void OnLButtonDblClk(UINT flags, int x, int y) override;
    void OnMouseMove(UINT flags, int x, int y) override;
    void OnRButtonDown(UINT flags, int x, int y) override;

    // Places and times.
    bool IsRoot() const { return kind == KeyKind::None; }
    /// Pixels of the name column, -1 without a main control.
    int GetLeftWidth() const;
    /// -1 for a null key and an unknown alignment.
    int GetKeyTop(const CTrackKey* key, const CRect& rect) const;
    /// -1.0 for a null point.
    double TimeFromPoint(const CPoint* point) const;
    CTrackKey* GetKeyAt(CPoint point) const;
    /// The key itself if it is in this row; by value the first key that equals it, times included.
    CTrackKey* FindKeyView(const CTrackKey* view, bool byValue) const;

    // The tree.
    /// kAnySubIndex matches any.
    CTrackCtrl* FindChild(int childKind, int childSubIndex) const;
    bool HasChildNamed(const std::string& childName) const;
    CTrackCtrl* FindLastAnimationRow();
    bool AddChildRow(CTrackCtrl* row, bool first);
    bool AddChildOfKind(int childKind);
    void CreateChildRows(int cameraCount);
    bool CreateAnimationRows();
    bool InsertBeforeLastAnimationRow(CTrackCtrl* row);
    CTrackCtrl* FindAnimationRowFor(CTrackCtrl* row);
    void RenameAnimationKeys(const std::string& from, const std::string& to);
    void RemoveChildRow(CTrackCtrl* row);
    void SetCameraIndex(int index);
    /// As the kind is called, a camera row with its index.
    void NameAfterKind();

    // Folding and filter.
    void UpdateVisibility(bool show);
    /// 20 bytes, null for all set.
    void ApplyKindFlags(const std::uint8_t* flags, bool show);
    void SetExpanded(bool flag, bool redraw);
    void ToggleExpanded();
    void SetVisibleFlag(bool flag);
    void SetKindFlag(int flagKind, bool flag);
    /// The expanded state that is stored for this root row's track in the current film; a record with
    /// defaults is made if there is none.
    void ReadStoredState(std::uint8_t& storedExpanded);

    // Keys.
    TimeAxis GetAxis() const override;
    const KeyViewList& GetKeys() const override { return keys; }
    std::optional<std::vector<KeyRow*>> GetGroup() const override;
    void Repaint() override { Invalidate(FALSE); }
    /// Puts a view into the row of this tree that takes it. `existing`: the record is in the track already.
    bool AddKeyView(CTrackKey* view, bool redraw, bool existing, bool noUndo);
    /// Takes a view out; with `destroy` and `noUndo` the view and its record are deleted.
    void RemoveKey(CTrackKey* view, bool destroy, bool redraw, bool noUndo);
    void DeleteAllKeys(bool redraw);
    /// The track is going: the views go, their records are no longer looked at, and `track` becomes null.
    void DropTrack();
    /// The views go and the records stay; nothing points at the views any more.
    void DropViews();
    /// What the mouse holds here is let go without an edit: the row or the key is going.
    void DropGesture();
    void SaveKeyTimes();
    void RestoreKeyTimes(bool keep);
    /// Keys that start or end near a mark at `from` go along to `to`.
    void ShiftKeysNear(float from, float to);
    /// The nearest key at or after a time (or at or before it); one that stands at the time is passed over.
    CTrackKey* FindNearestKey(float time, bool after) const;
    float SnapTime(CTrackKey* key, float ref, bool forward, bool free) const override;
    /// The gap around the key; both are left alone for a key that may overlap.
    void GetKeyLimits(const CTrackKey* key, float& lo, float& hi) const;
    /// The first key that starts at the time, within 0.00001 seconds.
    CTrackKey* KeyAtTime(float time) const;
    /// Whether the key may start at a time. Another's start and end are taken.
    bool IsTimeFree(const CTrackKey* key, float time) const;
    /// IsTimeFree, and a timed key is shortened so that it ends before the next.
    bool CanPlaceKey(CTrackKey* key, float time) const;
    bool FitTimedKey(CTrackKey* key, float time, float& start, float& duration,
                     float oldDuration) const override;
    /// An interval of `from` seconds from `time` on becomes `to` seconds long. Works on the records of this
    /// row's kind; the caller shows the film again.
    void AdjustKeys(float time, float from, float to);
    /// Keys that start at `time` or later move by `delta` seconds, which may be negative: what straddles the
    /// begin of the film then is cut to start there, and what falls out of it is removed with undo. Works on
    /// the records of this row's views; the caller shows the film again.
    void ShiftKeys(float time, float delta);
    /// Writes position, rotation and scale keys for an object that was moved from the old to the new world
    /// matrix.
    void WriteTransformKeys(float time, const float* newMatrix, const float* oldMatrix);
    /// The mesh element of the current animation key was chosen anew; false if there is none to change.
    bool SetCurrentKeyElement(const std::string& element, const EditorObject* object);
    /// Copies the row menu resource `source` into the menu and takes out what this row doesn't offer.
    void FillRowMenu(CMenu* menu, CMenu* source);

    CPoint lastPoint;             ///< pixels, at the last press or drag step
    float pixelsPerSecond = 0.0f; ///< noted at each paint
    CTrackCtrl* lastAnimationRow = nullptr;
    int kind = KeyKind::None;
    KeyViewList keys;                ///< owns the views
    std::list<CTrackCtrl*> children; ///< owned by the main control
    CTrackCtrl* parent = nullptr;
    std::string name;
    CFilmTrack* track = nullptr;
    bool visible = true;
    int subIndex = -1; ///< kind 0: the camera index; level root: the highest index given so far
    CButton expandButton;
    KeyFilter kindFlags{};
    bool expanded = false;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnPaint();
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnCaptureChanged(CWnd* next);

private:
    friend TimelineContext* TimelineOf(const CTrackCtrl* row);
    /// Null without a main control.
    FilmSession* GetSession() const;
    EditorObject* FindObject() const;
    void TellWritten(const IFilmKey* record) const;

    // Places and times.
    CRect ClientRect() const;
    int KeyX(float time, float scale) const;
    bool IsInView(const CTrackKey& key) const;
    bool FindCandidates(float time, float secondsPerPixel, std::vector<CTrackKey*>& found) const;

    // Painting, in the order of the calls.
    int PaintFrame(CDC& dc, const CRect& client) const;
    void PaintKeys(CDC& dc, const CRect& area);
    void PaintKey(CDC& dc, CTrackKey& key, const CRect& area) const;
    void PaintGhost(CDC& dc, const CRect& area) const;
    void DropCoveredKeys(std::vector<CTrackKey*>& shown, const CRect& area) const;
    void PaintName(CDC& dc, const CRect& cell) const;
    COLORREF GetNameColor() const;
    void PaintLines(CDC& dc, const CRect& area, const TimelineContext& timeline) const;
    void PaintLine(CDC& dc, const CRect& area, float time) const;
    void CreateButton();
    void PlaceButton(const CRect& client);
    void SetButtonSign(char sign);

    // Mouse.
    CTrackKey* FindGrippedKey(int x) const;
    void PressKey(TimelineContext& timeline, CPoint point, UINT flags);
    void PressEmpty(TimelineContext& timeline, int x);
    static void PressObject(const FilmSession& session, EditorObject& object);
    void PressCamera(FilmSession& session) const;
    void ReleaseKey(TimelineContext& timeline);
    void ReleaseClone(TimelineContext& timeline);
    void LoseGesture(TimelineContext& timeline);
    void AskToDelete(CTrackKey* key);
    void NoteNewSize(TimelineContext& timeline, CTrackKey* key);

    // The tree.
    bool IsCameraRow() const { return kind == KeyKind::Camera; }
    bool AskForMeshElement(EditorObject& object, const std::string& element);
    bool EnsureAnimationRow(TimelineContext& timeline, EditorObject& object, const std::string& element);
    void PlaceCameraRow(CTrackCtrl* row);

    // Keys.
    bool TakesKey(const IFilmKey& record) const;
    bool AddToChild(CTrackKey* view, bool redraw, bool existing, bool noUndo);
    void FillNewRecord(IFilmKey& record) const;
    void ShowInEngine() const;
    bool CanPasteKey() const;
    KeyPlaces Places() const { return {keys, GetAxis()}; }
    void DropView(CTrackKey* view);
    void RemoveViews(const std::vector<CTrackKey*>& gone);

    /// Of all rows' views: no view is hit more than half of this beside its time. Pixels.
    static int widestHit;

    mutable TimelineLink timelineLink;
    CloneDrag cloneDrag;
    CRect buttonRect; ///< where the button was put last
    char buttonSign = '+';
};

/// The main control as the parent of a row, or null.
TimelineContext* TimelineOf(const CTrackCtrl* row);

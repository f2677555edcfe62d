#pragma once

#include "framework/Wnd.h"
#include "keys/rules/KeyKindParams.h"
#include "keys/views/KeyViewContext.h"
#include "keys/views/Selection.h"
#include "plugin/contract/Film.h"
#include "plugin/contract/KeyKindTable.h"
#include "timeline/rows/CopiedKey.h"
#include "timeline/rows/RowList.h"

#include <string>

class CFilmsUndoMgr;
class CMarkedGridCtrl;
class CTimeScrollbar;
class CTrackCtrl;
class CTrackKey;

/// The face of the main control that its child windows and the key views see. A child reaches it as its
/// parent window (`TimelineOf`) and does nothing without one.
class TimelineContext : public KeyViewContext, public RowList {
public:
    using KeyViewContext::KeyViewContext;

    /// Every selected key is told, then none is selected.
    virtual void ClearSelection() = 0;
    virtual void SelectOnly(CTrackKey* key) = 0;
    virtual void Deselect(CTrackKey* key) = 0;
    /// The user's move of the cursor: snapped to a frame, and the film follows.
    virtual void SetCurrentFrame(float time, bool redraw) = 0;
    virtual void ShiftKeysAtMark(float from, float to) = 0;
    virtual void SaveKeyTimes() = 0;
    virtual void RestoreKeyTimes(bool keep) = 0;
    virtual void ArrangeRows(bool invalidate, bool move) = 0;
    /// `handle` may be null.
    virtual void RebuildVisibleRows(bool redraw, const RowHandle* handle) = 0;
    /// A new row at the end; the caller sets its kind. Null if its window can't be made.
    virtual CTrackCtrl* AddTrackCtrl(bool redraw) = 0;
    virtual CTrackCtrl* AddAnimationRow(CTrackCtrl* parentRow, const std::string& name) = 0;
    /// The first row of the track that moves the object; null for none and for null.
    virtual CTrackCtrl* FindRowOfObject(const EditorObject* object) const = 0;
    virtual void ShowFilm(IFilm* film, bool flag) = 0;
    /// The row that has a record's view, or null. For an animation key the first animation row.
    virtual CTrackCtrl* FindRowOfKey(const IFilmKey* record) const = 0;
    /// Screen coordinates; row and key may be null.
    virtual void ShowContextMenu(int x, int y, CTrackCtrl* row, CTrackKey* key) = 0;
    /// The key under the mouse, or null.
    virtual void ShowKeyDescription(CTrackKey* key) = 0;
    /// Colours and heights, for every view at once; selected keys stay highlighted, visible flags as they
    /// are.
    virtual void TakeKeyLooks(const KeyKindParamsTable& records) = 0;
    /// A view that is in no row, with a new record of this kind; a timed one 5 seconds long. The caller owns
    /// both. Null for other kinds and without a level.
    virtual CTrackKey* CreateKeyView(int kind) = 0;
    /// A row that is about to be deleted: every holder lets go of it.
    virtual void ForgetRow(CTrackCtrl* row) = 0;
    /// Gives the control the keyboard.
    virtual void FocusControl() = 0;

    virtual CopiedKey& GetCopied() = 0;
    virtual const CopiedKey& GetCopied() const = 0;
    /// Puts a clone of the copied key where its ghost stands; false if none was made.
    virtual bool PasteClone() = 0;
    /// Edits of a row's key, for undo.
    virtual void NoteAdded(CTrackCtrl& row, CTrackKey& view) = 0;
    virtual void NoteRemoved(CTrackCtrl& row, CTrackKey& view) = 0;
    /// With the place that the key had before; seconds.
    virtual void NoteSize(CTrackCtrl& row, CTrackKey& view, float oldStart, float oldEnd) = 0;
    /// The edits of this control; what it is, levels above know.
    virtual CFilmsUndoMgr& GetUndoMgr() = 0;

    virtual void OnLineForward(CTimeScrollbar* bar) = 0;
    virtual void OnLineBack(CTimeScrollbar* bar) = 0;
    virtual void OnPageForward(CTimeScrollbar* bar) = 0;
    virtual void OnPageBack(CTimeScrollbar* bar) = 0;
    virtual void OnThumbTrack(CTimeScrollbar* bar, float position) = 0;

    const CTrackKey* GetCopiedKey() const final { return GetCopied().sourceKey; }
    /// Null for a number without a kind.
    const KeyKindParams* GetKeyParams(int kind) const {
        return FindKeyKind(kind) != nullptr ? &keyParams[static_cast<std::size_t>(kind)] : nullptr;
    }

    /// The corner shows another time.
    void InvalidateInfo() const {
        if (infoWnd != nullptr) {
            infoWnd->Invalidate(FALSE);
        }
    }

    int leftWidth = 150;      ///< pixels of the name column
    float currentTime = 0.0f; ///< seconds, of the cursor
    float movieStart = 0.0f;  ///< seconds, limits of the time axis
    float movieEnd = 0.0f;
    float viewStart = 0.0f; ///< seconds, the part of the axis that is drawn
    float viewEnd = 0.0f;
    KeyKindParamsTable keyParams;    ///< how keys of each kind are drawn
    CMarkedGridCtrl* grid = nullptr; ///< the ruler
    CWnd* infoWnd = nullptr;         ///< invalidated at each mouse move and cursor change
    CWnd* keyDescrWnd = nullptr;     ///< a row offers a hover only if it exists
};

/// The main control as the parent of a window, or null.
TimelineContext* TimelineOf(const CWnd* child);
/// The main control of the session's scenario window, or null while there is none.
TimelineContext* TimelineOf(const FilmSession& session);

// How a gesture goes on behind the press, and how it ends.
#include "framework/MessageBox.h"
#include "keys/views/TrackKey.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

void CTrackCtrl::OnLButtonUp(UINT /*flags*/, int /*x*/, int /*y*/) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    cloneDrag.End();
    if (dragKey != nullptr) {
        ReleaseKey(*timeline);
    } else if (timeline->GetCopied().HasSource()) {
        ReleaseClone(*timeline);
    }
}

void CTrackCtrl::ReleaseKey(TimelineContext& timeline) {
    CTrackKey* key = LetGo();
    ReleaseCapture();
    const Watch watched(this);
    if (IsShut(*key)) {
        AskToDelete(key);
    } else {
        NoteNewSize(timeline, key);
        timeline.session.TellKeyWritten(key->record);
    }
    if (watched.IsAlive()) {
        Invalidate(FALSE);
    }
}

void CTrackCtrl::AskToDelete(CTrackKey* key) {
    const Watch watched(this);
    const Watch watchedKey(key);
    const KeyPlace start = GetStart(); // the question may let another drag in
    const bool wanted = AfxMessageBox("Do You want to delete this key?", MB_YESNO | MB_ICONQUESTION) == IDYES;
    if (!watched.IsAlive() || !watchedKey.IsAlive()) {
        return;
    }
    if (wanted) {
        RemoveKey(key, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ false);
        return;
    }
    start.GiveTo(*key);
}

void CTrackCtrl::NoteNewSize(TimelineContext& timeline, CTrackKey* key) {
    if (!HasMoved(*key)) {
        return;
    }
    timeline.NoteSize(*this, *key, dragTime, dragTime + dragDuration);
}

/// Required: the mouse is not released here, and a source that was only copied is forgotten.
void CTrackCtrl::ReleaseClone(TimelineContext& timeline) {
    const Watch watched(this);
    const bool pasted = timeline.PasteClone();
    if (!watched.IsAlive()) {
        return; // the attributes window's key was written, which rebuilt the rows
    }
    if (!pasted) {
        timeline.GetCopied().ClearSource();
    }
    Invalidate(FALSE);
}

/// Another window took the mouse in mid-gesture.
void CTrackCtrl::OnCaptureChanged(CWnd* next) {
    CGridCtrl::OnCaptureChanged(next);
    if (TimelineContext* timeline = TimelineOf(this)) {
        LoseGesture(*timeline);
    }
}

/// A dragged key stays where it stands, as if it had been released there, but nothing is asked; a clone that
/// hangs on the mouse is not made.
void CTrackCtrl::LoseGesture(TimelineContext& timeline) {
    if (CTrackKey* key = LetGo()) {
        NoteNewSize(timeline, key);
        timeline.session.TellKeyWritten(key->record);
        Invalidate(FALSE);
    }
    if (cloneDrag.Lose(timeline.GetCopied())) {
        Invalidate(FALSE);
    }
}

void CTrackCtrl::DropGesture() {
    LetGo();
    cloneDrag.End();
    if (CWnd::GetCapture() == this) {
        ReleaseCapture();
    }
}

// How a gesture goes on behind the press, and how it ends.
#include "framework/MessageBox.h"
#include "keys/TimedTrackKey.h"
#include "timeline/TimelineContext.h"
#include "timeline/TrackCtrl.h"
#include "undo/KeyActions.h"

#include <cmath>
#include <utility>

void CTrackCtrl::BeginDrag(CTrackKey& key) {
    key.state = CTrackKey::kHighlighted;
    dragDuration = key.GetDuration();
    dragTime = key.time;
}

/// The key itself stays where it is: its ghost follows the mouse.
void CTrackCtrl::BeginClone(TimelineContext& timeline, CTrackKey& key) {
    timeline.keyDuplicator.Set(&key, this, /*clone*/ true);
    cloning = true;
    dragKey = nullptr;
}

void CTrackCtrl::OnLButtonUp(UINT /*flags*/, int /*x*/, int /*y*/) {
    TimelineContext* timeline = TimelineOf(this);
    if (timeline == nullptr) {
        return;
    }
    cloning = false;
    if (dragKey != nullptr) {
        ReleaseKey(*timeline);
    } else if (timeline->keyDuplicator.HasSource()) {
        ReleaseClone(*timeline);
    }
}

void CTrackCtrl::ReleaseKey(TimelineContext& timeline) {
    // Nothing is dragged any more: neither the lost mouse nor what the question lets in may end it again.
    CTrackKey* key = std::exchange(dragKey, nullptr);
    ReleaseCapture();
    const Watch watched(this);
    const float duration = key->GetDuration();
    if (duration != dragDuration && !(duration > 0.0f)) {
        AskToDelete(key);
    } else {
        NoteNewSize(timeline, key);
        timeline.session.TellKeyWritten(key->record);
    }
    if (watched.IsAlive()) {
        Invalidate(FALSE);
    }
}

/// A drag keeps every duration above nothing; this stands for a key whose record had none.
void CTrackCtrl::AskToDelete(CTrackKey* key) {
    const Watch watched(this);
    const Watch watchedKey(key);
    const float oldDuration = dragDuration;
    const float oldTime = dragTime;
    const bool wanted = AfxMessageBox("Do You want to delete this key?", MB_YESNO | MB_ICONQUESTION) == IDYES;
    if (!watched.IsAlive() || !watchedKey.IsAlive()) {
        return;
    }
    if (wanted) {
        RemoveKey(key, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ false);
        return;
    }
    if (auto* timed = dynamic_cast<CTimedTrackKey*>(key)) {
        timed->SetDuration(oldDuration, /*viewOnly*/ false);
    }
    key->SetPosition(oldTime, /*viewOnly*/ false);
}

void CTrackCtrl::NoteNewSize(TimelineContext& timeline, CTrackKey* key) {
    constexpr double kSameSeconds = 0.000001;
    const auto differ = [](double a, double b) { return std::fabs(a - b) > kSameSeconds; };
    if (!differ(key->time, dragTime) && !differ(key->GetDuration(), dragDuration)) {
        return;
    }
    auto* action = static_cast<CFUAChangeSize*>(timeline.undoMgr.CreateAction(UndoCode::ChangeSize));
    action->SetTrackCtrl(this);
    action->SetKey(key);
    action->start = dragTime;
    action->end = dragTime + dragDuration;
    timeline.undoMgr.Add(action);
}

/// Required: the mouse is not released here, and a source that was only copied is forgotten.
void CTrackCtrl::ReleaseClone(TimelineContext& timeline) {
    const Watch watched(this);
    const bool pasted = timeline.keyDuplicator.Paste(nullptr);
    if (!watched.IsAlive()) {
        return; // the attributes window's key was written, which rebuilt the rows
    }
    if (!pasted) {
        timeline.keyDuplicator.ClearSource();
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
    if (CTrackKey* key = std::exchange(dragKey, nullptr)) {
        NoteNewSize(timeline, key);
        timeline.session.TellKeyWritten(key->record);
        Invalidate(FALSE);
    }
    if (std::exchange(cloning, false) && timeline.keyDuplicator.cloneMode) {
        timeline.keyDuplicator.ClearSource();
        Invalidate(FALSE);
    }
}

void CTrackCtrl::DropGesture() {
    dragKey = nullptr;
    cloning = false;
    if (CWnd::GetCapture() == this) {
        ReleaseCapture();
    }
}

#include "keys/views/NullTimeTrackKey.h"
#include "plugin/contract/ObjectFlags.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>
#include <typeinfo>
#include <unordered_set>

namespace {

/// The row of the keys that animate the whole object.
const char* const kWholeObject = "Animation keys";

} // namespace

bool CTrackCtrl::TakesKey(const IFilmKey& record) const {
    return !IsRoot() && record.kind == kind &&
           (kind != KeyKind::Camera || static_cast<const CFilmCameraKey&>(record).priority == subIndex);
}

bool CTrackCtrl::AddToChild(CTrackKey* view, bool redraw, bool existing, bool noUndo) {
    return std::ranges::any_of(
        children, [=](CTrackCtrl* child) { return child->AddKeyView(view, redraw, existing, noUndo); });
}

bool CTrackCtrl::AddKeyView(CTrackKey* view, bool redraw, bool existing, bool noUndo) {
    if (view == nullptr || view->record == nullptr) {
        return false;
    }
    IFilmKey& record = *view->record;
    if (!TakesKey(record)) {
        return AddToChild(view, redraw, existing, noUndo);
    }
    if (kind == KeyKind::Animation) {
        const std::string& element = static_cast<const CFilmAnimationKey&>(record).meshElement;
        if (name != (element.empty() ? kWholeObject : element)) {
            return false;
        }
    }
    TimelineContext* timeline = TimelineOf(this);
    if (timeline != nullptr) {
        view->context = timeline;
        view->ApplyKeyParams(timeline->GetKeyParams(kind));
    }
    keys.Insert(view);
    if (typeid(*view) == typeid(CNullTimeTrackKey)) {
        widestHit = std::max(widestHit, static_cast<const CNullTimeTrackKey*>(view)->width);
    }
    if (!existing && track != nullptr) {
        track->AddKey(&record);
    }
    if (kind == KeyKind::Animation || kind == KeyKind::Speech) {
        ShowInEngine();
    }
    if (!existing) {
        FillNewRecord(record);
    }
    if (timeline != nullptr) {
        if (!existing && !noUndo) {
            timeline->NoteAdded(*this, *view);
        }
        const Watch watched(this);
        const Watch watchedView(view);
        timeline->SelectOnly(view); // Required: also for a key that was there before.
        if (!watched.IsAlive() || !watchedView.IsAlive()) {
            return true; // the attributes window's key was written, which rebuilt the rows
        }
    }
    if (redraw && IsInView(*view)) {
        Invalidate(FALSE);
    }
    CurrentKey() = view;
    return true;
}

/// An object whose keys play must take part in the engine.
void CTrackCtrl::ShowInEngine() const {
    if (EditorObject* object = FindObject()) {
        object->SetFlags(object->GetFlags() & ~ObjectFlag::LeftOut);
    }
}

/// Effects that the user adds to an object start at that object's own place.
void CTrackCtrl::FillNewRecord(IFilmKey& record) const {
    const CFilmObjectTrack* objectTrack = AsObjectTrack(record.track);
    const bool isAtObject = kind == KeyKind::FxSequence || kind == KeyKind::FxFlare ||
                            kind == KeyKind::FxParticle || kind == KeyKind::FxTrace;
    if (objectTrack != nullptr && isAtObject) {
        record.SetInHandle(objectTrack->actor);
        static_cast<CFilmFxKey&>(record).position = {};
    }
}

void CTrackCtrl::RemoveKey(CTrackKey* view, bool destroy, bool redraw, bool noUndo) {
    TimelineContext* timeline = TimelineOf(this);
    if (view == nullptr || timeline == nullptr) {
        return;
    }
    if (view->selected) {
        const Watch watched(this);
        const Watch watchedView(view);
        timeline->Deselect(view);
        if (!watched.IsAlive() || !watchedView.IsAlive()) {
            return;
        }
    }
    IFilmKey* record = view->record;
    CFilmTrack* holder = track;
    if (!keys.Contains(view) && record != nullptr && record->track != nullptr) {
        holder = record->track; // a key of another row whose grips were dragged here
        timeline->ArrangeRows(/*invalidate*/ true, /*move*/ false);
    }
    view->LeaveRow();
    const bool destroyed = destroy && noUndo;
    const bool repaint = redraw && IsInView(*view);
    if (destroyed) {
        DropView(view); // before its record goes: a window that shows the key must not write to it any more
    } else if (IKeyAttributesDlg* dialog = timeline->session.keyAttributesDlg.get();
               dialog != nullptr && dialog->GetKey() == view) {
        dialog->Reset(); // the key lives on for undo, in no row
    }
    if (record != nullptr && holder != nullptr) {
        holder->RemoveKey(record, destroyed);
    }
    if (!noUndo) {
        timeline->NoteRemoved(*this, *view);
    }
    if (repaint) {
        Invalidate(FALSE);
    }
}

void CTrackCtrl::DeleteAllKeys(bool redraw) {
    if (TimelineContext* timeline = TimelineOf(this)) {
        const Watch watched(this);
        timeline->ClearSelection(); // writes the attributes window's key, which may rebuild the rows
        if (!watched.IsAlive()) {
            return;
        }
    }
    const std::vector<CTrackKey*> views(keys.begin(), keys.end());
    keys.Clear();
    for (CTrackKey* view : views) {
        IFilmKey* record = view->record;
        DropView(view);
        if (record != nullptr && track != nullptr) {
            track->RemoveKey(record, /*destroy*/ true);
        }
    }
    if (redraw) {
        Invalidate(FALSE);
    }
}

void CTrackCtrl::DropTrack() {
    track = nullptr;
    DropViews();
}

void CTrackCtrl::DropViews() {
    const std::vector<CTrackKey*> views(keys.begin(), keys.end());
    keys.Clear();
    std::ranges::for_each(views, [this](CTrackKey* view) { DropView(view); });
}

/// Deletes a view that is out of the list; everything that points at it lets go of it first.
void CTrackCtrl::DropView(CTrackKey* view) {
    if (view->context != nullptr) {
        view->context->ForgetView(view);
    }
    if (CurrentKey() == view) {
        CurrentKey() = nullptr;
    }
    if (dragKey == view) {
        LetGo();
    }
    delete view;
}

/// Takes views out and deletes them. The others keep their order.
void CTrackCtrl::RemoveViews(const std::vector<CTrackKey*>& gone) {
    constexpr std::size_t kMany = 100;
    if (gone.empty()) {
        return;
    }
    // Filling anew sorts, which must not move a key whose duration has changed since it came in.
    const bool inOrder = std::ranges::adjacent_find(keys, [](const CTrackKey* a, const CTrackKey* b) {
                             return a->IsDrawnBefore(b);
                         }) == keys.end();
    if (gone.size() > kMany && inOrder) {
        const std::unordered_set<const CTrackKey*> leaving(gone.begin(), gone.end());
        std::vector<CTrackKey*> staying;
        std::ranges::copy_if(keys, std::back_inserter(staying),
                             [&](const CTrackKey* key) { return !leaving.contains(key); });
        keys.Clear();
        keys.BeginFill();
        std::ranges::for_each(staying, [this](CTrackKey* key) { keys.Insert(key); });
        keys.EndFill();
    } else {
        std::ranges::for_each(gone, [this](CTrackKey* key) { keys.Remove(key); });
    }
    std::ranges::for_each(gone, [this](CTrackKey* key) { DropView(key); });
}

void CTrackCtrl::SaveKeyTimes() {
    for (CTrackKey* key : keys) {
        key->SaveTime();
    }
}

void CTrackCtrl::RestoreKeyTimes(bool keep) {
    constexpr float kNoneSaved = -1.0f;
    for (CTrackKey* key : keys) {
        // A row that was rebuilt in mid-drag has no times to go back to.
        if (key->savedTime != kNoneSaved) {
            key->RestoreTime(keep);
            TellWritten(key->record);
        }
    }
}

bool CTrackCtrl::SetCurrentKeyElement(const std::string& element, const EditorObject* object) {
    TimelineContext* timeline = TimelineOf(this);
    IFilm* film = timeline != nullptr ? timeline->session.GetCurrentFilm() : nullptr;
    CTrackKey* key = CurrentKey();
    if (film == nullptr || film->FindObjectTrack(object) == nullptr || key == nullptr ||
        key->record == nullptr || key->record->kind != KeyKind::Animation) {
        return false;
    }
    key->record->SetValue(&element);
    timeline->ShowFilm(film, /*flag*/ false); // the key may need another row; this one is gone now
    return true;
}

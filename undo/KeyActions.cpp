#include "undo/KeyActions.h"

#include "keys/views/LooseKeys.h"
#include "keys/views/TimedTrackKey.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"
#include "undo/FilmsUndoMgr.h"

#include <utility>

namespace {

/// The main control of the plug-in's window: without one nothing is put in or taken out, whoever made the
/// action.
TimelineContext* ControlOnShow(const TimelineContext* maker) {
    return maker != nullptr ? TimelineOf(maker->session) : nullptr;
}

} // namespace

CFilmsUndoAction::~CFilmsUndoAction() {
    for (CFilmsUndoAction* child : children) {
        delete child;
    }
}

CFUAOneKey::~CFUAOneKey() {
    if (ownsKey) {
        DestroyLooseView(timeline, key);
    }
}

CTrackKey* CFUAOneKey::SetKey(CTrackKey* newKey) {
    return key = newKey;
}

CTrackCtrl* CFUAOneKey::SetTrackCtrl(CTrackCtrl* newRow) {
    return trackCtrl = newRow;
}

CTrackKey* CFUAOneKey::MakeView() const {
    TimelineContext* control = ControlOnShow(timeline);
    return control != nullptr && key->record != nullptr ? control->CreateKeyView(key->record->kind) : nullptr;
}

void CFUAOneKey::Insert(CTrackKey* view) const {
    TimelineContext* const control = timeline; // an insertion that makes the rows anew takes the action along
    const Watch watch(trackCtrl);
    const bool taken = trackCtrl->AddKeyView(view, /*redraw*/ true, /*existing*/ false, /*noUndo*/ true);
    if (!taken && watch.IsAlive()) {
        DestroyLooseView(control, view);
    }
}

bool CFUAOneKey::RemoveTwin() {
    TimelineContext* control = TimelineOf(trackCtrl);
    CTrackKey* twin = control != nullptr ? trackCtrl->FindKeyView(key, /*byValue*/ true) : nullptr;
    if (twin != nullptr) {
        const Watch watch(trackCtrl);
        trackCtrl->RemoveKey(twin, /*destroy*/ false, /*redraw*/ true, /*noUndo*/ true);
        if (watch.IsAlive()) {
            control->GetUndoMgr().retired.KeepView(twin); // Required: it lives on, in no row and no action
        }
    }
    return true;
}

bool CFUAOneKey::InsertCopy() {
    if (key == nullptr || trackCtrl == nullptr) {
        return true;
    }
    if (CTrackKey* copy = MakeView()) {
        copy->CopyFrom(key, /*copyTime*/ true);
        Insert(copy);
    }
    return true;
}

CFUAAddKey::CFUAAddKey(TimelineContext* control) : CFUAOneKey(control) {
    type = UndoCode::AddKey;
    ownsKey = false;
}

CFUADeleteKey::CFUADeleteKey(TimelineContext* control) : CFUAOneKey(control) {
    type = UndoCode::DeleteKey;
}

CFUACloneKey::CFUACloneKey(TimelineContext* control) : CFUAOneKey(control) {
    type = UndoCode::CloneKey;
}

bool CFUACloneKey::Undo() {
    if (ControlOnShow(timeline) == nullptr || TimelineOf(trackCtrl) == nullptr) {
        return false;
    }
    CTrackKey* twin = trackCtrl->FindKeyView(key, /*byValue*/ true);
    if (twin == nullptr) {
        return false;
    }
    if (twin == key) {
        key = nullptr; // it goes now
    }
    trackCtrl->RemoveKey(twin, /*destroy*/ true, /*redraw*/ true, /*noUndo*/ true);
    return true;
}

bool CFUACloneKey::Redo() {
    if (key == nullptr || trackCtrl == nullptr) {
        return false;
    }
    CTrackKey* copy = MakeView();
    if (copy == nullptr) {
        return false;
    }
    if (!copy->CopyFrom(key, /*copyTime*/ true)) {
        DestroyLooseView(timeline, copy);
        return false;
    }
    Insert(copy);
    return true;
}

bool CFUAChangeSize::Swap() {
    if (key == nullptr || key->record == nullptr || trackCtrl == nullptr) {
        return true;
    }
    const IFilmKey& record = *key->record;
    const float oldStart = record.time;
    const float oldEnd = record.endTime;
    key->SetPosition(start, /*viewOnly*/ false);
    auto* timed = dynamic_cast<CTimedTrackKey*>(key);
    if (timed != nullptr && (record.flags & KeyFlag::NoDuration) == 0) {
        timed->SetDuration(end - start, /*viewOnly*/ false);
    }
    start = oldStart;
    end = oldEnd;
    trackCtrl->Invalidate(TRUE);
    return true;
}

CFUAChangeAttribs::CFUAChangeAttribs(TimelineContext* control) : CFUAOneKey(control) {
    type = UndoCode::ChangeAttribs;
    ownsKey = false;
}

CFUAChangeAttribs::~CFUAChangeAttribs() {
    if (timeline != nullptr) {
        ReturnRecord(timeline->session, savedRecord);
    }
}

bool CFUAChangeAttribs::Swap() {
    if (key == nullptr || key->record == nullptr || savedRecord == nullptr || trackCtrl == nullptr) {
        return true;
    }
    if (timeline == nullptr) {
        return true;
    }
    IFilmKey* copy = CopyOfRecord(timeline->session, *savedRecord);
    if (copy == nullptr) {
        return true;
    }
    // A view that still held its record would destroy it. Required: the track goes on listing that one and
    // never learns of the copy.
    IFilmKey* current = std::exchange(key->record, nullptr);
    key->SetRecord(copy, /*takeTimes*/ false);
    ReturnRecord(timeline->session, savedRecord);
    savedRecord = current;
    trackCtrl->Invalidate(FALSE);
    return true;
}

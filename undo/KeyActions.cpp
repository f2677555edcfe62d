#include "undo/KeyActions.h"

#include "keys/TimedTrackKey.h"
#include "timeline/TimelineContext.h"
#include "timeline/TrackCtrl.h"
#include "undo/LooseKeys.h"

#include <utility>

namespace {

/// A view in no row that equals the key, its time included; null if it can't be made.
CTrackKey* MakeView(const CTrackKey& key) {
    TimelineContext* timeline = GetTimeline();
    return timeline != nullptr && key.record != nullptr ? timeline->CreateKeyView(key.record->kind) : nullptr;
}

/// What the row doesn't take is destroyed.
void Insert(CTrackKey* view, CTrackCtrl& row) {
    const Watch watch(&row);
    const bool taken = row.AddKeyView(view, /*redraw*/ true, /*existing*/ false, /*noUndo*/ true);
    if (!taken && watch.IsAlive()) {
        DestroyLooseView(view);
    }
}

} // namespace

CFilmsUndoAction::~CFilmsUndoAction() {
    for (CFilmsUndoAction* child : children) {
        delete child;
    }
}

CFUAOneKey::~CFUAOneKey() {
    if (ownsKey) {
        DestroyLooseView(key);
    }
}

CTrackKey* CFUAOneKey::SetKey(CTrackKey* newKey) {
    return key = newKey;
}

CTrackCtrl* CFUAOneKey::SetTrackCtrl(CTrackCtrl* newRow) {
    return trackCtrl = newRow;
}

bool CFUAOneKey::RemoveTwin() {
    TimelineContext* timeline = TimelineOf(trackCtrl);
    CTrackKey* twin = timeline != nullptr ? trackCtrl->FindKeyView(key, /*byValue*/ true) : nullptr;
    if (twin != nullptr) {
        const Watch watch(trackCtrl);
        trackCtrl->RemoveKey(twin, /*destroy*/ false, /*redraw*/ true, /*noUndo*/ true);
        if (watch.IsAlive()) {
            timeline->undoMgr.retired.KeepView(twin); // Required: it lives on, in no row and no action
        }
    }
    return true;
}

bool CFUAOneKey::InsertCopy() {
    if (key == nullptr || trackCtrl == nullptr) {
        return true;
    }
    if (CTrackKey* copy = MakeView(*key)) {
        copy->CopyFrom(key, /*copyTime*/ true);
        Insert(copy, *trackCtrl);
    }
    return true;
}

CFUAAddKey::CFUAAddKey() {
    type = UndoCode::AddKey;
    ownsKey = false;
}

CFUADeleteKey::CFUADeleteKey() {
    type = UndoCode::DeleteKey;
}

CFUACloneKey::CFUACloneKey() {
    type = UndoCode::CloneKey;
}

bool CFUACloneKey::Undo() {
    if (GetTimeline() == nullptr || TimelineOf(trackCtrl) == nullptr) {
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
    CTrackKey* copy = MakeView(*key);
    if (copy == nullptr) {
        return false;
    }
    if (!copy->CopyFrom(key, /*copyTime*/ true)) {
        DestroyLooseView(copy);
        return false;
    }
    Insert(copy, *trackCtrl);
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

CFUAChangeAttribs::CFUAChangeAttribs() {
    type = UndoCode::ChangeAttribs;
    ownsKey = false;
}

CFUAChangeAttribs::~CFUAChangeAttribs() {
    ReturnRecord(savedRecord);
}

bool CFUAChangeAttribs::Swap() {
    if (key == nullptr || key->record == nullptr || savedRecord == nullptr || trackCtrl == nullptr) {
        return true;
    }
    IFilmKey* copy = CopyOfRecord(*savedRecord);
    if (copy == nullptr) {
        return true;
    }
    // A view that still held its record would destroy it. Required: the track goes on listing that one and
    // never learns of the copy.
    IFilmKey* current = std::exchange(key->record, nullptr);
    key->SetRecord(copy, /*takeTimes*/ false);
    ReturnRecord(savedRecord);
    savedRecord = current;
    trackCtrl->Invalidate(FALSE);
    return true;
}

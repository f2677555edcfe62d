#include "helpers/FilmKeyDuplicator.h"

#include "keys/views/LooseKeys.h"
#include "keys/views/TimedTrackKey.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"
#include "undo/FilmsUndoMgr.h"
#include "undo/KeyActions.h"

namespace {

/// The time and length that the record has, not the view.
void TakeDuration(CTrackKey& target, const IFilmKey& source) {
    if (auto* timed = dynamic_cast<CTimedTrackKey*>(&target)) {
        timed->SetDuration(source.endTime - source.time, /*viewOnly*/ false);
    }
}

void TakePriority(IFilmKey& target, const IFilmKey& source) {
    if (target.kind == KeyKind::Camera && source.kind == KeyKind::Camera) {
        static_cast<CFilmCameraKey&>(target).priority = static_cast<const CFilmCameraKey&>(source).priority;
    }
}

} // namespace

bool CFilmKeyDuplicator::Paste(CTrackKey* target) {
    if (mainCtrl == nullptr || sourceKey == nullptr || sourceRow == nullptr || sourceKey->record == nullptr) {
        return false;
    }
    CTrackKey* made = target == nullptr ? MakeCloneTarget() : nullptr;
    CTrackKey* view = made != nullptr ? made : target;
    if (view == nullptr || view->record == nullptr || (cloneMode && !CanBecomeClone(*view))) {
        return false;
    }
    IFilmKey* saved = CopyOfRecord(mainCtrl->session, *sourceKey->record);
    if (saved == nullptr) {
        DestroyLooseView(mainCtrl, made);
        return false;
    }
    if (!cloneMode) {
        PasteAttributes(*view, saved);
        return true;
    }
    return PlaceClone(*view, made, saved);
}

/// A key that stands in a track, and the source itself, can't be put in a second time.
bool CFilmKeyDuplicator::CanBecomeClone(const CTrackKey& target) const {
    return &target != sourceKey && target.record->track == nullptr;
}

/// Null outside the visible part of the axis.
CTrackKey* CFilmKeyDuplicator::MakeCloneTarget() const {
    const bool inView = sourceTime >= mainCtrl->viewStart && sourceTime < mainCtrl->viewEnd;
    return cloneMode && inView ? mainCtrl->CreateKeyView(sourceKey->record->kind) : nullptr;
}

/// Takes `saved` over.
void CFilmKeyDuplicator::PasteAttributes(CTrackKey& target, IFilmKey* saved) {
    const IFilmKey& source = *sourceKey->record;
    target.record->CopyFrom(source, 0);
    if (target.record->kind == KeyKind::Camera) {
        TakeDuration(target, source);
    }
    auto* action =
        static_cast<CFUAChangeAttribs*>(mainCtrl->GetUndoMgr().CreateAction(UndoCode::ChangeAttribs));
    action->SetKey(&target);
    action->SetTrackCtrl(sourceRow);
    action->savedRecord = saved; // Required: the source's content, not what the target had before
    mainCtrl->GetUndoMgr().Add(action);
}

/// Takes `saved` over, and `made`, which is the target or null.
bool CFilmKeyDuplicator::PlaceClone(CTrackKey& target, CTrackKey* made, IFilmKey* saved) {
    const IFilmKey& source = *sourceKey->record;
    target.CopyFrom(sourceKey, /*copyTime*/ false);
    target.SetPosition(sourceTime, /*viewOnly*/ false);
    if ((source.flags & KeyFlag::NoDuration) == 0) {
        TakeDuration(target, source);
    }
    if (!sourceRow->CanPlaceKey(&target, sourceTime)) {
        mainCtrl->GetUndoMgr().retired.KeepView(made); // Required: neither is destroyed yet
        mainCtrl->GetUndoMgr().retired.KeepRecord(saved);
        return false;
    }
    TakePriority(*target.record, source);
    const FilmSession& session = mainCtrl->session; // the control may go with the rows
    const Watch watch(sourceRow);
    const bool placed = sourceRow->AddKeyView(&target, /*redraw*/ true, /*existing*/ false, /*noUndo*/ true);
    // The selection may let in a rebuild, which leaves nothing of all this.
    if (watch.IsAlive() && placed) {
        AddCloneAction(target);
        ForgetClone();
    } else if (watch.IsAlive()) {
        DestroyLooseView(mainCtrl, made);
    }
    ReturnRecord(session, saved);
    return placed;
}

void CFilmKeyDuplicator::ForgetClone() {
    sourceKey = nullptr;
    sourceRow = nullptr;
    sourceTime = kNoTime;
    cloneMode = false;
}

void CFilmKeyDuplicator::AddCloneAction(const CTrackKey& clone) const {
    CTrackKey* copy = mainCtrl->CreateKeyView(clone.record->kind);
    if (copy == nullptr) {
        return;
    }
    copy->CopyFrom(&clone, /*copyTime*/ true);
    auto* action = static_cast<CFUACloneKey*>(mainCtrl->GetUndoMgr().CreateAction(UndoCode::CloneKey));
    action->SetKey(copy);
    action->SetTrackCtrl(sourceRow);
    mainCtrl->GetUndoMgr().Add(action);
}

#include "timeline/edits/TimelineEdits.h"

#include "undo/KeyActions.h"

namespace {

/// `Edit` is the class of the code's actions.
template <class Edit> Edit& CreateEdit(CFilmsUndoMgr& undo, int code, CTrackCtrl& row, CTrackKey& view) {
    auto& edit = static_cast<Edit&>(*undo.CreateAction(code));
    edit.SetTrackCtrl(&row);
    edit.SetKey(&view);
    return edit;
}

} // namespace

void TimelineEdits::NoteAdded(CTrackCtrl& row, CTrackKey& view) {
    undoMgr.Add(&CreateEdit<CFUAAddKey>(undoMgr, UndoCode::AddKey, row, view));
}

void TimelineEdits::NoteRemoved(CTrackCtrl& row, CTrackKey& view) {
    undoMgr.Add(&CreateEdit<CFUADeleteKey>(undoMgr, UndoCode::DeleteKey, row, view));
}

void TimelineEdits::NoteSize(CTrackCtrl& row, CTrackKey& view, float oldStart, float oldEnd) {
    auto& edit = CreateEdit<CFUAChangeSize>(undoMgr, UndoCode::ChangeSize, row, view);
    edit.start = oldStart;
    edit.end = oldEnd;
    undoMgr.Add(&edit);
}

#pragma once

#include "undo/RetiredKeys.h"

#include <vector>

class CFilmsUndoAction;
class TimelineContext;

/// The edits of one main control. Every edit builds and fills an action and hands it to `Add`, but recording
/// is switched off: nothing is kept for Undo, and Undo and Redo change nothing. Required.
class CFilmsUndoMgr {
public:
    explicit CFilmsUndoMgr(TimelineContext* control) : owner(control), retired(control) {}
    virtual ~CFilmsUndoMgr();
    CFilmsUndoMgr(const CFilmsUndoMgr&) = delete;
    CFilmsUndoMgr& operator=(const CFilmsUndoMgr&) = delete;

    /// A new action of a UndoCode, which is the caller's until `Add`; null for any other code.
    CFilmsUndoAction* CreateAction(int code);
    /// Takes the action over, to keep it in `retired`: views that were deleted with undo live in it. Always
    /// false.
    bool Add(CFilmsUndoAction* action);
    /// Serves Redo too; always false.
    bool Undo();
    /// Destroys the recorded actions from `index` on; a negative index counts as 0.
    void TruncateFrom(int index);
    /// Called whenever the film is shown anew and when the level goes, before its records do.
    void Clear();

    std::vector<CFilmsUndoAction*> actions; ///< oldest first; owned; empty as long as Add records nothing
    int position = -1;                      ///< of the present action in `actions`
    TimelineContext* owner;
    RetiredKeys retired; ///< until `Clear`; Undo and Redo don't reach it
};

#pragma once

#include <vector>

class CFilmsUndoAction;
class TimelineContext;

/// The edits of one main control. Every edit builds and fills an action and hands it to `Add`, but recording
/// is switched off: nothing is kept for Undo, and Undo and Redo change nothing. Required.
class CFilmsUndoMgr {
public:
    explicit CFilmsUndoMgr(TimelineContext* control) : owner(control) {}
    virtual ~CFilmsUndoMgr();
    CFilmsUndoMgr(const CFilmsUndoMgr&) = delete;
    CFilmsUndoMgr& operator=(const CFilmsUndoMgr&) = delete;

    /// A new action of a UndoCode, which is the caller's until `Add`; null for any other code.
    CFilmsUndoAction* CreateAction(int code);
    /// Takes the action over; always false. It is only kept alive, since views that were deleted with undo
    /// live in it, until the next `Clear`.
    bool Add(CFilmsUndoAction* action);
    /// Serves Redo too; always false.
    bool Undo();
    /// Destroys the recorded actions from `index` on; a negative index counts as 0.
    void TruncateFrom(int index);
    void Clear();
    /// What was handed to Add since the last Clear, oldest first.
    const std::vector<CFilmsUndoAction*>& Retired() const { return retired; }

    std::vector<CFilmsUndoAction*> actions; ///< oldest first; owned; empty as long as Add records nothing
    int position = -1;                      ///< of the present action in `actions`
    TimelineContext* owner;

private:
    std::vector<CFilmsUndoAction*> retired; ///< handed to Add, kept only for what they own
};

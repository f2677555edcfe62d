#pragma once

#include <list>

/// One edit that could be taken back. Owned by whoever handed it to CFilmsUndoMgr::Add last.
class CFilmsUndoAction {
public:
    CFilmsUndoAction() = default;
    virtual ~CFilmsUndoAction();
    CFilmsUndoAction(const CFilmsUndoAction&) = delete;
    CFilmsUndoAction& operator=(const CFilmsUndoAction&) = delete;

    virtual bool Undo() = 0;
    virtual bool Redo() = 0;

    std::list<CFilmsUndoAction*> children; ///< owned
    int type = -1;                         ///< one of UndoCode; a change of size leaves it unset
};

/// What CFilmsUndoMgr::CreateAction takes.
namespace UndoCode {
constexpr int AddKey = 0;
constexpr int DeleteKey = 1;
constexpr int ChangeSize = 2;
constexpr int CloneKey = 3;
constexpr int ChangeAttribs = 4;
} // namespace UndoCode

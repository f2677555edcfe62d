#include "undo/FilmsUndoMgr.h"

#include "undo/KeyActions.h"

#include <algorithm>

CFilmsUndoMgr::~CFilmsUndoMgr() {
    Clear();
}

CFilmsUndoAction* CFilmsUndoMgr::CreateAction(int code) {
    switch (code) {
    case UndoCode::AddKey:
        return new CFUAAddKey(owner);
    case UndoCode::DeleteKey:
        return new CFUADeleteKey(owner);
    case UndoCode::ChangeSize:
        return new CFUAChangeSize(owner);
    case UndoCode::CloneKey:
        return new CFUACloneKey(owner);
    case UndoCode::ChangeAttribs:
        return new CFUAChangeAttribs(owner);
    default:
        return nullptr;
    }
}

bool CFilmsUndoMgr::Add(CFilmsUndoAction* action) {
    retired.KeepAction(action);
    return false;
}

bool CFilmsUndoMgr::Undo() {
    return false;
}

void CFilmsUndoMgr::TruncateFrom(int index) {
    const auto from = static_cast<std::size_t>(std::max(index, 0));
    if (from >= actions.size()) {
        return;
    }
    const std::vector<CFilmsUndoAction*> cut(actions.begin() + static_cast<std::ptrdiff_t>(from),
                                             actions.end());
    actions.resize(from);
    for (CFilmsUndoAction* action : cut) {
        delete action;
    }
}

void CFilmsUndoMgr::Clear() {
    TruncateFrom(0);
    position = -1;
    retired.Clear();
}

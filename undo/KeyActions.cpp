#include "undo/KeyActions.h"

CFilmsUndoAction::~CFilmsUndoAction() {
    for (CFilmsUndoAction* child : children) {
        delete child;
    }
}

CFUAOneKey::~CFUAOneKey() = default;

CTrackKey* CFUAOneKey::SetKey(CTrackKey* newKey) {
    return key = newKey;
}

CTrackCtrl* CFUAOneKey::SetTrackCtrl(CTrackCtrl* newRow) {
    return trackCtrl = newRow;
}

bool CFUAOneKey::RemoveTwin() {
    return true;
}

bool CFUAOneKey::InsertCopy() {
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
    return false;
}

bool CFUACloneKey::Redo() {
    return false;
}

bool CFUAChangeSize::Swap() {
    return true;
}

CFUAChangeAttribs::CFUAChangeAttribs() {
    type = UndoCode::ChangeAttribs;
    ownsKey = false;
}

CFUAChangeAttribs::~CFUAChangeAttribs() = default;

bool CFUAChangeAttribs::Swap() {
    return true;
}

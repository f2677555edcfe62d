#include "undo/RetiredKeys.h"

#include "keys/views/LooseKeys.h"
#include "timeline/rows/TimelineContext.h"
#include "undo/KeyActions.h"

#include <utility>

RetiredKeys::~RetiredKeys() {
    Clear();
}

void RetiredKeys::KeepAction(CFilmsUndoAction* action) {
    if (action == nullptr || !Note(action)) {
        return;
    }
    actions.push_back(action);
    auto* edit = dynamic_cast<CFUAOneKey*>(action);
    if (edit != nullptr && edit->ownsKey && edit->key != nullptr) {
        edit->ownsKey = Note(edit->key);
    }
}

void RetiredKeys::KeepView(CTrackKey* view) {
    if (view != nullptr && Note(view)) {
        views.push_back(view);
    }
}

void RetiredKeys::KeepRecord(IFilmKey* record) {
    if (record != nullptr && Note(record)) {
        records.push_back(record);
    }
}

void RetiredKeys::Forget(const CTrackKey* view) {
    if (noted.erase(view) == 0) {
        return; // the rule: a view in a row
    }
    std::erase(views, view);
    for (CFilmsUndoAction* action : actions) {
        auto* edit = dynamic_cast<CFUAOneKey*>(action);
        if (edit != nullptr && edit->key == view) {
            edit->key = nullptr;
        }
    }
}

void RetiredKeys::Clear() {
    noted.clear();
    // What goes tells its holders, who may come back here.
    for (const CFilmsUndoAction* action : std::exchange(actions, {})) {
        delete action;
    }
    for (CTrackKey* view : std::exchange(views, {})) {
        DestroyLooseView(timeline, view);
    }
    for (IFilmKey* record : std::exchange(records, {})) {
        if (timeline != nullptr) {
            ReturnRecord(timeline->session, record);
        }
    }
}

#pragma once

#include "keys/views/TrackKey.h"
#include "undo/FilmsUndoMgr.h"
#include "undo/KeyActions.h"

#include <vector>

/// The records that live on in retired views and actions, each once.
inline std::vector<IFilmKey*> RetiredRecords(const CFilmsUndoMgr& undo) {
    std::vector<IFilmKey*> found = undo.retired.Records();
    const auto add = [&found](IFilmKey* record) {
        if (record != nullptr && record->track == nullptr) {
            found.push_back(record);
        }
    };
    for (const CTrackKey* view : undo.retired.Views()) {
        add(view->record);
    }
    for (CFilmsUndoAction* action : undo.retired.Actions()) {
        const auto* edit = dynamic_cast<const CFUAOneKey*>(action);
        if (edit != nullptr && edit->ownsKey && edit->key != nullptr) {
            add(edit->key->record);
        }
        if (const auto* change = dynamic_cast<const CFUAChangeAttribs*>(action)) {
            add(change->savedRecord);
        }
    }
    return found;
}

#include "tests/editing/Living.h"

#include "keys/TrackKey.h"
#include "tests/editing/World.h"
#include "undo/KeyActions.h"

namespace editing {

Living::Living(const World& world, const CFilmsMainCtrl& control)
    : rows(control.tracks.begin(), control.tracks.end()) {
    for (const CFilmTrack* track : world.Tracks()) {
        tracks.insert(track);
        records.insert(track->keys.begin(), track->keys.end());
    }
    for (const CTrackCtrl* row : control.tracks) {
        views.insert(row->keys.begin(), row->keys.end());
    }
    for (const CFilmsUndoAction* action : control.undoMgr.Retired()) {
        const auto& edit = static_cast<const CFUAOneKey&>(*action); // all are edits of one key
        if (edit.ownsKey && edit.key != nullptr) {
            views.insert(edit.key);
            records.insert(edit.key->record);
        }
        if (const auto* attributes = dynamic_cast<const CFUAChangeAttribs*>(action)) {
            records.insert(attributes->savedRecord);
        }
    }
    records.erase(nullptr);
}

} // namespace editing

#include "tests/editing/Living.h"

#include "keys/views/TrackKey.h"
#include "tests/editing/World.h"
#include "undo/KeyActions.h"

namespace editing {

Living::Living(const World& world, const CFilmsMainCtrl& control)
    : rows(control.tracks.begin(), control.tracks.end()) {
    ObjectList all;
    world.editor.level.CollectObjects(all);
    objects.insert(all.begin(), all.end());
    for (const CFilmTrack* track : world.Tracks()) {
        tracks.insert(track);
        records.insert(track->keys.begin(), track->keys.end());
    }
    for (const CTrackCtrl* row : control.tracks) {
        views.insert(row->keys.begin(), row->keys.end());
    }
    const RetiredKeys& retired = control.undoMgr.retired;
    for (const CFilmsUndoAction* action : retired.Actions()) {
        const auto* edit = dynamic_cast<const CFUAOneKey*>(action);
        if (edit != nullptr && edit->ownsKey) {
            AddLoose(edit->key);
        }
        if (const auto* attributes = dynamic_cast<const CFUAChangeAttribs*>(action)) {
            records.insert(attributes->savedRecord);
        }
    }
    for (const CTrackKey* view : retired.Views()) {
        AddLoose(view);
    }
    records.insert(retired.Records().begin(), retired.Records().end());
    records.erase(nullptr);
}

void Living::AddLoose(const CTrackKey* view) {
    if (view != nullptr) {
        views.insert(view);
        records.insert(view->record);
    }
}

} // namespace editing

#include "timeline/ShownKey.h"

#include "keys/views/TrackKey.h"
#include "plugin/session/FilmSession.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

IFilmKey* LeaveShownKey(const FilmSession& session, const IFilm* film) {
    IKeyAttributesDlg* dialog = session.keyAttributesDlg.get();
    IFilmKey* record = dialog != nullptr ? dialog->GetRecord() : nullptr;
    if (record == nullptr) {
        return nullptr;
    }
    if (film == nullptr || record->track == nullptr || record->track->film != film) {
        dialog->SetKey(nullptr, /*refresh*/ false);
        return nullptr;
    }
    dialog->ApplyPending();
    record = dialog->GetRecord();
    dialog->Reset();
    return record;
}

void ReturnToKey(const TimelineContext& timeline, const IFilmKey* record) {
    const CTrackCtrl* row = timeline.FindRowOfKey(record);
    if (row == nullptr) {
        return;
    }
    for (const CTrackCtrl* sibling :
         row->parent != nullptr ? row->parent->children : std::list<CTrackCtrl*>{}) {
        for (CTrackKey* view : sibling->keys) {
            if (view->record == record) {
                timeline.session.keyAttributesDlg->SetKey(view, /*refresh*/ false);
                return;
            }
        }
    }
}

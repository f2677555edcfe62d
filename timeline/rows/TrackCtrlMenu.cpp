#include "framework/Menu.h"
#include "helpers/rules/FilmsLightHelper.h"
#include "keys/views/TrackKey.h"
#include "plugin/contract/FilmTrack.h"
#include "resources/resource.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <initializer_list>

namespace {

void Delete(CMenu& menu, std::initializer_list<UINT> commands) {
    for (const UINT command : commands) {
        menu.DeleteMenu(command, MF_BYCOMMAND);
    }
}

void TrimRootMenu(CMenu& menu, CFilmTrack* track) {
    Delete(menu, {IDC_ADD_KEY, IDC_REMOVE_TRACK, IDC_TRACK_PARAMETERS, IDC_PASTE_KEY});
    const bool isLevel = track->IsA(ClassId::LevelTrack);
    if (AsCameraTrack(track) == nullptr) {
        Delete(menu, {IDC_CAMERA_PARAMETERS});
    }
    if (AsObjectTrack(track) == nullptr) {
        Delete(menu, {IDC_CHANGE_ACTOR, IDC_ATTACH_ROW_TO_OBJECT});
    }
    if (isLevel || IsSunTrack(track)) {
        menu.EnableMenuItem(IDC_REMOVE_ACTOR, MF_BYCOMMAND | MF_DISABLED | MF_GRAYED);
    }
    if (!isLevel) {
        Delete(menu, {IDC_ADD_CAMERA_TRACK});
    }
}

/// Required: "Change actor" stays, whatever the track.
void TrimKindMenu(CMenu& menu, int kind, bool canPaste) {
    Delete(menu, {IDC_CAMERA_PARAMETERS, IDC_ATTACH_ROW_TO_OBJECT, IDC_FILTER_KEYS, IDC_REMOVE_ACTOR,
                  IDC_ADD_CAMERA_TRACK});
    if (!canPaste) {
        Delete(menu, {IDC_PASTE_KEY});
    }
    if (kind != KeyKind::Camera) {
        Delete(menu, {IDC_REMOVE_TRACK});
    }
}

} // namespace

void CTrackCtrl::FillRowMenu(CMenu* menu, CMenu* source) {
    if (track == nullptr || menu == nullptr || source == nullptr) {
        return;
    }
    CTrackKey::CopyMenuItems(menu, source);
    if (kind != KeyKind::Position && kind != KeyKind::Rotation) {
        Delete(*menu, {IDC_EXPORT_TRACK, IDC_IMPORT_TRACK});
    }
    if (IsRoot()) {
        TrimRootMenu(*menu, track);
    } else {
        TrimKindMenu(*menu, kind, CanPasteKey());
    }
}

/// Only onto a row of the copied key's kind.
bool CTrackCtrl::CanPasteKey() const {
    const TimelineContext* timeline = TimelineOf(this);
    const CTrackKey* source = timeline != nullptr ? timeline->GetCopied().sourceKey : nullptr;
    return source != nullptr && source->record != nullptr && source->record->kind == kind;
}

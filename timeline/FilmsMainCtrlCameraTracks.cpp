// Further camera rows of a film, and the parameters of its cameras.
#include "files/CameraParametersDlg.h"
#include "files/CameraSubtrackParamsDlg.h"
#include "keys/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

/// Only on the level's root row: elsewhere the rows that there are would move on for nothing.
void CFilmsMainCtrl::OnMenuAddCameraTrack() {
    if (menuRow == nullptr || !menuRow->IsRoot() || AsLevelTrack(menuRow->track) == nullptr) {
        return;
    }
    CTrackCtrl* added = AddTrackCtrl(/*redraw*/ false);
    if (added == nullptr) {
        return;
    }
    added->kind = KeyKind::Camera;
    for (CTrackCtrl* row : tracks) { // the new one, which has none yet, gets index 0
        if (row->kind == KeyKind::Camera) {
            MoveCameraRow(*row, row->subIndex + 1);
        }
    }
    if (menuRow->AddChildRow(added, /*first*/ true)) {
        InsertTrackCtrl(added, menuRow, /*before*/ false);
    }
    RebuildVisibleRows(/*redraw*/ true, nullptr);
}

/// The row's keys get the index of their row.
void CFilmsMainCtrl::MoveCameraRow(CTrackCtrl& row, int index) {
    row.SetCameraIndex(index);
    row.NameAfterKind();
    for (const CTrackKey* view : row.keys) {
        plugin.TellKeyWritten(view->record);
    }
    if (row.track != nullptr) {
        row.track->NotifyKeysChanged(KeyKind::Camera);
    }
}

void CFilmsMainCtrl::OnMenuCameraParameters() {
    CFilmTrack* track = menuRow != nullptr ? menuRow->track : nullptr;
    if (AsCameraTrack(track) == nullptr) {
        return;
    }
    CCameraParametersDlg dialog(plugin, this);
    dialog.track = track;
    dialog.DoModal();
}

void CFilmsMainCtrl::OnMenuTrackParameters() {
    const CTrackCtrl* root = menuRow != nullptr ? menuRow->parent : nullptr;
    if (root == nullptr || AsCameraTrack(root->track) == nullptr) {
        return;
    }
    CCameraSubtrackParamsDlg dialog(plugin, this);
    dialog.track = menuRow->track;
    dialog.kind = menuRow->kind;
    FilmSession& shown = session; // the control may go while the dialog is open
    if (dialog.DoModal() != IDOK) {
        return;
    }
    if (shown.GetCurrentFilm() != nullptr) { // the camera may stand elsewhere now
        shown.SetFrame(shown.currentTime, FilmSession::kNoPrevious);
    }
}

#include "timeline/CameraCommands.h"

#include "files/AddCameraDlg.h"
#include "files/CameraParametersDlg.h"
#include "files/CameraSubtrackParamsDlg.h"
#include "files/FilmWatch.h"
#include "keys/rules/NewKey.h"
#include "keys/views/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <string>

namespace {

constexpr float kDegreesPerRadian = 57.295776f;
/// Units in front of the eye within which a target is looked for.
constexpr float kFarthestTarget = 1000000.0f;
/// Units from eye to target where nothing is in front.
constexpr float kFreeTarget = 5000.0f;

/// What a new camera takes from a view.
struct CameraStart {
    float fieldOfView = 0.0f; ///< degrees
    Vector3 eye;
    Vector3 target;
};

IView* ActiveView(const FilmSession& plugin) {
    if (plugin.editor == nullptr || plugin.level == nullptr) {
        return nullptr;
    }
    IViewManager* views = plugin.level->GetViewManager();
    IView* view = views != nullptr ? views->GetView(plugin.editor->GetActiveView()) : nullptr;
    return view != nullptr && view->camera != nullptr ? view : nullptr;
}

const float* ActiveViewMatrix(const FilmSession& plugin) {
    return plugin.view != nullptr && plugin.editor != nullptr
               ? plugin.view->GetViewMatrix(plugin.editor->GetActiveView())
               : nullptr;
}

Vector3 Ahead(const float* matrix, float distance) {
    return {matrix[12] - matrix[8] * distance, matrix[13] - matrix[9] * distance,
            matrix[14] - matrix[10] * distance};
}

CameraStart TakeStart(const IView& view, const float* matrix, ILevelData& data) {
    CameraStart start;
    start.fieldOfView = view.GetFieldOfView() * kDegreesPerRadian;
    start.eye = {matrix[12], matrix[13], matrix[14]};
    start.target = Ahead(matrix, kFarthestTarget);
    if (data.RayCast(start.eye.Data(), start.target.Data(), 0) == 0) {
        start.target = Ahead(matrix, kFreeTarget);
    }
    return start;
}

/// A key at time 0, smooth on both sides.
void AddFirstKey(CFilmTrack& track, IKeyFactory& factory, int kind, const void* value) {
    NewKey key(&factory, kind);
    if (!key) {
        return;
    }
    key->SetValue(value);
    key->SetInMethod(BezierMethod::Smooth);
    key->SetOutMethod(BezierMethod::Smooth);
    key->SetTime(0.0f);
    if (kind == KeyKind::CameraPosition || kind == KeyKind::CameraTarget) {
        key->SetLinkObject(nullptr);
        key->SetLinkElement(std::string());
    }
    key.AddTo(track);
}

void AddFirstKeys(CFilmTrack& track, IKeyFactory& factory, const CameraStart& start) {
    constexpr float kNoRoll = 0.0f;
    AddFirstKey(track, factory, KeyKind::FieldOfView, &start.fieldOfView);
    AddFirstKey(track, factory, KeyKind::Roll, &kNoRoll);
    AddFirstKey(track, factory, KeyKind::CameraPosition, start.eye.Data());
    AddFirstKey(track, factory, KeyKind::CameraTarget, start.target.Data());
}

/// The new row shows its kinds at once.
void StoreUnfolded(IPluginImpl& plugin, const IFilm& film, const std::string& camera) {
    CPluginFilmsParams params;
    params.Set(film.name, nullptr, /*expanded*/ 1,
               CPluginFilmsParams::kFilter | CPluginFilmsParams::kExpanded, camera);
    plugin.AddCameraParams(params);
}

/// The row's keys get the index of their row.
void MoveCameraRow(const FilmSession& session, CTrackCtrl& row, int index) {
    row.SetCameraIndex(index);
    row.NameAfterKind();
    for (const CTrackKey* view : row.keys) {
        session.TellKeyWritten(view->record);
    }
    if (row.track != nullptr) {
        row.track->NotifyKeysChanged(KeyKind::Camera);
    }
}

} // namespace

void AddCamera(CFilmsMainCtrl& control) {
    IFilm* film = control.plugin.GetCurrentFilm();
    if (film == nullptr || control.plugin.GetFilmManager() == nullptr ||
        ActiveView(control.plugin) == nullptr) {
        return;
    }
    CAddCameraDlg dialog(control.plugin, &control);
    film->NewCameraName(dialog.name);
    const Watch<CFilmsMainCtrl> window(&control);
    const FilmWatch shown(control.plugin);
    if (dialog.DoModal() != IDOK || !window.IsAlive() || !shown.IsCurrent()) {
        return;
    }
    ILevelData* data = control.plugin.GetLevelData();
    const IView* view = ActiveView(control.plugin);
    const float* matrix = ActiveViewMatrix(control.plugin);
    if (data == nullptr || view == nullptr || matrix == nullptr) {
        return;
    }
    const CameraStart start = TakeStart(*view, matrix, *data);
    CFilmCameraTrack* track = AsCameraTrack(film->CreateCameraTrack());
    if (track == nullptr) {
        return;
    }
    film->AddTrack(track);
    track->cameraName = dialog.name;
    AddFirstKeys(*track, *data->filmManager->keyFactory, start);
    track->RefreshTrack();
    StoreUnfolded(control.plugin, *film, track->cameraName);
    control.ShowFilm(film, /*flag*/ true);
}

/// Only on the level's root row: elsewhere the rows that there are would move on for nothing.
void AddCameraRow(CFilmsMainCtrl& control) {
    if (control.menuRow == nullptr || !control.menuRow->IsRoot() ||
        AsLevelTrack(control.menuRow->track) == nullptr) {
        return;
    }
    CTrackCtrl* added = control.AddTrackCtrl(/*redraw*/ false);
    if (added == nullptr) {
        return;
    }
    added->kind = KeyKind::Camera;
    for (CTrackCtrl* row : control.tracks) { // the new one, which has none yet, gets index 0
        if (row->kind == KeyKind::Camera) {
            MoveCameraRow(control.plugin, *row, row->subIndex + 1);
        }
    }
    if (control.menuRow->AddChildRow(added, /*first*/ true)) {
        control.InsertTrackCtrl(added, control.menuRow, /*before*/ false);
    }
    control.RebuildVisibleRows(/*redraw*/ true, nullptr);
}

void EditCamera(CFilmsMainCtrl& control) {
    CFilmTrack* track = control.menuRow != nullptr ? control.menuRow->track : nullptr;
    if (AsCameraTrack(track) == nullptr) {
        return;
    }
    CCameraParametersDlg dialog(control.plugin, &control);
    dialog.track = track;
    dialog.DoModal();
}

void EditCameraSubtrack(CFilmsMainCtrl& control) {
    const CTrackCtrl* root = control.menuRow != nullptr ? control.menuRow->parent : nullptr;
    if (root == nullptr || AsCameraTrack(root->track) == nullptr) {
        return;
    }
    CCameraSubtrackParamsDlg dialog(control.plugin, &control);
    dialog.track = control.menuRow->track;
    dialog.kind = control.menuRow->kind;
    FilmSession& shown = control.session; // the control may go while the dialog is open
    if (dialog.DoModal() != IDOK) {
        return;
    }
    if (shown.GetCurrentFilm() != nullptr) { // the camera may stand elsewhere now
        shown.SetFrame(shown.currentTime, FilmSession::kNoPrevious);
    }
}

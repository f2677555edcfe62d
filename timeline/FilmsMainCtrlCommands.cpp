#include "timeline/FilmsMainCtrl.h"

#include "files/MainCtrlSettingsDlg.h"
#include "files/ValidateMovie.h"
#include "framework/MessageBox.h"
#include "framework/Resource.h"
#include "keys/Pixels.h"
#include "plugin/PluginImpl.h"
#include "plugin/PluginResources.h"
#include "resources/resource.h"
#include "timeline/CommandNotes.h"
#include "timeline/TrackOrder.h"

#include <algorithm>
#include <cmath>
#include <iterator>

const CFilmsMainCtrl::CommandEntry CFilmsMainCtrl::kCommands[] = {
    {IDC_SETTINGS, &CFilmsMainCtrl::OnMenuSettings},
    {IDC_ADD_ACTORS, &CFilmsMainCtrl::OnMenuAddActors},
    {IDC_REMOVE_ACTORS, &CFilmsMainCtrl::OnMenuRemoveActors},
    {IDC_REMOVE_ACTOR, &CFilmsMainCtrl::OnMenuRemoveActor},
    {IDC_REMOVE_KEY, &CFilmsMainCtrl::OnMenuRemoveKey},
    {IDC_SET_POSITION, &CFilmsMainCtrl::OnMenuSetPosition},
    {IDC_SET_DURATION, &CFilmsMainCtrl::OnMenuSetDuration},
    {IDC_HIDE_TRACK, &CFilmsMainCtrl::OnMenuHideTrack},
    {IDC_PLAY_MOVIE, &CFilmsMainCtrl::OnMenuPlay},
    {IDC_STOP_MOVIE, &CFilmsMainCtrl::OnMenuStop},
    {IDC_VALIDATE_MOVIE, &CFilmsMainCtrl::OnMenuValidate},
    {IDC_ADD_KEY, &CFilmsMainCtrl::OnMenuAddKey},
    {IDC_REMOVE_TRACK, &CFilmsMainCtrl::OnMenuRemoveActor},
    {IDC_CALC_KEY_DURATION, &CFilmsMainCtrl::OnMenuCalcKeyDuration},
    {IDC_COPY_ATTRIBUTES, &CFilmsMainCtrl::OnMenuCopyAttributes},
    {IDC_PASTE_ATTRIBUTES, &CFilmsMainCtrl::OnMenuPasteAttributes},
    {IDC_ADD_CAMERA, &CFilmsMainCtrl::OnMenuAddCamera},
    {IDC_PASTE_KEY, &CFilmsMainCtrl::OnMenuPasteKey},
    {IDC_CHANGE_ACTOR, &CFilmsMainCtrl::OnMenuChangeActor},
    {IDC_FILTER_ACTORS, &CFilmsMainCtrl::OnMenuFilterActors},
    {IDC_FILTER_KEYS, &CFilmsMainCtrl::OnMenuFilterKeys},
    {IDC_SET_MOVIE_FRAME, &CFilmsMainCtrl::OnMenuSetMovieFrame},
    {IDC_ADJUST_TIME, &CFilmsMainCtrl::OnMenuAdjustTime},
    {IDC_ADD_CAMERA_TRACK, &CFilmsMainCtrl::OnMenuAddCameraTrack},
    {IDC_CAMERA_PARAMETERS, &CFilmsMainCtrl::OnMenuCameraParameters},
    {IDC_TRACK_PARAMETERS, &CFilmsMainCtrl::OnMenuTrackParameters},
    {IDC_EXPORT_TRACK, &CFilmsMainCtrl::OnMenuExportTrack},
    {IDC_IMPORT_TRACK, &CFilmsMainCtrl::OnMenuImportTrack},
    {IDC_ATTACH_ROW_TO_OBJECT, &CFilmsMainCtrl::OnMenuAttachToObject},
    {IDC_ADD_GL_LIGHT, &CFilmsMainCtrl::OnMenuAddGLLight},
    {IDC_ADD_DYN_LIGHT, &CFilmsMainCtrl::OnMenuAddDynLight},
};

void CFilmsMainCtrl::RunCommand(UINT id) {
    const auto* entry =
        std::ranges::find_if(kCommands, [id](const CommandEntry& candidate) { return candidate.id == id; });
    const ResourceScope resources(PluginResources());
    if (id != IDC_ADD_KEY) { // Required: a new key takes the pose as the film has it
        const Watch<CFilmsMainCtrl> window(this);
        plugin.ApplyPendingEdits();
        if (!window.IsAlive()) {
            return;
        }
    }
    NoteIfIdle(id, *this);
    if (entry != std::end(kCommands)) {
        (this->*entry->run)();
    } else {
        RunMethodCommand(id);
    }
}

void CFilmsMainCtrl::OnMenuSettings() {
    if (grid == nullptr) {
        return;
    }
    CMainCtrlSettingsDlg dialog(this);
    dialog.begin = movieStart;
    dialog.end = movieEnd;
    dialog.interval = viewEnd - viewStart;
    // Float32, since a tic of so many frames comes back as that many.
    dialog.ticsDistance = CutToInt(static_cast<float>(plugin.framesPerSecond) * grid->ticDistance);
    dialog.bigTics = grid->bigTics;
    dialog.labelDistance = grid->labelDistance;
    const Watch<CFilmsMainCtrl> window(this);
    const IFilm* film = plugin.GetCurrentFilm();
    // What was shown and edited is that film's.
    if (dialog.DoModal() != IDOK || !window.IsAlive() || film != plugin.GetCurrentFilm()) {
        return;
    }
    if (std::isfinite(dialog.begin) && std::isfinite(dialog.end) && std::isfinite(dialog.interval)) {
        TakeSettings(dialog);
    }
}

void CFilmsMainCtrl::TakeSettings(const CMainCtrlSettingsDlg& dialog) {
    SetMovieRange(dialog.begin, dialog.end);
    SetBigTics(dialog.bigTics, /*redraw*/ false);
    const auto rate = static_cast<float>(plugin.framesPerSecond);
    SetTicsDistance(rate != 0.0f ? static_cast<float>(dialog.ticsDistance) / rate : 1.0f, /*redraw*/ false);
    grid->SetLabelDistance(dialog.labelDistance, /*redraw*/ false);
    SetViewRange(viewStart, viewStart + dialog.interval, /*redraw*/ true);
    CalcSecondsPerPixel();
    IFilm* film = plugin.GetCurrentFilm();
    if (film == nullptr) {
        return;
    }
    FilmViewSettings update;
    update.mask = FilmViewSettings::kMovie | FilmViewSettings::kView | FilmViewSettings::kTicsDistance |
                  FilmViewSettings::kBigTics | FilmViewSettings::kLabelDistance;
    update.movieStart = movieStart;
    update.movieEnd = movieEnd;
    update.viewStart = viewStart;
    update.viewEnd = viewEnd;
    update.ticsDistance = grid->ticDistance;
    update.bigTics = grid->bigTics;
    update.labelDistance = grid->labelDistance;
    plugin.SetFilmViewSettings(film->index, update);
    film->length = movieEnd - movieStart;
}

void CFilmsMainCtrl::OnMenuAddActors() {
    plugin.AddSelectedActors();
}

void CFilmsMainCtrl::OnMenuRemoveActors() {
    IFilm* film = plugin.GetCurrentFilm();
    if (film == nullptr || plugin.view == nullptr) {
        return;
    }
    plugin.RemoveActors(film, plugin.view->GetSelectedObjects(), /*lightsOnly*/ false);
    ShowFilm(film, /*flag*/ true);
}

/// An actor's object goes back to its place; a light goes with its helper object, whose deletion the host
/// reports.
void CFilmsMainCtrl::OnMenuRemoveActor() {
    CFilmTrack* track = menuRow != nullptr ? menuRow->track : nullptr;
    const bool isLevel = track != nullptr && menuRow->IsRoot() && AsLevelTrack(track) != nullptr;
    if (track == nullptr || isLevel) { // a film's level track can't be removed
        return;
    }
    if (AsGLLightTrack(track) != nullptr || AsDynLightTrack(track) != nullptr) {
        plugin.DeleteLightOfTrack(track);
        return;
    }
    if (const auto* actor = AsObjectTrack(track); actor != nullptr && actor->actor != nullptr) {
        plugin.RestoreOneMatrix(actor->actor);
    }
    RemoveTrackCtrl(menuRow, /*redraw*/ true);
}

void CFilmsMainCtrl::OnMenuHideTrack() {
    if (menuRow != nullptr) {
        menuRow->SetVisibleFlag(false);
        RebuildVisibleRows(/*redraw*/ true, nullptr);
    }
}

void CFilmsMainCtrl::OnMenuPlay() {
    if (plugin.GetCurrentFilm() != nullptr) {
        plugin.Play(0.0f);
    }
}

void CFilmsMainCtrl::OnMenuStop() {
    if (plugin.GetCurrentFilm() != nullptr) {
        plugin.StopPlaying();
    }
}

void CFilmsMainCtrl::OnMenuValidate() {
    ValidateMovie(plugin, plugin.GetCurrentFilm());
}

void CFilmsMainCtrl::OnMenuChangeActor() {
    actorPick.End();
    if (menuRow == nullptr) {
        return;
    }
    if (AsObjectTrack(menuRow->track) == nullptr) {
        AfxMessageBox("Cannot perform action for track this type!");
        return;
    }
    actorPick.Begin("Change actor: click the object that takes the place of \"" +
                        RootRowName(menuRow->track) + "\". Esc gives up.",
                    PickMode::By::Click, [] {});
}

#include "timeline/TimelineCommands.h"

#include "files/ValidateMovie.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"
#include "timeline/CommandReasons.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/ScenarioCommands.h"
#include "timeline/ScenarioDlg.h"

#include <algorithm>
#include <iterator>

namespace {

template <void (CFilmsMainCtrl::*Run)()> void Menu(CFilmsMainCtrl& control) {
    (control.*Run)();
}

template <bool Gl> void AddLightOf(CFilmsMainCtrl& control) {
    control.OnMenuAddLight(Gl);
}

void AddActors(CFilmsMainCtrl& control) {
    control.plugin.AddSelectedActors();
}

void PlayFilm(CFilmsMainCtrl& control) {
    if (control.plugin.GetCurrentFilm() != nullptr) {
        control.plugin.Play(0.0f);
    }
}

void StopFilm(CFilmsMainCtrl& control) {
    if (control.plugin.GetCurrentFilm() != nullptr) {
        control.plugin.StopPlaying();
    }
}

void ValidateFilm(CFilmsMainCtrl& control) {
    ValidateMovie(control.plugin, control.plugin.GetCurrentFilm());
}

using C = CFilmsMainCtrl;

constexpr TimelineCommand kCommands[] = {
    // The film and its rows.
    {.id = IDC_SETTINGS, .inMenu = &Menu<&C::OnMenuSettings>},
    {.id = IDC_FILTER_ACTORS, .inMenu = &Menu<&C::OnMenuFilterActors>},
    {.id = IDC_FILTER_KEYS, .inMenu = &Menu<&C::OnMenuFilterKeys>},
    {.id = IDC_HIDE_TRACK, .inMenu = &HideRow},
    {.id = IDC_SET_MOVIE_FRAME, .inMenu = &Menu<&C::OnMenuSetMovieFrame>},
    {.id = IDC_ADJUST_TIME, .inMenu = &AskToAdjustTime, .needsFilm = true},
    {.id = IDC_PLAY_MOVIE, .inMenu = &PlayFilm, .onButton = &PlayFromCursor, .needsFilm = true},
    {.id = IDC_STOP_MOVIE,
     .inMenu = &StopFilm,
     .onButton = &StopPlaying,
     .needsFilm = true,
     .whyIdle = &WhyNothingStops},
    {.id = IDC_VALIDATE_MOVIE, .inMenu = &ValidateFilm, .onButton = &ValidateShownFilm, .needsFilm = true},
    // Actors, lights and cameras.
    {.id = IDC_ADD_ACTORS, .inMenu = &AddActors, .needsFilm = true, .whyIdle = &WhyNobodyComes},
    {.id = IDC_REMOVE_ACTORS,
     .inMenu = &Menu<&C::OnMenuRemoveActors>,
     .needsFilm = true,
     .whyIdle = &WhyNobodyGoes},
    {.id = IDC_REMOVE_ACTOR, .inMenu = &Menu<&C::OnMenuRemoveActor>},
    {.id = IDC_REMOVE_TRACK, .inMenu = &Menu<&C::OnMenuRemoveActor>},
    {.id = IDC_CHANGE_ACTOR, .inMenu = &Menu<&C::OnMenuChangeActor>},
    {.id = IDC_ATTACH_ROW_TO_OBJECT, .inMenu = &Menu<&C::OnMenuAttachToObject>},
    {.id = IDC_ADD_GL_LIGHT, .inMenu = &AddLightOf<true>, .needsFilm = true},
    {.id = IDC_ADD_DYN_LIGHT, .inMenu = &AddLightOf<false>, .needsFilm = true},
    {.id = IDC_ADD_CAMERA, .inMenu = &Menu<&C::OnMenuAddCamera>, .needsFilm = true},
    {.id = IDC_ADD_CAMERA_TRACK, .inMenu = &Menu<&C::OnMenuAddCameraTrack>},
    {.id = IDC_CAMERA_PARAMETERS, .inMenu = &Menu<&C::OnMenuCameraParameters>},
    {.id = IDC_TRACK_PARAMETERS,
     .inMenu = &Menu<&C::OnMenuTrackParameters>,
     .whyIdle = &WhyNoTrackParameters},
    // Keys.
    {.id = IDC_ADD_KEY, .inMenu = &Menu<&C::OnMenuAddKey>},
    {.id = IDC_PASTE_KEY, .inMenu = &Menu<&C::OnMenuPasteKey>},
    {.id = IDC_REMOVE_KEY, .inMenu = &RemoveKey},
    {.id = IDC_SET_POSITION, .inMenu = &Menu<&C::OnMenuSetPosition>},
    {.id = IDC_SET_DURATION, .inMenu = &Menu<&C::OnMenuSetDuration>},
    {.id = IDC_CALC_KEY_DURATION, .inMenu = &Menu<&C::OnMenuCalcKeyDuration>, .whyIdle = &WhyNoDuration},
    {.id = IDC_COPY_ATTRIBUTES, .inMenu = &Menu<&C::OnMenuCopyAttributes>},
    {.id = IDC_PASTE_ATTRIBUTES, .inMenu = &Menu<&C::OnMenuPasteAttributes>},
    {.id = IDC_EXPORT_TRACK, .inMenu = &Menu<&C::OnMenuExportTrack>},
    {.id = IDC_IMPORT_TRACK, .inMenu = &Menu<&C::OnMenuImportTrack>},
    // Buttons alone.
    {.id = IDC_UNDO, .onButton = &UndoEdit, .needsFilm = true, .whyIdle = &WhyNoUndo},
    {.id = IDC_REDO, .onButton = &UndoEdit, .needsFilm = true, .whyIdle = &WhyNoUndo},
    {.id = IDC_MOVE_TO_BEGIN, .onButton = &MoveToBegin, .needsFilm = true},
    {.id = IDC_MOVE_TO_END, .onButton = &MoveToEnd, .needsFilm = true},
    {.id = IDC_FRAME_BACK, .onButton = &StepFrameBack, .needsFilm = true},
    {.id = IDC_FRAME_FORWARD, .onButton = &StepFrameForward, .needsFilm = true},
    {.id = IDC_KEY_FRAME_BACK, .onButton = &JumpKeyBack, .needsFilm = true},
    {.id = IDC_KEY_FRAME_FORWARD, .onButton = &JumpKeyForward, .needsFilm = true},
    {.id = IDC_ANIMATE_OBJECT, .onButton = &ToggleAnimating, .passOn = true, .needsFilm = true},
    {.id = IDC_CREATE_CAMERA_FRAME,
     .onButton = &CreateCameraFrame,
     .passOn = true,
     .needsFilm = true,
     .whyIdle = &WhyNoCameraFrame},
    {.id = IDC_TO_VIRTUAL_OBJECT, .onButton = &ToVirtualObject, .passOn = true},
    {.id = IDC_DESELECT_KEYS,
     .onButton = &ClearMarksOfRow,
     .passOn = true,
     .needsFilm = true,
     .whyIdle = &WhyNoMarkToClear},
    {.id = IDC_SELECT_KEY,
     .onButton = &ToggleMark,
     .passOn = true,
     .needsFilm = true,
     .whyIdle = &WhyNoKeyToMark},
    {.id = IDC_ATTACH_MOVIE, .onButton = &ToggleAttachedView},
};

} // namespace

const TimelineCommand* FindTimelineCommand(UINT id) {
    const auto* found = std::ranges::find(kCommands, id, &TimelineCommand::id);
    return found != std::end(kCommands) ? found : nullptr;
}

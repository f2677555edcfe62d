#include "timeline/FilmsMainCtrl.h"

#include "framework/MessageBox.h"
#include "framework/Resource.h"
#include "plugin/PluginImpl.h"
#include "plugin/PluginResources.h"
#include "resources/resource.h"

#include <algorithm>
#include <iterator>

const CFilmsMainCtrl::CommandEntry CFilmsMainCtrl::kCommands[] = {
    {IDC_ADD_ACTORS, &CFilmsMainCtrl::OnMenuAddActors},
    {IDC_REMOVE_ACTORS, &CFilmsMainCtrl::OnMenuRemoveActors},
    {IDC_REMOVE_ACTOR, &CFilmsMainCtrl::OnMenuRemoveActor},
    {IDC_PLAY_MOVIE, &CFilmsMainCtrl::OnMenuPlay},
    {IDC_STOP_MOVIE, &CFilmsMainCtrl::OnMenuStop},
    {IDC_VALIDATE_MOVIE, &CFilmsMainCtrl::OnMenuValidate},
    {IDC_REMOVE_TRACK, &CFilmsMainCtrl::OnMenuRemoveActor},
    {IDC_CHANGE_ACTOR, &CFilmsMainCtrl::OnMenuChangeActor},
};

void CFilmsMainCtrl::RunCommand(UINT id) {
    const auto* entry =
        std::ranges::find_if(kCommands, [id](const CommandEntry& candidate) { return candidate.id == id; });
    if (entry != std::end(kCommands)) {
        const ResourceScope resources(PluginResources());
        (this->*entry->run)();
    }
}

void CFilmsMainCtrl::OnMenuAddActors() {
    GetPlugin().AddSelectedActors();
}

void CFilmsMainCtrl::OnMenuRemoveActors() {
    IPluginImpl& plugin = GetPlugin();
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
    if (track == nullptr) {
        return;
    }
    IPluginImpl& plugin = GetPlugin();
    if (AsGLLightTrack(track) != nullptr || AsDynLightTrack(track) != nullptr) {
        plugin.DeleteLightOfTrack(track);
        return;
    }
    if (const auto* actor = AsObjectTrack(track); actor != nullptr && actor->actor != nullptr) {
        plugin.RestoreOneMatrix(actor->actor);
    }
    RemoveTrackCtrl(menuRow, /*redraw*/ true);
}

void CFilmsMainCtrl::OnMenuPlay() {
    IPluginImpl& plugin = GetPlugin();
    if (plugin.GetCurrentFilm() != nullptr) {
        plugin.Play(0.0f);
    }
}

void CFilmsMainCtrl::OnMenuStop() {
    IPluginImpl& plugin = GetPlugin();
    if (plugin.GetCurrentFilm() != nullptr) {
        plugin.StopPlaying();
    }
}

void CFilmsMainCtrl::OnMenuValidate() {
    IPluginImpl& plugin = GetPlugin();
    plugin.ValidateFilm(plugin.GetCurrentFilm());
}

void CFilmsMainCtrl::OnMenuChangeActor() {
    changingActor = menuRow != nullptr && AsObjectTrack(menuRow->track) != nullptr;
    if (menuRow != nullptr && !changingActor) {
        AfxMessageBox("Cannot perform action for track this type!");
    }
}

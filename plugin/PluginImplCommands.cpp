#include "plugin/PluginImpl.h"

#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/rules/LocalCommands.h"
#include "resources/resource.h"

#include <cstring>

namespace {

constexpr int kPlayShortcut = 0;
constexpr int kEnterKey = 13;
constexpr int kCtrlModifier = 8;

} // namespace

void IPluginImpl::RegisterShortcuts() {
    if (editor != nullptr) {
        editor->AddShortcuts(
            {{kPluginKind, kPlayShortcut, "Start / stop playing movie", kEnterKey, kCtrlModifier}});
    }
}

void IPluginImpl::OnShortcut(Word, int number, Word) {
    const ResourceScope resources(PluginResources());
    if (number != kPlayShortcut || currentFilm == nullptr) {
        return;
    }
    if (isPlaying != 0) {
        StopPlaying();
    } else {
        Play(currentTime);
    }
}

void IPluginImpl::GetCommandText(Word pluginNumber, Word localCommand, char* text) {
    if (text == nullptr || pluginNumber != pluginId.PluginNumber()) {
        return;
    }
    const std::string found = TextOfCommand(localCommand);
    std::memcpy(text, found.c_str(), found.size() + 1);
}

void IPluginImpl::OnActivate(bool active) {
    if (active) {
        OnCommand(pluginId.PluginNumber(), LocalCommand::Movies);
    }
}

void IPluginImpl::OnCommand(Word pluginNumber, Word localCommand) {
    if (pluginNumber != pluginId.PluginNumber() || localCommand < LocalCommand::Movies ||
        localCommand > LocalCommand::Last) {
        return;
    }
    const ResourceScope resources(PluginResources());
    if (localCommand != LocalCommand::SetLinkObject) { // which is an edit of that window itself
        ApplyPendingEdits();
    }
    switch (localCommand) {
    case LocalCommand::Movies:
        ShowPanel(FindPanel() == nullptr);
        break;
    case LocalCommand::AnimateObject:
        SetAnimateObjects(currentFilm != nullptr && animateObjects == 0);
        break;
    case LocalCommand::CreateCameraFrame:
        if (editor != nullptr) {
            CreateCameraFrame(trackVisualizer.renderTrack, currentTime, editor->GetActiveView());
        }
        break;
    case LocalCommand::ToVirtualObject:
        ConvertToVirtualObjects(view != nullptr ? view->GetSelectedObjects() : nullptr);
        break;
    case LocalCommand::ToNormalObject:
        ConvertToNormalObjects(view != nullptr ? view->GetSelectedObjects() : nullptr);
        break;
    case LocalCommand::AttachMovie:
        if (editor != nullptr) {
            AttachView(editor->GetActiveView());
        }
        break;
    case LocalCommand::DetachMovie:
        if (editor != nullptr) {
            DetachView(editor->GetActiveView());
        }
        break;
    case LocalCommand::SetLinkObject:
        if (keyAttributesDlg) {
            keyAttributesDlg->SetLinkObject(contextObject);
        }
        break;
    case LocalCommand::AttachObject:
        AttachContextObject();
        break;
    default:
        break;
    }
}

void IPluginImpl::ShowPanel(bool show) {
    SetCommandCheck(LocalCommand::Movies, show);
    if (editor == nullptr) {
        return;
    }
    if (show) {
        editor->BroadcastEvent(EventCode::PanelTaken, pluginId, nullptr);
        editor->ShowPluginPanel(panelClass);
    } else {
        editor->HidePluginPanel();
    }
}

IFilmsPanel* IPluginImpl::FindPanel() const {
    return findPanel != nullptr ? findPanel() : nullptr;
}

void IPluginImpl::RefreshMoviesPanel() {
    if (IFilmsPanel* panel = FindPanel()) {
        panel->RefreshMovies();
    }
}

void IPluginImpl::SetAnimateObjects(bool animate) {
    animateObjects = animate ? 1 : 0;
    SetCommandCheck(LocalCommand::AnimateObject, animate);
    if (scenarioDlg != nullptr && scenarioDlg->IsEnabled()) {
        scenarioDlg->PressButton(IDC_ANIMATE_OBJECT, animate);
    }
}

void IPluginImpl::SetVisualizedTrack(CFilmTrack* track) {
    trackVisualizer.SetRenderTrack(track);
    cameraHelpers.UpdateObjects(track, currentTime);
    EnableCommandRange(LocalCommand::CreateCameraFrame, LocalCommand::CreateCameraFrame, track != nullptr);
}

IKeyAttributesDlg* IPluginImpl::GetKeyAttributesDlg() {
    if (!keyAttributesDlg && makeKeyAttributesDlg != nullptr) {
        const ResourceScope resources(PluginResources());
        keyAttributesDlg = makeKeyAttributesDlg(*this);
    }
    return keyAttributesDlg.get();
}

void IPluginImpl::OnRender() {
    trackVisualizer.Draw();
    cameraHelpers.Draw();
}

#include "plugin/PluginImpl.h"

#include "framework/Resource.h"
#include "plugin/LocalCommands.h"
#include "plugin/PluginResources.h"
#include "resources/resource.h"
#include "timeline/FilmsView.h"

#include <cstring>

namespace {

struct CommandResource {
    std::uint32_t resource;
    std::uint32_t local;
    bool hasText; ///< told by GetCommandText
};

constexpr CommandResource kCommandResources[] = {
    {IDC_MOVIES, LocalCommand::Movies, true},
    {IDC_ANIMATE_OBJECT, LocalCommand::AnimateObject, true},
    {IDC_CREATE_CAMERA_FRAME, LocalCommand::CreateCameraFrame, true},
    {IDC_TO_VIRTUAL_OBJECT, LocalCommand::ToVirtualObject, true},
    {IDC_TO_NORMAL_OBJECT, LocalCommand::ToNormalObject, true},
    {IDC_ATTACH_MOVIE, LocalCommand::AttachMovie, false},
    {IDC_DETACH_MOVIE, LocalCommand::DetachMovie, false},
    {IDC_SET_LINK_OBJECT, LocalCommand::SetLinkObject, false},
    {IDC_ATTACH_TO_OBJECT, LocalCommand::AttachObject, false},
};

constexpr int kPlayShortcut = 0;
constexpr int kEnterKey = 13;
constexpr int kCtrlModifier = 8;

} // namespace

IPluginImpl::Word IPluginImpl::CommandIdFromResource(Word resourceId, PluginCommandId plugin) {
    if (resourceId == 0) {
        return 0;
    }
    for (const CommandResource& entry : kCommandResources) {
        if (entry.resource == resourceId) {
            return plugin.WithLocal(entry.local).word;
        }
    }
    return plugin.WithLocal(0).word;
}

void IPluginImpl::LoadToolbarAndMenu() {
    const ResourceScope resources(PluginResources());
    editor->AddPluginToolbar(&toolbar, IDR_FILMS_TOOLBAR);
    for (int index = 0; index < toolbar.GetButtonCount(); ++index) {
        UINT id = 0;
        UINT style = 0;
        int image = 0;
        toolbar.GetButtonInfo(index, id, style, image);
        toolbar.SetButtonInfo(index, CommandIdFromResource(id), style, image);
    }
    toolbar.SetWindowText("Films");
    filmsMenu.LoadMenu(IDR_FILMS_MENU);
    CMenu* popup = filmsMenu.GetSubMenu(0);
    const int items = popup != nullptr ? static_cast<int>(popup->GetMenuItemCount()) : 0;
    for (int item = 0; item < items; ++item) {
        std::string text;
        popup->GetMenuString(static_cast<UINT>(item), text, MF_BYPOSITION);
        popup->ModifyMenu(static_cast<UINT>(item), MF_BYPOSITION | MF_STRING,
                          CommandIdFromResource(popup->GetMenuItemID(item)), text.c_str());
    }
}

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
    text[0] = '\0';
    for (const CommandResource& entry : kCommandResources) {
        if (entry.local == localCommand && entry.hasText) {
            const ResourceScope resources(PluginResources());
            const std::string found = LoadString(entry.resource);
            std::memcpy(text, found.c_str(), found.size() + 1);
        }
    }
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
        ShowPanel(CFilmsView::GetPanel() == nullptr);
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
        editor->ShowPluginPanel(RUNTIME_CLASS(CFilmsView));
    } else {
        editor->HidePluginPanel();
    }
}

void IPluginImpl::RefreshMoviesPanel() {
    if (CFilmsView* panel = CFilmsView::GetPanel()) {
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

void IPluginImpl::SetCommandCheck(Word localCommand, bool checked) {
    const Word command = pluginId.WithLocal(localCommand).word;
    toolbar.SendMessage(TB_PRESSBUTTON, command, checked ? 1 : 0);
    toolbar.SendMessage(TB_CHECKBUTTON, command, checked ? 1 : 0);
}

void IPluginImpl::EnableCommandRange(Word first, Word last, bool enabled) {
    for (Word local = first; local <= last; ++local) {
        const Word command = pluginId.WithLocal(local).word;
        toolbar.SendMessage(TB_ENABLEBUTTON, command, enabled ? 1 : 0);
        toolbar.SendMessage(TB_INDETERMINATE, command, enabled ? 0 : 1);
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

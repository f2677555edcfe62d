#include "plugin/PluginImpl.h"

#include "framework/Resource.h"
#include "plugin/PluginResources.h"
#include "resources/resource.h"
#include "timeline/FilmsView.h"

#include <cstring>

namespace {

/// Local numbers of the plug-in's commands.
namespace Command {
constexpr std::uint32_t Movies = 1;
constexpr std::uint32_t AnimateObject = 50;
constexpr std::uint32_t CreateCameraFrame = 51;
constexpr std::uint32_t ToVirtualObject = 52;
constexpr std::uint32_t ToNormalObject = 53;
constexpr std::uint32_t AttachMovie = 60;
constexpr std::uint32_t DetachMovie = 61;
constexpr std::uint32_t SetLinkObject = 62;
constexpr std::uint32_t AttachObject = 63;
constexpr std::uint32_t Last = 63;
} // namespace Command

struct CommandResource {
    std::uint32_t resource;
    std::uint32_t local;
    bool hasText; ///< told by GetCommandText
};

constexpr CommandResource kCommandResources[] = {
    {IDC_MOVIES, Command::Movies, true},
    {IDC_ANIMATE_OBJECT, Command::AnimateObject, true},
    {IDC_CREATE_CAMERA_FRAME, Command::CreateCameraFrame, true},
    {IDC_TO_VIRTUAL_OBJECT, Command::ToVirtualObject, true},
    {IDC_TO_NORMAL_OBJECT, Command::ToNormalObject, true},
    {IDC_ATTACH_MOVIE, Command::AttachMovie, false},
    {IDC_DETACH_MOVIE, Command::DetachMovie, false},
    {IDC_SET_LINK_OBJECT, Command::SetLinkObject, false},
    {IDC_ATTACH_TO_OBJECT, Command::AttachObject, false},
};

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
        editor->AddShortcuts({{kPluginKind, 0, "Start / stop playing movie", kEnterKey, kCtrlModifier}});
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
        OnCommand(pluginId.PluginNumber(), Command::Movies);
    }
}

void IPluginImpl::OnCommand(Word pluginNumber, Word localCommand) {
    if (pluginNumber != pluginId.PluginNumber() || localCommand < Command::Movies ||
        localCommand > Command::Last) {
        return;
    }
    const ResourceScope resources(PluginResources());
    if (localCommand != Command::SetLinkObject) { // which is an edit of that window itself
        ApplyPendingEdits();
    }
    switch (localCommand) {
    case Command::Movies:
        ShowPanel(CFilmsView::GetPanel() == nullptr);
        break;
    case Command::AnimateObject:
        SetAnimateObjects(currentFilm != nullptr && animateObjects == 0);
        break;
    case Command::CreateCameraFrame:
        if (editor != nullptr) {
            CreateCameraFrame(trackVisualizer.renderTrack, currentTime, editor->GetActiveView());
        }
        break;
    case Command::ToVirtualObject:
        ConvertToVirtualObjects(view != nullptr ? view->GetSelectedObjects() : nullptr);
        break;
    case Command::ToNormalObject:
        ConvertToNormalObjects(view != nullptr ? view->GetSelectedObjects() : nullptr);
        break;
    case Command::AttachMovie:
        if (editor != nullptr) {
            AttachView(editor->GetActiveView());
        }
        break;
    case Command::DetachMovie:
        if (editor != nullptr) {
            DetachView(editor->GetActiveView());
        }
        break;
    case Command::SetLinkObject:
        if (keyAttributesDlg) {
            keyAttributesDlg->SetLinkObject(contextObject);
        }
        break;
    case Command::AttachObject:
        AttachContextObject();
        break;
    default:
        break;
    }
}

void IPluginImpl::ShowPanel(bool show) {
    SetCommandCheck(Command::Movies, show);
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
    SetCommandCheck(Command::AnimateObject, animate);
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
    EnableCommandRange(Command::CreateCameraFrame, Command::CreateCameraFrame, track != nullptr);
}

IKeyAttributesDlg* IPluginImpl::GetKeyAttributesDlg() {
    if (!keyAttributesDlg && makeKeyAttributesDlg != nullptr) {
        const ResourceScope resources(PluginResources());
        keyAttributesDlg = makeKeyAttributesDlg();
    }
    return keyAttributesDlg.get();
}

void IPluginImpl::TellKeyWritten(const IFilmKey* record) const {
    if (keyAttributesDlg && record != nullptr && keyAttributesDlg->GetRecord() == record) {
        keyAttributesDlg->SetKey(nullptr, /*refresh*/ true);
    }
}

void IPluginImpl::ApplyPendingEdits() const {
    if (keyAttributesDlg) {
        keyAttributesDlg->ApplyPending();
    }
}

void IPluginImpl::OnRender() {
    trackVisualizer.Draw();
    cameraHelpers.Draw();
}

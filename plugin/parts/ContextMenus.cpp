#include "plugin/parts/ContextMenus.h"

#include "framework/Menu.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "plugin/parts/AttachedViews.h"
#include "plugin/parts/CommandTable.h"
#include "plugin/rules/ActorParents.h"
#include "plugin/rules/LocalCommands.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"

namespace {

/// Items of the popup of the films menu, by position.
namespace PopupItem {
constexpr int SetLinkObject = 0;
constexpr int AttachToObject = 1;
constexpr int FirstOfView = 2;
} // namespace PopupItem

} // namespace

void ContextMenus::Load() {
    const ResourceScope resources(PluginResources());
    filmsMenu.LoadMenu(IDR_FILMS_MENU);
    CMenu* popup = filmsMenu.GetSubMenu(0);
    const int items = popup != nullptr ? static_cast<int>(popup->GetMenuItemCount()) : 0;
    for (int item = 0; item < items; ++item) {
        std::string text;
        popup->GetMenuString(static_cast<UINT>(item), text, MF_BYPOSITION);
        popup->ModifyMenu(static_cast<UINT>(item), MF_BYPOSITION | MF_STRING,
                          CommandIdFromResource(popup->GetMenuItemID(item), session.pluginId), text.c_str());
    }
}

bool ContextMenus::OfferForView(CMenu* menu) const {
    const int active = session.editor != nullptr ? session.editor->GetActiveView() : -1;
    CMenu* popup = filmsMenu.GetSubMenu(0);
    if (active < 0 || menu == nullptr || popup == nullptr) {
        return false;
    }
    const ResourceScope resources(PluginResources());
    menu->AppendMenu(MF_SEPARATOR);
    const int items = static_cast<int>(popup->GetMenuItemCount());
    for (int item = PopupItem::FirstOfView; item < items; ++item) {
        std::string text;
        popup->GetMenuString(static_cast<UINT>(item), text, MF_BYPOSITION);
        menu->AppendMenu(MF_STRING, popup->GetMenuItemID(item), text.c_str());
    }
    if (!views.Has(active)) {
        menu->EnableMenuItem(session.pluginId.WithLocal(LocalCommand::DetachMovie).word,
                             MF_BYCOMMAND | MF_GRAYED);
    }
    return true;
}

bool ContextMenus::OfferForObject(CMenu* menu, EditorObject* object) {
    contextObject = object;
    if (menu == nullptr) {
        return false;
    }
    const ResourceScope resources(PluginResources());
    const bool linkOffered = OfferLinkObject(menu, object);
    const bool attachOffered = OfferAttachObject(menu, object);
    return linkOffered || attachOffered;
}

bool ContextMenus::OfferLinkObject(CMenu* menu, const EditorObject* object) const {
    std::string text;
    return session.keyAttributesDlg && session.keyAttributesDlg->GetLinkObjectText(object, text) &&
           InsertItem(menu, PopupItem::SetLinkObject, text);
}

bool ContextMenus::OfferAttachObject(CMenu* menu, EditorObject* object) const {
    IMainCtrl* control = session.GetMainCtrl();
    const IAttachDialog* dialog = control != nullptr ? control->GetAttachDialog() : nullptr;
    if (dialog == nullptr || !dialog->IsVisible() || object == nullptr ||
        !object->IsA(ClassId::EditorObject)) {
        return false;
    }
    const auto* track = AsObjectTrack(dialog->GetTrack());
    const std::string& className = object->GetInfo()->className;
    if (session.ObjectDerivesFrom(object, ClassName::Helper) && className != ClassName::VirtualObject) {
        return false;
    }
    if (track == nullptr || className == ClassName::Gizmo ||
        !CanAttachWithoutCycle(session.currentFilm, object, track->actor)) {
        return false;
    }
    return InsertItem(menu, PopupItem::AttachToObject,
                      "Attach to " + object->name + "(" + std::to_string(object->id) + ")");
}

bool ContextMenus::InsertItem(CMenu* menu, int popupItem, const std::string& text) const {
    CMenu* popup = filmsMenu.GetSubMenu(0);
    return popup != nullptr &&
           menu->InsertMenu(0, MF_BYPOSITION | MF_STRING, popup->GetMenuItemID(popupItem), text.c_str()) != 0;
}

void ContextMenus::AttachContextObject() const {
    if (contextObject == nullptr || !contextObject->IsA(ClassId::EditorObject)) {
        return;
    }
    IMainCtrl* control = session.GetMainCtrl();
    IAttachDialog* dialog = control != nullptr ? control->GetAttachDialog() : nullptr;
    if (dialog != nullptr && dialog->IsVisible() && dialog->GetTrack() != nullptr) {
        dialog->SetObject(contextObject);
    }
}

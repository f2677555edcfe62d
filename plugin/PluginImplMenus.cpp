#include "plugin/PluginImpl.h"

#include "framework/Resource.h"
#include "plugin/LocalCommands.h"
#include "plugin/PluginResources.h"

namespace {

/// Items of the popup of the films menu, by position.
namespace PopupItem {
constexpr int SetLinkObject = 0;
constexpr int AttachToObject = 1;
constexpr int FirstOfView = 2;
} // namespace PopupItem

/// More parents than any film has; ends the walk in a film whose attachments form a ring.
constexpr int kMaxParents = 10000;

} // namespace

bool IPluginImpl::OnViewMenu(CMenu* menu) {
    const int active = editor != nullptr ? editor->GetActiveView() : -1;
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
        menu->EnableMenuItem(pluginId.WithLocal(LocalCommand::DetachMovie).word, MF_BYCOMMAND | MF_GRAYED);
    }
    return true;
}

bool IPluginImpl::OnObjectMenu(CMenu* menu, Word, Word, EditorObject* object) {
    contextObject = object;
    if (menu == nullptr) {
        return false;
    }
    const ResourceScope resources(PluginResources());
    const bool linkOffered = OfferLinkObject(menu, object);
    const bool attachOffered = OfferAttachObject(menu, object);
    return linkOffered || attachOffered;
}

bool IPluginImpl::OfferLinkObject(CMenu* menu, EditorObject* object) {
    std::string text;
    return keyAttributesDlg && keyAttributesDlg->GetLinkObjectText(object, text) &&
           InsertObjectMenuItem(menu, PopupItem::SetLinkObject, text);
}

bool IPluginImpl::OfferAttachObject(CMenu* menu, EditorObject* object) {
    IMainCtrl* control = GetMainCtrl();
    const IAttachDialog* dialog = control != nullptr ? control->GetAttachDialog() : nullptr;
    if (dialog == nullptr || !dialog->IsVisible() || object == nullptr ||
        !object->IsA(ClassId::EditorObject)) {
        return false;
    }
    const auto* track = AsObjectTrack(dialog->GetTrack());
    const std::string& className = object->GetInfo()->className;
    if (ObjectDerivesFrom(object, ClassName::Helper) && className != ClassName::VirtualObject) {
        return false;
    }
    if (track == nullptr || className == ClassName::Gizmo ||
        !CanAttachWithoutCycle(currentFilm, object, track->actor)) {
        return false;
    }
    return InsertObjectMenuItem(menu, PopupItem::AttachToObject,
                                "Attach to " + object->name + "(" + std::to_string(object->id) + ")");
}

bool IPluginImpl::InsertObjectMenuItem(CMenu* menu, int popupItem, const std::string& text) {
    CMenu* popup = filmsMenu.GetSubMenu(0);
    return popup != nullptr &&
           menu->InsertMenu(0, MF_BYPOSITION | MF_STRING, popup->GetMenuItemID(popupItem), text.c_str()) != 0;
}

bool IPluginImpl::CanAttachWithoutCycle(IFilm* film, EditorObject* object, EditorObject* actor) const {
    if (film == nullptr || object == nullptr || actor == nullptr) {
        return false;
    }
    if (!object->IsA(ClassId::EditorObject)) {
        return true;
    }
    if (object == actor) {
        return false;
    }
    for (int step = 0; step < kMaxParents; ++step) {
        const auto* track = AsObjectTrack(film->FindObjectTrack(object));
        if (track == nullptr) {
            return true;
        }
        object = track->parentObject;
        if (object == actor) {
            return false;
        }
        if (object == nullptr || !object->IsA(ClassId::EditorObject)) {
            return true;
        }
    }
    return false;
}

void IPluginImpl::AttachContextObject() {
    if (contextObject == nullptr || !contextObject->IsA(ClassId::EditorObject)) {
        return;
    }
    IMainCtrl* control = GetMainCtrl();
    IAttachDialog* dialog = control != nullptr ? control->GetAttachDialog() : nullptr;
    if (dialog != nullptr && dialog->IsVisible() && dialog->GetTrack() != nullptr) {
        dialog->SetObject(contextObject);
    }
}

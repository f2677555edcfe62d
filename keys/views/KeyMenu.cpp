// The context menu of a key.
#include "framework/Constants.h"
#include "framework/Menu.h"
#include "framework/Resource.h"
#include "keys/rules/KeyKinds.h"
#include "keys/views/KeyViewContext.h"
#include "keys/views/TrackKey.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UINT kDisabledAndGreyed = MF_DISABLED | MF_GRAYED;

const CMenu* FirstPopup(const CMenu& source) {
    const auto& items = source.Items();
    const auto found =
        std::ranges::find_if(items, [](const MenuItem& item) { return item.popup != nullptr; });
    return found != items.end() ? source.GetSubMenu(static_cast<int>(found - items.begin())) : nullptr;
}

/// The methods of a record of a Bezier kind, in and out.
std::pair<int, int> MethodsOf(const IFilmKey& record) {
    if (record.kind == KeyKind::Roll || record.kind == KeyKind::FieldOfView) {
        const auto& key = static_cast<const CFilmScalarKey&>(record);
        return {key.inMethod, key.outMethod};
    }
    const auto& key = static_cast<const CFilmVectorKey&>(record);
    return {key.inMethod, key.outMethod};
}

void CheckMethod(CMenu& menu, int method, bool in) {
    const int command = GetIDByMethod(method, in);
    if (command != -1) {
        menu.CheckMenuItem(static_cast<UINT>(command), MF_CHECKED);
    }
}

/// Whether the attributes of a key of this kind wait to be pasted.
bool IsCopied(const KeyViewContext* context, int kind) {
    const CTrackKey* source = context != nullptr ? context->GetCopiedKey() : nullptr;
    return source != nullptr && source->record != nullptr && source->record->kind == kind;
}

void AppendMethods(CMenu& menu, const IFilmKey& record) {
    const ResourceScope scope(PluginResources());
    menu.AppendMenu(MF_SEPARATOR);
    CMenu methods;
    methods.LoadMenu(IDR_BEZIER_MENU);
    CTrackKey::CopyMenuItems(&menu, &methods);
    const auto [in, out] = MethodsOf(record);
    CheckMethod(menu, in, /*in*/ true);
    CheckMethod(menu, out, /*in*/ false);
}

} // namespace

void CTrackKey::FillKeyMenu(CMenu* menu, CMenu* source) {
    if (menu == nullptr || source == nullptr || record == nullptr) {
        return;
    }
    CopyMenuItems(menu, source);
    if (!IsCopied(context, record->kind)) {
        menu->EnableMenuItem(IDC_PASTE_ATTRIBUTES, kDisabledAndGreyed);
    }
    if ((record->flags & KeyFlag::NoDuration) != 0) {
        menu->EnableMenuItem(IDC_SET_DURATION, kDisabledAndGreyed);
        menu->EnableMenuItem(IDC_CALC_KEY_DURATION, kDisabledAndGreyed);
    } else if (GetNaturalDuration() < 0.0f) {
        menu->EnableMenuItem(IDC_CALC_KEY_DURATION, kDisabledAndGreyed);
    }
    if (IsBezierKind(record->kind)) {
        AppendMethods(*menu, *record);
    }
}

void CTrackKey::CopyMenuItems(CMenu* menu, CMenu* source) {
    const CMenu* popup = menu != nullptr && source != nullptr ? FirstPopup(*source) : nullptr;
    if (popup == nullptr) {
        return;
    }
    for (const MenuItem& item : popup->Items()) {
        if (item.popup != nullptr) {
            menu->AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(item.popup.get()), item.text.c_str());
        } else if (item.id == 0) {
            menu->AppendMenu(MF_SEPARATOR);
        } else {
            menu->AppendMenu(MF_STRING, item.id, item.text.c_str());
        }
    }
}

#include "framework/Menu.h"

#include "framework/private/MenuData.h"
#include "framework/private/MenuReader.h"
#include "framework/Resource.h"

#include <utility>

IMPLEMENT_DYNCREATE(CMenu, CObject)

namespace {

constexpr UINT kNoItem = 0xFFFFFFFF;
constexpr UINT kStateFlags = MF_GRAYED | MF_DISABLED | MF_CHECKED | MF_SEPARATOR | MF_POPUP;

// The menu and place of an item; the menu is null when there is none.
struct Place {
    MenuData* menu = nullptr;
    std::size_t index = 0;

    MenuItem& Item() const { return menu->items[index]; }
};

Place FindCommand(MenuData& menu, UINT id) {
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        MenuItem& item = menu.items[i];
        if (item.popup) {
            if (const Place inside = FindCommand(*item.popup, id); inside.menu) {
                return inside;
            }
        } else if (item.id == id && !(item.flags & MF_SEPARATOR)) {
            return {&menu, i};
        }
    }
    return {};
}

Place Find(MenuData* menu, UINT item, UINT flags) {
    if (!menu) {
        return {};
    }
    if (flags & MF_BYPOSITION) {
        return item < menu->items.size() ? Place{menu, item} : Place{};
    }
    return FindCommand(*menu, item);
}

// Nothing for a sub-menu that is missing or would close a circle.
bool MakeItem(const MenuData& into, UINT flags, UINT_PTR idOrMenu, const char* text, MenuItem& item) {
    item.flags = flags & kStateFlags;
    item.text = text ? text : "";
    if (flags & MF_POPUP) {
        auto* popup = reinterpret_cast<MenuData*>(idOrMenu);
        if (!popup || popup == &into || popup->Holds(&into)) {
            return false;
        }
        item.popup = popup->shared_from_this();
    } else {
        item.id = static_cast<UINT>(idOrMenu);
    }
    return true;
}

} // namespace

bool MenuData::Holds(const MenuData* other) const {
    for (const MenuItem& item : items) {
        if (item.popup && (item.popup.get() == other || item.popup->Holds(other))) {
            return true;
        }
    }
    return false;
}

CMenu::CMenu() = default;
CMenu::~CMenu() = default;

BOOL CMenu::LoadMenu(UINT id) {
    const auto bytes = FindResource(AfxGetResourceHandle(), RT_MENU, id);
    data = bytes.empty() ? nullptr : ReadMenu(bytes);
    return data != nullptr;
}

BOOL CMenu::CreateMenu() {
    data = std::make_shared<MenuData>();
    return TRUE;
}

BOOL CMenu::CreatePopupMenu() {
    return CreateMenu();
}

BOOL CMenu::DestroyMenu() {
    return std::exchange(data, nullptr) != nullptr;
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR idOrMenu, const char* text) {
    return InsertMenu(kNoItem, flags | MF_BYPOSITION, idOrMenu, text);
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT_PTR idOrMenu, const char* text) {
    if (!data) {
        return FALSE;
    }
    // A place behind the last item means the end.
    Place place = Find(data.get(), position, flags);
    if (!place.menu) {
        place = {data.get(), data->items.size()};
    }
    MenuItem item;
    if (!MakeItem(*place.menu, flags, idOrMenu, text, item)) {
        return FALSE;
    }
    place.menu->items.insert(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index),
                             std::move(item));
    return TRUE;
}

BOOL CMenu::ModifyMenu(UINT position, UINT flags, UINT_PTR idOrMenu, const char* text) {
    const Place place = Find(data.get(), position, flags);
    MenuItem item;
    if (!place.menu || !MakeItem(*place.menu, flags, idOrMenu, text, item)) {
        return FALSE;
    }
    place.Item() = std::move(item);
    return TRUE;
}

BOOL CMenu::DeleteMenu(UINT position, UINT flags) {
    const Place place = Find(data.get(), position, flags);
    if (!place.menu) {
        return FALSE;
    }
    place.menu->wrappers.erase(place.Item().popup.get());
    place.menu->items.erase(place.menu->items.begin() + static_cast<std::ptrdiff_t>(place.index));
    return TRUE;
}

UINT CMenu::CheckMenuItem(UINT item, UINT flags) {
    const Place place = Find(data.get(), item, flags);
    if (!place.menu) {
        return kNoItem;
    }
    UINT& state = place.Item().flags;
    return std::exchange(state, (state & ~MF_CHECKED) | (flags & MF_CHECKED)) & MF_CHECKED;
}

UINT CMenu::EnableMenuItem(UINT item, UINT flags) {
    constexpr UINT kMask = MF_GRAYED | MF_DISABLED;
    const Place place = Find(data.get(), item, flags);
    if (!place.menu) {
        return kNoItem;
    }
    UINT& state = place.Item().flags;
    return std::exchange(state, (state & ~kMask) | (flags & kMask)) & kMask;
}

UINT CMenu::GetMenuItemCount() const {
    return static_cast<UINT>(Items().size());
}

UINT CMenu::GetMenuItemID(int position) const {
    const Place place = Find(data.get(), static_cast<UINT>(position), MF_BYPOSITION);
    if (!place.menu || place.Item().popup) {
        return kNoItem;
    }
    return place.Item().flags & MF_SEPARATOR ? 0 : place.Item().id;
}

UINT CMenu::GetMenuState(UINT item, UINT flags) const {
    const Place place = Find(data.get(), item, flags);
    return place.menu ? place.Item().flags : kNoItem;
}

int CMenu::GetMenuString(UINT item, std::string& text, UINT flags) const {
    const Place place = Find(data.get(), item, flags);
    text = place.menu ? place.Item().text : std::string();
    return static_cast<int>(text.size());
}

CMenu* CMenu::GetSubMenu(int position) const {
    const Place place = Find(data.get(), static_cast<UINT>(position), MF_BYPOSITION);
    if (!place.menu || !place.Item().popup) {
        return nullptr;
    }
    std::unique_ptr<CMenu>& wrapper = data->wrappers[place.Item().popup.get()];
    if (!wrapper) {
        wrapper = std::make_unique<CMenu>();
        wrapper->data = place.Item().popup;
    }
    return wrapper.get();
}

const std::vector<MenuItem>& CMenu::Items() const {
    static const std::vector<MenuItem> none;
    return data ? data->items : none;
}

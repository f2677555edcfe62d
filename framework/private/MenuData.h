#pragma once

#include "framework/Menu.h"

#include <map>

struct MenuData : std::enable_shared_from_this<MenuData> {
    std::vector<MenuItem> items;
    // Wrappers handed out by GetSubMenu.
    std::map<const MenuData*, std::unique_ptr<CMenu>> wrappers;

    bool Holds(const MenuData* other) const;
};

#pragma once

#include "framework/Constants.h"
#include "framework/Export.h"
#include "framework/Object.h"

#include <memory>
#include <string>
#include <vector>

class CMenu;
class CWnd;
struct MenuData;

using HMENU = MenuData*;

/// One line of a menu. A line with a sub-menu keeps that alive, whoever made it.
struct FILMS_API MenuItem {
    UINT flags = 0; // MF_GRAYED, MF_DISABLED, MF_CHECKED, MF_SEPARATOR, MF_POPUP
    UINT id = 0;
    std::string text;
    std::shared_ptr<MenuData> popup;
};

/// A menu as data; it only becomes a window while it is tracked. Items are named by their command, also
/// inside sub-menus, or with MF_BYPOSITION by their place. A CMenu made by GetSubMenu lives as long as its
/// parent's data.
class FILMS_API CMenu : public CObject {
    DECLARE_DYNCREATE(CMenu)
public:
    CMenu();
    ~CMenu() override;

    /// A menu of the current resource module. FALSE when there is none or it is damaged.
    BOOL LoadMenu(UINT id);
    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL DestroyMenu();
    HMENU GetSafeHmenu() const { return data.get(); }

    /// With MF_POPUP the number is the HMENU of the sub-menu. FALSE for a menu that would hold itself.
    BOOL AppendMenu(UINT flags, UINT_PTR idOrMenu = 0, const char* text = nullptr);
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR idOrMenu = 0, const char* text = nullptr);
    BOOL ModifyMenu(UINT position, UINT flags, UINT_PTR idOrMenu = 0, const char* text = nullptr);
    BOOL DeleteMenu(UINT position, UINT flags);

    /// The state before, 0xFFFFFFFF without such an item.
    UINT CheckMenuItem(UINT item, UINT flags);
    UINT EnableMenuItem(UINT item, UINT flags);

    UINT GetMenuItemCount() const;
    /// 0 for a separator, 0xFFFFFFFF for a sub-menu or a place outside.
    UINT GetMenuItemID(int position) const;
    UINT GetMenuState(UINT item, UINT flags) const;
    /// The length of the text, 0 without such an item.
    int GetMenuString(UINT item, std::string& text, UINT flags) const;
    CMenu* GetSubMenu(int position) const;

    /// Shows the menu at a screen point and waits for the choice, which is posted to the owner as WM_COMMAND,
    /// or returned with TPM_RETURNCMD (0 for none).
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, const void* rect = nullptr);

    const std::vector<MenuItem>& Items() const;

private:
    friend struct MenuData;

    std::shared_ptr<MenuData> data;
};

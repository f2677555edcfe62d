#pragma once

#include <string>

class AttachedViews;
class CMenu;
class EditorObject;
class FilmSession;

/// What the plug-in adds to the host's menus of a 3D view and of an object.
class ContextMenus {
public:
    /// The menu and the object are the plug-in object's `filmsMenu` and `contextObject`.
    ContextMenus(const FilmSession& openSession, CMenu& menu, EditorObject*& object,
                 const AttachedViews& attachedViews)
        : session(openSession), filmsMenu(menu), contextObject(object), views(attachedViews) {}
    ContextMenus(const ContextMenus&) = delete;
    ContextMenus& operator=(const ContextMenus&) = delete;

    /// Loads the popup whose items the host's menus get.
    void Load();
    /// The two return whether the menu has got an item. `menu` may be null.
    bool OfferForView(CMenu* menu) const;
    bool OfferForObject(CMenu* menu, EditorObject* object);
    /// The object of the last menu, to the open dialog "Attach movie object".
    void AttachContextObject() const;

private:
    bool InsertItem(CMenu* menu, int popupItem, const std::string& text) const;
    bool OfferLinkObject(CMenu* menu, const EditorObject* object) const;
    bool OfferAttachObject(CMenu* menu, EditorObject* object) const;

    const FilmSession& session;
    CMenu& filmsMenu;
    EditorObject*& contextObject;
    const AttachedViews& views;
};

#include "framework/Menu.h"

#include "framework/QtBridge.h"
#include "framework/TestHooks.h"
#include "framework/Wnd.h"

#include <gtest/gtest.h>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

namespace {

TEST(MenuTest, AppendInsertAndDeleteKeepOrder) {
    CMenu menu;
    EXPECT_FALSE(menu.AppendMenu(MF_STRING, 1, "early"));
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 10, "ten");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING, 30, "thirty");
    menu.InsertMenu(0, MF_BYPOSITION, 5, "five");
    menu.InsertMenu(30, MF_BYCOMMAND, 29, "before thirty");
    menu.InsertMenu(99, MF_BYPOSITION, 99, "last");
    std::vector<UINT> ids;
    for (UINT i = 0; i < menu.GetMenuItemCount(); ++i) {
        ids.push_back(menu.GetMenuItemID(static_cast<int>(i)));
    }
    EXPECT_EQ(ids, (std::vector<UINT>{5, 10, 0, 29, 30, 99}));
    EXPECT_TRUE(menu.DeleteMenu(10, MF_BYCOMMAND));
    EXPECT_FALSE(menu.DeleteMenu(10, MF_BYCOMMAND));
    EXPECT_TRUE(menu.DeleteMenu(0, MF_BYPOSITION));
    EXPECT_EQ(menu.GetMenuItemID(0), 0U);
    EXPECT_EQ(menu.GetMenuItemID(-1), 0xFFFFFFFFU);
}

TEST(MenuTest, StatesAreFoundByCommandInsideSubMenus) {
    CMenu sub;
    sub.CreatePopupMenu();
    sub.AppendMenu(MF_STRING, 36854, "Smooth");
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(sub.GetSafeHmenu()), "In method");
    EXPECT_EQ(menu.CheckMenuItem(36854, MF_CHECKED), MF_UNCHECKED);
    EXPECT_EQ(menu.CheckMenuItem(36854, MF_CHECKED), MF_CHECKED);
    EXPECT_EQ(sub.GetMenuState(0, MF_BYPOSITION), MF_CHECKED);
    EXPECT_EQ(menu.EnableMenuItem(36854, MF_DISABLED | MF_GRAYED), MF_ENABLED);
    EXPECT_EQ(menu.EnableMenuItem(36854, MF_ENABLED), MF_DISABLED | MF_GRAYED);
    EXPECT_EQ(menu.EnableMenuItem(1, MF_GRAYED), 0xFFFFFFFFU);
}

TEST(MenuTest, SubMenuLivesOnWhenTheMenuItCameFromIsFreed) {
    CMenu target;
    target.CreatePopupMenu();
    {
        CMenu source;
        source.CreateMenu();
        CMenu sub;
        sub.CreatePopupMenu();
        sub.AppendMenu(MF_STRING, 7, "kept");
        source.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(sub.GetSafeHmenu()), "sub");
        target.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(source.GetSubMenu(0)->GetSafeHmenu()),
                          "copied");
    }
    std::string text;
    EXPECT_EQ(target.GetMenuString(7, text, MF_BYCOMMAND), 4);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(target.GetSubMenu(0)->GetMenuItemCount(), 1U);
}

TEST(MenuTest, MenuCannotHoldItself) {
    CMenu outer;
    CMenu inner;
    outer.CreateMenu();
    inner.CreateMenu();
    EXPECT_TRUE(outer.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.GetSafeHmenu()), "in"));
    EXPECT_FALSE(inner.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(outer.GetSafeHmenu()), "out"));
    EXPECT_FALSE(inner.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.GetSafeHmenu()), "self"));
}

TEST(MenuTest, ModifyReplacesTextAndCommand) {
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 36874, "Attach to %s");
    EXPECT_TRUE(menu.ModifyMenu(0, MF_BYPOSITION, 5000, "Attach to lamp(3)"));
    EXPECT_EQ(menu.GetMenuItemID(0), 5000U);
    EXPECT_FALSE(menu.ModifyMenu(36874, MF_BYCOMMAND, 1, ""));
}

TEST(MenuTest, HostShowsAMenuThatOthersFilled) {
    CMenu sub;
    sub.CreatePopupMenu();
    sub.AppendMenu(MF_STRING | MF_CHECKED, 2, "two");
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 1, "one");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(sub.GetSafeHmenu()), "more");
    menu.AppendMenu(MF_STRING | MF_GRAYED, 3, "three");
    std::vector<UINT> chosen;
    QWidget parent;
    QMenu* built = BuildQMenu(menu, &parent, [&chosen](UINT id) { chosen.push_back(id); });
    ASSERT_EQ(built->actions().size(), 4);
    EXPECT_TRUE(built->actions()[1]->isSeparator());
    QAction* deep = built->actions()[2]->menu()->actions()[0];
    EXPECT_TRUE(deep->isChecked());
    EXPECT_FALSE(built->actions()[3]->isEnabled());
    built->actions()[0]->trigger();
    deep->trigger();
    EXPECT_EQ(chosen, (std::vector<UINT>{1, 2}));
}

class Owner : public CWnd {
public:
    std::vector<UINT> commands;

protected:
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override {
        if (code == 0 && !info) {
            commands.push_back(id);
            return TRUE;
        }
        return CWnd::OnCmdMsg(id, code, extra, info);
    }
};

TEST(MenuTest, TrackedChoiceArrivesAfterTheCallReturned) {
    const HookScope scope;
    CPoint place;
    Hooks().popupMenu = [&place](const CMenu& menu, CPoint p) {
        place = p;
        return menu.GetMenuItemID(0);
    };
    Owner owner;
    owner.Create(nullptr, "", WS_POPUP | WS_CAPTION, {0, 0, 100, 100}, nullptr, 0);
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 36797, "Settings");
    menu.TrackPopupMenu(TPM_RIGHTBUTTON, 30, 40, &owner);
    EXPECT_EQ(place, CPoint(30, 40));
    EXPECT_TRUE(owner.commands.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(owner.commands, std::vector<UINT>{36797});
    EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, &owner), 36797);
    owner.DestroyWindow();
}

TEST(MenuTest, RealPopupReturnsTheItemThatIsTriggered) {
    Owner owner;
    owner.Create(nullptr, "", WS_POPUP | WS_CAPTION | WS_VISIBLE, {0, 0, 100, 100}, nullptr, 0);
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 1, "one");
    menu.AppendMenu(MF_STRING, 2, "two");
    QTimer::singleShot(0, [] {
        auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(popup, nullptr);
        popup->actions()[1]->trigger();
        popup->close();
    });
    EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD, 10, 10, &owner), 2);
    owner.DestroyWindow();
}

TEST(MenuTest, OwnerDestroyedWhileItsMenuIsOpen) {
    auto owner = std::make_unique<Owner>();
    owner->Create(nullptr, "", WS_POPUP | WS_CAPTION | WS_VISIBLE, {0, 0, 100, 100}, nullptr, 0);
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 1, "one");
    QTimer::singleShot(0, [&owner] {
        owner.reset();
        QApplication::activePopupWidget()->close();
    });
    EXPECT_TRUE(menu.TrackPopupMenu(0, 10, 10, owner.get()));
}

} // namespace

// What the menus of the timeline offer, as their resources say it.
#include "framework/Menu.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

namespace {

/// "36797 Settings" for each item of a popup; sub-menus by their names.
std::vector<std::string> ItemsOf(const CMenu& popup) {
    std::vector<std::string> items;
    for (const MenuItem& item : popup.Items()) {
        if (item.popup == nullptr && item.id != 0) {
            items.push_back(std::to_string(item.id) + " " + item.text);
        }
    }
    return items;
}

/// The items of the one popup of a menu resource.
class TimelineMenu {
public:
    explicit TimelineMenu(UINT id) { menu.LoadMenu(id); }

    std::string Name() const { return menu.Items().empty() ? std::string() : menu.Items().front().text; }
    const CMenu& Popup() const { return *menu.GetSubMenu(0); }

private:
    const ResourceScope resources{PluginResources()};
    CMenu menu;
};

} // namespace

TEST(MenuResourcesTest, MenuOfTheBackground) {
    const TimelineMenu menu(IDR_MAIN_MENU);
    EXPECT_EQ(menu.Name(), "MainCtrl");
    EXPECT_THAT(ItemsOf(menu.Popup()),
                UnorderedElementsAre("36797 Settings", "36799 Filter actors", "36801 Add actors",
                                     "36802 Remove actors", "36818 Set movie frame", "36820 Play movie",
                                     "36821 Stop movie", "36822 Validate movie", "36830 Add GL light",
                                     "36831 Add dyn light", "36842 Add camera", "36877 Adjust time"));
}

TEST(MenuResourcesTest, MenuOfARow) {
    const TimelineMenu menu(IDR_ROW_MENU);
    EXPECT_EQ(menu.Name(), "TrackCtrl");
    EXPECT_THAT(ItemsOf(menu.Popup()),
                UnorderedElementsAre("36803 Remove actor", "36819 Hide track", "36826 Filter keys",
                                     "36827 Add Key", "36828 Add camera track", "36829 Remove track",
                                     "36843 Camera parameters", "36844 Track parameters", "36869 Paste key",
                                     "36870 Change actor", "36871 Export", "36872 Import",
                                     "36873 Attach to object", "36877 Adjust time"));
}

TEST(MenuResourcesTest, MenuOfAKey) {
    const TimelineMenu menu(IDR_KEY_MENU);
    EXPECT_EQ(menu.Name(), "TrackKey");
    EXPECT_THAT(ItemsOf(menu.Popup()),
                UnorderedElementsAre("36814 Remove key", "36816 Set position", "36817 Set duration",
                                     "36832 Calc key duration", "36836 Copy attributes",
                                     "36837 Paste attributes"));
}

// In the order of the methods' numbers, though the last command lies outside the run.
TEST(MenuResourcesTest, MethodsOfACurve) {
    const TimelineMenu menu(IDR_BEZIER_MENU);
    EXPECT_EQ(menu.Name(), "BezierKey");
    std::vector<std::string> names;
    for (const MenuItem& item : menu.Popup().Items()) {
        names.push_back(item.text);
    }
    ASSERT_THAT(names, ElementsAre("In method", "Out method"));
    EXPECT_THAT(ItemsOf(*menu.Popup().GetSubMenu(0)),
                ElementsAre("36854 Smooth", "36855 Linear", "36856 Slowdown", "36857 Speedup", "36858 User",
                            "36867 Inverse"));
    EXPECT_THAT(ItemsOf(*menu.Popup().GetSubMenu(1)),
                ElementsAre("36859 Smooth", "36860 Linear", "36861 Slowdown", "36862 Speedup", "36863 User",
                            "36868 Inverse"));
}

#include "timeline/TimelineCommands.h"

#include "framework/Menu.h"
#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

void CollectIds(const CMenu& menu, std::vector<UINT>& ids) {
    int line = 0;
    for (const MenuItem& item : menu.Items()) {
        if (const CMenu* popup = menu.GetSubMenu(line++)) {
            CollectIds(*popup, ids);
        } else if (item.id != 0) {
            ids.push_back(item.id);
        }
    }
}

std::vector<UINT> IdsOf(UINT resource) {
    const ResourceScope resources(PluginResources());
    CMenu menu;
    menu.LoadMenu(resource);
    std::vector<UINT> ids;
    CollectIds(menu, ids);
    return ids;
}

/// In the order of the toolbar.
constexpr UINT kButtons[] = {IDC_UNDO,
                             IDC_REDO,
                             IDC_MOVE_TO_BEGIN,
                             IDC_FRAME_BACK,
                             IDC_KEY_FRAME_BACK,
                             IDC_KEY_FRAME_FORWARD,
                             IDC_FRAME_FORWARD,
                             IDC_MOVE_TO_END,
                             IDC_PLAY_MOVIE,
                             IDC_STOP_MOVIE,
                             IDC_VALIDATE_MOVIE,
                             IDC_ANIMATE_OBJECT,
                             IDC_CREATE_CAMERA_FRAME,
                             IDC_TO_VIRTUAL_OBJECT,
                             IDC_DESELECT_KEYS,
                             IDC_SELECT_KEY,
                             IDC_ATTACH_MOVIE};

} // namespace

TEST(TimelineCommandsTest, EveryItemOfTheMenusIsACommand) {
    for (const UINT menu : {IDR_MAIN_MENU, IDR_ROW_MENU, IDR_KEY_MENU}) {
        const std::vector<UINT> ids = IdsOf(menu);
        EXPECT_FALSE(ids.empty()) << menu;
        for (const UINT id : ids) {
            const TimelineCommand* command = FindTimelineCommand(id);
            ASSERT_NE(command, nullptr) << id;
            EXPECT_EQ(command->id, id);
            EXPECT_NE(command->inMenu, nullptr) << id;
        }
    }
}

TEST(TimelineCommandsTest, EveryButtonIsACommand) {
    for (const UINT id : kButtons) {
        const TimelineCommand* command = FindTimelineCommand(id);
        ASSERT_NE(command, nullptr) << id;
        EXPECT_NE(command->onButton, nullptr) << id;
    }
}

TEST(TimelineCommandsTest, NoCommandIsInTheMenusAndPassedOn) {
    std::set<UINT> passedOn;
    for (const UINT id : kButtons) {
        if (FindTimelineCommand(id)->passOn) {
            passedOn.insert(id);
            EXPECT_EQ(FindTimelineCommand(id)->inMenu, nullptr) << id;
        }
    }
    const std::set<UINT> expected{IDC_ANIMATE_OBJECT, IDC_CREATE_CAMERA_FRAME, IDC_TO_VIRTUAL_OBJECT,
                                  IDC_DESELECT_KEYS, IDC_SELECT_KEY};
    EXPECT_EQ(passedOn, expected);
}

TEST(TimelineCommandsTest, MethodsOfKeysStandInTheirOwnTable) {
    for (const UINT id : IdsOf(IDR_BEZIER_MENU)) {
        EXPECT_EQ(FindTimelineCommand(id), nullptr) << id;
    }
    EXPECT_EQ(FindTimelineCommand(0), nullptr);
}

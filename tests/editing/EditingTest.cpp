#include "framework/Resource.h"
#include "framework/ToolBar.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/editing/Operations.h"
#include "tests/editing/Runner.h"
#include "tests/editing/World.h"

#include <gtest/gtest.h>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace editing {

namespace {

/// So many steps take about five seconds in a debug build.
constexpr int kSteps = 2000;

/// What steps change, as it is at one moment. Pointers are compared only.
struct Snapshot {
    explicit Snapshot(const World& world) : film(world.plugin.GetCurrentFilm()) {
        for (const CFilmTrack* track : world.Tracks()) {
            for (const IFilmKey* key : track->keys) {
                times[key] = {key->time, key->endTime};
            }
        }
        if (const engine::LevelData* level = world.editor.level.Data()) {
            objects = level->Objects().size();
        }
        if (const CFilmsMainCtrl* control = world.Control()) {
            rows = control->visibleTracks;
            view = {control->viewStart, control->vScroll->position};
        }
    }

    std::unordered_map<const IFilmKey*, std::pair<float, float>> times;
    const void* film;
    std::size_t objects = 0;
    std::vector<CTrackCtrl*> rows;
    std::pair<float, float> view; ///< where the two scroll bars stand
};

/// What the steps of one kind did: keys, and how many of the steps changed the rest.
struct Effect {
    int added = 0;
    int removed = 0;
    int moved = 0;
    int rowsChanged = 0;
    int scrolled = 0;
    int filmsSwitched = 0;
    int objectsGone = 0;

    void Add(const Snapshot& before, const Snapshot& after);
};

void Effect::Add(const Snapshot& before, const Snapshot& after) {
    int gone = 0;
    for (const auto& [key, times] : before.times) {
        const auto now = after.times.find(key);
        gone += now == after.times.end() ? 1 : 0;
        moved += now != after.times.end() && now->second != times ? 1 : 0;
    }
    removed += gone;
    added += static_cast<int>(after.times.size() - (before.times.size() - static_cast<std::size_t>(gone)));
    filmsSwitched += before.film != after.film ? 1 : 0;
    objectsGone += before.objects > after.objects ? 1 : 0;
    if (before.film == after.film) { // else rows and view are another film's
        rowsChanged += before.rows != after.rows ? 1 : 0;
        scrolled += before.view != after.view ? 1 : 0;
    }
}

struct Effects {
    std::map<std::string, Effect> ofStep;
    std::map<UINT, Effect> ofCommand; ///< of those chosen in a menu
    std::map<UINT, int> tried;
    std::map<std::string, int> dialogs;
    int framesPlayed = 0;
    int stepsInPlay = 0;
    int typed = 0;
    int browsed = 0;
};

Effects EffectsOf(const std::vector<Step>& steps) {
    World world;
    Effects run;
    for (const Step& step : steps) {
        const Snapshot before(world);
        world.chosenCommand = 0;
        world.Execute(step);
        const Snapshot after(world);
        run.ofStep[Operations()[static_cast<std::size_t>(step.operation)].name].Add(before, after);
        run.ofCommand[world.chosenCommand].Add(before, after);
    }
    run.tried = world.tried;
    run.dialogs = world.dialogs;
    run.framesPlayed = world.framesPlayed;
    run.stepsInPlay = world.stepsInPlay;
    run.typed = world.typed;
    run.browsed = world.browsed;
    return run;
}

/// Titles of what the commands open.
constexpr const char* kDialogs[] = {"Settings",
                                    "Keys filter & settings",
                                    "Filter tracks",
                                    "Set movie frame",
                                    "Adjust time",
                                    "Add camera",
                                    "Choose camera",
                                    "Key attributes",
                                    "Attach movie object",
                                    "Open track",
                                    "Save track",
                                    "Open fkd",
                                    "Save fkd"};

void CollectCommands(const CMenu& menu, std::vector<UINT>& commands) {
    for (int item = 0; item < static_cast<int>(menu.GetMenuItemCount()); ++item) {
        if (const CMenu* popup = menu.GetSubMenu(item)) {
            CollectCommands(*popup, commands);
        } else if (const UINT id = menu.GetMenuItemID(item); id != 0) {
            commands.push_back(id);
        }
    }
}

/// Of the timeline's menus and toolbar by their numbers, and the plug-in object's by their local ones.
std::vector<UINT> AllCommands() {
    const ResourceScope resources(PluginResources());
    std::vector<UINT> commands;
    for (const UINT id : {IDR_MAIN_MENU, IDR_ROW_MENU, IDR_KEY_MENU, IDR_BEZIER_MENU}) {
        CMenu menu;
        menu.LoadMenu(id);
        CollectCommands(menu, commands);
    }
    CToolBar toolbar;
    toolbar.LoadToolBar(IDR_SCENARIO_TOOLBAR);
    for (const ToolBarButton& button : toolbar.Buttons()) {
        if (button.id != 0) {
            commands.push_back(button.id);
        }
    }
    for (const UINT local : {1, 50, 51, 52, 53, 60, 61}) {
        commands.push_back(local);
    }
    return commands;
}

/// A run that edits nothing would find nothing.
TEST(EditingTest, RunsReachTheEdits) {
    Effects run = EffectsOf(RandomSteps(5, 12000));
    auto& steps = run.ofStep;
    EXPECT_GT(steps["drag"].moved, 20);
    EXPECT_GT(steps["release"].added, 1); // clones
    EXPECT_GT(steps["move-object"].added, 3);
    EXPECT_GT(steps["adjust-time"].moved, 3);
    EXPECT_GT(steps["load-level"].removed, 100);
    EXPECT_GT(steps["fold"].rowsChanged, 1);
    EXPECT_GT(steps["filter"].rowsChanged, 1);
    EXPECT_GT(steps["drag"].scrolled, 5);
    EXPECT_GT(steps["wheel"].scrolled, 5);
    EXPECT_GT(steps["show-film"].filmsSwitched, 3);
    EXPECT_GT(steps["delete-objects"].objectsGone, 1);
    EXPECT_GT(steps["delete-objects"].removed, 1);
    auto& commands = run.ofCommand;
    EXPECT_GT(commands[IDC_REMOVE_KEY].removed, 5);
    EXPECT_GT(commands[IDC_SET_POSITION].moved, 3);
    EXPECT_GT(commands[IDC_SET_DURATION].moved, 1);
    EXPECT_GT(commands[IDC_ADD_KEY].added, 5);
    EXPECT_GT(commands[IDC_PASTE_KEY].added, 0);
    EXPECT_GT(commands[IDC_ADD_CAMERA].added, 0);
    EXPECT_GT(commands[IDC_REMOVE_ACTOR].removed + commands[IDC_REMOVE_TRACK].removed, 0);
    EXPECT_GT(run.typed, 50);
    EXPECT_GT(run.browsed, 20);
    EXPECT_GT(run.framesPlayed, 100);
    EXPECT_GT(run.stepsInPlay, 2);
    for (const UINT command : AllCommands()) {
        EXPECT_GT(run.tried[command], 0) << "command " << command;
    }
    for (const char* dialog : kDialogs) {
        EXPECT_GT(run.dialogs[dialog], 0) << dialog;
    }
}

/// The same steps each time, so that the suite tells about the change under test; tests/editing/run.sh tries
/// steps that nobody tried before.
TEST(EditingTest, NothingIsLostAndNothingDangles) {
    EXPECT_TRUE(RunManySteps(20261121, 2 * kSteps));
}

} // namespace

} // namespace editing

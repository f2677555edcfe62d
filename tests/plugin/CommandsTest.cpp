#include "resources/resource.h"
#include "tests/plugin/PluginFixture.h"

#include <cstring>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

extern "C" IPlugin* InitializeMe(IEditor* editor, std::uintptr_t pluginNumber, IEditorView* view);

namespace {

class CommandsTest : public PluginTest {
protected:
    UINT Command(unsigned local) { return plugin.pluginId.WithLocal(local).word; }
    std::string TextOf(unsigned number, unsigned local) {
        char text[64];
        std::strcpy(text, "untouched");
        plugin.GetCommandText(number, local, text);
        return text;
    }
};

} // namespace

TEST_F(CommandsTest, PluginWordHasTheNumberInBits8To13) {
    EXPECT_EQ(PluginCommandId::FromPluginNumber(0).word, 0x00400000u);
    EXPECT_EQ(PluginCommandId::FromPluginNumber(1).word, 0x00400100u);
    EXPECT_EQ(PluginCommandId::FromPluginNumber(63).word, 0x00403F00u);
    EXPECT_EQ(PluginCommandId::FromPluginNumber(64).word, 0x00400000u); // upper bits are lost
    EXPECT_EQ(PluginCommandId::FromPluginNumber(65).word, 0x00400100u);
}

TEST_F(CommandsTest, EntryPointGivesTheOneObjectAndStartsFromTheDefaultWord) {
    IPlugin* first = InitializeMe(&editor, 63, &editor);
    EXPECT_EQ(first->GetPluginId().word, 0x00403F00u);
    IPlugin* second = InitializeMe(&editor, 1, &editor);
    EXPECT_EQ(first, second);
    EXPECT_EQ(second->GetPluginId().word, 0x00400100u);
    EXPECT_EQ(second->GetPluginKind(), 6);
    second->OnEvent(EventCode::HostGoesAway, nullptr);
}

TEST_F(CommandsTest, ReservedOperationsAnswerZero) {
    IPlugin& base = plugin;
    EXPECT_EQ(base.Reserved16(1, 2, 3, 4, 5, 6, 7), 0);
    EXPECT_FALSE(base.Reserved19(1));
    EXPECT_EQ(base.Reserved21(1, 2, 3, 4), 0u);
}

TEST_F(CommandsTest, ResourceIdsMapToLocalCommands) {
    const auto map = [this](unsigned id) { return plugin.CommandIdFromResource(id); };
    EXPECT_EQ(map(0), 0u);
    EXPECT_EQ(map(1742), Command(1));
    EXPECT_EQ(map(36823), Command(50));
    EXPECT_EQ(map(36846), Command(51));
    EXPECT_EQ(map(36847), Command(52));
    EXPECT_EQ(map(36853), Command(53));
    EXPECT_EQ(map(36824), Command(60));
    EXPECT_EQ(map(36825), Command(61));
    EXPECT_EQ(map(36845), Command(62));
    EXPECT_EQ(map(36874), Command(63));
    EXPECT_EQ(map(12345), Command(0));
}

TEST_F(CommandsTest, EditorReadyMakesToolbarListenersAndMenuInOrder) {
    IPluginImpl fresh;
    fresh.Initialize(&editor, 7, &editor);
    editor.calls.clear();
    fresh.OnEditorReady();
    EXPECT_THAT(editor.calls, ElementsAre("AddPluginToolbar 1740", "AddListenerA", "AddListenerB"));
    std::vector<UINT> commands;
    for (const ToolBarButton& button : fresh.toolbar.Buttons()) {
        commands.push_back(button.id);
    }
    const auto word = [&](unsigned local) { return fresh.pluginId.WithLocal(local).word; };
    EXPECT_THAT(commands, ElementsAre(word(1), word(50), word(51), 0, word(52), word(53)));
    EXPECT_EQ(fresh.toolbar.Title(), "Films");
    ASSERT_NE(fresh.filmsMenu.GetSubMenu(0), nullptr);
    EXPECT_EQ(fresh.filmsMenu.GetSubMenu(0)->GetMenuItemID(0), word(62));
    EXPECT_EQ(fresh.filmsMenu.GetSubMenu(0)->GetMenuItemID(1), word(63));
    EXPECT_STREQ(fresh.glLightClass->path, "gllight.mesh");
    EXPECT_STREQ(fresh.dynLightClass->path, "dynlight.mesh");
    fresh.OnEvent(EventCode::HostGoesAway, nullptr);
}

TEST_F(CommandsTest, MenusAreThereOnlyOnceTheHostHasItsListeners) {
    /// Asks for its view's menu as soon as it has a listener.
    class EagerEditor : public TestEditor {
    public:
        void AddListenerB(IPlugin* listener) override {
            CMenu menu;
            menu.CreatePopupMenu();
            offered = listener->OnViewMenu(&menu);
        }
        bool offered = true;
    } eager;
    IPluginImpl fresh;
    fresh.Initialize(&eager, 7, &eager);
    fresh.OnEditorReady();
    EXPECT_FALSE(eager.offered);
    CMenu menu;
    menu.CreatePopupMenu();
    EXPECT_TRUE(fresh.OnViewMenu(&menu));
    fresh.OnEvent(EventCode::HostGoesAway, nullptr);
}

TEST_F(CommandsTest, OfEqualClassNamesTheLastCounts) {
    editor.AddClassDescriptor("GLLightEditorObject", "second.mesh");
    plugin.OnEditorReady();
    EXPECT_STREQ(plugin.glLightClass->path, "second.mesh");
}

TEST_F(CommandsTest, OneShortcutIsGivenToTheHost) {
    plugin.RegisterShortcuts();
    ASSERT_EQ(editor.shortcuts.size(), 1u);
    const ShortcutRecord& record = editor.shortcuts.front();
    EXPECT_EQ(record.pluginKind, 6);
    EXPECT_EQ(record.number, 0);
    EXPECT_EQ(record.description, "Start / stop playing movie");
    EXPECT_EQ(record.keyCode, 13);
    EXPECT_EQ(record.modifiers, 8);
}

TEST_F(CommandsTest, TextsOfTheToolbarCommands) {
    EXPECT_EQ(TextOf(kPluginNumber, 1), "Movies");
    EXPECT_EQ(TextOf(kPluginNumber, 50), "Animate object");
    EXPECT_EQ(TextOf(kPluginNumber, 51), "Create camera frame");
    EXPECT_EQ(TextOf(kPluginNumber, 52), "Convert to virtual object");
    EXPECT_EQ(TextOf(kPluginNumber, 53), "Convert to normal object");
    for (const unsigned local : {0u, 2u, 54u, 60u, 61u, 62u, 63u, 255u}) {
        EXPECT_EQ(TextOf(kPluginNumber, local), "") << local;
    }
    EXPECT_EQ(TextOf(kPluginNumber + 1, 1), "untouched");
    EXPECT_EQ(TextOf(kPluginNumber + 64, 1), "untouched"); // numbers are compared as they are
    plugin.GetCommandText(kPluginNumber, 1, nullptr);
}

TEST_F(CommandsTest, CommandsOfOtherPluginsAndOtherNumbersDoNothing) {
    OpenNewFilm();
    plugin.OnCommand(kPluginNumber + 1, 50);
    plugin.OnCommand(kPluginNumber, 0);
    plugin.OnCommand(kPluginNumber, 64);
    plugin.OnCommand(kPluginNumber, 7);
    EXPECT_EQ(plugin.animateObjects, 0);
    EXPECT_THAT(editor.calls, IsEmpty());
}

TEST_F(CommandsTest, AnimateObjectTogglesWithAFilmAndChecksTheButton) {
    OpenNewFilm();
    plugin.OnCommand(kPluginNumber, 50);
    EXPECT_EQ(plugin.animateObjects, 1);
    EXPECT_TRUE(plugin.toolbar.IsButtonPressed(Command(50)));
    EXPECT_TRUE(plugin.toolbar.IsButtonChecked(Command(50)));
    plugin.OnCommand(kPluginNumber, 50);
    EXPECT_EQ(plugin.animateObjects, 0);
    EXPECT_FALSE(plugin.toolbar.IsButtonChecked(Command(50)));
}

TEST_F(CommandsTest, AnimateObjectWithoutAFilmStaysOffAndSendsTheCheckAllTheSame) {
    plugin.toolbar.CheckButton(Command(50), TRUE);
    plugin.OnCommand(kPluginNumber, 50);
    EXPECT_EQ(plugin.animateObjects, 0);
    EXPECT_FALSE(plugin.toolbar.IsButtonChecked(Command(50)));
}

TEST_F(CommandsTest, AnimateObjectTellsAnEnabledScenarioWindow) {
    std::vector<std::string> calls;
    LoggingWindow window(calls);
    plugin.scenarioDlg = &window;
    plugin.SetAnimateObjects(true);
    window.enabled = false;
    plugin.SetAnimateObjects(false);
    plugin.scenarioDlg = nullptr;
    EXPECT_THAT(calls, ElementsAre("PressButton 36823 down"));
}

TEST_F(CommandsTest, EnableRangeIncludesBothEnds) {
    plugin.EnableCommandRange(50, 52, false);
    for (const unsigned local : {50u, 51u, 52u}) {
        EXPECT_FALSE(plugin.toolbar.IsButtonEnabled(Command(local)));
        EXPECT_TRUE(plugin.toolbar.IsButtonIndeterminate(Command(local)));
    }
    EXPECT_TRUE(plugin.toolbar.IsButtonEnabled(Command(53)));
    plugin.EnableCommandRange(52, 50, true); // an empty range
    EXPECT_FALSE(plugin.toolbar.IsButtonEnabled(Command(51)));
    plugin.SetVisualizedTrack(nullptr);
    EXPECT_FALSE(plugin.toolbar.IsButtonEnabled(Command(51)));
    plugin.SetVisualizedTrack(AddCamera(OpenNewFilm(), "Cam"));
    EXPECT_TRUE(plugin.toolbar.IsButtonEnabled(Command(51)));
    EXPECT_FALSE(plugin.toolbar.IsButtonIndeterminate(Command(51)));
}

TEST_F(CommandsTest, MoviesShowsThePanelAndTellsTheOthers) {
    plugin.OnCommand(kPluginNumber, 1);
    EXPECT_TRUE(plugin.toolbar.IsButtonChecked(Command(1)));
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::PanelTaken));
    EXPECT_THAT(editor.calls, ElementsAre("ShowPluginPanel"));
}

TEST_F(CommandsTest, ActivationShowsThePanelToo) {
    plugin.OnActivate(false);
    EXPECT_THAT(editor.calls, IsEmpty());
    plugin.OnActivate(true);
    EXPECT_THAT(editor.calls, ElementsAre("ShowPluginPanel"));
}

TEST_F(CommandsTest, PanelTakenByAnotherUnchecksTheButton) {
    plugin.ShowPanel(true);
    plugin.OnEvent(EventCode::PanelTaken, nullptr);
    EXPECT_FALSE(plugin.toolbar.IsButtonChecked(Command(1)));
    EXPECT_FALSE(plugin.toolbar.IsButtonPressed(Command(1)));
}

TEST_F(CommandsTest, CommandsWithoutAHostDoNothing) {
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    for (unsigned local = 1; local <= 63; ++local) {
        plugin.OnCommand(kPluginNumber, local);
    }
    EXPECT_FALSE(plugin.OnViewMenu(nullptr));
    plugin.OnRender();
    plugin.Initialize(&editor, kPluginNumber, &editor);
}

#include "host/engine/LevelRoot.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/FakeAttributes.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class MenusTest : public PluginTest {
protected:
    MenusTest() : window(calls) { menu.CreatePopupMenu(); }
    ~MenusTest() override {
        plugin.scenarioDlg = nullptr;
        plugin.keyAttributesDlg.reset();
    }

    UINT Command(unsigned local) { return plugin.pluginId.WithLocal(local).word; }
    std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const MenuItem& item : menu.Items()) {
            texts.push_back((item.flags & MF_SEPARATOR) != 0 ? "-" : item.text);
        }
        return texts;
    }
    /// The dialog "Attach movie object" is open on the track of this actor.
    void OpenAttachDialog(EditorObject* actor) {
        OpenFilmWith({actor});
        plugin.scenarioDlg = &window;
        window.hasAttachDialog = true;
        window.attachTrack = plugin.GetCurrentFilm()->FindObjectTrack(actor);
    }

    CMenu menu;
    std::vector<std::string> calls;
    LoggingWindow window;
};

} // namespace

TEST_F(MenusTest, ViewMenuGetsARuleAndTheTwoMovieItems) {
    EXPECT_TRUE(plugin.OnViewMenu(&menu));
    EXPECT_THAT(Texts(), ElementsAre("-", "Attach movie", "Detach movie"));
    EXPECT_EQ(menu.GetMenuItemID(1), Command(60));
    EXPECT_EQ(menu.GetMenuItemID(2), Command(61));
}

TEST_F(MenusTest, DetachIsGreyUnlessTheActiveViewIsAttached) {
    plugin.OnViewMenu(&menu);
    EXPECT_NE(menu.GetMenuState(Command(61), MF_BYCOMMAND) & MF_GRAYED, 0u);
    EXPECT_EQ(menu.GetMenuState(Command(60), MF_BYCOMMAND) & MF_GRAYED, 0u);
    plugin.AttachView(0);
    CMenu second;
    second.CreatePopupMenu();
    EXPECT_TRUE(plugin.OnViewMenu(&second));
    EXPECT_EQ(second.GetMenuState(Command(61), MF_BYCOMMAND) & MF_GRAYED, 0u);
    EXPECT_EQ(second.GetMenuState(Command(60), MF_BYCOMMAND) & MF_GRAYED, 0u); // attach is never grey
}

TEST_F(MenusTest, ViewMenuNeedsAViewAndAMenu) {
    EXPECT_FALSE(plugin.OnViewMenu(nullptr));
    editor.activeView = -1;
    EXPECT_FALSE(plugin.OnViewMenu(&menu));
    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(MenusTest, ObjectMenuRemembersItsObject) {
    EditorObject* crate = editor.Create("Crate");
    EXPECT_FALSE(plugin.OnObjectMenu(&menu, 0, 0, crate));
    EXPECT_EQ(plugin.contextObject, crate);
    EXPECT_FALSE(plugin.OnObjectMenu(nullptr, 0, 0, nullptr));
    EXPECT_EQ(plugin.contextObject, nullptr);
}

TEST_F(MenusTest, ObjectThatTheAttributesTakeGetsAnItemInFront) {
    EditorObject* crate = editor.Create("Crate");
    FakeAttributes& attributes = OpenFakeAttributes(plugin, calls);
    attributes.taken = crate;
    menu.AppendMenu(MF_STRING, 1, "Host item");
    EXPECT_TRUE(plugin.OnObjectMenu(&menu, 0, 0, crate));
    EXPECT_THAT(Texts(), ElementsAre("Set object here", "Host item"));
    EXPECT_EQ(menu.GetMenuItemID(0), Command(62));
    plugin.OnCommand(kPluginNumber, 62);
    EXPECT_EQ(attributes.linked, crate);
    EXPECT_FALSE(plugin.OnObjectMenu(&menu, 0, 0, editor.Create("Other")));
}

TEST_F(MenusTest, ObjectCanBeAttachedWhileTheDialogIsOpen) {
    EditorObject* actor = editor.Create("Actor");
    EditorObject* cart = editor.Create("Cart");
    OpenAttachDialog(actor);
    EXPECT_TRUE(plugin.OnObjectMenu(&menu, 0, 0, cart));
    EXPECT_THAT(Texts(), ElementsAre("Attach to Cart(" + std::to_string(cart->id) + ")"));
    EXPECT_EQ(menu.GetMenuItemID(0), Command(63));
    plugin.OnCommand(kPluginNumber, 63);
    EXPECT_EQ(window.attachObject, cart);
}

TEST_F(MenusTest, NoAttachItemWithoutAVisibleDialogOrForTheActorHelpersAndGizmos) {
    EditorObject* actor = editor.Create("Actor");
    OpenAttachDialog(actor);
    EXPECT_FALSE(plugin.OnObjectMenu(&menu, 0, 0, actor));
    EXPECT_FALSE(plugin.OnObjectMenu(&menu, 0, 0, editor.CreateOfClass("HelperEditorObject", "Helper")));
    EXPECT_FALSE(plugin.OnObjectMenu(&menu, 0, 0, editor.CreateOfClass("GizmoEditorObject", "Gizmo")));
    EXPECT_TRUE(plugin.OnObjectMenu(&menu, 0, 0, editor.CreateOfClass("VirtualObjEditorObject", "Ghost")));
    window.visible = false;
    EXPECT_FALSE(plugin.OnObjectMenu(&menu, 0, 0, editor.Create("Cart")));
    plugin.OnCommand(kPluginNumber, 63);
    EXPECT_EQ(window.attachObject, nullptr);
}

TEST_F(MenusTest, BothItemsStandInFrontTheAttachItemFirst) {
    EditorObject* actor = editor.Create("Actor");
    EditorObject* cart = editor.Create("Cart");
    OpenAttachDialog(actor);
    OpenFakeAttributes(plugin, calls).taken = cart;
    EXPECT_TRUE(plugin.OnObjectMenu(&menu, 0, 0, cart));
    EXPECT_EQ(menu.GetMenuItemID(0), Command(63));
    EXPECT_EQ(menu.GetMenuItemID(1), Command(62));
}

TEST_F(MenusTest, AttachmentMustNotMakeACycle) {
    EditorObject* a = editor.Create("A");
    EditorObject* b = editor.Create("B");
    EditorObject* c = editor.Create("C");
    EditorObject* free = editor.Create("Free");
    IFilm* film = OpenFilmWith({a, b, c});
    AsObjectTrack(film->FindObjectTrack(b))->SetParent(a, false, "");
    AsObjectTrack(film->FindObjectTrack(c))->SetParent(b, false, "");
    EXPECT_FALSE(plugin.CanAttachWithoutCycle(film, a, a));
    EXPECT_FALSE(plugin.CanAttachWithoutCycle(film, c, a)); // c hangs on b, b on a
    EXPECT_TRUE(plugin.CanAttachWithoutCycle(film, a, c));
    EXPECT_TRUE(plugin.CanAttachWithoutCycle(film, free, a));
    EXPECT_FALSE(plugin.CanAttachWithoutCycle(nullptr, a, c));
    EXPECT_FALSE(plugin.CanAttachWithoutCycle(film, nullptr, c));
    EXPECT_FALSE(plugin.CanAttachWithoutCycle(film, a, nullptr));
    EXPECT_TRUE(plugin.CanAttachWithoutCycle(film, &Data().Root(), a)); // not an object that can be an actor
}

TEST_F(MenusTest, ParentThatCannotBeAnActorEndsTheWalk) {
    EditorObject* a = editor.Create("A");
    EditorObject* b = editor.Create("B");
    IFilm* film = OpenFilmWith({a, b});
    AsObjectTrack(film->FindObjectTrack(a))->parentObject = &Data().Root();
    EXPECT_TRUE(plugin.CanAttachWithoutCycle(film, a, b));
    AsObjectTrack(film->FindObjectTrack(a))->parentObject = nullptr;
    EXPECT_TRUE(plugin.CanAttachWithoutCycle(film, a, b));
}

TEST_F(MenusTest, RingOfAttachmentsEndsTheWalk) {
    EditorObject* a = editor.Create("A");
    EditorObject* b = editor.Create("B");
    EditorObject* c = editor.Create("C");
    IFilm* film = OpenFilmWith({a, b, c});
    AsObjectTrack(film->FindObjectTrack(a))->parentObject = b;
    AsObjectTrack(film->FindObjectTrack(b))->parentObject = a;
    EXPECT_FALSE(plugin.CanAttachWithoutCycle(film, a, c));
}

TEST_F(MenusTest, AttachViewEntersItOnceAndRedraws) {
    plugin.AttachView(1);
    EXPECT_THAT(plugin.attachedViews, ElementsAre(1));
    EXPECT_THAT(editor.calls, ElementsAre("Attach 1", "RedrawView 1"));
    editor.calls.clear();
    plugin.AttachView(1);
    EXPECT_THAT(plugin.attachedViews, ElementsAre(1));
    EXPECT_THAT(editor.calls, ElementsAre("Detach 1", "Attach 1", "RedrawView 1"));
}

TEST_F(MenusTest, AttachRefreshesTheWindowsButtonWhileItIsEnabled) {
    plugin.scenarioDlg = &window;
    plugin.AttachView(1);
    EXPECT_THAT(calls, ElementsAre("UpdateAttachButton"));
    window.enabled = false;
    plugin.DetachView(1);
    EXPECT_EQ(calls.size(), 1u);
}

TEST_F(MenusTest, ListedViewThatTheHostTookBackStaysStuckUntilDetached) {
    plugin.AttachView(1);
    editor.viewOwners.clear();
    editor.calls.clear();
    plugin.AttachView(1);
    EXPECT_THAT(editor.calls, IsEmpty());
    plugin.DetachView(1);
    plugin.AttachView(1);
    EXPECT_EQ(editor.viewOwners.size(), 1u);
}

TEST_F(MenusTest, RefusedOrUnknownViewIsNotEntered) {
    plugin.AttachView(-1);
    plugin.AttachView(7);
    editor.refuseAttach = true;
    plugin.AttachView(0);
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
}

TEST_F(MenusTest, DetachOfAViewThatIsNotListedDoesNothing) {
    plugin.DetachView(0);
    EXPECT_THAT(editor.calls, IsEmpty());
}

TEST_F(MenusTest, CommandsAttachAndDetachTheActiveView) {
    plugin.OnCommand(kPluginNumber, 60);
    EXPECT_THAT(plugin.attachedViews, ElementsAre(0));
    plugin.OnCommand(kPluginNumber, 61);
    EXPECT_THAT(plugin.attachedViews, IsEmpty());
}

TEST_F(MenusTest, AttributesForgetTheirKeyAtANewLevelAndGoWithThePlugin) {
    OpenFakeAttributes(plugin, calls);
    plugin.OnNew();
    EXPECT_THAT(calls, ElementsAre("Reset"));
    calls.clear();
    {
        IPluginImpl other;
        other.keyAttributesDlg = std::make_unique<FakeAttributes>(calls);
    }
    EXPECT_THAT(calls, ElementsAre("Reset", "Destroy"));
}

TEST_F(MenusTest, AttributesAreMadeOnceOnFirstUse) {
    EXPECT_EQ(plugin.GetKeyAttributesDlg(), nullptr);
    static std::vector<std::string> log;
    plugin.makeKeyAttributesDlg = [](IPluginImpl&) -> std::unique_ptr<IKeyAttributesDlg> {
        return std::make_unique<FakeAttributes>(log);
    };
    IKeyAttributesDlg* made = plugin.GetKeyAttributesDlg();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(plugin.GetKeyAttributesDlg(), made);
}

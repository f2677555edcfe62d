#include "tests/stage/HostFixture.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <cmath>
#include <cstring>
#include <string_view>

using ::testing::_;
using ::testing::InSequence;
using ::testing::Return;

class EditorHostTest : public HostFixture {};

TEST_F(EditorHostTest, LevelSelectionAndSelectedObjectsAreOneList) {
    EXPECT_EQ(host.GetSelectedObjects(), &host.GetLevel()->selection);
}

TEST_F(EditorHostTest, TheUsersSelectionSendsEventTwoToAll) {
    EditorObject* crate = Make("Crate");
    EXPECT_CALL(first, OnEvent(EventCode::SelectionChanged, nullptr)).Times(1);
    EXPECT_CALL(second, OnEvent(EventCode::SelectionChanged, nullptr)).Times(1);
    host.Select({crate});
    host.Select({crate}); // no change, no event
    EXPECT_EQ(crate->GetInfo()->flags & 1u, 1u);
}

TEST_F(EditorHostTest, SelectionCallsOfPluginsRaiseNoEvent) {
    EditorObject* crate = Make("Crate");
    EditorObject* barrel = Make("Barrel");
    EXPECT_CALL(first, OnEvent(EventCode::SelectionChanged, _)).Times(0);
    EXPECT_CALL(second, OnEvent(EventCode::SelectionChanged, _)).Times(0);
    host.SelectObject(crate, 1, 0);
    host.AddToSelection(barrel, 1, 0);
    EXPECT_EQ(host.level.selection, (ObjectList{crate, barrel}));
    host.DeselectObject(crate, 0, 0);
    EXPECT_EQ(host.level.selection, (ObjectList{barrel}));
    host.SetSelection({crate}, 0, 0, 0);
    EXPECT_EQ(host.level.selection, (ObjectList{crate}));
    EXPECT_EQ(barrel->GetInfo()->flags & 1u, 0u);
    host.ClearSelection();
    EXPECT_TRUE(host.level.selection.empty());
    EXPECT_EQ(windows.selectionChanges, 5);
}

TEST_F(EditorHostTest, UnknownObjectsNeverEnterTheSelection) {
    EditorObject* crate = Make("Crate");
    host.level.DeleteObject(crate);
    host.SetSelection({crate, nullptr}, 0, 0, 0);
    host.AddToSelection(crate, 1, 0);
    EXPECT_TRUE(host.level.selection.empty());
}

TEST_F(EditorHostTest, ABroadcastReachesTheOthersAndNeverTheSender) {
    int data = 0;
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsMoved, _)).Times(0);
    EXPECT_CALL(second, OnEvent(EventCode::ObjectsMoved, &data)).Times(1);
    host.BroadcastEvent(EventCode::ObjectsMoved, first.id, &data);
    EXPECT_EQ(windows.objectMoves, 1);
}

TEST_F(EditorHostTest, MatrixAndPositionOfObjectsRaiseNoEvent) {
    EditorObject* crate = Make("Crate");
    EXPECT_CALL(first, OnEvent(_, _)).Times(0);
    EXPECT_CALL(second, OnEvent(_, _)).Times(0);
    float matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, NAN, 2, 3, 1};
    crate->SetMatrix(matrix, 0);
    const float position[3] = {1.0f, 2.0f, 3.0f};
    crate->SetPosition(position, 0);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[1], 2.0f);
}

TEST_F(EditorHostTest, DeletionAsksThenTellsThenDestroysEach) {
    EditorObject* crate = Make("Crate");
    EditorObject* barrel = Make("Barrel");
    EditorObject* kept = Make("Kept");
    host.Select({kept, crate});
    InSequence order;
    EXPECT_CALL(first, CanDeleteObjects(_, _)).WillOnce([&](const ObjectList* objects, auto*) {
        EXPECT_EQ(*objects, (ObjectList{crate, barrel}));
        return true;
    });
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsDeleting, nullptr)).WillOnce([&](int, void*) {
        EXPECT_EQ(host.level.selection, (ObjectList{crate, barrel}));
        EXPECT_EQ(Count(), 3u);
    });
    EXPECT_CALL(first, OnObjectDestroyed(crate)).WillOnce([&](EditorObject* object) {
        EXPECT_EQ(object->name, "Crate"); // still whole
    });
    EXPECT_CALL(first, OnObjectDestroyed(barrel));
    EXPECT_CALL(first, OnEvent(EventCode::SelectionChanged, nullptr));
    host.DeleteObjects({crate, barrel, crate, nullptr});
    EXPECT_EQ(Count(), 1u);
    EXPECT_EQ(host.level.selection, (ObjectList{kept}));
}

TEST_F(EditorHostTest, ARefusalOfOnePluginKeepsAllObjectsAndShowsTheTexts) {
    EditorObject* crate = Make("Crate");
    EXPECT_CALL(second, CanDeleteObjects(_, _))
        .WillOnce([&](const ObjectList*, std::list<DeleteMessage>* list) {
            list->push_back({"Crate(1) is actor in film Intro", crate, 0});
            return false;
        });
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsDeleting, _)).Times(0);
    host.DeleteObjects({crate});
    EXPECT_EQ(Count(), 1u);
    ASSERT_EQ(windows.refusals.size(), 1u);
    EXPECT_EQ(windows.refusals.front().text, "Crate(1) is actor in film Intro");
}

TEST_F(EditorHostTest, APluginMayDeleteTheRestOfTheDoomedItself) {
    EditorObject* crate = Make("Crate");
    EditorObject* barrel = Make("Barrel");
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsDeleting, nullptr)).WillOnce([&](int, void*) {
        host.level.DeleteObject(barrel);
    });
    host.DeleteObjects({crate, barrel});
    EXPECT_EQ(Count(), 0u);
}

TEST_F(EditorHostTest, AHelperObjectIsAnnouncedBeforeItIsActive) {
    EditorObject* crate = Make("Crate");
    host.Select({crate});
    HelperObjectParams params;
    params.className = ClassName::GLLight;
    params.position = {1.0f, 2.0f, 3.0f};
    EditorObject* helper = nullptr;
    bool announced = false;
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsCreated, nullptr)).WillOnce([&](int, void*) {
        announced = true;
        EXPECT_EQ(helper, nullptr); // not returned yet
        ASSERT_EQ(host.level.selection.size(), 1u);
        EditorObject* fresh = host.level.selection.front();
        EXPECT_FALSE(fresh->GetInfo()->IsActive());
        EXPECT_FLOAT_EQ(fresh->GetPosition(0)[2], 3.0f);
    });
    host.CreateHelperObject("Control", first.id, 2, params, &helper);
    ASSERT_NE(helper, nullptr);
    EXPECT_TRUE(announced);
    EXPECT_EQ(host.level.selection, (ObjectList{crate}));
    EXPECT_TRUE(static_cast<engine::SceneObject*>(helper)->transient);
    helper->GetInfo()->Update(0);
    EXPECT_TRUE(helper->GetInfo()->IsActive());
}

TEST_F(EditorHostTest, HelpersComeOnlyFromControlAndOnlyOfHelperClasses) {
    EditorObject* helper = nullptr;
    HelperObjectParams params;
    params.className = ClassName::CameraTarget;
    host.CreateHelperObject("Other", first.id, 2, params, &helper);
    EXPECT_EQ(helper, nullptr);
    host.CreateHelperObject(nullptr, first.id, 2, params, &helper);
    EXPECT_EQ(helper, nullptr);
    params.className = ClassName::Mesh;
    host.CreateHelperObject("Control", first.id, 2, params, &helper);
    EXPECT_EQ(helper, nullptr);
    params.className = ClassName::CameraTarget;
    host.CreateHelperObject("Control", first.id, 2, params, nullptr);
    EXPECT_EQ(Count(), 0u);
    EXPECT_TRUE(host.HasObjectClass("Control"));
    EXPECT_FALSE(host.HasObjectClass("Controls"));
    EXPECT_FALSE(host.HasObjectClass(nullptr));
}

TEST_F(EditorHostTest, WithoutALevelThereIsNoHelper) {
    host.level.Close();
    HelperObjectParams params;
    params.className = ClassName::GLLight;
    EditorObject* helper = nullptr;
    host.CreateHelperObject("Control", first.id, 2, params, &helper);
    EXPECT_EQ(helper, nullptr);
    EXPECT_EQ(host.GetLevel()->GetLevelData(), nullptr);
}

TEST_F(EditorHostTest, HelperClassesAreDescribedWithNameAndFile) {
    int lights = 0;
    for (const EditorClassDescriptor& descriptor : host.GetEditorClasses()) {
        lights += std::strcmp(descriptor.name, ClassName::GLLight) == 0 ? 1 : 0;
        EXPECT_NE(descriptor.path[0], '\0');
        EXPECT_STRNE(descriptor.name, ClassName::Mesh);
    }
    EXPECT_EQ(lights, 1);
    EXPECT_EQ(host.GetEditorClasses().size(), 8u);
}

TEST(EditorHostClassesTest, AllHelperClassesDeriveFromTheHelper) {
    const engine::ClassDatabase database;
    for (const char* name :
         {ClassName::GLLight, ClassName::DynLight, ClassName::VirtualObject, ClassName::HelperCwO,
          ClassName::CameraPosition, ClassName::CameraTarget, ClassName::CameraControlPoint}) {
        EXPECT_TRUE(database.IsDerivedFrom(name, ClassName::Helper)) << name;
    }
    EXPECT_FALSE(database.IsDerivedFrom(ClassName::Mesh, ClassName::Helper));
}

TEST_F(EditorHostTest, HidingObjectsIsSilentAndAnsweredByIsPlaced) {
    EditorObject* crate = Make("Crate");
    host.Select({crate});
    EXPECT_CALL(first, OnEvent(_, _)).Times(0);
    windows.redrawn.clear();
    host.SetObjectsHidden({crate, nullptr}, true);
    EXPECT_TRUE(crate->GetInfo()->IsPlaced());
    host.SetObjectsHidden({crate}, false);
    EXPECT_FALSE(crate->GetInfo()->IsPlaced());
    EXPECT_TRUE(windows.redrawn.empty());
    EXPECT_EQ(host.level.selection, (ObjectList{crate}));
}

TEST_F(EditorHostTest, MakeUniqueNameTakesEffectAtOnce) {
    Make("Lamp");
    EditorObject* other = Make("Other");
    host.GetLevel()->MakeUniqueName("Lamp", other, 0);
    EXPECT_EQ(other->name, "Lamp1");
}

TEST_F(EditorHostTest, DataFilesStandInTheDataFolder) {
    std::string path;
    host.GetDataFilePath(path, "DefaultKeysParams.fkd");
    EXPECT_EQ(path, "data/DefaultKeysParams.fkd");
    EXPECT_EQ(host.GetHelperTemplate(), "data/helpers");
}

TEST(EditorHostDataTest, ShippedDataFileStandsInForOneThatTheUserHasNot) {
    const TempFolder user;
    const TempFolder program;
    WriteWholeFile(program.File("keys.fkd"), "shipped");
    FakeWindows windows;
    stage::EditorHost host(windows, {user.Path(), user.Path(), program.Path()});
    std::string path;
    host.GetDataFilePath(path, "keys.fkd");
    EXPECT_EQ(ReadWholeFile(path), "shipped");

    WriteWholeFile(user.File("keys.fkd"), "the user's");
    host.GetDataFilePath(path, "keys.fkd");
    EXPECT_EQ(ReadWholeFile(path), "the user's");
    host.GetDataFilePath(path, "other.fkd");
    EXPECT_EQ(path, user.File("other.fkd"));
}

TEST_F(EditorHostTest, ShortcutsAreCopied) {
    {
        std::list<ShortcutRecord> table{{6, 0, "Start", 13, 8}};
        host.AddShortcuts(table);
        table.front().description = "gone";
    }
    ASSERT_EQ(host.shortcuts.size(), 1u);
    EXPECT_EQ(host.shortcuts[0].description, "Start");
    EXPECT_EQ(windows.shortcutChanges, 1);
    EXPECT_CALL(first, OnShortcut(_, 0, _)).Times(1);
    host.RunShortcut(host.shortcuts[0]);
}

TEST_F(EditorHostTest, CommandsGoToThePluginOfTheirNumber) {
    EXPECT_CALL(first, OnCommand(_, _)).Times(0);
    EXPECT_CALL(second, OnCommand(2u, 50u)).Times(1);
    host.RunCommand(second.id.WithLocal(50));
    host.RunCommand(PluginCommandId::FromPluginNumber(9).WithLocal(1));
}

TEST_F(EditorHostTest, CommandTextsComeFromThePlugin) {
    EXPECT_CALL(second, GetCommandText(2u, 50u, _)).WillOnce([](auto, auto, char* text) {
        constexpr std::string_view kText("Animate object\0", 15);
        kText.copy(text, kText.size());
    });
    EXPECT_EQ(host.CommandText(second.id.WithLocal(50)), "Animate object");
    EXPECT_EQ(host.CommandText(PluginCommandId::FromPluginNumber(9)), "");
}

TEST_F(EditorHostTest, AnotherPluginsPanelEventClosesThePanel) {
    const CRuntimeClass* panel = reinterpret_cast<const CRuntimeClass*>(&host);
    host.ShowPluginPanel(panel);
    EXPECT_EQ(windows.panel, panel);
    EXPECT_CALL(first, OnEvent(EventCode::PanelTaken, nullptr)).Times(1);
    EXPECT_CALL(second, OnEvent(EventCode::PanelTaken, nullptr)).Times(0);
    host.BroadcastEvent(EventCode::PanelTaken, second.id, nullptr);
    EXPECT_FALSE(windows.IsPanelShown());
    host.ShowPluginPanel(panel);
    host.HidePluginPanel();
    EXPECT_FALSE(windows.IsPanelShown());
}

TEST_F(EditorHostTest, APanelClosedByTheUserIsToldAsEventOne) {
    EXPECT_CALL(first, OnEvent(EventCode::PanelTaken, nullptr)).Times(1);
    host.PanelClosed();
}

TEST_F(EditorHostTest, NumberInputKeepsTheValueOnCancel) {
    float value = 3.0f;
    EXPECT_FALSE(host.InputNumber(&value, "Length", "Seconds"));
    EXPECT_FLOAT_EQ(value, 3.0f);
    EXPECT_EQ(windows.inputTexts, "Length|Seconds");
    windows.number = 7.5f;
    EXPECT_TRUE(host.InputNumber(&value, nullptr, nullptr));
    EXPECT_FLOAT_EQ(value, 7.5f);
    EXPECT_FALSE(host.InputNumber(nullptr, "Length", "Seconds"));
}

TEST_F(EditorHostTest, BrowsersGiveThePresentNameOnCancel) {
    EXPECT_EQ(host.BrowseMeshElement(nullptr, "Head"), "Head");
    EXPECT_EQ(host.BrowseMeshAnimation(nullptr, "Walk"), "Walk");
    EXPECT_EQ(host.BrowseObjectName(3, "Smoke"), std::nullopt);
    EXPECT_EQ(windows.fxKind, 3);
    windows.browsed = "Hand";
    EXPECT_EQ(host.BrowseMeshElement(nullptr, "Head"), "Hand");
    EXPECT_EQ(host.BrowseObjectName(3, "Smoke"), "Hand");
}

TEST_F(EditorHostTest, AnAnimationThatAPluginAsksForInVainIsTold) {
    host.meshes.SetFolder(SampleFolder());
    engine::SceneObject* sailor = Make("Sailor");
    sailor->SetMeshName("models/sailor.glb");
    EditorObject& asPluginsSeeIt = *sailor;
    EXPECT_EQ(asPluginsSeeIt.FindAnimation("Walk"), 1) << "the second of the model's";
    EXPECT_EQ(asPluginsSeeIt.FindAnimation(""), -1);
    EXPECT_EQ(sailor->FindClip("Foo"), -1) << "the editor's own question";
    EXPECT_EQ(windows.reports, std::vector<std::string>());
    EXPECT_EQ(asPluginsSeeIt.FindAnimation("Foo"), -1);
    EXPECT_EQ(windows.reports,
              std::vector<std::string>{"Sailor has no animation \"Foo\": the key keeps what it had."});
}

TEST_F(EditorHostTest, WindowsHearOfEachObjectThatGoes) {
    engine::SceneObject* cart = Make("Cart");
    engine::SceneObject* crate = Make("Crate");
    host.DestroyObjects({crate});
    EXPECT_EQ(windows.gone, std::vector<const EditorObject*>{crate});
    host.level.Close();
    EXPECT_EQ(windows.gone, (std::vector<const EditorObject*>{crate, cart}));
}

TEST_F(EditorHostTest, ToolbarsAndToolWindowsGoBeforeTheirPlugins) {
    CToolBar* toolbar = reinterpret_cast<CToolBar*>(&first);
    host.AddPluginToolbar(toolbar, 1740);
    host.AddPluginToolbar(nullptr, 1740);
    EXPECT_EQ(windows.toolbars, (std::vector<CToolBar*>{toolbar}));
    EXPECT_EQ(windows.toolbarResource, 1740u);
    EXPECT_EQ(windows.toolWindowEnds, 0);
    host.Shutdown();
    EXPECT_TRUE(windows.toolbars.empty());
    EXPECT_EQ(windows.toolWindowEnds, 1);
}

TEST_F(EditorHostTest, GroupsAreSeenByPlugins) {
    engine::SceneObject* crate = Make("Crate");
    engine::SceneObject* barrel = Make("Barrel");
    EXPECT_EQ(host.GetGroupOf(crate), nullptr);
    host.level.Data()->MakeGroup("Cargo", {crate, barrel});
    EXPECT_NE(host.GetGroupOf(crate), nullptr);
    EXPECT_EQ(host.GetGroupOf(crate), host.GetGroupOf(barrel));
    EXPECT_EQ(host.GetGroupOf(nullptr), nullptr);
}

TEST_F(EditorHostTest, LeavingALevelTellsEverythingInOrder) {
    EditorObject* crate = Make("Crate");
    EditorObject* barrel = Make("Barrel");
    InSequence order;
    EXPECT_CALL(first, OnEvent(EventCode::Suspend, nullptr));
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsDeleting, nullptr)).WillOnce([&](int, void*) {
        EXPECT_EQ(host.level.selection, (ObjectList{crate, barrel}));
        EXPECT_NE(host.GetLevel()->GetLevelData(), nullptr);
    });
    EXPECT_CALL(first, OnEvent(EventCode::ReleaseRenderResources, nullptr));
    EXPECT_CALL(first, OnNew());
    EXPECT_CALL(first, OnObjectDestroyed(crate));
    EXPECT_CALL(first, OnObjectDestroyed(barrel));
    EXPECT_CALL(first, OnEditorClosing());
    EXPECT_CALL(first, OnEvent(EventCode::HostGoesAway, nullptr));
    host.Shutdown();
}

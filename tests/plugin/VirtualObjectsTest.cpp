#include "tests/plugin/PluginFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class VirtualObjectsTest : public PluginTest {
protected:
    void ToVirtual(ObjectList objects, int answer = IDYES) {
        boxAnswer = answer;
        plugin.ConvertToVirtualObjects(&objects);
    }
    void ToNormal(ObjectList objects) { plugin.ConvertToNormalObjects(&objects); }
};

} // namespace

TEST_F(VirtualObjectsTest, ConvertedObjectLeavesTheLevelsListAndKeepsItsRealClass) {
    EditorObject* crate = editor.Create("Crate");
    OpenFilmWith({crate});
    ToVirtual({crate});
    EXPECT_THAT(boxes, ElementsAre("Transform selected objects to virtual objects ?"));
    EXPECT_EQ(crate->GetInfo()->className, "VirtualObjEditorObject");
    EXPECT_EQ(crate->savedAsObject, 0);
    ASSERT_EQ(plugin.virtualObjects.size(), 1u);
    EXPECT_EQ(plugin.virtualObjects.front().className, "MeshObject");
    EXPECT_EQ(plugin.virtualObjects.front().objectName, "Crate");
    EXPECT_EQ(plugin.virtualObjects.front().meshName, "box.glb");
    EXPECT_EQ(editor.broadcasts.back(), EventCode::ClassesChanged);
    EXPECT_EQ(editor.calls[editor.calls.size() - 2], "RefreshObjectTree");
    EXPECT_EQ(editor.calls.back(), "RefreshObjectPanel");
}

TEST_F(VirtualObjectsTest, AnyAnswerButYesChangesNothing) {
    EditorObject* crate = editor.Create("Crate");
    ToVirtual({crate}, IDNO);
    ToVirtual({crate}, IDCANCEL);
    EXPECT_EQ(crate->GetInfo()->className, "MeshObject");
    EXPECT_THAT(editor.broadcasts, IsEmpty());
    plugin.ConvertToVirtualObjects(nullptr);
    EXPECT_EQ(boxes.size(), 2u); // null doesn't ask
}

TEST_F(VirtualObjectsTest, HelpersAndVirtualObjectsAreSkipped) {
    EditorObject* helper = editor.CreateOfClass("HelperEditorObject", "Helper");
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    ToVirtual({nullptr, helper, ghost});
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    EXPECT_THAT(editor.broadcasts, IsEmpty());
}

TEST_F(VirtualObjectsTest, ConvertedObjectIsRenamedIfAnotherHasItsName) {
    EditorObject* first = editor.Create("Crate");
    EditorObject* second = editor.Create("Other");
    second->name = "Crate";
    ToVirtual({second});
    EXPECT_EQ(first->name, "Crate");
    EXPECT_NE(second->name, "Crate");
    EXPECT_EQ(plugin.virtualObjects.front().objectName, second->name);
}

TEST_F(VirtualObjectsTest, ConvertingBackGivesTheRealClassAndSelects) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* plain = editor.Create("Plain");
    ToVirtual({crate});
    editor.calls.clear();
    ToNormal({nullptr, plain, crate});
    EXPECT_EQ(crate->GetInfo()->className, "MeshObject");
    EXPECT_EQ(crate->savedAsObject, 1);
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    EXPECT_THAT(editor.level.selection, ElementsAre(crate)); // the plain one was dropped
    EXPECT_THAT(editor.calls, ElementsAre("SetSelection", "RefreshObjectTree", "RefreshObjectPanel"));
}

TEST_F(VirtualObjectsTest, WithoutARecordTheClassNameBecomesEmpty) {
    EditorObject* ghost = editor.CreateOfClass("VirtualObjEditorObject", "Ghost");
    ToNormal({ghost});
    EXPECT_EQ(ghost->GetInfo()->className, "");
}

TEST_F(VirtualObjectsTest, NothingToConvertBackTouchesNothing) {
    EditorObject* plain = editor.Create("Plain");
    ToNormal({plain});
    plugin.ConvertToNormalObjects(nullptr);
    EXPECT_THAT(editor.calls, IsEmpty());
    EXPECT_THAT(editor.broadcasts, IsEmpty());
}

TEST_F(VirtualObjectsTest, RecordOfNoObjectIsNotRemoved) {
    EditorObject* crate = editor.Create("Crate");
    ToVirtual({crate});
    plugin.RemoveVirtualRecord(nullptr);
    EXPECT_EQ(plugin.virtualObjects.size(), 1u);
    plugin.RemoveVirtualRecord(crate);
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
}

#include "host/engine/LevelRoot.h"
#include "host/engine/ObjectTrack.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/TempFolder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class VirtualObjectsTest : public PluginTest {
protected:
    void ToVirtual(const ObjectList& objects, int answer = IDYES) {
        boxAnswer = answer;
        plugin.ConvertToVirtualObjects(&objects);
    }
    bool IsMarked(IFilm* film, const EditorObject* object) {
        return static_cast<engine::ObjectTrack*>(film->FindObjectTrack(object))->actorIsVirtual;
    }
    void ToNormal(const ObjectList& objects) { plugin.ConvertToNormalObjects(&objects); }
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

TEST_F(VirtualObjectsTest, EachObjectIsRenamedAsOftenAsOthersHaveItsNameThen) {
    EditorObject* first = editor.Create("Crate");
    EditorObject* second = editor.Create("Second");
    EditorObject* third = editor.Create("Third");
    second->name = third->name = "Crate";
    ToVirtual({second, third});
    EXPECT_EQ(first->name, "Crate");
    EXPECT_NE(second->name, "Crate");
    EXPECT_NE(third->name, "Crate");
    EXPECT_NE(second->name, third->name);
    EXPECT_EQ(second->name.rfind("Crate", 0), 0u) << "made from the name it had";
    EXPECT_EQ(third->name.rfind("Crate", 0), 0u);
    EXPECT_EQ(plugin.virtualObjects.front().objectName, second->name);
    EXPECT_EQ(plugin.virtualObjects.back().objectName, third->name);
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ClassesChanged));
}

TEST_F(VirtualObjectsTest, TracksOfAllFilmsAreMarkedAndFreed) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* other = editor.Create("Other");
    IFilm* first = OpenFilmWith({crate, other});
    IFilm* second = OpenFilmWith({crate});
    ToVirtual({crate});
    EXPECT_TRUE(IsMarked(first, crate));
    EXPECT_TRUE(IsMarked(second, crate));
    EXPECT_FALSE(IsMarked(first, other));
    ToNormal({crate});
    EXPECT_FALSE(IsMarked(first, crate));
    EXPECT_FALSE(IsMarked(second, crate));
    EXPECT_EQ(AsObjectTrack(first->FindObjectTrack(crate))->actor, crate);
}

TEST_F(VirtualObjectsTest, TheFilmInTheLastSlotIsMarkedToo) {
    EditorObject* crate = editor.Create("Crate");
    while (plugin.GetFilmByIndex(198) == nullptr) {
        NewFilm();
    }
    IFilm* last = OpenFilmWith({crate});
    ASSERT_EQ(last->index, 199);
    ToVirtual({crate});
    EXPECT_TRUE(IsMarked(last, crate));
}

TEST_F(VirtualObjectsTest, WhatIsNoEditorObjectIsLeftAloneBothWays) {
    EditorObject& root = Data().Root();
    const std::string before = root.GetInfo()->className;
    ToVirtual({&root});
    EXPECT_EQ(root.GetInfo()->className, before);
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
    root.GetInfo()->SetClassName("VirtualObjEditorObject");
    ToNormal({&root});
    EXPECT_EQ(root.GetInfo()->className, "VirtualObjEditorObject");
    EXPECT_THAT(editor.broadcasts, IsEmpty());
}

TEST_F(VirtualObjectsTest, TheQuestionComesEvenWithNothingToConvertOrNoLevel) {
    ToVirtual({});
    EXPECT_EQ(boxes.size(), 1u);
    EXPECT_THAT(editor.broadcasts, IsEmpty());
    EditorObject* crate = editor.Create("Crate");
    Hooks().messageBox = [this, crate](const std::string& text, UINT type) {
        boxes.push_back(text);
        EXPECT_EQ(type & MB_TYPEMASK, UINT{MB_YESNO});
        plugin.OnEvent(EventCode::HostGoesAway, nullptr);
        return IDYES;
    };
    ToVirtual({crate});
    EXPECT_EQ(boxes.size(), 2u);
    EXPECT_EQ(crate->GetInfo()->className, "MeshObject");
    plugin.Initialize(&editor, kPluginNumber, &editor);
}

TEST_F(VirtualObjectsTest, WithoutFilmsNothingIsConvertedBack) {
    EditorObject* crate = editor.Create("Crate");
    ToVirtual({crate});
    IFilmManager* manager = Data().filmManager;
    Data().filmManager = nullptr;
    ToNormal({crate});
    Data().filmManager = manager;
    EXPECT_EQ(crate->GetInfo()->className, "VirtualObjEditorObject");
}

TEST_F(VirtualObjectsTest, ObjectsDeletedUnderTheQuestionAreLeftOut) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* other = editor.Create("Other");
    Hooks().messageBox = [&](const std::string&, UINT) {
        editor.DeleteObjects({crate});
        editor.Select({other});
        return IDYES;
    };
    editor.Select({crate, other});
    plugin.OnCommand(kPluginNumber, 52);
    ASSERT_EQ(plugin.virtualObjects.size(), 1u);
    EXPECT_EQ(plugin.virtualObjects.front().object, other);
}

TEST_F(VirtualObjectsTest, CommandsTakeTheSelection) {
    EditorObject* crate = editor.Create("Crate");
    boxAnswer = IDYES;
    editor.Select({crate});
    plugin.OnCommand(kPluginNumber, 52);
    EXPECT_EQ(crate->GetInfo()->className, "VirtualObjEditorObject");
    plugin.OnCommand(kPluginNumber, 53);
    EXPECT_EQ(crate->GetInfo()->className, "MeshObject");
}

TEST_F(VirtualObjectsTest, RecordsAreDroppedByANewLevelAndByEachFormOfTheirChunk) {
    TempFolder folder;
    WriteWholeFile(folder.File("empty"), "");
    EditorObject* crate = editor.Create("Crate");
    for (const unsigned id : {5750u, 5752u}) {
        plugin.virtualObjects.push_back({"Crate", "", "MeshObject", crate});
        fs::file file;
        file.Open(folder.File("empty").c_str(), 0);
        EXPECT_TRUE(plugin.LoadChunk(&Data().Root(), file, static_cast<std::uint16_t>(id), 0));
        file.Close();
        EXPECT_THAT(plugin.virtualObjects, IsEmpty()) << id;
    }
    plugin.virtualObjects.push_back({"Crate", "", "MeshObject", crate});
    plugin.OnNew();
    EXPECT_THAT(plugin.virtualObjects, IsEmpty());
}

TEST_F(VirtualObjectsTest, DeletionTakesTheRecordAndTheNameIsFree) {
    EditorObject* crate = editor.Create("Crate");
    EditorObject* other = editor.Create("Other");
    ToVirtual({crate, other});
    editor.DeleteObjects({crate});
    ASSERT_EQ(plugin.virtualObjects.size(), 1u);
    EXPECT_EQ(plugin.virtualObjects.front().object, other);
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

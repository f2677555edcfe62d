#include "plugin/parts/VirtualObjects.h"

#include "tests/plugin/PartFixture.h"

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// The collection of the host for objects that its list leaves out.
class Collection : public IObjectCollection {
public:
    bool Contains(const EditorObject* object) const override {
        return std::ranges::find(objects, object) != objects.end();
    }
    void Add(EditorObject* object) override { objects.push_back(object); }

    std::vector<EditorObject*> objects;
};

/// Records of two virtual objects, without a plug-in object.
class VirtualRecordsTest : public PartTest {
protected:
    VirtualRecordsTest() {
        for (EditorObject* object : {cart, crane}) {
            object->GetInfo()->SetClassName(ClassName::VirtualObject);
            records.push_back({object->name, object->meshName, "MeshObject", object});
        }
    }

    EditorObject* cart = editor.Create("Cart");
    EditorObject* crane = editor.Create("Crane");
    VirtualObjectRecords records;
    VirtualObjects virtuals{session, records};
};

TEST_F(VirtualRecordsTest, NamesFollowTheObjects) {
    cart->name = "Wagon";
    cart->meshName = "wagon.glb";
    virtuals.RefreshNames();
    EXPECT_EQ(records.front().objectName, "Wagon");
    EXPECT_EQ(records.front().meshName, "wagon.glb");
}

TEST_F(VirtualRecordsTest, ObjectsThatGoAreForgotten) {
    virtuals.ForgetObject(cart);
    virtuals.RemoveRecord(nullptr);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records.front().object, crane);
    virtuals.RemoveRecord(crane);
    EXPECT_THAT(records, IsEmpty());
}

TEST_F(VirtualRecordsTest, HiddenObjectsAreCollectedAndLeftOutOfTheLevel) {
    Collection collection;
    virtuals.Hide(collection);
    EXPECT_THAT(collection.objects, ElementsAre(cart, crane));
    EXPECT_EQ(cart->savedAsObject, 0);
    EXPECT_EQ(crane->savedAsObject, 0);
}

TEST_F(VirtualRecordsTest, ATurnedBackObjectHasItsRealClassAndIsSelected) {
    virtuals.ConvertToNormal(nullptr);
    EXPECT_EQ(records.size(), 2u);
    const ObjectList both{cart, crane};
    virtuals.ConvertToNormal(&both);
    EXPECT_EQ(cart->GetInfo()->className, "MeshObject");
    EXPECT_EQ(cart->savedAsObject, 1);
    EXPECT_THAT(records, IsEmpty());
    EXPECT_THAT(editor.calls, ElementsAre("SetSelection", "RefreshObjectTree", "RefreshObjectPanel"));
    EXPECT_THAT(editor.broadcasts, ElementsAre(EventCode::ClassesChanged));
}

} // namespace

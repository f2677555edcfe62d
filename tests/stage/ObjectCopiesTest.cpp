#include "host/stage/host/ObjectCopies.h"
#include "host/stage/host/LevelSession.h"
#include "tests/stage/HostFixture.h"
#include "tests/support/TempFolder.h"

using ::testing::_;

class ObjectCopiesTest : public HostFixture {
protected:
    std::string Copied(const std::vector<engine::SceneObject*>& objects) {
        return stage::CopyObjects(host.level, objects);
    }
    TempFolder folder;
    stage::LevelSession session{host};
};

TEST_F(ObjectCopiesTest, AnotherLevelGetsTheObjectsWithTheirTree) {
    engine::SceneObject* cart = Make("Cart", "EmptyObject");
    engine::SceneObject* lamp = Make("Lamp", ClassName::GLLight);
    lamp->light->range = 321.0f;
    lamp->notes.locked = true;
    const float place[3] = {1, 2, 3};
    lamp->SetPosition(place, 0);
    host.level.SetParent(lamp, cart);
    const std::string bytes = Copied({cart, lamp});
    session.New();
    EXPECT_CALL(first, OnEvent(_, _)).Times(::testing::AnyNumber());
    EXPECT_CALL(first, OnEvent(EventCode::ObjectsCreated, nullptr)).Times(1);
    EXPECT_EQ(stage::PasteObjects(host, session, bytes), 2);
    engine::SceneObject* pasted = host.level.FindObject("Lamp");
    ASSERT_NE(pasted, nullptr);
    EXPECT_EQ(pasted->Parent(), host.level.FindObject("Cart"));
    EXPECT_FLOAT_EQ(pasted->light->range, 321.0f);
    EXPECT_TRUE(pasted->notes.locked);
    EXPECT_FLOAT_EQ(pasted->GetPosition(0)[2], 3.0f);
    EXPECT_EQ(host.level.selection.size(), 2u);
}

TEST_F(ObjectCopiesTest, TheSameLevelGetsThemUnderOtherNames) {
    engine::SceneObject* crate = Make("Crate");
    EXPECT_EQ(stage::PasteObjects(host, session, Copied({crate})), 1);
    EXPECT_EQ(Count(), 2u);
    EXPECT_NE(host.level.selection.front()->name, "Crate");
}

TEST_F(ObjectCopiesTest, MeshesAreNamedFromTheOtherLevelsFolder) {
    host.level.SetFolder(folder.File("a/"));
    engine::SceneObject* crate = Make("Crate");
    crate->meshName = "models/crate.glb";
    engine::SceneObject* box = Make("Box");
    box->meshName = "shape:box 1 2 3 #ffffff";
    const std::string bytes = Copied({crate, box});
    host.level.SetFolder(folder.File("b/"));
    stage::PasteObjects(host, session, bytes);
    EXPECT_EQ(host.level.Data()->Objects()[2]->meshName, "../a/models/crate.glb");
    EXPECT_EQ(host.level.Data()->Objects()[3]->meshName, "shape:box 1 2 3 #ffffff");
}

TEST_F(ObjectCopiesTest, AnyOtherBytesPasteNothing) {
    const std::string bytes = Copied({Make("Crate")});
    EXPECT_EQ(stage::PasteObjects(host, session, ""), 0);
    EXPECT_EQ(stage::PasteObjects(host, session, "hello"), 0);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_EQ(stage::PasteObjects(host, session, bytes.substr(0, size)), 0) << size;
    }
    EXPECT_EQ(Count(), 1u);
}

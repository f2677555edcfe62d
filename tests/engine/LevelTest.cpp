#include "host/engine/LevelRoot.h"
#include "host/engine/UniqueNames.h"
#include "tests/engine/EngineFixture.h"

#include <algorithm>
#include <array>

namespace engine_test {

using engine::SceneObject;

class LevelTest : public EngineTest {
protected:
    std::vector<std::string> Names() const {
        ObjectList objects;
        level.CollectObjects(objects);
        std::vector<std::string> names;
        for (const EditorObject* object : objects) {
            names.push_back(object->name);
        }
        return names;
    }
};

using Texts = std::vector<std::string>;

TEST_F(LevelTest, ObjectsComeInTheOrderOfTheirMakingWithIdsOfTheirOwn) {
    SceneObject& a = MakeObject("A");
    SceneObject& b = MakeObject("B");
    EXPECT_EQ(Names(), (Texts{"A", "B"}));
    EXPECT_NE(a.id, b.id);
    EXPECT_EQ(level.GetLevelData()->FindObject(b.id), &b);
    EXPECT_EQ(level.FindObject("A"), &a);
    EXPECT_EQ(level.FindObject(12345), nullptr);
}

TEST_F(LevelTest, IdsOfDeletedObjectsAreNotGivenAgain) {
    const int id = MakeObject("A").id;
    level.DeleteObject(level.FindObject(id));
    EXPECT_EQ(level.FindObject(id), nullptr);
    EXPECT_NE(MakeObject("B").id, id);
}

TEST_F(LevelTest, NamesAreMadeUnique) {
    EXPECT_EQ(MakeObject("Crate").name, "Crate");
    EXPECT_EQ(MakeObject("Crate").name, "Crate1");
    EXPECT_EQ(MakeObject("Crate1").name, "Crate2");
    EXPECT_EQ(MakeObject("").name, "Object");
    SceneObject& box = MakeObject("Box");
    level.MakeUniqueName("Box", &box, 0); // its own name is free for it
    EXPECT_EQ(box.name, "Box");
    level.MakeUniqueName("Crate", &box, 0);
    EXPECT_EQ(box.name, "Crate3");
    EXPECT_EQ(MakeObject("7").name, "7");
    EXPECT_EQ(MakeObject("7").name, "71");
    level.MakeUniqueName(nullptr, &box, 0);
    level.MakeUniqueName("x", nullptr, 0);
    EXPECT_EQ(box.name, "Object1");
}

TEST_F(LevelTest, SetParentKeepsTheWorldMatrixAndRefusesRings) {
    SceneObject& a = MakeObject("A", {1.0f, 0.0f, 0.0f});
    SceneObject& b = MakeObject("B", {5.0f, 0.0f, 0.0f});
    SceneObject& c = MakeObject("C");
    EXPECT_TRUE(level.SetParent(&b, &a));
    EXPECT_TRUE(level.SetParent(&c, &a));
    EXPECT_EQ(a.firstChild, &b);
    EXPECT_EQ(b.nextSibling, &c);
    EXPECT_EQ(b.parent, &a);
    ExpectVector(b.World().Translation(), {5.0f, 0.0f, 0.0f});
    EXPECT_FALSE(level.SetParent(&a, &b));
    EXPECT_FALSE(level.SetParent(&a, &a));
    EXPECT_TRUE(level.SetParent(&b, nullptr));
    EXPECT_EQ(a.firstChild, &c);
    EXPECT_EQ(b.nextSibling, nullptr);
    const float moved[3] = {9.0f, 0.0f, 0.0f};
    a.SetPosition(moved, 0);
    ExpectVector(b.World().Translation(), {5.0f, 0.0f, 0.0f});
}

TEST_F(LevelTest, HierarchyHasADepthLimit) {
    SceneObject* top = nullptr;
    int depth = 0;
    while (depth < 1000) {
        SceneObject& object = MakeObject("Link");
        if (top != nullptr && !level.SetParent(&object, top)) {
            break;
        }
        top = &object;
        ++depth;
    }
    EXPECT_EQ(depth, engine::LevelData::kDeepestChild);
}

TEST_F(LevelTest, DeletingAParentFreesItsChildrenInPlace) {
    SceneObject& a = MakeObject("A", {1.0f, 0.0f, 0.0f});
    SceneObject& b = MakeObject("B", {5.0f, 0.0f, 0.0f}, &a);
    SceneObject& c = MakeObject("C", {6.0f, 0.0f, 0.0f}, &a);
    level.DeleteObject(&a);
    EXPECT_EQ(b.parent, nullptr);
    EXPECT_EQ(b.nextSibling, nullptr);
    EXPECT_EQ(c.parent, nullptr);
    ExpectVector(b.World().Translation(), {5.0f, 0.0f, 0.0f});
    EXPECT_EQ(Names(), (Texts{"B", "C"}));
}

TEST_F(LevelTest, SelectionHoldsObjectsOnceAndMarksThem) {
    SceneObject& a = MakeObject("A");
    SceneObject& b = MakeObject("B");
    level.AddToSelection(&a);
    level.AddToSelection(&b);
    level.AddToSelection(&a);
    EXPECT_EQ(level.selection, (ObjectList{&a, &b}));
    EXPECT_EQ(a.GetInfo()->flags & 1u, 1u);
    level.Deselect(&a);
    level.Deselect(nullptr);
    EXPECT_EQ(a.GetInfo()->flags & 1u, 0u);
    level.SetSelection({&a});
    EXPECT_EQ(level.selection, (ObjectList{&a}));
    EXPECT_EQ(b.GetInfo()->flags & 1u, 0u);
    level.SetSelection(level.selection);
    EXPECT_EQ(level.selection, (ObjectList{&a}));
    level.DeleteObject(&a);
    EXPECT_TRUE(level.selection.empty());
}

TEST_F(LevelTest, GroupsTakeObjectsThatAreInNone) {
    SceneObject& a = MakeObject("A");
    SceneObject& b = MakeObject("B");
    SceneObject& c = MakeObject("C");
    engine::LevelData& data = *level.Data();
    engine::Group* group = data.MakeGroup("Pair", {&a, &b, &a, nullptr});
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->members.size(), 2u);
    EXPECT_EQ(data.GroupOf(&a), group);
    EXPECT_EQ(data.GroupOf(&c), nullptr);
    EXPECT_EQ(data.MakeGroup("Other", {&a, &c}), nullptr);
    level.DeleteObject(&a);
    EXPECT_EQ(data.GroupOf(&b), group);
    level.DeleteObject(&b);
    EXPECT_TRUE(data.Groups().empty());
}

TEST_F(LevelTest, ObjectsGoFromGroupToGroupAndOneWithoutMembersEnds) {
    engine::LevelData& data = *level.Data();
    engine::ObjectSpec spec;
    spec.className = "EmptyObject";
    std::array<engine::SceneObject*, 4> objects{};
    std::ranges::generate(objects, [&] { return level.CreateObject(spec); });
    engine::Group* first = data.MakeGroup("Pair", {objects[0], objects[1]});
    engine::Group* second = data.MakeGroup("Other", {objects[2], objects[3]});
    EXPECT_TRUE(data.JoinGroup(*second, *objects[0]));
    EXPECT_FALSE(data.JoinGroup(*second, *objects[0]));
    EXPECT_EQ(data.GroupOf(objects[0]), second);
    EXPECT_EQ(first->members, (std::vector<engine::SceneObject*>{objects[1]}));
    EXPECT_TRUE(data.LeaveGroup(*objects[1]));
    EXPECT_FALSE(data.LeaveGroup(*objects[1]));
    ASSERT_EQ(data.Groups().size(), 1u);
    EXPECT_EQ(data.Groups()[0].get(), second);
    EXPECT_EQ(data.FreeGroupName("Pair"), "Pair");
    EXPECT_EQ(data.FreeGroupName("Other"), "Other 2");
}

TEST_F(LevelTest, DissolvedGroupFreesItsObjects) {
    SceneObject& a = MakeObject("A");
    SceneObject& b = MakeObject("B");
    level.Data()->DissolveGroup(level.Data()->MakeGroup("Pair", {&a, &b}));
    EXPECT_EQ(level.Data()->GroupOf(&a), nullptr);
}

TEST_F(LevelTest, WithoutALevelOperationsDoNothing) {
    level.Close();
    EXPECT_EQ(level.GetLevelData(), nullptr);
    EXPECT_EQ(level.CreateObject({}), nullptr);
    EXPECT_EQ(level.FindObject(1), nullptr);
    EXPECT_EQ(level.FindObject("A"), nullptr);
    level.DeleteObject(nullptr);
    EXPECT_FALSE(level.SetParent(nullptr, nullptr));
    EXPECT_EQ(Names(), Texts{});
    level.New("");
    EXPECT_NE(level.GetLevelData()->filmManager, nullptr);
    EXPECT_NE(level.GetLevelData()->sunObject, nullptr);
}

TEST_F(LevelTest, DestroyHookHearsOfEachObjectOnce) {
    Texts gone;
    level.SetDestroyHook([&](EditorObject* object) { gone.push_back(object->name); });
    SceneObject& a = MakeObject("A");
    MakeObject("B");
    level.DeleteObject(&a);
    EXPECT_EQ(gone, (Texts{"A"}));
    level.Close();
    EXPECT_EQ(gone, (Texts{"A", "B"}));
    level.SetDestroyHook(nullptr);
}

TEST_F(LevelTest, RayCastGivesTheNearestShownMesh) {
    SceneObject& far = MakeObject("Far", {0.0f, 0.0f, -20.0f}, nullptr, "MeshObject", "robot.glb");
    SceneObject& near = MakeObject("Near", {0.0f, 0.0f, -10.0f}, nullptr, "MeshObject", "robot.glb");
    const float from[3] = {0.0f, 0.0f, 0.0f};
    float to[3] = {0.0f, 0.0f, -40.0f};
    EXPECT_NE(level.GetLevelData()->RayCast(from, to, 0), 0);
    ExpectVector({to[0], to[1], to[2]}, {0.0f, 0.0f, -10.0f});

    near.visible = 0;
    float again[3] = {0.0f, 0.0f, -40.0f};
    EXPECT_NE(level.GetLevelData()->RayCast(from, again, 0), 0);
    ExpectVector({again[0], again[1], again[2]}, {0.0f, 0.0f, -20.0f});

    far.SetMatrix(engine::Compose({0.0f, 0.0f, -20.0f}, {}, {0.0f, 1.0f, 1.0f}).m, 0); // flat
    float miss[3] = {0.0f, 0.0f, -40.0f};
    EXPECT_EQ(level.GetLevelData()->RayCast(from, miss, 0), 0);
    EXPECT_EQ(miss[2], -40.0f);
}

TEST_F(LevelTest, RayCastSeesMovedAndScaledMeshes) {
    SceneObject& wall = MakeObject("Wall", {}, nullptr, "MeshObject", "robot.glb");
    wall.SetMatrix(engine::Compose({100.0f, 0.0f, -10.0f}, {}, {10.0f, 10.0f, 1.0f}).m, 0);
    const float from[3] = {104.0f, 0.0f, 0.0f}; // half a mesh unit off the middle is 5
    float to[3] = {104.0f, 0.0f, -20.0f};
    EXPECT_NE(level.GetLevelData()->RayCast(from, to, 0), 0);
    ExpectVector({to[0], to[1], to[2]}, {104.0f, 0.0f, -10.0f}, 1e-4f);
    const float beside[3] = {106.0f, 0.0f, 0.0f};
    float miss[3] = {106.0f, 0.0f, -20.0f};
    EXPECT_EQ(level.GetLevelData()->RayCast(beside, miss, 0), 0);
}

TEST_F(LevelTest, FreshViewsAndLightsAreMadeForCentimetres) {
    level.Views().SetCount(1);
    const engine::View& view = *level.Views().At(0);
    const float* camera = view.CameraMatrix();
    ExpectVector({camera[12], camera[13], camera[14]}, {800.0f, 600.0f, 800.0f}, 1e-2f);
    EXPECT_EQ(view.camera->data.recordNear, 10.0f);
    EXPECT_EQ(view.camera->data.recordFar, 100000.0f);
    EXPECT_EQ(engine::LightProperties().range, 1000.0f);
    const engine::SavedView saved;
    EXPECT_EQ(saved.nearPlane, 10.0f);
    EXPECT_EQ(saved.farPlane, 100000.0f);
}

TEST_F(LevelTest, ViewsHoldCameraAndProjection) {
    EXPECT_EQ(level.GetViewManager()->GetView(0), nullptr);
    level.Views().SetCount(2);
    IView* view = level.GetViewManager()->GetView(1);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(level.GetViewManager()->GetView(2), nullptr);
    EXPECT_EQ(level.GetViewManager()->GetView(-1), nullptr);
    view->SetProjection(0.5f, 0.25f, 500.0f, 0);
    EXPECT_EQ(view->GetFieldOfView(), 0.5f);
    EXPECT_EQ(view->camera->data.recordNear, 0.25f);
    EXPECT_EQ(view->camera->data.recordFar, 500.0f);
    const engine::Matrix4 camera = engine::CameraMatrix({1.0f, 2.0f, 3.0f}, {}, 0.0f);
    level.Views().At(1)->SetCamera(camera.m);
    ExpectVector(TransformPoint({1.0f, 2.0f, 3.0f}, engine::MatrixFrom(view->camera->data.matrices[1])), {});
    level.Views().SetCount(-1);
    EXPECT_EQ(level.Views().Count(), 0);
}

TEST_F(LevelTest, ALevelWithoutAFolderHasTheUnsavedFolderAsItsRootsName) {
    level.SetUnsavedFolder("/state/stage");
    level.New("");
    EXPECT_EQ(level.Data()->Root().name, "/state/stage/");
    EXPECT_EQ(level.Folder(), "");
    level.SetFolder("/levels/harbour");
    EXPECT_EQ(level.Data()->Root().name, "/levels/harbour/");
}

TEST_F(LevelTest, NamesForManyObjectsTakeAsManyLookUpsForEach) {
    const auto lookups = [this](int count) {
        level.New("");
        MakeObject("Crate");
        engine::UniqueNames names(*level.Data());
        for (int i = 1; i <= count; ++i) {
            EXPECT_EQ(names.Take("Crate"), "Crate" + std::to_string(i));
        }
        return names.Lookups();
    };
    EXPECT_EQ(lookups(500), 2u * 500u); // the name itself, and the next number
    EXPECT_EQ(lookups(5000), 2u * 5000u);
}

} // namespace engine_test

#include "host/engine/LevelRoot.h"
#include "tests/engine/EngineFixture.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace engine_test {

using engine::Compose;
using engine::Matrix4;
using engine::SceneObject;

class SceneObjectTest : public EngineTest {};

TEST_F(SceneObjectTest, IsALevelObjectAndAnEditorObjectUnlessForItsMatrixOnly) {
    SceneObject& box = MakeObject("Box");
    EXPECT_TRUE(box.IsA(ClassId::LevelObject));
    EXPECT_TRUE(box.IsA(ClassId::EditorObject));
    EXPECT_FALSE(box.IsA(ClassId::LevelRoot));
    box.objectKind = ObjectKind::MatrixOnly;
    EXPECT_TRUE(box.IsA(ClassId::LevelObject));
    EXPECT_FALSE(box.IsA(ClassId::EditorObject));
}

TEST_F(SceneObjectTest, RootIsTheRootOnly) {
    EditorObject& root = level.Data()->Root();
    EXPECT_TRUE(root.IsA(ClassId::LevelRoot));
    EXPECT_FALSE(root.IsA(ClassId::LevelObject));
    EXPECT_FALSE(root.IsA(ClassId::EditorObject));
    EXPECT_NE(root.GetInfo(), nullptr);
    EXPECT_EQ(root.GetMatrix(0)[0], 1.0f);
    EXPECT_EQ(root.GetMeshElement(0), nullptr);
    EXPECT_EQ(root.FindAnimation("Lift"), -1);
    level.SetFolder("/levels/harbour");
    EXPECT_EQ(root.name, "/levels/harbour/");
}

TEST_F(SceneObjectTest, MatrixAndPositionAreLive) {
    SceneObject& box = MakeObject("Box", {1.0f, 2.0f, 3.0f});
    const float* matrix = box.GetMatrix(0);
    const float* position = box.GetPosition(1);
    const float moved[3] = {7.0f, 8.0f, 9.0f};
    box.SetPosition(moved, 0);
    EXPECT_EQ(matrix[12], 7.0f);
    EXPECT_EQ(position[2], 9.0f);
    box.SetMatrix(box.GetMatrix(0), 0); // its own live matrix
    EXPECT_EQ(matrix[13], 8.0f);
}

TEST_F(SceneObjectTest, ChildrenFollowByTheirPlaceInTheParent) {
    SceneObject& parent = MakeObject("Parent");
    SceneObject& child = MakeObject("Child", {0.0f, 0.0f, 1.0f}, &parent);
    SceneObject& grandchild = MakeObject("Grandchild", {0.0f, 0.0f, 2.0f}, &child);
    parent.SetMatrix(Compose({10.0f, 0.0f, 0.0f}, {0.0f, 90.0f, 0.0f}, {1, 1, 1}).m, 0);
    ExpectVector(child.World().Translation(), {11.0f, 0.0f, 0.0f});
    ExpectVector(grandchild.World().Translation(), {12.0f, 0.0f, 0.0f});
    ExpectVector(child.World().Axis(2), {1.0f, 0.0f, 0.0f});
}

TEST_F(SceneObjectTest, ManyMovesOfTheParentDoNotShiftTheChild) {
    SceneObject& parent = MakeObject("Parent");
    SceneObject& child = MakeObject("Child", {0.3f, 0.7f, 1.1f}, &parent);
    for (int i = 0; i < 20000; ++i) {
        parent.SetMatrix(Compose({0.01f * static_cast<float>(i), 3.0f, 0.0f},
                                 {static_cast<float>(i), 20.0f, 7.0f}, {1.5f, 1.5f, 1.5f})
                             .m,
                         0);
    }
    parent.SetMatrix(Matrix4{}.m, 0);
    ExpectVector(child.World().Translation(), {0.3f, 0.7f, 1.1f}, 1e-6f);
}

TEST_F(SceneObjectTest, ChildMovedByItselfKeepsItsNewPlace) {
    SceneObject& parent = MakeObject("Parent");
    SceneObject& child = MakeObject("Child", {1.0f, 0.0f, 0.0f}, &parent);
    const float there[3] = {5.0f, 0.0f, 0.0f};
    const float moved[3] = {0.0f, 2.0f, 0.0f};
    parent.SetPosition(moved, 0);
    child.SetPosition(there, 0);
    const float home[3] = {0.0f, 0.0f, 0.0f};
    parent.SetPosition(home, 0);
    ExpectVector(child.World().Translation(), {5.0f, -2.0f, 0.0f});
}

TEST_F(SceneObjectTest, FlatOrBrokenParentLeavesItsChildrenWhereTheyWere) {
    SceneObject& parent = MakeObject("Parent");
    SceneObject& child = MakeObject("Child", {1.0f, 0.0f, 0.0f}, &parent);
    Matrix4 broken;
    broken.m[12] = std::nanf("");
    parent.SetMatrix(broken.m, 0);
    ExpectVector(child.World().Translation(), {1.0f, 0.0f, 0.0f});
    const float moved[3] = {0.0f, 2.0f, 0.0f};
    parent.SetMatrix(Matrix4{}.m, 0);
    parent.SetPosition(moved, 0);
    ExpectVector(child.World().Translation(), {1.0f, 2.0f, 0.0f});
}

TEST_F(SceneObjectTest, MeshTableIsAskedByIndexAndName) {
    SceneObject& robot = MakeObject("Robot", {}, nullptr, "MeshObject", "robot.glb");
    ASSERT_NE(robot.GetMeshElement(1), nullptr);
    EXPECT_EQ(robot.GetMeshElement(1)->name, "arm");
    EXPECT_EQ(robot.GetMeshElement(1)->parent, 0);
    EXPECT_EQ(robot.GetMeshElement(3), nullptr);
    EXPECT_EQ(robot.GetMeshElement(-1), nullptr);
    EXPECT_EQ(robot.FindMeshElement("hand"), 2);
    EXPECT_EQ(robot.FindMeshElement("foot"), -1);
    EXPECT_EQ(robot.FindAnimation("Turn"), 1);
    EXPECT_EQ(robot.FindAnimation("Run"), -1);
    EXPECT_EQ(robot.GetAnimationDuration(1), 4.0f);
    EXPECT_EQ(robot.GetAnimationDuration(-1), -1.0f);
    EXPECT_EQ(robot.GetAnimationDuration(2), -1.0f);
}

TEST_F(SceneObjectTest, TheEmptyElementIsTheWholeObjectAndHasNoRecord) {
    for (const char* mesh : {"robot.glb", ""}) {
        const SceneObject& object = MakeObject("Object", {}, nullptr, "MeshObject", mesh);
        EXPECT_GE(object.FindMeshElement(""), 0);
        EXPECT_EQ(object.GetMeshElement(object.FindMeshElement("")), nullptr);
        EXPECT_EQ(object.ElementMatrix(""), Matrix4{});
    }
}

TEST_F(SceneObjectTest, AParentThatComesBackGivesItsChildrenTheirVeryNumbersBack) {
    SceneObject& parent = MakeObject("Parent");
    parent.SetMatrix(Compose({0.1f, 0.2f, 0.3f}, {11.0f, 22.0f, 33.0f}, {1.7f, 1.7f, 1.7f}).m, 0);
    SceneObject& child = MakeObject("Child", {0.3f, 0.7f, 1.1f}, &parent);
    const Matrix4 ofParent = parent.World();
    const Matrix4 ofChild = child.World();
    parent.SetMatrix(Compose({5.0f, 6.0f, 7.0f}, {44.0f, 5.0f, 6.0f}, {1, 1, 1}).m, 0);
    parent.SetMatrix(ofParent.m, 0);
    EXPECT_EQ(child.World(), ofChild);
}

TEST_F(SceneObjectTest, WithoutAMeshThereIsNoTable) {
    level.SetMeshLibrary(nullptr);
    SceneObject& robot = MakeObject("Robot", {2.0f, 0.0f, 0.0f}, nullptr, "MeshObject", "robot.glb");
    EXPECT_EQ(robot.Mesh(), nullptr);
    EXPECT_EQ(robot.GetMeshElement(0), nullptr);
    EXPECT_EQ(robot.FindAnimation("Lift"), -1);
    EXPECT_EQ(robot.PreparePose(), nullptr);
    ExpectVector(robot.ElementWorld("arm").Translation(), {2.0f, 0.0f, 0.0f});
}

TEST_F(SceneObjectTest, InfoKeepsClassesPluginDataAndState) {
    SceneObject& box = MakeObject("Box");
    EditorObjectInfo& info = *box.GetInfo();
    EXPECT_EQ(info.className, "MeshObject");
    info.saveClassName = "Other";
    info.SetClassName(ClassName::VirtualObject);
    EXPECT_EQ(info.className, ClassName::VirtualObject);
    EXPECT_EQ(info.saveClassName, ClassName::VirtualObject);
    int data = 0;
    EXPECT_EQ(info.GetPluginData(6), nullptr);
    info.SetPluginData(6, &data);
    EXPECT_EQ(info.GetPluginData(6), &data);
    EXPECT_EQ(info.GetPluginData(5), nullptr);
    EXPECT_FALSE(info.IsPlaced());
    box.Info().hidden = true;
    EXPECT_TRUE(info.IsPlaced());
}

TEST_F(SceneObjectTest, HelperIsInactiveUntilItsUpdate) {
    engine::ObjectSpec spec;
    spec.className = ClassName::GLLight;
    spec.name = "Light";
    spec.active = false;
    SceneObject& light = *level.CreateObject(spec);
    EXPECT_FALSE(light.GetInfo()->IsActive());
    light.GetInfo()->Update(0);
    EXPECT_TRUE(light.GetInfo()->IsActive());
    EXPECT_TRUE(light.IsLight());
    EXPECT_TRUE(MakeObject("Box").GetInfo()->IsActive());
}

TEST_F(SceneObjectTest, ShownUnlessHiddenInOneOfThreeWays) {
    SceneObject& box = MakeObject("Box");
    EXPECT_TRUE(box.IsShown());
    box.visible = 0;
    EXPECT_FALSE(box.IsShown());
    box.visible = 1;
    box.SetFlags(box.GetFlags() | 4u);
    EXPECT_FALSE(box.IsShown());
    box.SetFlags(0);
    box.Info().hidden = true;
    EXPECT_FALSE(box.IsShown());
}

TEST_F(SceneObjectTest, TransientBodyWithoutAxesStandsUpright) {
    SceneObject& box = MakeObject("Box");
    engine::Matrix4 matrix;
    matrix.SetTranslation({1.0f, 2.0f, 3.0f});
    matrix.m[0] = std::numeric_limits<float>::quiet_NaN();
    box.SetMatrix(matrix.m, 0);
    EXPECT_TRUE(std::isnan(box.World().m[0])) << "other objects keep what they are given";
    box.transient = true;
    box.SetMatrix(matrix.m, 0);
    engine::Matrix4 upright;
    upright.SetTranslation({1.0f, 2.0f, 3.0f});
    EXPECT_TRUE(std::equal(upright.m, upright.m + 16, box.World().m));
}

} // namespace engine_test

#include "host/stage/host/ScenePicker.h"

#include "tests/stage/CubeMesh.h"

#include <cmath>
#include <gtest/gtest.h>

class ScenePickerTest : public ::testing::Test {
protected:
    ScenePickerTest() {
        level.SetMeshLibrary(&library);
        level.New("");
        view.Resize(200, 200);
        view.navigation.LookAt({0, 0, 20}, {0, 0, 0});
        view.ApplyNavigation();
    }
    engine::SceneObject* Add(const char* name, const char* mesh, float x, float y, float z) {
        engine::ObjectSpec spec;
        spec.className = mesh != nullptr ? "MeshObject" : "EmptyObject";
        spec.name = name;
        spec.meshName = mesh != nullptr ? mesh : "";
        spec.matrix.SetTranslation({x, y, z});
        return level.CreateObject(spec);
    }

    CubeLibrary library;
    engine::Level level;
    engine::View engineView;
    stage::StageView view{engineView};
    stage::ScenePicker picker{level};
};

TEST_F(ScenePickerTest, TheNearerOfTwoMeshesIsPicked) {
    Add("Far", "cube", 0, 0, -5);
    EditorObject* near = Add("Near", "cube", 0, 0, 5);
    EXPECT_EQ(picker.At(view, 100, 100), near);
}

TEST_F(ScenePickerTest, NothingIsPickedBesideAMesh) {
    Add("Cube", "cube", 0, 0, 0);
    EXPECT_EQ(picker.At(view, 5, 5), nullptr);
}

TEST_F(ScenePickerTest, HiddenObjectsAreNotPicked) {
    engine::SceneObject* cube = Add("Cube", "cube", 0, 0, 0);
    cube->visible = 0;
    EXPECT_EQ(picker.At(view, 100, 100), nullptr);
    cube->visible = 1;
    cube->Info().hidden = true;
    EXPECT_EQ(picker.At(view, 100, 100), nullptr);
    cube->Info().hidden = false;
    EXPECT_EQ(picker.At(view, 100, 100), cube);
}

TEST_F(ScenePickerTest, AViewThatAPluginHoldsHasOnlyMeshes) {
    EditorObject* cube = Add("Cube", "cube", 0, 0, 0);
    EditorObject* light = Add("Light", nullptr, 0, 0, 5);
    EXPECT_EQ(picker.At(view, 100, 100), light);
    view.attachedTo = 1;
    EXPECT_EQ(picker.At(view, 100, 100), cube);
    EXPECT_EQ(picker.InRectangle(view, 0, 0, 200, 200), (ObjectList{cube}));
}

TEST_F(ScenePickerTest, PlacesWithoutABodyArePickedWithinAFewPixels) {
    EditorObject* empty = Add("Empty", nullptr, 0, 0, 0);
    EXPECT_EQ(picker.At(view, 100 + 13, 100), empty);
    EXPECT_EQ(picker.At(view, 100 + 16, 100), nullptr);
}

TEST_F(ScenePickerTest, ARectangleTakesWhatHasItsMiddleInIt) {
    EditorObject* left = Add("Left", "cube", -5, 0, 0);
    EditorObject* right = Add("Right", nullptr, 5, 0, 0);
    EXPECT_EQ(picker.InRectangle(view, 0, 0, 100, 200), (ObjectList{left}));
    EXPECT_EQ(picker.InRectangle(view, 0, 0, 200, 200), (ObjectList{left, right}));
    EXPECT_TRUE(picker.InRectangle(view, 0, 0, 10, 10).empty());
}

TEST_F(ScenePickerTest, ANewObjectStandsOnWhatTheRayMeets) {
    Add("Cube", "cube", 0, 0, 0);
    const glm::vec3 onCube = picker.PlaceAt({{0, 10, 0}, {0, -1, 0}}, 5.0f);
    EXPECT_NEAR(onCube.y, 1.0f, 1e-3f);
    const glm::vec3 onGround = picker.PlaceAt({{50, 10, 0}, {0, -1, 0}}, 5.0f);
    EXPECT_NEAR(onGround.y, 0.0f, 1e-3f);
    const glm::vec3 inTheAir = picker.PlaceAt({{50, 10, 0}, {0, 1, 0}}, 5.0f);
    EXPECT_NEAR(inTheAir.y, 15.0f, 1e-3f);
}

TEST_F(ScenePickerTest, BoundsGrowWithScaleAndCoverAllObjects) {
    engine::SceneObject* cube = Add("Cube", "cube", 0, 0, 0);
    EXPECT_NEAR(picker.BoundsOf(*cube).radius, std::sqrt(3.0f), 1e-4f);
    const engine::Matrix4 doubled = engine::Compose({10, 0, 0}, {0, 0, 0}, {2, 2, 2});
    cube->SetMatrix(doubled.m, 0);
    EXPECT_NEAR(picker.BoundsOf(*cube).radius, 2.0f * std::sqrt(3.0f), 1e-4f);
    EXPECT_NEAR(picker.BoundsOf(*cube).center.x, 10.0f, 1e-4f);
    Add("Other", "cube", -10, 0, 0);
    EXPECT_GT(picker.BoundsOf(ObjectList()).radius, 10.0f);
}

TEST_F(ScenePickerTest, TheWholeLevelIsWithoutFarHelpersAndBackground) {
    Add("Sun", nullptr, 0, 1000, 0);
    EXPECT_NEAR(picker.BoundsOf(ObjectList()).center.y, 1000.0f, 1e-3f);
    Add("Cube", "cube", 0, 0, 0);
    Add("Other", "cube", 4, 0, 0);
    engine::SceneObject* hills = Add("Hills", "cube", 0, 0, 0);
    const engine::Matrix4 huge = engine::Compose({0, 0, 0}, {0, 0, 0}, {500, 500, 500});
    hills->SetMatrix(huge.m, 0);
    EXPECT_NEAR(picker.BoundsOf(ObjectList()).center.x, 2.0f, 1e-3f);
    EXPECT_LT(picker.BoundsOf(ObjectList()).radius, 10.0f);
}

TEST_F(ScenePickerTest, PicksReachTwoKilometres) {
    engine::SceneObject* wall = Add("Wall", "cube", 0, 0, 0);
    const engine::Matrix4 far = engine::Compose({0, 0, -195000}, {0, 0, 0}, {1000, 1000, 1000});
    wall->SetMatrix(far.m, 0);
    EXPECT_EQ(picker.At(view, 100, 100), wall);
    const glm::vec3 slope = glm::normalize(glm::vec3(190000.0f, -200.0f, 0.0f));
    const glm::vec3 onGround = picker.PlaceAt({{0, 200, 0}, slope}, 5.0f);
    EXPECT_NEAR(onGround.x, 190000.0f, 10.0f);
    EXPECT_NEAR(onGround.y, 0.0f, 0.1f);
}

TEST_F(ScenePickerTest, AnEmptyLevelShowsSixMetresAndAPlaceHalfAMetreAround) {
    EXPECT_FLOAT_EQ(picker.BoundsOf(ObjectList()).radius, 600.0f);
    EXPECT_FLOAT_EQ(picker.BoundsOf(*Add("Empty", nullptr, 0, 0, 0)).radius, 50.0f);
}

TEST_F(ScenePickerTest, WithoutALevelThereIsNothing) {
    level.Close();
    EXPECT_EQ(picker.At(view, 100, 100), nullptr);
    EXPECT_TRUE(picker.InRectangle(view, 0, 0, 200, 200).empty());
    EXPECT_GT(picker.BoundsOf(ObjectList()).radius, 0.0f);
}

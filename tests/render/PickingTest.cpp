#include "host/stage/render/Picking.h"

#include "tests/support/TestMeshes.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>
#include <limits>

namespace {

/// Boxes of side 2 at x = -4, 0, 4 with ids 1, 2, 3, seen from z = 10.
class PickingTest : public testing::Test {
protected:
    PickingTest() {
        const auto mesh = MakeBoxMesh({-1, -1, -1}, {1, 1, 1}, 200, 200, 200);
        for (int i = 0; i < 3; ++i) {
            RenderItem item;
            item.objectId = i + 1;
            item.mesh = mesh;
            item.world =
                glm::translate(glm::mat4(1.0f), glm::vec3(-4.0f + 4.0f * static_cast<float>(i), 0, 0));
            scene.items.push_back(item);
        }
        camera.view = glm::lookAt(glm::vec3(0, 0, 11), glm::vec3(0, 0, 0), glm::vec3(0, 1, 0));
        camera.projection = glm::perspective(glm::radians(90.0f), 1.0f, 1.0f, 100.0f);
    }

    std::vector<int> Rectangle(float x0, float y0, float x1, float y1) {
        return PickRectangle(scene, camera, 100, 100, {x0, y0}, {x1, y1});
    }

    RenderScene scene;
    RenderCamera camera;
};

TEST_F(PickingTest, TheItemUnderTheRayIsFoundWithItsDistance) {
    const auto hit = PickItem(scene, {{4, 0, 11}, {0, 0, -1}});
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->objectId, 3);
    EXPECT_FLOAT_EQ(hit->distance, 10.0f);
    EXPECT_FLOAT_EQ(hit->point.z, 1.0f);
}

TEST_F(PickingTest, TheNearestOfTwoIsFound) {
    scene.items[2].world = glm::translate(glm::mat4(1.0f), glm::vec3(0, 0, 4));
    EXPECT_EQ(PickItem(scene, {{0, 0, 11}, {0, 0, -1}})->objectId, 3);
}

TEST_F(PickingTest, DistancesAreInUnitsWhateverTheScale) {
    scene.items[1].world = glm::scale(glm::mat4(1.0f), glm::vec3(3.0f));
    const auto hit = PickItem(scene, {{0, 0, 11}, {0, 0, -1}});
    ASSERT_TRUE(hit);
    EXPECT_FLOAT_EQ(hit->distance, 8.0f);
}

TEST_F(PickingTest, BetweenTheBoxesIsNothing) {
    EXPECT_FALSE(PickItem(scene, {{2, 0, 11}, {0, 0, -1}}));
}

TEST_F(PickingTest, FlatAndBrokenItemsAreNoTrouble) {
    scene.items[0].world = glm::scale(glm::mat4(1.0f), glm::vec3(0.0f));
    scene.items[1].world[2][2] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(PickItem(scene, {{0, 0, 11}, {0, 0, -1}}));
}

TEST_F(PickingTest, APosedItemIsPickedWhereItIsShown) {
    auto mesh = std::make_shared<Mesh>(*scene.items[1].mesh);
    mesh->nodes.resize(1);
    mesh->parts[0].node = 0;
    mesh->Finish();
    MeshPose pose;
    pose.nodes = {glm::translate(glm::mat4(1.0f), glm::vec3(0, 5, 0))};
    scene.items[1].mesh = mesh;
    scene.items[1].pose = &pose;
    EXPECT_FALSE(PickItem(scene, {{0, 0, 11}, {0, 0, -1}}));
    EXPECT_EQ(PickItem(scene, {{0, 5, 11}, {0, 0, -1}})->objectId, 2);
}

TEST_F(PickingTest, ARectangleTakesWhatItTouches) {
    // Front faces are 10 away, 5 pixels a unit, and back faces 12 away: the boxes span 25 to 37.5, 45 to 55
    // and 62.5 to 75.
    EXPECT_EQ(Rectangle(0, 0, 100, 100), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(Rectangle(47, 48, 52, 52), (std::vector<int>{2}));
    EXPECT_EQ(Rectangle(34, 49, 46, 51), (std::vector<int>{1, 2}));
    EXPECT_EQ(Rectangle(56, 49, 62, 51), std::vector<int>());
    EXPECT_EQ(Rectangle(0, 0, 100, 40), std::vector<int>());
}

TEST_F(PickingTest, TheCornersMayComeInAnyOrder) {
    EXPECT_EQ(Rectangle(52, 52, 47, 48), Rectangle(47, 48, 52, 52));
}

TEST_F(PickingTest, RowsCountDownwards) {
    scene.items[0].world = glm::translate(glm::mat4(1.0f), glm::vec3(0, 6, 0));
    EXPECT_EQ(Rectangle(45, 15, 55, 25), (std::vector<int>{1}));
    EXPECT_EQ(Rectangle(45, 75, 55, 85), std::vector<int>());
}

TEST_F(PickingTest, ARectangleTakesHiddenItemsToo) {
    scene.items[2].world = glm::translate(glm::mat4(1.0f), glm::vec3(0, 0, -4));
    EXPECT_EQ(Rectangle(49, 49, 51, 51), (std::vector<int>{2, 3}));
}

TEST_F(PickingTest, NothingBehindTheCameraIsTaken) {
    scene.items[1].world = glm::translate(glm::mat4(1.0f), glm::vec3(0, 0, 30));
    EXPECT_EQ(Rectangle(49, 49, 51, 51), std::vector<int>());
}

} // namespace

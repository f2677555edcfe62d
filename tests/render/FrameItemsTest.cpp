#include "host/stage/render/FrameItems.h"

#include "tests/support/TestMeshes.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>
#include <limits>

using mesh::MeshBox;
using render::LightsReaching;
using render::RenderItem;

namespace {

TEST(FrameItemsTest, ABoxIsTurnedAndBoxedAnew) {
    MeshBox box;
    box.Add({-1, 0, 0});
    box.Add({1, 0, 0});
    const MeshBox turned =
        render::TransformBox(box, glm::rotate(glm::mat4(1.0f), glm::radians(90.0f), glm::vec3(0, 1, 0)));
    EXPECT_NEAR(turned.max.z, 1.0f, 1e-6f);
    EXPECT_NEAR(turned.max.x, 0.0f, 1e-6f);
}

TEST(FrameItemsTest, OnlyDrawableItemsAreCollected) {
    render::RenderScene scene;
    RenderItem good;
    good.mesh = MakeBoxMesh({0, 0, 0}, {2, 2, 2}, 1, 1, 1);
    RenderItem bare;
    RenderItem empty;
    empty.mesh = std::make_shared<mesh::Mesh>();
    RenderItem broken = good;
    broken.world[0][0] = std::numeric_limits<float>::infinity();
    scene.items = {bare, good, empty, broken, good};
    const std::vector<render::FrameItem> items = render::CollectItems(scene);
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[1].index, 1u);
    EXPECT_EQ(items[0].center, glm::vec3(1, 1, 1));
    EXPECT_NEAR(items[0].radius, 1.7320508f, 1e-6f);
}

TEST(FrameItemsTest, LightsReachByRangeAndStrength) {
    render::RenderScene scene;
    scene.lights = {{{0, 0, 0}, {1, 1, 1}, 5}, {{20, 0, 0}, {1, 1, 1}, 5}, {{1, 0, 0}, {0, 0, 0}, 50}};
    const render::ItemLights near = LightsReaching(scene, {6, 0, 0}, 2);
    ASSERT_EQ(near.count, 1);
    EXPECT_EQ(near.index[0], 0);
    EXPECT_EQ(LightsReaching(scene, {7, 0, 0}, 2).count, 0) << "touching is not reaching";
    EXPECT_EQ(LightsReaching(scene, {10, 0, 0}, 6).count, 2);
}

TEST(FrameItemsTest, FrustumPlanesFaceInwards) {
    const glm::mat4 projection = glm::perspective(glm::radians(90.0f), 1.0f, 1.0f, 10.0f);
    const auto inside = [&](const glm::vec3& point) {
        for (const glm::vec4& plane : render::FrustumPlanes(projection)) {
            if (glm::dot(glm::vec3(plane), point) + plane.w < 0.0f) {
                return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(inside({0, 0, -5}));
    EXPECT_TRUE(inside({4.9f, 0, -5}));
    EXPECT_FALSE(inside({5.1f, 0, -5}));
    EXPECT_FALSE(inside({0, 0, -0.5f}));
    EXPECT_FALSE(inside({0, 0, -11}));
    EXPECT_FALSE(inside({0, 0, 5}));
}

TEST(FrameItemsTest, ABoxBehindTheCameraFillsTheScreen) {
    MeshBox box;
    box.Add({-1, -1, -1});
    box.Add({1, 1, 1});
    MeshBox seen;
    render::AddScreenBox(box, glm::perspective(1.0f, 1.0f, 0.1f, 10.0f), seen);
    EXPECT_LE(seen.min.x, -1.0f);
    EXPECT_GE(seen.max.y, 1.0f);
}

} // namespace

#include "host/engine/mesh/MeshBvh.h"

#include <gtest/gtest.h>
#include <limits>

using mesh::MeshBvh;

namespace {

constexpr float kFar = 1000.0f;

/// Squares of side 1 in planes z = 0, -1, -2 ... `count` of them, two triangles each.
MeshBvh Stack(int count) {
    std::vector<glm::vec3> points;
    std::vector<std::uint32_t> indices;
    for (int i = 0; i < count; ++i) {
        const auto base = static_cast<std::uint32_t>(points.size());
        const auto z = static_cast<float>(-i);
        points.insert(points.end(), {{0, 0, z}, {1, 0, z}, {1, 1, z}, {0, 1, z}});
        for (const std::uint32_t corner : {0u, 1u, 2u, 0u, 2u, 3u}) {
            indices.push_back(base + corner);
        }
    }
    MeshBvh tree;
    tree.Build(points, indices);
    return tree;
}

TEST(MeshBvhTest, NearestOfManyIsHit) {
    const MeshBvh tree = Stack(100);
    const auto hit = tree.RayCast({0.7f, 0.2f, 5.0f}, {0, 0, -1}, kFar);
    ASSERT_TRUE(hit);
    EXPECT_FLOAT_EQ(hit->distance, 5.0f);
    EXPECT_EQ(hit->triangle, 0u);
}

TEST(MeshBvhTest, FromBehindTheLastSquareIsHit) {
    const MeshBvh tree = Stack(100);
    const auto hit = tree.RayCast({0.2f, 0.7f, -200.0f}, {0, 0, 1}, kFar);
    ASSERT_TRUE(hit);
    EXPECT_FLOAT_EQ(hit->distance, 101.0f);
    EXPECT_EQ(hit->triangle, 199u) << "second triangle of the square at z = -99";
}

TEST(MeshBvhTest, DistanceCountsInLengthsOfTheDirection) {
    const auto hit = Stack(1).RayCast({0.5f, 0.25f, 4.0f}, {0, 0, -8}, 1.0f);
    ASSERT_TRUE(hit);
    EXPECT_FLOAT_EQ(hit->distance, 0.5f);
}

TEST(MeshBvhTest, TheMaximumEndsTheRay) {
    EXPECT_FALSE(Stack(10).RayCast({0.5f, 0.25f, 5.0f}, {0, 0, -1}, 4.9f));
    EXPECT_TRUE(Stack(10).RayCast({0.5f, 0.25f, 5.0f}, {0, 0, -1}, 5.0f));
}

TEST(MeshBvhTest, RaysBesideMiss) {
    EXPECT_FALSE(Stack(10).RayCast({1.5f, 0.5f, 5.0f}, {0, 0, -1}, kFar));
    EXPECT_FALSE(Stack(10).RayCast({0.5f, 0.5f, 5.0f}, {0, 0, 1}, kFar));
}

TEST(MeshBvhTest, RaysInThePlaneOfABoxSideAreFollowed) {
    // The ray runs in x = 0, a side of every box, parallel to the slabs of x and y.
    EXPECT_TRUE(Stack(10).RayCast({0.0f, 0.5f, 5.0f}, {0, 0, -1}, kFar));
}

TEST(MeshBvhTest, EmptyTreesAndBadRaysMiss) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(MeshBvh().RayCast({0, 0, 0}, {0, 0, 1}, kFar));
    EXPECT_FALSE(Stack(3).RayCast({kNan, 0, 0}, {0, 0, 1}, kFar));
    EXPECT_FALSE(Stack(3).RayCast({0.5f, 0.2f, 5}, {0, 0, 0}, kFar));
}

TEST(MeshBvhTest, TrianglesThatAreNotFiniteAreLeftOut) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<glm::vec3> points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {kNan, 0, 0}};
    const std::vector<std::uint32_t> indices = {1, 2, 3, 0, 1, 2};
    MeshBvh tree;
    tree.Build(points, indices);
    const auto hit = tree.RayCast({0.2f, 0.2f, 1}, {0, 0, -1}, kFar);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->triangle, 1u) << "numbered as in the list that was given";
}

} // namespace

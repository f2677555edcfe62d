#include "host/engine/mesh/ShapeMesh.h"

#include "host/engine/mesh/GltfMeshLibrary.h"

#include <gtest/gtest.h>

namespace {

using engine::Shape;
using engine::ShapeKind;

class ShapeMeshTest : public testing::TestWithParam<ShapeKind> {
protected:
    const Shape shape{GetParam(), {100.0f, 300.0f, 60.0f}, 0xff0000};
    const std::shared_ptr<const mesh::Mesh> made = mesh::MakeShapeMesh(shape);
    bool IsPlane() const { return GetParam() == ShapeKind::Plane; }
};

TEST_P(ShapeMeshTest, FillsItsSizeAndStandsOnItsPlace) {
    EXPECT_NEAR(made->box.min.x, -50.0f, 0.01f);
    EXPECT_NEAR(made->box.max.x, 50.0f, 0.01f);
    EXPECT_NEAR(made->box.min.y, 0.0f, 0.01f);
    EXPECT_NEAR(made->box.max.y, IsPlane() ? 0.0f : 300.0f, 0.01f);
    EXPECT_NEAR(made->box.min.z, -30.0f, 0.01f);
    EXPECT_NEAR(made->box.max.z, 30.0f, 0.01f);
}

TEST_P(ShapeMeshTest, TrianglesFaceTheWayOfTheirNormals) {
    ASSERT_EQ(made->parts.size(), 1u);
    EXPECT_EQ(made->parts[0].indexCount, made->indices.size());
    ASSERT_FALSE(made->indices.empty());
    for (std::size_t i = 0; i + 2 < made->indices.size(); i += 3) {
        const mesh::MeshVertex& a = made->vertices[made->indices[i]];
        const mesh::MeshVertex& b = made->vertices[made->indices[i + 1]];
        const mesh::MeshVertex& c = made->vertices[made->indices[i + 2]];
        const glm::vec3 way = glm::cross(b.position - a.position, c.position - a.position);
        EXPECT_GT(glm::dot(way, a.normal + b.normal + c.normal), 0.0f) << i;
        EXPECT_NEAR(glm::length(a.normal), 1.0f, 1e-4f);
    }
}

TEST_P(ShapeMeshTest, NormalsLeadOut) {
    const glm::vec3 middle(0.0f, 150.0f, 0.0f);
    for (const mesh::MeshVertex& vertex : made->vertices) {
        if (!IsPlane()) {
            EXPECT_GE(glm::dot(vertex.normal, vertex.position - middle), 0.0f);
        }
    }
}

TEST_P(ShapeMeshTest, ARayFromAboveMeetsTheTop) {
    const auto hit = made->bvh.RayCast({0.1f, 1000.0f, 0.1f}, {0.0f, -1.0f, 0.0f}, 2000.0f);
    ASSERT_TRUE(hit.has_value());
    EXPECT_NEAR(hit->distance, IsPlane() ? 1000.0f : 700.0f, 2.0f);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ShapeMeshTest,
                         testing::Values(ShapeKind::Box, ShapeKind::Plane, ShapeKind::Sphere,
                                         ShapeKind::Cylinder, ShapeKind::Cone, ShapeKind::Capsule));

TEST(ShapeColorTest, RedIsLinearRed) {
    const auto made = mesh::MakeShapeMesh({ShapeKind::Box, {1.0f, 1.0f, 1.0f}, 0xff0080});
    EXPECT_EQ(made->vertices[0].color[0], 255);
    EXPECT_EQ(made->vertices[0].color[1], 0);
    EXPECT_EQ(made->vertices[0].color[2], 55) << "0x80 / 255 on the screen is 0.216 of the light";
}

TEST(ShapeColorTest, ALowCapsuleHasNoBeltAndStaysInItsHeight) {
    const auto made = mesh::MakeShapeMesh({ShapeKind::Capsule, {100.0f, 40.0f, 100.0f}, 0});
    EXPECT_NEAR(made->box.max.y, 40.0f, 0.01f);
    EXPECT_NEAR(made->box.max.x, 50.0f, 0.01f);
}

TEST(ShapeLibraryTest, ShapesNeedNoFolder) {
    mesh::GltfMeshLibrary library;
    const engine::IMesh* box = library.FindMesh("shape:box 100 200 300 #ffffff");
    ASSERT_NE(box, nullptr) << library.ErrorOf("shape:box 100 200 300 #ffffff");
    Vector3 low;
    Vector3 high;
    box->Bounds(low, high);
    EXPECT_FLOAT_EQ(high.y, 200.0f);
    EXPECT_EQ(library.FindMesh("shape:box 0 200 300 #ffffff"), nullptr);
    EXPECT_NE(library.ErrorOf("shape:box 0 200 300 #ffffff"), "");
}

} // namespace

#include "host/stage/windows/browse/ElementTint.h"
#include "tests/support/TestMeshes.h"

#include <gtest/gtest.h>

using namespace stage;

namespace {

/// Three nodes in a row, root, arm and hand, and a lamp beside them, each with a box of its own, the root's
/// baked. A fifth box hangs on the lamp and is bent by the lamp, three quarters, and the hand.
std::shared_ptr<mesh::Mesh> MakeRobot() {
    auto mesh = MakeBoxMesh(glm::vec3(-1.0f), glm::vec3(1.0f), 100, 100, 100);
    const std::vector<mesh::MeshVertex> box = mesh->vertices;
    const std::vector<std::uint32_t> triangles = mesh->indices;
    mesh->vertices.clear();
    mesh->indices.clear();
    mesh->parts.clear();
    for (const auto& [name, parent] : {std::pair{"root", -1}, {"arm", 0}, {"hand", 1}, {"lamp", -1}}) {
        mesh::MeshNode node;
        node.name = name;
        node.parent = parent;
        mesh->nodes.push_back(node);
    }
    for (int i = 0; i < 5; ++i) {
        mesh::MeshPart part;
        part.node = i > 0 && i < 4 ? i : -1;
        part.skin = i < 4 ? -1 : 0;
        part.firstVertex = static_cast<std::uint32_t>(mesh->vertices.size());
        part.vertexCount = static_cast<std::uint32_t>(box.size());
        part.firstIndex = static_cast<std::uint32_t>(mesh->indices.size());
        part.indexCount = static_cast<std::uint32_t>(triangles.size());
        for (const std::uint32_t index : triangles) {
            mesh->indices.push_back(part.firstVertex + index);
        }
        mesh->vertices.insert(mesh->vertices.end(), box.begin(), box.end());
        mesh->parts.push_back(part);
        mesh->sources.push_back({i < 4 ? i : 3, part.firstVertex, part.vertexCount});
    }
    mesh->skins.push_back({{3, 2}, {glm::mat4(1.0f), glm::mat4(1.0f)}});
    mesh->weights.resize(mesh->vertices.size());
    for (std::size_t i = 4 * box.size(); i < mesh->weights.size(); ++i) {
        mesh->weights[i] = {{0, 1, 0, 0}, {0.75f, 0.25f, 0.0f, 0.0f}};
    }
    mesh->Finish();
    return mesh;
}

constexpr std::size_t kBox = 24; ///< vertices of a box: four a side

} // namespace

TEST(ElementTintTest, AnElementTakesWhatHangsBelowAlongAndLeavesTheRest) {
    EXPECT_EQ(ElementShare::OfNodes(*MakeRobot(), 1), (std::vector<float>{0.0f, 1.0f, 0.25f, 0.0f}));
    EXPECT_EQ(ElementShare::OfNodes(*MakeRobot(), 0), (std::vector<float>{1.0f, 0.25f, 0.25f, 0.0f}));
    EXPECT_EQ(ElementShare::OfNodes(*MakeRobot(), -1), (std::vector<float>(4, 0.0f)));
}

TEST(ElementTintTest, BentVerticesFollowByTheWeightsOfTheirJoints) {
    const auto mesh = MakeRobot();
    ASSERT_EQ(mesh->vertices.size(), 5 * kBox);
    const std::vector<float> hand = ElementShare::OfVertices(*mesh, 2);
    EXPECT_FLOAT_EQ(hand[2 * kBox], 1.0f) << "its own box";
    EXPECT_FLOAT_EQ(hand[1 * kBox], 0.0f) << "the arm's";
    EXPECT_FLOAT_EQ(hand[4 * kBox], 0.25f) << "bent by a quarter";
    EXPECT_FLOAT_EQ(ElementShare::OfVertices(*mesh, 3)[4 * kBox], 1.0f) << "it hangs on the lamp in the file";
    const std::vector<float> arm = ElementShare::OfVertices(*mesh, 1);
    EXPECT_FLOAT_EQ(arm[4 * kBox], 0.0625f) << "the hand hangs below the arm";
}

TEST(ElementTintTest, ATriangleBelongsToItsNodeOrToTheHeaviestJoint) {
    const auto mesh = MakeRobot();
    constexpr std::uint32_t kTriangles = 12; // of a box
    EXPECT_EQ(ElementShare::OfTriangle(*mesh, 0), 0);
    EXPECT_EQ(ElementShare::OfTriangle(*mesh, 2 * kTriangles + 11), 2);
    EXPECT_EQ(ElementShare::OfTriangle(*mesh, 4 * kTriangles), 3) << "three quarters hang on the lamp";
    EXPECT_EQ(ElementShare::OfTriangle(*mesh, 5 * kTriangles), -1) << "there is no such triangle";
}

TEST(ElementTintTest, OnlyTheCopyOfAnElementHasOtherColours) {
    const auto mesh = MakeRobot();
    const auto whole = TintElement(*mesh, -1);
    const auto unknown = TintElement(*mesh, 4);
    const auto arm = TintElement(*mesh, 1);
    for (std::size_t i = 0; i < mesh->vertices.size(); ++i) {
        EXPECT_EQ(whole->vertices[i].color[0], 100) << i;
        EXPECT_EQ(unknown->vertices[i].color[0], 100) << i;
        EXPECT_EQ(mesh->vertices[i].color[0], 100) << i;
    }
    EXPECT_EQ(arm->vertices[kBox].color[0], 255) << "lit";
    EXPECT_LT(arm->vertices[0].color[0], 100) << "toned down";
    EXPECT_GT(arm->vertices[2 * kBox].color[0], arm->vertices[0].color[0]) << "hangs below, a little lit";
    EXPECT_EQ(arm->indices, mesh->indices);
    EXPECT_EQ(arm->restNodes.size(), mesh->restNodes.size());
}

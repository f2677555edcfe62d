#include "host/engine/mesh/MeshPose.h"

#include "host/engine/mesh/Mesh.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

using mesh::MeshChannel;
using mesh::MeshCurve;
using mesh::MeshLayer;
using mesh::MeshPath;
using mesh::SampleChannel;

namespace {

MeshChannel Channel(int node, MeshPath path, std::vector<float> times, std::vector<glm::vec4> values,
                    MeshCurve curve = MeshCurve::Linear) {
    MeshChannel channel;
    channel.node = node;
    channel.path = path;
    channel.times = std::move(times);
    channel.values = std::move(values);
    channel.curve = curve;
    return channel;
}

/// A quarter turn about z as x, y, z, w.
const glm::vec4 kQuarterTurn(0.0f, 0.0f, 0.70710678f, 0.70710678f);
const glm::vec4 kNoTurn(0.0f, 0.0f, 0.0f, 1.0f);

/// Upper (at the origin) carries lower, 2 above it. The clip "Bend" turns lower by 90 degrees in 2 seconds,
/// "Rise" lifts upper by 4 in 1 second. One vertex hangs on lower, one half on each.
class MeshPoseTest : public testing::Test {
protected:
    MeshPoseTest() {
        mesh.nodes.resize(2);
        mesh.nodes[0].name = "upper";
        mesh.nodes[1].name = "lower";
        mesh.nodes[1].parent = 0;
        mesh.nodes[1].translation = {0, 2, 0};
        mesh.clips.push_back(
            {"Bend", 2.0f, {Channel(1, MeshPath::Rotation, {0, 2}, {kNoTurn, kQuarterTurn})}});
        mesh.clips.push_back(
            {"Rise", 1.0f, {Channel(0, MeshPath::Translation, {0, 1}, {{0, 0, 0, 0}, {0, 4, 0, 0}})}});
        mesh::MeshVertex vertex{};
        vertex.position = {0, 3, 0};
        vertex.normal = {0, 1, 0};
        mesh.vertices = {vertex, vertex};
        mesh.skins.push_back(
            {{0, 1}, {glm::mat4(1.0f), glm::translate(glm::mat4(1.0f), glm::vec3(0, -2, 0))}});
        mesh.weights.resize(2);
        mesh.weights[0] = {{1, 0, 0, 0}, {1, 0, 0, 0}};
        mesh.weights[1] = {{0, 1, 0, 0}, {0.5f, 0.5f, 0, 0}};
        mesh::MeshPart part;
        part.skin = 0;
        part.vertexCount = 2;
        mesh.parts.push_back(part);
    }

    void ExpectNear(const glm::vec3& actual, const glm::vec3& expected) {
        EXPECT_NEAR(actual.x, expected.x, 1e-5f);
        EXPECT_NEAR(actual.y, expected.y, 1e-5f);
        EXPECT_NEAR(actual.z, expected.z, 1e-5f);
    }

    mesh::Mesh mesh;
    mesh::MeshPose pose;
};

TEST_F(MeshPoseTest, WithoutLayersNodesRest) {
    pose.Evaluate(mesh, {});
    ExpectNear(glm::vec3(pose.nodes[1][3]), {0, 2, 0});
}

TEST_F(MeshPoseTest, ChildrenFollowTheirParents) {
    const MeshLayer rise{.clip = 1, .seconds = 0.5f};
    pose.Evaluate(mesh, {&rise, 1});
    ExpectNear(glm::vec3(pose.nodes[0][3]), {0, 2, 0});
    ExpectNear(glm::vec3(pose.nodes[1][3]), {0, 4, 0});
}

TEST_F(MeshPoseTest, TimeIsClampedToTheClip) {
    const MeshLayer late{.clip = 1, .seconds = 9.0f};
    pose.Evaluate(mesh, {&late, 1});
    ExpectNear(glm::vec3(pose.nodes[0][3]), {0, 4, 0});
    const MeshLayer early{.clip = 1, .seconds = -3.0f};
    pose.Evaluate(mesh, {&early, 1});
    ExpectNear(glm::vec3(pose.nodes[0][3]), {0, 0, 0});
}

TEST_F(MeshPoseTest, ALayerOfOneNodeLeavesThoseAboveAlone) {
    const MeshLayer layers[] = {{.clip = 0, .seconds = 2.0f, .rootNode = 1},
                                {.clip = 1, .seconds = 1.0f, .rootNode = 1}};
    pose.Evaluate(mesh, layers);
    ExpectNear(glm::vec3(pose.nodes[0][3]), {0, 0, 0});
    ExpectNear(glm::vec3(pose.nodes[1][1]), {-1, 0, 0});
}

TEST_F(MeshPoseTest, WeightMixesWithWhatLiesBelow) {
    const MeshLayer half{.clip = 1, .seconds = 1.0f, .weight = 0.5f};
    pose.Evaluate(mesh, {&half, 1});
    ExpectNear(glm::vec3(pose.nodes[0][3]), {0, 2, 0});
}

TEST_F(MeshPoseTest, UnknownClipsAreLeftOut) {
    const MeshLayer layers[] = {{.clip = 7, .seconds = 1.0f}, {.clip = -1, .seconds = 1.0f}};
    pose.Evaluate(mesh, layers);
    ExpectNear(glm::vec3(pose.nodes[1][3]), {0, 2, 0});
}

TEST_F(MeshPoseTest, SkinnedVerticesFollowTheirJoints) {
    const MeshLayer bend{.clip = 0, .seconds = 2.0f};
    pose.Evaluate(mesh, {&bend, 1});
    pose.SkinVertices(mesh);
    // 1 above the joint at (0, 2, 0), turned a quarter to the left.
    ExpectNear(pose.skinned[0].position, {-1, 2, 0});
    ExpectNear(pose.skinned[0].normal, {-1, 0, 0});
    // Half way between that and where the upper joint leaves it, (0, 3, 0).
    ExpectNear(pose.skinned[1].position, {-0.5f, 2.5f, 0});
}

TEST_F(MeshPoseTest, ModelPositionsAreThoseOfTheSkin) {
    const MeshLayer bend{.clip = 0, .seconds = 2.0f};
    pose.Evaluate(mesh, {&bend, 1});
    ExpectNear(pose.ModelPositions(mesh)[0], {-1, 2, 0});
}

TEST_F(MeshPoseTest, SampleLocalsGivesParentSpace) {
    float locals[32];
    mesh::SampleLocals(mesh, 0, 2.0f, locals);
    EXPECT_NEAR(locals[16 + 13], 2.0f, 1e-6f) << "translation of the lower node";
    EXPECT_NEAR(locals[16 + 0], 0.0f, 1e-6f);
    EXPECT_NEAR(locals[16 + 1], 1.0f, 1e-6f) << "its x axis points along y";
    mesh::SampleLocals(mesh, 99, 2.0f, locals);
    EXPECT_EQ(locals[16 + 0], 1.0f) << "an unknown clip is the rest pose";
}

TEST(SampleChannelTest, RotationTakesTheShortWayAtEvenSpeed) {
    const MeshChannel channel = Channel(0, MeshPath::Rotation, {0, 2}, {kNoTurn, kQuarterTurn});
    // Half of 90 degrees: sine and cosine of 22.5.
    const glm::vec4 value = SampleChannel(channel, 1.0f);
    EXPECT_NEAR(value.z, 0.38268343f, 1e-6f);
    EXPECT_NEAR(value.w, 0.92387953f, 1e-6f);
}

TEST(SampleChannelTest, StepHoldsUntilTheNextKey) {
    const MeshChannel channel =
        Channel(0, MeshPath::Translation, {0, 1}, {{5, 0, 0, 0}, {7, 0, 0, 0}}, MeshCurve::Step);
    EXPECT_EQ(SampleChannel(channel, 0.99f).x, 5.0f);
    EXPECT_EQ(SampleChannel(channel, 1.0f).x, 7.0f);
}

TEST(SampleChannelTest, CubicFollowsItsTangents) {
    // From 0 to 1 in 2 seconds with speeds 0 and 0: half way the value is one half.
    const MeshChannel still =
        Channel(0, MeshPath::Scale, {0, 2},
                {{0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {1, 1, 1, 0}, {0, 0, 0, 0}},
                MeshCurve::Cubic);
    EXPECT_NEAR(SampleChannel(still, 1.0f).x, 0.5f, 1e-6f);
    // With speed 1 at the start: (u^3 - 2u^2 + u) * 2 = 0.25 more at u = 1/2.
    MeshChannel pushed = still;
    pushed.values[2] = {1, 0, 0, 0};
    EXPECT_NEAR(SampleChannel(pushed, 1.0f).x, 0.75f, 1e-6f);
}

TEST(SampleChannelTest, NotANumberGivesTheFirstKey) {
    const MeshChannel channel = Channel(0, MeshPath::Translation, {0, 1}, {{5, 0, 0, 0}, {7, 0, 0, 0}});
    EXPECT_EQ(SampleChannel(channel, std::numeric_limits<float>::quiet_NaN()).x, 5.0f);
}

} // namespace

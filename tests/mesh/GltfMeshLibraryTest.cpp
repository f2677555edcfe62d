#include "host/engine/mesh/GltfMeshLibrary.h"
#include "tests/support/Paths.h"

#include <gtest/gtest.h>

namespace {

class GltfMeshLibraryTest : public testing::Test {
protected:
    GltfMeshLibraryTest() {
        library.SetFolder(SampleFolder());
        sailor = library.FindMesh("models/sailor.glb");
    }

    int Element(const std::string& name) const {
        for (std::size_t i = 0; i < sailor->Elements().size(); ++i) {
            if (sailor->Elements()[i].name == name) {
                return static_cast<int>(i);
            }
        }
        return -1;
    }

    mesh::GltfMeshLibrary library;
    const engine::IMesh* sailor = nullptr;
};

TEST_F(GltfMeshLibraryTest, BonesAreElementsBehindTheirParents) {
    ASSERT_NE(sailor, nullptr);
    EXPECT_GE(sailor->Elements().size(), 20u);
    EXPECT_EQ(sailor->Elements().size(), sailor->RestLocals().size());
    const int hand = Element("Bip01 R Hand");
    ASSERT_GE(hand, 0);
    EXPECT_EQ(sailor->Elements()[static_cast<std::size_t>(hand)].parent, Element("Bip01 R Forearm"));
    for (std::size_t i = 0; i < sailor->Elements().size(); ++i) {
        EXPECT_LT(sailor->Elements()[i].parent, static_cast<int>(i));
    }
}

TEST_F(GltfMeshLibraryTest, TheSailorHasHisClips) {
    ASSERT_NE(sailor, nullptr);
    std::vector<std::string> names;
    for (const engine::MeshClip& clip : sailor->Clips()) {
        names.push_back(clip.name);
        EXPECT_GT(clip.duration, 0.0f) << clip.name;
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Idle", "Walk", "Wave", "Talk"}));
    EXPECT_FLOAT_EQ(sailor->Clips()[1].duration, 1.0f);
}

TEST_F(GltfMeshLibraryTest, AnUnknownClipSamplesTheRestPose) {
    ASSERT_NE(sailor, nullptr);
    std::vector<engine::Matrix4> locals(sailor->Elements().size());
    sailor->SampleClip(99, 0.5f, locals.data());
    EXPECT_EQ(locals, sailor->RestLocals());
    sailor->SampleClip(1, 0.25f, locals.data());
    EXPECT_NE(locals, sailor->RestLocals());
}

TEST_F(GltfMeshLibraryTest, RaysMeetTheRestPoseAndThePosedBody) {
    ASSERT_NE(sailor, nullptr);
    const Vector3 from{0.0f, 120.0f, 400.0f};
    const Vector3 to{0.0f, 120.0f, -400.0f};
    float fraction = -1.0f;
    ASSERT_TRUE(sailor->RayCast(from, to, nullptr, fraction));
    EXPECT_GT(fraction, 0.4f);
    EXPECT_LT(fraction, 0.5f) << "the chest lies in front of the middle";
    // The whole body moved 500 to the side: every element by itself, since a pose is in mesh space.
    std::vector<engine::Matrix4> pose(sailor->Elements().size());
    for (engine::Matrix4& matrix : pose) {
        matrix.SetTranslation({500.0f, 0.0f, 0.0f});
    }
    EXPECT_FALSE(sailor->RayCast(from, to, pose.data(), fraction));
}

TEST_F(GltfMeshLibraryTest, BoundsAreThoseOfTheRestPose) {
    ASSERT_NE(sailor, nullptr);
    Vector3 low;
    Vector3 high;
    sailor->Bounds(low, high);
    EXPECT_NEAR(low.y, 0.0f, 5.0f);
    EXPECT_NEAR(high.y, 189.0f, 5.0f);
}

TEST_F(GltfMeshLibraryTest, MissingMeshesAreNullEveryTime) {
    EXPECT_EQ(library.FindMesh("models/none.glb"), nullptr);
    EXPECT_EQ(library.FindMesh("models/none.glb"), nullptr);
    EXPECT_NE(library.ErrorOf("models/none.glb"), "");
}

} // namespace

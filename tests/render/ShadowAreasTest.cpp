#include "host/stage/render/ShadowAreas.h"

#include "tests/support/TestMeshes.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using render::RenderItem;
using render::ShadowArea;
using testing::ElementsAre;
using testing::IsEmpty;

namespace render {
bool operator==(const ShadowArea& a, const ShadowArea& b) {
    return a.left == b.left && a.bottom == b.bottom && a.right == b.right && a.top == b.top;
}
void PrintTo(const ShadowArea& area, std::ostream* out) {
    *out << area.left << ' ' << area.bottom << " to " << area.right << ' ' << area.top;
}
} // namespace render

namespace {

constexpr ShadowArea kWhole{0, 0, 128, 128};

/// A map of 128 texels that shows -64 to 64 units: a texel is a unit. Boxes are of 16 units: one in the
/// middle covers 56 to 72, with two texels of border on the left and three on the right 54 to 75.
class ShadowAreasTest : public testing::Test {
protected:
    ShadowAreasTest() : box(MakeBoxMesh(glm::vec3(-8), glm::vec3(8), 200, 200, 200)) {
        projection = glm::scale(glm::mat4(1.0f), glm::vec3(1.0f / 64));
    }

    static glm::mat4 At(float x, float y) { return glm::translate(glm::mat4(1.0f), glm::vec3(x, y, 0)); }

    RenderItem& Add(float x, float y) {
        RenderItem& item = scene.items.emplace_back();
        item.mesh = box;
        item.world = At(x, y);
        return item;
    }

    std::vector<ShadowArea> Update() {
        items = CollectItems(scene);
        return areas.Update(items, projection);
    }

    std::shared_ptr<mesh::Mesh> box;
    render::RenderScene scene;
    std::vector<render::FrameItem> items;
    glm::mat4 projection{1.0f};
    render::ShadowAreas areas{128};
};

TEST_F(ShadowAreasTest, TheFirstFrameDrawsTheWholeMap) {
    Add(0, 0);
    EXPECT_THAT(Update(), ElementsAre(kWhole));
}

TEST_F(ShadowAreasTest, WhatStandsStillIsNotDrawnAgain) {
    Add(0, 0);
    Update();
    EXPECT_THAT(Update(), IsEmpty());
}

TEST_F(ShadowAreasTest, AMoveDrawsWhereTheCasterWasAndWhereItIs) {
    Add(-40, 0);
    Update();
    scene.items[0].world = At(40, 0);
    EXPECT_THAT(Update(), ElementsAre(ShadowArea{14, 54, 35, 75}, ShadowArea{94, 54, 115, 75}));
    EXPECT_THAT(Update(), IsEmpty());
}

TEST_F(ShadowAreasTest, PlacesThatMeetAreDrawnAsOne) {
    Add(0, 0);
    Update();
    scene.items[0].world = At(4, 0);
    EXPECT_THAT(Update(), ElementsAre(ShadowArea{54, 54, 79, 75}));
}

TEST_F(ShadowAreasTest, AnAreaHasTheCastersThatStandInIt) {
    Add(0, 0);
    Add(10, 10);
    Add(-40, -40);
    Update();
    EXPECT_THAT(areas.CastersIn({54, 54, 60, 60}), ElementsAre(&items[0]));
    EXPECT_THAT(areas.CastersIn({54, 54, 75, 75}), ElementsAre(&items[0], &items[1]));
    EXPECT_THAT(areas.CastersIn(kWhole), ElementsAre(&items[0], &items[1], &items[2]));
}

/// Half of the map are 8192 texels.
TEST_F(ShadowAreasTest, MoreThanHalfOfTheMapIsDrawnAsAWhole) {
    Add(0, 0).mesh = MakeBoxMesh(glm::vec3(-40), glm::vec3(40), 200, 200, 200); // 22 to 107
    Update();
    scene.items[0].world = At(0, 8); // 85 times 93
    EXPECT_THAT(Update(), ElementsAre(ShadowArea{22, 22, 107, 115}));
    scene.items[0].world = At(0, -4); // 85 times 97
    EXPECT_THAT(Update(), ElementsAre(kWhole));
}

TEST_F(ShadowAreasTest, AnotherLightDrawsTheWholeMap) {
    Add(0, 0);
    Update();
    projection[3].x = 0.25f;
    EXPECT_THAT(Update(), ElementsAre(kWhole));
}

TEST_F(ShadowAreasTest, CastersThatComeAndGoDrawTheWholeMap) {
    Add(0, 0);
    Update();
    Add(40, 0);
    EXPECT_THAT(Update(), ElementsAre(kWhole));
    scene.items[1].castsShadow = false;
    EXPECT_THAT(Update(), ElementsAre(kWhole));
}

TEST_F(ShadowAreasTest, WhatCastsNoShadowMayMove) {
    Add(0, 0);
    Add(40, 0).castsShadow = false;
    Update();
    scene.items[1].world = At(0, 40);
    EXPECT_THAT(Update(), IsEmpty());
}

TEST_F(ShadowAreasTest, AnotherMeshIsDrawnAnew) {
    Add(0, 0);
    Update();
    scene.items[0].mesh = MakeBoxMesh(glm::vec3(-16, -8, -8), glm::vec3(8), 200, 200, 200);
    EXPECT_THAT(Update(), ElementsAre(ShadowArea{46, 54, 75, 75}));
}

TEST_F(ShadowAreasTest, APoseIsDrawnWhereItCarriesTheMesh) {
    box->nodes.resize(1);
    box->restNodes = {glm::mat4(1.0f)};
    box->parts[0].node = 0;
    box->clips.resize(1);
    ASSERT_TRUE(box->IsPosable());
    mesh::MeshPose pose;
    pose.nodes = {glm::mat4(1.0f)};
    Add(0, 0).pose = &pose;
    Update();
    EXPECT_THAT(Update(), IsEmpty());
    pose.nodes = {At(0, 40)}; // 94 to 115
    EXPECT_THAT(Update(), ElementsAre(ShadowArea{54, 54, 75, 75}, ShadowArea{54, 94, 75, 115}));
}

TEST_F(ShadowAreasTest, WhatLiesOutsideTheMapIsCutOff) {
    EXPECT_EQ(areas.AreaOf(mesh::MeshBox{{-500, -8, 0}, {-60, 8, 0}}, projection),
              (ShadowArea{0, 54, 7, 75}));
    EXPECT_TRUE(areas.AreaOf(mesh::MeshBox{{-500, -8, 0}, {-400, 8, 0}}, projection).IsEmpty());
}

TEST_F(ShadowAreasTest, ABoxBeyondAllNumbersCoversTheMap) {
    const float most = std::numeric_limits<float>::max();
    EXPECT_EQ(areas.AreaOf(mesh::MeshBox{{-most, -most, 0}, {most, most, 0}},
                           glm::scale(projection, glm::vec3(1e9f))),
              kWhole);
}

} // namespace

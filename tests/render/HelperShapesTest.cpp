#include "host/stage/render/HelperShapes.h"
#include "host/stage/render/GroundGrid.h"
#include "host/stage/render/ShapeMeshes.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>

namespace HelperShapes = render::HelperShapes;
using render::GroundGrid;
using render::RenderLine;

namespace {

TEST(HelperShapesTest, ACircleKeepsItsDistanceAndItsPlane) {
    std::vector<RenderLine> lines;
    HelperShapes::AddCircle(lines, {1, 2, 3}, {0, 1, 0}, 4.0f, glm::vec4(1));
    ASSERT_FALSE(lines.empty());
    for (const RenderLine& line : lines) {
        EXPECT_NEAR(glm::distance(line.from, glm::vec3(1, 2, 3)), 4.0f, 1e-4f);
        EXPECT_NEAR(line.from.y, 2.0f, 1e-5f);
    }
    EXPECT_NEAR(glm::distance(lines.front().from, lines.back().to), 0.0f, 1e-4f) << "it closes";
}

TEST(HelperShapesTest, ALightShowsItsRangeOnlyWhenAsked) {
    const render::RenderLight light{{0, 0, 0}, {2, 1, 0}, 7.0f};
    std::vector<RenderLine> plain;
    std::vector<RenderLine> ranged;
    HelperShapes::AddPointLight(plain, light, false);
    HelperShapes::AddPointLight(ranged, light, true);
    EXPECT_EQ(plain.size(), 26u) << "one ray to each neighbour of a cube's middle";
    for (const RenderLine& line : plain) {
        EXPECT_NEAR(glm::length(line.from), 14.0f, 1e-4f); // centimetres
        EXPECT_NEAR(glm::length(line.to), 35.0f, 1e-4f);
    }
    EXPECT_GT(ranged.size(), plain.size());
    EXPECT_NEAR(glm::length(ranged.back().to), 7.0f, 1e-4f);
    EXPECT_EQ(plain[0].color.r, 1.0f) << "the brightest part of the light's colour is full";
}

TEST(HelperShapesTest, ACamerasPyramidOpensAlongItsView) {
    std::vector<RenderLine> lines;
    HelperShapes::AddCamera(lines, glm::mat4(1.0f), glm::radians(90.0f), 2.0f, 3.0f, glm::vec4(1));
    EXPECT_EQ(lines[0].from, glm::vec3(0));
    EXPECT_NEAR(lines[0].to.x, -6.0f, 1e-5f);
    EXPECT_NEAR(lines[0].to.y, -3.0f, 1e-5f);
    EXPECT_NEAR(lines[0].to.z, -3.0f, 1e-5f);
    mesh::MeshBox body; // what lies behind the eye
    for (const RenderLine& line : lines) {
        for (const glm::vec3& point : {line.from, line.to}) {
            if (point.z > 0.0f) {
                body.Add(point);
            }
        }
    }
    EXPECT_FLOAT_EQ(body.max.z, 50.0f) << "half a metre long";
    EXPECT_FLOAT_EQ(body.max.x, 12.0f);
    EXPECT_FLOAT_EQ(body.max.y, 14.0f);
}

TEST(HelperShapesTest, ABoxHasTwelveEdges) {
    mesh::MeshBox box;
    box.Add({0, 0, 0});
    box.Add({1, 2, 3});
    std::vector<RenderLine> lines;
    HelperShapes::AddBox(lines, box, glm::mat4(1.0f), glm::vec4(1));
    EXPECT_EQ(lines.size(), 12u);
    float length = 0.0f;
    for (const RenderLine& line : lines) {
        length += glm::distance(line.from, line.to);
    }
    EXPECT_FLOAT_EQ(length, 4.0f * (1 + 2 + 3));
}

TEST(GroundGridTest, LinesStandAMetreApartACentimetreUp) {
    const std::vector<RenderLine> lines = GroundGrid({0, 200, 0}); // along x and along z in turn
    EXPECT_FLOAT_EQ(lines[2].from.z - lines[0].from.z, 100.0f);
    EXPECT_FLOAT_EQ(lines[3].from.x - lines[1].from.x, 100.0f);
    EXPECT_FLOAT_EQ(lines[0].from.x, -6000.0f) << "sixty metres around";
    EXPECT_FLOAT_EQ(lines[0].to.x, 6000.0f);
    EXPECT_FLOAT_EQ(lines[0].from.y, 1.0f);
}

TEST(GroundGridTest, TheGridFollowsTheEyeInTensOfMetres) {
    const std::vector<RenderLine> here = GroundGrid({300, 200, 300});
    const std::vector<RenderLine> there = GroundGrid({990, 200, 0});
    ASSERT_EQ(here.size(), there.size());
    EXPECT_EQ(here[0].from, there[0].from) << "so that it does not swim";
    EXPECT_EQ(GroundGrid({1010, 200, 300})[0].from.x, here[0].from.x + 1000.0f);
}

TEST(GroundGridTest, TheAxesAreColoured) {
    int red = 0;
    int blue = 0;
    for (const RenderLine& line : GroundGrid({0, 2, 0})) {
        red += line.color.r > 0.8f ? 1 : 0;
        blue += line.color.b > 0.8f ? 1 : 0;
    }
    EXPECT_EQ(red, 1);
    EXPECT_EQ(blue, 1);
}

TEST(FlatGridTest, LinesStandAPowerOfTenApartAndTheAxesAreColoured) {
    render::RenderCamera camera;
    camera.view = glm::translate(glm::mat4(1.0f), {0.0f, 0.0f, -100.0f});
    camera.projection = glm::ortho(-400.0f, 400.0f, -300.0f, 300.0f, -1000.0f, 1000.0f);
    const std::vector<RenderLine> lines = render::FlatGrid(render::RenderGrid::Front, camera);
    // 300 / 3 is 100: nine lines across x from -400 to 400 and seven across y.
    ASSERT_EQ(lines.size(), 16u);
    EXPECT_EQ(lines[0].from.x, -400.0f);
    EXPECT_EQ(lines[1].from.x, -300.0f);
    EXPECT_GT(lines[4].color.g, lines[4].color.r) << "at x = 0 runs the y axis, green";
    EXPECT_GT(lines[12].color.r, lines[12].color.g) << "at y = 0 runs the x axis, red";
    EXPECT_TRUE(render::FlatGrid(render::RenderGrid::Ground, camera).empty());
    camera.projection = glm::perspective(1.0f, 1.0f, 1.0f, 100.0f);
    EXPECT_TRUE(render::FlatGrid(render::RenderGrid::Front, camera).empty());
}

TEST(GroundGridTest, FarAwayEyesAreNoTrouble) {
    for (const RenderLine& line : GroundGrid({1e30f, 0, -1e30f})) {
        EXPECT_TRUE(std::isfinite(line.from.x + line.to.z));
    }
}

TEST(ShapeMeshesTest, AllFacesLookOutwards) {
    for (const auto& mesh : {render::ShapeMeshes::MakeBox(2.0f, glm::vec3(1), 0),
                             render::ShapeMeshes::MakeOctahedron(1.0f, glm::vec3(1), 1)}) {
        for (std::size_t i = 0; i < mesh->indices.size(); i += 3) {
            const glm::vec3 a = mesh->vertices[mesh->indices[i]].position;
            const glm::vec3 b = mesh->vertices[mesh->indices[i + 1]].position;
            const glm::vec3 c = mesh->vertices[mesh->indices[i + 2]].position;
            EXPECT_GT(glm::dot(glm::cross(b - a, c - a), a + b + c), 0.0f);
        }
    }
}

} // namespace

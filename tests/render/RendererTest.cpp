#include "host/stage/render/Renderer.h"

#include "host/engine/Units.h"
#include "host/stage/render/ShadowMap.h"
#include "tests/support/TestMeshes.h"

#include <glm/gtc/matrix_transform.hpp>
#include <gtest/gtest.h>
#include <limits>
#include <set>

using render::Renderer;
using render::RenderImage;
using render::RenderItem;

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 90;
constexpr float kMetre = engine::kUnitsPerMetre;

int Red(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 16 & 255);
}
int Green(std::uint32_t pixel) {
    return static_cast<int>(pixel >> 8 & 255);
}
int Blue(std::uint32_t pixel) {
    return static_cast<int>(pixel & 255);
}
int Brightness(std::uint32_t pixel) {
    return Red(pixel) + Green(pixel) + Blue(pixel);
}

/// One renderer for all tests: making it takes longer than any picture. Lengths in the tests are metres.
class RendererTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        std::string error;
        renderer = Renderer::Create(error).release();
        ASSERT_NE(renderer, nullptr) << error;
    }
    static void TearDownTestSuite() {
        delete renderer;
        renderer = nullptr;
    }

    RendererTest() {
        scene.sky.clouds = 0.0f;
        scene.sky.fog = 0.0f;
        camera.view = LookAt({0, 1, 6}, {0, 1, 0});
        camera.projection = glm::perspective(0.9f, 16.0f / 9.0f, 0.1f * kMetre, 100.0f * kMetre);
    }

    static glm::mat4 LookAt(const glm::vec3& eye, const glm::vec3& target) {
        return glm::lookAt(eye * kMetre, target * kMetre, glm::vec3(0, 1, 0));
    }
    static glm::mat4 Moved(const glm::vec3& way) { return glm::translate(glm::mat4(1.0f), way * kMetre); }
    static render::RenderLine YellowLine(const glm::vec3& from, const glm::vec3& to) {
        return {from * kMetre, to * kMetre, {1, 1, 0, 1}, 3.0f};
    }
    void AddLight(const glm::vec3& place, const glm::vec3& color, float range) {
        scene.lights.push_back({place * kMetre, color, range * kMetre});
    }

    RenderItem& AddBox(const glm::vec3& low, const glm::vec3& high, std::uint8_t r, std::uint8_t g,
                       std::uint8_t b) {
        RenderItem item;
        item.mesh = MakeBoxMesh(low * kMetre, high * kMetre, r, g, b);
        scene.items.push_back(item);
        return scene.items.back();
    }

    RenderImage Draw(float detail = 1.0f) {
        RenderImage image;
        renderer->BeginFrame(scene);
        EXPECT_TRUE(renderer->DrawView(camera, kWidth, kHeight, image, detail));
        return image;
    }

    static std::uint32_t At(const RenderImage& image, int x, int y) {
        return image.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                            static_cast<std::size_t>(x)];
    }
    static std::uint32_t Middle(const RenderImage& image) { return At(image, kWidth / 2, kHeight / 2); }

    static Renderer* renderer;
    render::RenderScene scene;
    render::RenderCamera camera;
};

Renderer* RendererTest::renderer = nullptr;

TEST_F(RendererTest, ARedBoxInFrontIsRedInTheMiddle) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    const std::uint32_t pixel = Middle(Draw());
    EXPECT_GT(Red(pixel), 120);
    EXPECT_GT(Red(pixel), 2 * Green(pixel));
    EXPECT_GT(Red(pixel), 2 * Blue(pixel));
}

TEST_F(RendererTest, TheSkyIsBlueAboveAndBrighterAtTheHorizon) {
    scene.sun.direction = {0, 1, -0.2f};
    camera.view = LookAt({0, 1, 0}, {0, 1.4f, 1});
    const RenderImage image = Draw();
    EXPECT_GT(Blue(At(image, 80, 1)), Red(At(image, 80, 1)));
    EXPECT_GT(Brightness(At(image, 80, 85)), Brightness(At(image, 80, 1)));
}

TEST_F(RendererTest, TheUpperHalfOfTheSceneIsInTheUpperRows) {
    AddBox({-3, 1.2f, -1}, {3, 4, 1}, 20, 220, 20);
    const RenderImage image = Draw();
    EXPECT_GT(Green(At(image, 80, 20)), Red(At(image, 80, 20)) + 40);
    EXPECT_LT(Green(At(image, 80, 70)), Green(At(image, 80, 20)) + 40);
    EXPECT_LT(std::abs(Green(At(image, 80, 70)) - Red(At(image, 80, 70))), 60);
}

TEST_F(RendererTest, TheNearerOfTwoBoxesHidesTheOther) {
    AddBox({-1, 0, -3}, {1, 2, -2}, 20, 20, 220);
    AddBox({-1, 0, 0}, {1, 2, 1}, 220, 20, 20);
    EXPECT_GT(Red(Middle(Draw())), Blue(Middle(Draw())));
    std::swap(scene.items[0], scene.items[1]);
    EXPECT_GT(Red(Middle(Draw())), Blue(Middle(Draw()))) << "whatever their order in the list";
}

TEST_F(RendererTest, TheWorldMatrixMovesAnItem) {
    const RenderImage empty = Draw();
    RenderItem& item = AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    item.world = Moved({100, 0, 0});
    EXPECT_EQ(Draw().pixels, empty.pixels);
}

TEST_F(RendererTest, MirroredItemsShowTheirOutside) {
    RenderItem& item = AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    const std::uint32_t plain = Middle(Draw());
    item.world = glm::scale(glm::mat4(1.0f), glm::vec3(-1, 1, 1));
    EXPECT_EQ(Middle(Draw()), plain);
}

TEST_F(RendererTest, ItemsThatAreNotFiniteAreLeftOut) {
    const RenderImage empty = Draw();
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        scene.items.clear();
        AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20).world[3][1] = bad;
        EXPECT_EQ(Draw().pixels, empty.pixels);
    }
}

TEST_F(RendererTest, ACameraThatIsNotFiniteGivesAPlainPicture) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    camera.view[3][0] = std::numeric_limits<float>::quiet_NaN();
    const RenderImage image = Draw();
    ASSERT_EQ(image.pixels.size(), static_cast<std::size_t>(kWidth * kHeight));
    for (const std::uint32_t pixel : image.pixels) {
        ASSERT_EQ(pixel, image.pixels[0]);
    }
}

TEST_F(RendererTest, TheSameSceneGivesTheSameBytes) {
    scene.sky.clouds = 0.5f;
    scene.grid = render::RenderGrid::Ground;
    AddLight({1, 1, 2}, {3, 2, 1}, 5);
    AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20).outline = true;
    AddBox({-5, -0.2f, -5}, {5, 0, 5}, 120, 120, 120);
    for (const int supersample : {1, 2}) {
        EXPECT_EQ(Draw(supersample).pixels, Draw(supersample).pixels);
    }
}

TEST_F(RendererTest, TimeMovesTheClouds) {
    scene.sky.clouds = 0.6f;
    camera.view = LookAt({0, 1, 0}, {0, 2, 1});
    const RenderImage before = Draw();
    scene.seconds = 20.0f;
    EXPECT_NE(Draw().pixels, before.pixels);
}

TEST_F(RendererTest, AnOutlineStandsAroundTheItemAndNotOnIt) {
    RenderItem& item = AddBox({-1, 0, -1}, {1, 2, 1}, 20, 20, 220);
    const RenderImage plain = Draw();
    item.outline = true;
    const RenderImage outlined = Draw();
    EXPECT_EQ(Middle(outlined), Middle(plain));
    // The box's front face is 2 m wide, 5 m away: 90 / (2 * 5 * tan(0.45)) = 18.6 pixels a metre.
    int changed = 0;
    for (int x = 80 - 23; x < 80 - 17; ++x) {
        changed += At(outlined, x, 45) != At(plain, x, 45) ? 1 : 0;
    }
    EXPECT_GE(changed, 1);
    EXPECT_LE(changed, 4);
    EXPECT_EQ(At(outlined, 20, 45), At(plain, 20, 45));
}

TEST_F(RendererTest, AnOutlineShowsNothingOfTheOneBefore) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 20, 20, 220).outline = true;
    Draw();
    scene.items[0].world = Moved({1.0f, 0, 0});
    const RenderImage moved = Draw();
    std::string error;
    const std::unique_ptr<Renderer> fresh = Renderer::Create(error);
    RenderImage alone;
    fresh->BeginFrame(scene);
    ASSERT_TRUE(fresh->DrawView(camera, kWidth, kHeight, alone));
    EXPECT_EQ(moved.pixels, alone.pixels);
}

TEST_F(RendererTest, ALightBrightensWhatItReachesAndNothingElse) {
    scene.sun.color = glm::vec3(0.0f);
    AddBox({-4, 0, -1}, {-2, 2, 1}, 150, 150, 150);
    AddBox({2, 0, -1}, {4, 2, 1}, 150, 150, 150);
    const RenderImage dark = Draw();
    AddLight({-3, 1, 2.5f}, {4, 4, 4}, 3.0f);
    const RenderImage lit = Draw();
    EXPECT_GT(Brightness(At(lit, 28, 45)), Brightness(At(dark, 28, 45)) + 60);
    EXPECT_EQ(At(lit, 132, 45), At(dark, 132, 45));
}

TEST_F(RendererTest, ALightWithoutColourChangesNothing) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 150, 150, 150);
    const RenderImage plain = Draw();
    AddLight({0, 1, 2}, {0, 0, 0}, 5.0f);
    EXPECT_EQ(Draw().pixels, plain.pixels);
}

TEST_F(RendererTest, MoreLightsThanTheRendererKnowsAreLeftOut) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 150, 150, 150);
    for (std::size_t i = 0; i < render::RenderScene::kMaxLights; ++i) {
        AddLight({0, 1, 3}, {0.2f, 0.2f, 0.2f}, 6.0f);
    }
    const RenderImage eight = Draw();
    AddLight({0, 1, 3}, {9, 9, 9}, 6.0f);
    EXPECT_EQ(Draw().pixels, eight.pixels);
}

TEST_F(RendererTest, TheSunCastsShadows) {
    scene.sun.direction = {0, 1, 0};
    camera.view = LookAt({0, 5, 6}, {0, 0, 0});
    AddBox({-6, -0.2f, -6}, {6, 0, 6}, 150, 150, 150);
    AddBox({-0.5f, 3.5f, -0.5f}, {0.5f, 3.8f, 0.5f}, 150, 150, 150);
    const RenderImage shadowed = Draw();
    scene.items[1].castsShadow = false;
    const RenderImage open = Draw();
    EXPECT_LT(Brightness(Middle(shadowed)), Brightness(Middle(open)) - 60);
    EXPECT_EQ(At(shadowed, 10, 80), At(open, 10, 80));
}

TEST_F(RendererTest, AShadowIsThatOfASingleFrameHoweverItsCasterCameThere) {
    scene.sun.direction = {0.3f, 1, 0.2f};
    camera.view = LookAt({0, 8, 9}, {0, 0, 0});
    AddBox({-12, -0.2f, -12}, {12, 0, 12}, 150, 150, 150);
    AddBox({-3, 0, -3}, {-2, 2, -2}, 150, 150, 150);
    AddBox({-0.5f, 1.5f, -0.5f}, {0.5f, 1.8f, 0.5f}, 150, 150, 150);
    std::set<std::vector<std::uint32_t>> pictures;
    for (int step = 0; step < 6; ++step) {
        scene.items[2].world = Moved({-2.0f + static_cast<float>(step), 0, 0.5f});
        const RenderImage moved = Draw();
        pictures.insert(moved.pixels);
        std::string error;
        const std::unique_ptr<Renderer> fresh = Renderer::Create(error);
        RenderImage alone;
        fresh->BeginFrame(scene);
        ASSERT_TRUE(fresh->DrawView(camera, kWidth, kHeight, alone));
        EXPECT_EQ(moved.pixels, alone.pixels) << step;
    }
    EXPECT_EQ(pictures.size(), 6u) << "the caster has moved";
}

TEST_F(RendererTest, LaggingShadowsStayUntilTheSunHasTurnedByAQuarterOfADegree) {
    // Straight from above; the caster is out of the view, 30 m up, where a degree of the sun is half a metre
    // on the ground. The plate lies flat, and a turn this small does not change a shade of it.
    camera.view = glm::lookAt(glm::vec3(0, 4, 0) * kMetre, glm::vec3(0), glm::vec3(0, 0, -1));
    AddBox({-6, -0.2f, -6}, {6, 0, 6}, 150, 150, 150);
    AddBox({-0.5f, 30, -0.5f}, {0.5f, 30.2f, 0.5f}, 150, 150, 150);
    const auto draw = [this](float degrees, Renderer::Shadows shadows) {
        scene.sun.direction = {std::sin(glm::radians(degrees)), std::cos(glm::radians(degrees)), 0};
        RenderImage image;
        renderer->BeginFrame(scene, shadows);
        EXPECT_TRUE(renderer->DrawView(camera, kWidth, kHeight, image));
        int edge = 0; // column of the middle row where the shadow begins
        while (edge < kWidth && Brightness(At(image, edge, kHeight / 2)) >
                                    Brightness(At(image, kWidth / 2, kHeight / 2)) + 30) {
            ++edge;
        }
        return edge;
    };
    const int straight = draw(0.0f, Renderer::Shadows::Exact);
    const int turned = draw(-0.2f, Renderer::Shadows::Exact);
    ASSERT_NE(turned, straight);
    draw(0.0f, Renderer::Shadows::Exact);
    EXPECT_EQ(draw(-0.15f, Renderer::Shadows::Lagging), straight);
    EXPECT_EQ(draw(-0.2f, Renderer::Shadows::Lagging), straight) << "counted from where it was drawn";
    EXPECT_NE(draw(-0.3f, Renderer::Shadows::Lagging), straight);
    EXPECT_EQ(draw(-0.2f, Renderer::Shadows::Exact), turned);
}

TEST_F(RendererTest, LightsFadeOverMetres) {
    scene.sun.color = glm::vec3(0.0f);
    scene.sky = {glm::vec3(0), glm::vec3(0), glm::vec3(0), 0.0f, 0.0f}; // nothing else shines
    AddBox({-20, -1, -20}, {20, 0, 20}, 255, 255, 255);
    camera.view = LookAt({0, 4, 0.01f}, {0, 0, 0});
    AddLight({0, 1, 0}, {0.1f, 0.1f, 0.1f}, 1000.0f);
    const RenderImage image = Draw();
    // Below the light, 1 m away: 0.1 / (0.35 + 0.08), shown as 151. At the picture's edge, 1.91 m aside, 4.65
    // square metres and a slope of 0.46 leave 0.1 * 0.57 / (0.35 + 0.37), shown as 76.
    EXPECT_NEAR(Green(Middle(image)), 151, 2);
    EXPECT_NEAR(Green(At(image, 80, 0)), 76, 2);
}

TEST_F(RendererTest, LightsEndAtTheirRange) {
    AddBox({-20, -1, -20}, {20, 0, 20}, 255, 255, 255);
    camera.view = LookAt({0, 4, 0.01f}, {0, 0, 0});
    const RenderImage dark = Draw();
    AddLight({0, 0.5f, 0}, {1, 1, 1}, 1.5f);
    const RenderImage lit = Draw();
    EXPECT_GT(Green(Middle(lit)), Green(Middle(dark)));
    EXPECT_EQ(At(lit, 80, 0), At(dark, 80, 0)) << "1.9 m aside";
}

TEST_F(RendererTest, WhatLiesFlatOnTheGroundShadesNothing) {
    // Shadows are looked up five centimetres above a surface; the plate reaches three up.
    scene.sun.direction = {1, 0.2f, 0};
    AddBox({-3, -1, -3}, {3, 0, 3}, 150, 150, 150);
    AddBox({-1, 0.02f, -1}, {1, 0.03f, 1}, 150, 150, 150);
    camera.view = LookAt({-1.2f, 0.6f, 0.8f}, {-1.07f, 0, 0});
    const RenderImage shaded = Draw();
    scene.items[1].castsShadow = false;
    EXPECT_EQ(Draw().pixels, shaded.pixels);
}

TEST_F(RendererTest, FogBeginsSixMetresAwayAndThickensOverTensOfMetres) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 20, 20, 20); // its front 5 m away
    const std::uint32_t clear = Middle(Draw());
    scene.sky.fog = 0.006f;
    EXPECT_EQ(Middle(Draw()), clear);
    scene.items.clear();
    AddBox({-50, -50, -60}, {50, 50, -59}, 20, 20, 20); // 65 m away
    // 59 m of fog: f is 0.354, and 1 / (1 + f + f * f / 2) of the box is left, 0.706. The rest is the
    // horizon.
    EXPECT_NEAR(Brightness(Middle(Draw())), 410, 10);
    scene.sky.fog = 0.0f;
    EXPECT_NEAR(Brightness(Middle(Draw())), 203, 10);
}

TEST_F(RendererTest, WaterRipplesOverMetres) {
    // Seen from 4 m above, a pixel is 4 cm and the shortest wave 88 cm: neighbours hardly differ.
    RenderItem& water = AddBox({-20, -1, -20}, {20, 0, 20}, 60, 60, 60);
    auto mesh = std::const_pointer_cast<mesh::Mesh>(water.mesh);
    mesh->parts[0].glossy = true;
    for (mesh::MeshVertex& vertex : mesh->vertices) {
        vertex.surface[0] = 255; // dull, so that the slope alone tells
        vertex.surface[3] = 255;
    }
    scene.sky = {glm::vec3(0), glm::vec3(0), glm::vec3(0), 0.0f, 0.0f};
    scene.sun.direction = {1, 0.2f, 0}; // low: slopes away from it are dark
    camera.view = LookAt({0, 4, 0.01f}, {0, 0, 0});
    const RenderImage image = Draw();
    int step = 0;
    int least = 255;
    int most = 0;
    for (int x = 1; x < kWidth; ++x) {
        const int here = Green(At(image, x, 45));
        step = std::max(step, std::abs(here - Green(At(image, x - 1, 45))));
        least = std::min(least, here);
        most = std::max(most, here);
    }
    EXPECT_GT(most, least + 20) << "it does ripple";
    EXPECT_LT(step, (most - least) / 3);
}

TEST(ShadowProjectionTest, KeepsTheSunsDirectionFarFromTheOrigin) {
    mesh::MeshBox box;
    box.Add({30000, 0, 50000});
    box.Add({46000, 2000, 66000});
    const glm::vec3 toSun = glm::normalize(glm::vec3(0.4f, 0.8f, 0.45f));
    const glm::mat4 projection = render::ShadowProjection(box, toSun);
    const glm::vec4 low = projection * glm::vec4(box.Center(), 1.0f);
    const glm::vec4 high = projection * glm::vec4(box.Center() + toSun * 10000.0f, 1.0f);
    // Half a texel of the map of 2,048.
    EXPECT_NEAR(low.x, high.x, 0.00049f);
    EXPECT_NEAR(low.y, high.y, 0.00049f);
}

TEST_F(RendererTest, LinesAreHiddenByWhatStandsInFront) {
    scene.lines.push_back(YellowLine({-3, 1, -2}, {3, 1, -2}));
    const RenderImage open = Draw();
    EXPECT_GT(Red(Middle(open)), 200);
    EXPECT_LT(Blue(Middle(open)), 60);
    AddBox({-1, 0, -1}, {1, 2, 1}, 20, 20, 220);
    EXPECT_GT(Blue(Middle(Draw())), Red(Middle(Draw())));
}

TEST_F(RendererTest, TheOverlayIsNeverHidden) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 20, 20, 220);
    scene.overlay.push_back(YellowLine({-3, 1, -2}, {3, 1, -2}));
    EXPECT_GT(Red(Middle(Draw())), 200);
}

TEST_F(RendererTest, LinesBehindTheCameraAreCutOff) {
    const RenderImage empty = Draw();
    scene.lines.push_back(YellowLine({-3, 1, 9}, {3, 1, 9}));
    EXPECT_EQ(Draw().pixels, empty.pixels);
    // One end in front: the part before the camera is drawn, to the middle of the picture.
    scene.lines = {YellowLine({0, -1, 9}, {0, 1, -60})};
    EXPECT_GT(Red(At(Draw(), 80, 60)), 150);
}

TEST_F(RendererTest, LinesThatAreNotFiniteAreLeftOut) {
    const RenderImage empty = Draw();
    scene.lines.push_back(YellowLine({std::numeric_limits<float>::quiet_NaN(), 1, 0}, {3, 1, 0}));
    EXPECT_EQ(Draw().pixels, empty.pixels);
}

TEST_F(RendererTest, SupersamplingSmoothsEdges) {
    // A steep edge: with one sample a pixel it is all box or all sky.
    RenderItem& item = AddBox({-1, 0, -1}, {1, 2, 1}, 250, 250, 250);
    item.world = glm::rotate(glm::mat4(1.0f), 0.2f, glm::vec3(0, 0, 1));
    const auto shades = [](const RenderImage& image) {
        return std::set<std::uint32_t>(image.pixels.begin(), image.pixels.end()).size();
    };
    EXPECT_GT(shades(Draw(2)), shades(Draw(1)));
}

TEST_F(RendererTest, FewerDrawnPixelsFillThePicture) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    const RenderImage full = Draw();
    const RenderImage draft = Draw(0.5f);
    EXPECT_EQ(draft.width, kWidth);
    EXPECT_EQ(draft.height, kHeight);
    ASSERT_EQ(draft.pixels.size(), full.pixels.size());
    EXPECT_NEAR(Red(Middle(draft)), Red(Middle(full)), 8);
    EXPECT_NE(draft.pixels, full.pixels);
    EXPECT_EQ(Draw(0.01f).pixels, draft.pixels) << "half a side is the least";
    EXPECT_EQ(Draw(std::numeric_limits<float>::quiet_NaN()).pixels, full.pixels);
}

TEST_F(RendererTest, ManyViewsShareAFrame) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    renderer->BeginFrame(scene);
    RenderImage front;
    RenderImage away;
    ASSERT_TRUE(renderer->DrawView(camera, 64, 64, front));
    render::RenderCamera back = camera;
    back.view = LookAt({0, 1, 6}, {0, 1, 12});
    ASSERT_TRUE(renderer->DrawView(back, 32, 16, away));
    EXPECT_EQ(away.width, 32);
    EXPECT_EQ(away.height, 16);
    EXPECT_GT(Red(front.pixels[32 * 64 + 32]), Blue(front.pixels[32 * 64 + 32]));
    EXPECT_LT(Red(away.pixels[8 * 32 + 16]), Blue(away.pixels[8 * 32 + 16]) + 60);
}

TEST_F(RendererTest, SizesOutOfRangeAreRefused) {
    renderer->BeginFrame(scene);
    RenderImage image;
    EXPECT_FALSE(renderer->DrawView(camera, 0, 10, image));
    EXPECT_FALSE(renderer->DrawView(camera, -5, 10, image));
    EXPECT_FALSE(renderer->DrawView(camera, 10, 1 << 28, image));
    EXPECT_TRUE(image.pixels.empty());
    EXPECT_TRUE(renderer->DrawView(camera, 1, 1, image));
}

TEST_F(RendererTest, ASkinnedItemShowsItsPose) {
    RenderItem& item = AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    auto mesh = std::const_pointer_cast<mesh::Mesh>(item.mesh);
    mesh->nodes.resize(1);
    mesh->skins.push_back({{0}, {glm::mat4(1.0f)}});
    mesh->weights.resize(mesh->vertices.size());
    for (mesh::MeshWeights& weights : mesh->weights) {
        weights.weights[0] = 1.0f;
    }
    mesh->parts[0].skin = 0;
    mesh::MeshPose pose;
    pose.nodes = {Moved({0, -50, 0})};
    pose.SkinVertices(*mesh);
    const RenderImage rest = Draw();
    item.pose = &pose;
    EXPECT_GT(Red(Middle(rest)), Blue(Middle(rest)));
    EXPECT_LT(Red(Middle(Draw())), Red(Middle(rest)));
    item.pose = nullptr;
    EXPECT_EQ(Draw().pixels, rest.pixels) << "the mesh itself was not changed";
}

TEST_F(RendererTest, MeshesThatGoAwayAreForgotten) {
    AddBox({-1, 0, -1}, {1, 2, 1}, 220, 20, 20);
    Draw();
    scene.items.clear();
    for (int i = 0; i < 20; ++i) {
        AddBox({-1, 0, -1}, {1, 2, 1}, 20, 220, 20);
        const std::uint32_t pixel = Middle(Draw());
        ASSERT_GT(Green(pixel), Red(pixel)) << i;
        scene.items.clear();
    }
}

TEST_F(RendererTest, AnEmptySceneIsAllSky) {
    const RenderImage image = Draw();
    EXPECT_GT(Brightness(Middle(image)), 100);
}

} // namespace

#include "host/stage/render/LevelScene.h"

#include "host/engine/FilmManager.h"
#include "plugin/contract/Film.h"
#include "tests/support/Paths.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>

using render::RenderItem;
using render::RenderScene;

namespace {

class LevelSceneTest : public testing::Test {
protected:
    LevelSceneTest() : levelScene(meshes) {
        meshes.SetFolder(SampleFolder());
        level.SetMeshLibrary(&meshes);
        level.New("");
    }

    engine::SceneObject* Add(const char* className, const char* mesh, const Vector3& place) {
        engine::ObjectSpec spec;
        spec.className = className;
        spec.name = "thing";
        spec.meshName = mesh;
        spec.matrix.SetTranslation(place);
        return level.CreateObject(spec);
    }

    const RenderScene& Update(bool editor) {
        render::LevelSceneOptions options;
        options.editor = editor;
        levelScene.Update(level, options);
        return levelScene.scene;
    }

    mesh::GltfMeshLibrary meshes;
    engine::Level level;
    render::LevelScene levelScene;
};

TEST_F(LevelSceneTest, ObjectsBecomeItemsWithTheirMatrices) {
    const engine::SceneObject* crate = Add("MeshObject", "models/crate.glb", {1, 2, 3});
    const RenderScene& scene = Update(true);
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].objectId, crate->id);
    EXPECT_EQ(glm::vec3(scene.items[0].world[3]), glm::vec3(1, 2, 3));
    EXPECT_EQ(scene.items[0].pose, nullptr) << "a crate can't be posed";
    EXPECT_TRUE(scene.items[0].castsShadow);
}

TEST_F(LevelSceneTest, HiddenObjectsAreLeftOut) {
    engine::SceneObject* crate = Add("MeshObject", "models/crate.glb", {});
    crate->visible = 0;
    EXPECT_TRUE(Update(true).items.empty());
    crate->visible = 1;
    crate->SetFlags(4);
    EXPECT_TRUE(Update(true).items.empty());
    crate->SetFlags(0);
    EXPECT_EQ(Update(true).items.size(), 1u);
}

TEST_F(LevelSceneTest, SelectionIsOutlinedInTheEditorOnly) {
    level.AddToSelection(Add("MeshObject", "models/crate.glb", {}));
    EXPECT_TRUE(Update(true).items[0].outline);
    EXPECT_FALSE(Update(false).items[0].outline);
}

TEST_F(LevelSceneTest, ObjectsWithoutAMeshHaveABodyInTheEditorOnly) {
    Add("MeshObject", "", {});
    Add("MeshObject", "models/none.glb", {});
    const RenderScene& scene = Update(true);
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_FLOAT_EQ(scene.items[0].mesh->box.Extent().x, 25.0f) << "without a name for a mesh";
    EXPECT_FLOAT_EQ(scene.items[1].mesh->box.Extent().x, 60.0f) << "with one that is missing";
    EXPECT_TRUE(Update(false).items.empty());
}

TEST_F(LevelSceneTest, TransientHelpersShowInTheEditorOnly) {
    Add("MeshObject", "models/crate.glb", {})->transient = true;
    EXPECT_EQ(Update(true).items.size(), 1u);
    EXPECT_TRUE(Update(false).items.empty());
}

TEST_F(LevelSceneTest, LightsShineAndHaveABodyInTheEditor) {
    engine::SceneObject* lamp = Add(ClassName::GLLight, "", {0, 3, 0});
    lamp->light->color = {1.0f, 0.5f, 0.0f};
    lamp->light->range = 8.0f;
    const RenderScene& scene = Update(true);
    ASSERT_EQ(scene.lights.size(), 1u);
    EXPECT_EQ(scene.lights[0].position, glm::vec3(0, 3, 0));
    EXPECT_FLOAT_EQ(scene.lights[0].range, 8.0f);
    EXPECT_FLOAT_EQ(scene.lights[0].color.g, scene.lights[0].color.r * 0.5f);
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].objectId, lamp->id);
    EXPECT_FLOAT_EQ(scene.items[0].mesh->box.max.x, 12.0f) << "centimetres";
    EXPECT_FALSE(scene.lines.empty());
    EXPECT_TRUE(Update(false).items.empty());
    EXPECT_EQ(levelScene.scene.lights.size(), 1u);
}

TEST_F(LevelSceneTest, LightsThatAreOffKeepTheirBody) {
    Add(ClassName::DynLight, "", {})->light->on = false;
    EXPECT_TRUE(Update(true).lights.empty());
    EXPECT_EQ(levelScene.scene.items.size(), 1u);
}

TEST_F(LevelSceneTest, BodiesOfLightsCloseToTheViewerStaySmallOnTheScreen) {
    Add(ClassName::GLLight, "", {0, 0, 0});
    const auto bodyScale = [this](std::optional<glm::vec3> viewer) {
        render::LevelSceneOptions options;
        options.viewer = viewer;
        levelScene.Update(level, options);
        // The longest ray reaches 35 units from the light's place, the others as far in their directions.
        const float ray = glm::length(levelScene.scene.lines.front().to) / 35.0f;
        EXPECT_FLOAT_EQ(levelScene.scene.items[0].world[0][0], ray) << "body and rays go together";
        return levelScene.scene.items[0].world[0][0];
    };
    EXPECT_FLOAT_EQ(bodyScale(std::nullopt), 1.0f);
    EXPECT_FLOAT_EQ(bodyScale(glm::vec3(0, 0, 900)), 1.0f);
    EXPECT_FLOAT_EQ(bodyScale(glm::vec3(0, 0, 600)), 1.0f);
    EXPECT_FLOAT_EQ(bodyScale(glm::vec3(0, 0, 100)), 1.0f / 6.0f) << "a metre before the view";
    EXPECT_FLOAT_EQ(bodyScale(glm::vec3(0, 0, 0)), 0.02f) << "never without a size";
}

TEST_F(LevelSceneTest, TheSunsHelperIsNoPointLightButHasABody) {
    engine::SceneObject* helper = Add(ClassName::GLLight, "", {0, 1000, 0});
    engine::FilmManager& films = level.Data()->Films();
    IFilm* film = films.GetFilm(films.AllocateFilm());
    CFilmTrack* track = film->CreateGLLightTrack();
    film->AddTrack(track);
    AsGLLightTrack(track)->isSun = 1;
    AsGLLightTrack(track)->lightObject = helper;
    const RenderScene& scene = Update(true);
    EXPECT_TRUE(scene.lights.empty());
    ASSERT_EQ(scene.items.size(), 1u);
    const float reach = scene.items[0].mesh->box.max.x * scene.items[0].world[0][0];
    EXPECT_NEAR(reach, 26.4f, 0.01f) << "2.2 times as large as another light's, at 1,000 units";
}

TEST_F(LevelSceneTest, ScalingALightScalesItsReach) {
    engine::SceneObject* lamp = Add(ClassName::DynLight, "", {});
    lamp->light->range = 4.0f;
    lamp->SetMatrix(engine::Compose({}, {}, {1, 3, 1}).m, 0);
    EXPECT_FLOAT_EQ(Update(false).lights[0].range, 12.0f);
}

TEST_F(LevelSceneTest, TheSunLightsTheSky) {
    level.Data()->Sun()->direction = {0, 1, 0};
    const RenderScene day = Update(false);
    level.Data()->Sun()->light.on = false;
    const RenderScene dark = Update(false);
    EXPECT_GT(day.sun.color.r, 1.0f);
    EXPECT_EQ(dark.sun.color, glm::vec3(0));
    level.Data()->SetSun(false);
    EXPECT_EQ(Update(false).sun.color, glm::vec3(0));
}

TEST_F(LevelSceneTest, ColoursThatNoLightHasAreLimitedWhereTheyShine) {
    const float nan = std::nanf("");
    engine::SceneObject* lamp = Add(ClassName::GLLight, "", {0, 3, 0});
    engine::SunObject& sun = *level.Data()->Sun();
    sun.direction = {0, 1, 0};
    lamp->light->color = sun.light.color = {1.0e30f, -5.0f, nan};
    lamp->light->intensity = sun.light.intensity = 1.0e30f;
    const RenderScene& scene = Update(true);
    ASSERT_EQ(scene.lights.size(), 1u);
    for (const glm::vec3& color : {scene.lights[0].color, scene.sun.color, scene.items[0].tint}) {
        EXPECT_TRUE(std::isfinite(color.r) && color.r > 0.0f && color.r < 1000.0f) << color.r;
        EXPECT_EQ(color.g, 0.0f);
        EXPECT_EQ(color.b, 0.0f);
    }
}

TEST_F(LevelSceneTest, TheEnginesPoseIsShown) {
    engine::SceneObject* sailor = Add("MeshObject", "models/sailor.glb", {});
    ASSERT_NE(sailor->PreparePose(), nullptr);
    const RenderScene& scene = Update(false);
    ASSERT_NE(scene.items[0].pose, nullptr);
    const float rest = scene.items[0].pose->skinned[0].position.y;
    engine::Matrix4* pose = sailor->PreparePose();
    const std::size_t count = sailor->Mesh()->Elements().size();
    engine::ComposePose(*sailor->Mesh(), sailor->Mesh()->RestLocals().data(), pose);
    for (std::size_t i = 0; i < count; ++i) {
        pose[i].m[13] += 2.0f;
    }
    sailor->SetPosed(true);
    EXPECT_NEAR(Update(false).items[0].pose->skinned[0].position.y, rest + 2.0f, 1e-4f);
    sailor->SetPosed(false);
    EXPECT_NEAR(Update(false).items[0].pose->skinned[0].position.y, rest, 1e-4f);
}

TEST_F(LevelSceneTest, HousesCastShadows) {
    Add("MeshObject", "models/house_white.glb", {});
    const RenderItem& house = Update(false).items[0];
    EXPECT_NEAR(house.mesh->box.Extent().y, 906.6f, 0.1f) << "centimetres";
    EXPECT_TRUE(house.castsShadow);
}

TEST_F(LevelSceneTest, SceneryCastsNoShadow) {
    Add("MeshObject", "models/water.glb", {});
    EXPECT_FALSE(Update(false).items[0].castsShadow);
}

TEST_F(LevelSceneTest, WithoutALevelTheSceneIsEmpty) {
    Add("MeshObject", "models/sailor.glb", {});
    Update(true);
    level.Close();
    EXPECT_TRUE(Update(true).items.empty());
}

TEST_F(LevelSceneTest, DeletedObjectsAreForgotten) {
    engine::SceneObject* sailor = Add("MeshObject", "models/sailor.glb", {});
    Update(true);
    level.DeleteObject(sailor);
    EXPECT_TRUE(Update(true).items.empty());
}

class CameraPointsTest : public LevelSceneTest {
protected:
    engine::SceneObject* AddPoint(const char* className, const char* name, const Vector3& place) {
        engine::SceneObject* point = Add(className, "", place);
        point->name = name;
        point->transient = true;
        return point;
    }
    const RenderScene& Look(const std::optional<glm::vec3>& viewer = std::nullopt) {
        render::LevelSceneOptions options;
        options.viewer = viewer;
        levelScene.Update(level, options);
        return levelScene.scene;
    }
    const RenderItem* ItemOf(const engine::SceneObject* object) const {
        for (const RenderItem& item : levelScene.scene.items) {
            if (item.objectId == object->id) {
                return &item;
            }
        }
        return nullptr;
    }
    static float Length(const RenderItem& item) { return glm::length(glm::vec3(item.world[2])); }
};

TEST_F(CameraPointsTest, EyeIsACameraThatLooksAtItsTarget) {
    const engine::SceneObject* eye = AddPoint("CameraPositionEditorObject", "Eye", {100, 200, 300});
    const engine::SceneObject* target = AddPoint("CameraTargetEditorObject", "Target", {600, 200, 300});
    const RenderScene& scene = Look();
    ASSERT_EQ(scene.items.size(), 2u);
    // The body lies behind the eye, away from the target.
    const glm::vec3 body(ItemOf(eye)->world[3]);
    EXPECT_FLOAT_EQ(body.x, 75.0f); // its middle, half of 50 behind the eye
    EXPECT_FLOAT_EQ(body.y, 200.0f);
    EXPECT_FLOAT_EQ(body.z, 300.0f);
    EXPECT_EQ(glm::vec3(ItemOf(target)->world[3]), glm::vec3(600, 200, 300));
    float farthest = 0.0f;
    float base = 0.0f; // of the pyramid, well before the target
    for (const render::RenderLine& line : scene.lines) {
        farthest = std::max({farthest, line.from.x, line.to.x});
        base = line.to.x < 400.0f ? std::max(base, line.to.x) : base;
    }
    EXPECT_NEAR(base, 170.0f, 0.01f);
    EXPECT_FLOAT_EQ(farthest, 638.0f) << "the target's cross reaches beyond it";
    EXPECT_FALSE(ItemOf(eye)->castsShadow);
}

TEST_F(CameraPointsTest, HandlesOfBothSidesLookDifferent) {
    const engine::SceneObject* in = AddPoint("CameraControlPointEditorObject", "PosInControlPoint", {});
    const engine::SceneObject* in2 = AddPoint("CameraControlPointEditorObject", "TargetInControlPoint", {});
    const engine::SceneObject* out = AddPoint("CameraControlPointEditorObject", "PosOutControlPoint", {});
    Look();
    EXPECT_EQ(ItemOf(in)->mesh, ItemOf(in2)->mesh);
    EXPECT_NE(ItemOf(in)->mesh, ItemOf(out)->mesh);
}

TEST_F(CameraPointsTest, HiddenPointsAndThoseOfAFollowingViewAreNotDrawn) {
    engine::SceneObject* eye = AddPoint("CameraPositionEditorObject", "Eye", {});
    EXPECT_TRUE(Update(false).items.empty());
    eye->Info().hidden = true;
    EXPECT_TRUE(Look().items.empty());
    EXPECT_TRUE(Look().lines.empty());
}

TEST_F(CameraPointsTest, SelectedPointsAreOutlined) {
    engine::SceneObject* eye = AddPoint("CameraPositionEditorObject", "Eye", {});
    level.SetSelection({eye});
    Look();
    EXPECT_TRUE(ItemOf(eye)->outline);
}

TEST_F(CameraPointsTest, BodiesGrowWithTheDistanceWithinBounds) {
    const engine::SceneObject* handle = AddPoint("CameraControlPointEditorObject", "PosInControlPoint", {});
    Look();
    EXPECT_FLOAT_EQ(ItemOf(handle)->mesh->box.max.x, 16.0f) << "centimetres, seen from ten metres";
    Look(glm::vec3(0, 0, 1000));
    EXPECT_FLOAT_EQ(Length(*ItemOf(handle)), 1.0f);
    Look(glm::vec3(0, 0, 3000));
    EXPECT_FLOAT_EQ(Length(*ItemOf(handle)), 3.0f);
    Look(glm::vec3(0, 0, 0));
    EXPECT_FLOAT_EQ(Length(*ItemOf(handle)), 0.4f);
    Look(glm::vec3(0, 0, 1e9f));
    EXPECT_FLOAT_EQ(Length(*ItemOf(handle)), 40.0f);
    Look(glm::vec3(NAN, 0, 0));
    EXPECT_FLOAT_EQ(Length(*ItemOf(handle)), 1.0f);
}

TEST_F(CameraPointsTest, PlacesThatCantBeDrawnAreHarmless) {
    engine::SceneObject* eye = AddPoint("CameraPositionEditorObject", "Eye", {});
    engine::SceneObject* target = AddPoint("CameraTargetEditorObject", "Target", {}); // at the eye
    ASSERT_EQ(Look().items.size(), 2u);
    const auto expectFinite = [this](const RenderScene& scene) {
        for (const RenderItem& item : scene.items) {
            EXPECT_TRUE(std::isfinite(item.world[0][0] + item.world[2][2] + item.world[3][0]));
        }
        for (const render::RenderLine& line : scene.lines) {
            EXPECT_TRUE(std::isfinite(line.from.x + line.to.y));
        }
    };
    expectFinite(Look());
    const float below[] = {0, -4, 0}; // the camera looks straight down
    target->SetPosition(below, 0);
    expectFinite(Look());
    const float nowhere[] = {NAN, 0, 0};
    eye->SetPosition(nowhere, 0);
    EXPECT_EQ(Look().items.size(), 1u);
    expectFinite(Look());
}

} // namespace

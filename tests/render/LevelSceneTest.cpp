#include "host/stage/render/LevelScene.h"

#include "host/engine/FilmManager.h"
#include "plugin/contract/Film.h"

#include <gtest/gtest.h>

namespace {

class LevelSceneTest : public testing::Test {
protected:
    LevelSceneTest() : levelScene(meshes) {
        meshes.SetFolder(std::string(FILMS_SOURCE_DIR) + "/examples/harbour");
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
        LevelSceneOptions options;
        options.editor = editor;
        levelScene.Update(level, options);
        return levelScene.scene;
    }

    GltfMeshLibrary meshes;
    engine::Level level;
    LevelScene levelScene;
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
    EXPECT_EQ(Update(true).items.size(), 2u);
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
    EXPECT_FALSE(scene.lines.empty());
    EXPECT_TRUE(Update(false).items.empty());
    EXPECT_EQ(levelScene.scene.lights.size(), 1u);
}

TEST_F(LevelSceneTest, LightsThatAreOffKeepTheirBody) {
    Add(ClassName::DynLight, "", {})->light->on = false;
    EXPECT_TRUE(Update(true).lights.empty());
    EXPECT_EQ(levelScene.scene.items.size(), 1u);
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
    EXPECT_GT(scene.items[0].world[0][0], 50.0f) << "large enough to be seen from the ground";
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

} // namespace

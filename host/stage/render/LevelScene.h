#pragma once

#include "host/engine/Level.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/stage/render/CameraPoints.h"
#include "host/stage/render/RenderScene.h"

#include <map>
#include <optional>
#include <set>

namespace render {

/// What of a level its scene shows besides the objects with meshes.
struct LevelSceneOptions {
    bool editor = true; ///< bodies of lights, helpers and objects without a mesh, rims of what is selected
    RenderGrid grid = RenderGrid::None;
    RenderStyle style = RenderStyle::Lit;
    bool plainBackground = false;
    float seconds = 0.0f;              ///< moves water and clouds
    int hiddenId = 0;                  ///< object that is left out: the camera that is looked through
    std::optional<glm::vec3> viewer{}; ///< where the view stands, for bodies that keep their size in it
};

/// Turns a level as it stands into a scene. Keeps poses from frame to frame; the scene stays good until the
/// next Update. Neither level nor library is owned.
class LevelScene {
public:
    explicit LevelScene(mesh::GltfMeshLibrary& library);

    /// Rebuilds `scene`. Without a level the scene is empty. Lines that views add come after it.
    void Update(const engine::Level& level, const LevelSceneOptions& options);

    RenderScene scene;

private:
    void AddObject(const engine::SceneObject& object, const LevelSceneOptions& options);
    void AddLight(const engine::SceneObject& object, const LevelSceneOptions& options);
    const mesh::MeshPose* PoseFor(const engine::SceneObject& object, const mesh::Mesh& mesh);
    void TakeSun(const engine::LevelData& data);
    void PutOutLights();
    void DropOldPoses(const engine::LevelData& data);
    void FindSunHelpers(const engine::LevelData& data);

    mesh::GltfMeshLibrary& meshes;
    std::map<int, std::unique_ptr<mesh::MeshPose>> poses; ///< by object id
    std::set<const EditorObject*> sunHelpers;             ///< of the level at this Update
    CameraPoints cameraPoints;
    std::shared_ptr<const mesh::Mesh> lightBody;
    std::shared_ptr<const mesh::Mesh> plainBody;
    std::shared_ptr<const mesh::Mesh> missingBody;
};

} // namespace render

#include "host/stage/render/LevelScene.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/FilmManager.h"
#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/Units.h"
#include "host/stage/render/HelperShapes.h"
#include "host/stage/render/ShapeMeshes.h"
#include "host/stage/render/SkyLight.h"
#include "plugin/contract/Film.h"
#include "processor/UpperHalves.h"

#include <algorithm>
#include <cmath>

namespace render {

namespace {

/// Things larger than this are scenery: the shadow map would be too coarse if it covered them.
constexpr float kLargestCaster = engine::Metres(150.0f);
/// Light of a film light of full colour and intensity 1.
constexpr float kLightStrength = 2.2f;
/// Bodies of sun helpers against those of other lights.
constexpr float kSunBodyScale = 2.2f;
/// From the viewer: nearer bodies of lights are no larger on the screen than at this distance, since a new
/// light stands a metre before the view and would cover the middle of it.
constexpr float kLightBodyDistance = engine::Metres(6.0f);
constexpr float kSmallestLightBody = 0.02f; ///< times the usual size, for a viewer at the light's place

/// Drawn pyramids of placed cameras, width over height and units.
constexpr float kCameraAspect = 16.0f / 9.0f;
constexpr float kCameraDepth = engine::Metres(0.8f);
constexpr float kChosenCameraDepth = engine::Metres(3.0f);
constexpr glm::vec4 kCameraColor(0.12f, 0.26f, 0.45f, 1.0f);
constexpr glm::vec4 kChosenCameraColor(1.0f, 0.80f, 0.35f, 1.0f);

/// Times full light. Levels and keys may hold any number, the shaders only what they can still show.
constexpr float kBrightest = 100.0f;

/// What is no number is dark.
glm::vec3 Limited(const glm::vec3& color) {
    const auto part = [](float share) { return std::fmin(std::fmax(share, 0.0f), kBrightest); };
    return {part(color.r), part(color.g), part(color.b)};
}

float LargestScale(const glm::mat4& world) {
    return std::max({glm::length(glm::vec3(world[0])), glm::length(glm::vec3(world[1])),
                     glm::length(glm::vec3(world[2]))});
}

RenderLight ToLight(const engine::SceneObject& object) {
    const engine::LightProperties& light = *object.light;
    const glm::mat4 world = mesh::ToGlm(object.World());
    return {glm::vec3(world[3]), Limited(mesh::ToGlm(light.color) * light.intensity) * kLightStrength,
            light.range * LargestScale(world)};
}

float LightBodyScale(const glm::vec3& place, const std::optional<glm::vec3>& viewer) {
    const float distance = viewer.has_value() ? glm::distance(*viewer, place) : kLightBodyDistance;
    return std::isfinite(distance) ? std::clamp(distance / kLightBodyDistance, kSmallestLightBody, 1.0f)
                                   : 1.0f;
}

} // namespace

LevelScene::LevelScene(mesh::GltfMeshLibrary& library)
    : meshes(library), lightBody(ShapeMeshes::MakeOctahedron(engine::Metres(0.12f), glm::vec3(1.0f), 1.0f)),
      plainBody(ShapeMeshes::MakeBox(engine::Metres(0.25f), {0.35f, 0.55f, 0.80f}, 0.1f)),
      missingBody(ShapeMeshes::MakeBox(engine::Metres(0.6f), {0.80f, 0.10f, 0.55f}, 0.1f)) {
}

void LevelScene::Update(const engine::Level& level, const LevelSceneOptions& options) {
    processor::ClearUpperHalves(); // meshes are bent on the way
    scene = RenderScene();
    scene.grid = options.grid;
    scene.style = options.style;
    scene.plainBackground = options.plainBackground;
    scene.seconds = options.seconds;
    const engine::LevelData* data = level.Data();
    if (data == nullptr) {
        poses.clear();
        return;
    }
    DropOldPoses(*data);
    FindSunHelpers(*data);
    TakeSun(*data);
    for (const auto& object : data->Objects()) {
        if (object->IsShown() && object->id != options.hiddenId && !CameraPoints::IsPoint(*object)) {
            object->IsLight() ? AddLight(*object, options) : AddObject(*object, options);
        }
    }
    if (options.style != RenderStyle::Lit) {
        PutOutLights();
    }
    if (options.editor) {
        cameraPoints.Append(*data, options.viewer, scene);
    }
}

void LevelScene::PutOutLights() {
    scene.lights.clear();
    scene.sun.color = glm::vec3(0.0f);
    scene.sky.zenith = glm::vec3(1.0f);
    scene.sky.horizon = glm::vec3(0.75f);
    scene.sky.ground = glm::vec3(0.45f);
    scene.sky.fog = 0.0f;
    for (RenderItem& item : scene.items) {
        item.castsShadow = false;
    }
}

void LevelScene::DropOldPoses(const engine::LevelData& data) {
    std::erase_if(poses, [&](const auto& entry) { return data.Find(entry.first) == nullptr; });
}

void LevelScene::FindSunHelpers(const engine::LevelData& data) {
    sunHelpers.clear();
    for (IFilm* film : data.Films().films) {
        for (CFilmTrack* track : film != nullptr ? film->tracks : std::list<CFilmTrack*>()) {
            const CFilmGLLightTrack* light = AsGLLightTrack(track);
            if (light != nullptr && light->isSun != 0) {
                sunHelpers.insert(light->lightObject);
            }
        }
    }
}

void LevelScene::TakeSun(const engine::LevelData& data) {
    const engine::SunObject* sun = data.Sun();
    if (sun == nullptr) {
        scene.sun.color = glm::vec3(0.0f);
        scene.sky = SkyForSun({0.0f, -1.0f, 0.0f}, glm::vec3(1.0f));
        return;
    }
    const glm::vec3 color =
        Limited(mesh::ToGlm(sun->light.color) * (sun->light.on ? sun->light.intensity : 0.0f));
    scene.sun = SunLight(mesh::ToGlm(sun->direction), color);
    scene.sky = SkyForSun(mesh::ToGlm(sun->direction), color);
}

const mesh::MeshPose* LevelScene::PoseFor(const engine::SceneObject& object, const mesh::Mesh& mesh) {
    const engine::Matrix4* matrices = object.Pose();
    if (!mesh.IsPosable() || mesh.nodes.empty()) {
        return nullptr;
    }
    std::unique_ptr<mesh::MeshPose>& pose = poses[object.id];
    if (pose == nullptr) {
        pose = std::make_unique<mesh::MeshPose>();
    }
    pose->nodes = mesh.restNodes;
    if (matrices != nullptr) {
        for (std::size_t i = 0; i < pose->nodes.size(); ++i) {
            pose->nodes[i] = mesh::ToGlm(matrices[i]);
        }
    }
    pose->SkinVertices(mesh);
    return pose.get();
}

void LevelScene::AddObject(const engine::SceneObject& object, const LevelSceneOptions& options) {
    RenderItem item;
    item.objectId = object.id;
    item.world = mesh::ToGlm(object.World());
    item.mesh = meshes.FindFile(object.meshName);
    if (item.mesh != nullptr) {
        item.pose = PoseFor(object, *item.mesh);
        const glm::vec3 size = item.mesh->box.IsEmpty() ? glm::vec3(0.0f) : item.mesh->box.Extent();
        item.castsShadow = std::max({size.x, size.y, size.z}) * LargestScale(item.world) < kLargestCaster;
    } else if (!options.editor) {
        return;
    } else {
        item.mesh = object.meshName.empty() || object.transient ? plainBody : missingBody;
        item.castsShadow = false;
    }
    if (object.transient && !options.editor) {
        return;
    }
    item.outline = options.editor && object.Info().IsSelected();
    if (object.Info().className == engine::kCameraClass) {
        HelperShapes::AddCamera(scene.lines, item.world, object.notes.Angle(), kCameraAspect,
                                item.outline ? kChosenCameraDepth : kCameraDepth,
                                item.outline ? kChosenCameraColor : kCameraColor);
    }
    scene.items.push_back(std::move(item));
}

void LevelScene::AddLight(const engine::SceneObject& object, const LevelSceneOptions& options) {
    const RenderLight light = ToLight(object);
    const bool isSun = sunHelpers.count(&object) != 0;
    if (object.light->on && !isSun) {
        scene.lights.push_back(light);
    }
    if (!options.editor) {
        return;
    }
    RenderItem item;
    item.objectId = object.id;
    const float size = isSun ? kSunBodyScale : LightBodyScale(light.position, options.viewer);
    item.world = glm::mat4(glm::mat3(size));
    item.world[3] = glm::vec4(light.position, 1.0f);
    item.mesh = lightBody;
    item.tint = object.light->on ? Limited(mesh::ToGlm(object.light->color)) : glm::vec3(0.25f);
    item.castsShadow = false;
    item.outline = object.Info().IsSelected();
    if (!isSun) {
        HelperShapes::AddPointLight(scene.lines, light, item.outline, size);
    }
    scene.items.push_back(std::move(item));
}

} // namespace render

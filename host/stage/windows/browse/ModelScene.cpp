#include "host/stage/windows/browse/ModelScene.h"

#include "host/engine/Units.h"
#include "host/stage/render/FrameItems.h"
#include "host/stage/render/HelperShapes.h"
#include "host/stage/windows/browse/ElementTint.h"
#include "processor/UpperHalves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <glm/gtc/type_ptr.hpp>

namespace stage {

namespace {

constexpr float kFieldOfView = 0.6f; ///< radians: little perspective, as a portrait has
constexpr float kFrontYaw = 0.45f;   ///< models look along +z; a little from their left
constexpr float kFrontPitch = -0.12f;
constexpr float kMargin = 1.06f; ///< free space around the model
constexpr float kLeastExtent = engine::Metres(0.1f);
constexpr float kFillLight = 1.2f;
constexpr int kClipSamples = 12;
constexpr float kJointPixels = 7.0f; ///< a click this near takes the joint

const glm::vec4 kBoneColor(0.93f, 0.96f, 1.0f, 0.45f);
const glm::vec4 kElementColor(1.0f, 0.62f, 0.10f, 1.0f);
const glm::vec4 kRimColor(0.12f, 0.15f, 0.18f, 0.9f);

std::vector<bool> FindJoints(const mesh::Mesh& mesh) {
    std::vector<bool> joints(mesh.nodes.size(), false);
    for (const mesh::MeshSkin& skin : mesh.skins) {
        for (const int joint : skin.joints) {
            joints[static_cast<std::size_t>(joint)] = true;
        }
    }
    return joints;
}

/// A calm backdrop: the sky's picture without sun, clouds and haze.
void SetBackdrop(render::RenderScene& scene) {
    scene.sky.zenith = glm::vec3(0.050f, 0.062f, 0.075f);
    scene.sky.horizon = glm::vec3(0.115f, 0.135f, 0.155f);
    scene.sky.ground = glm::vec3(0.09f, 0.09f, 0.09f);
    scene.sky.fog = 0.0f;
    scene.sky.clouds = 0.0f;
}

/// World units that a pixel covers at a place.
float PixelAt(const glm::vec3& place, const ViewNavigation& navigation, int height) {
    const float depth = glm::dot(place - navigation.Eye(), navigation.Forward());
    return render::UnitsPerPixel(depth, navigation.fieldOfView, height);
}

} // namespace

ModelScene::ModelScene(std::shared_ptr<const mesh::Mesh> shownMesh) : mesh(std::move(shownMesh)) {
    if (mesh != nullptr) {
        isJoint = FindJoints(*mesh);
        pose.nodes = mesh->restNodes;
    }
}

void ModelScene::SetElement(int index) {
    if (index != element) {
        element = index;
        tinted = nullptr;
    }
}

void ModelScene::SetPose(std::vector<glm::mat4> nodes) {
    if (mesh != nullptr) {
        const bool usable =
            nodes.size() == mesh->nodes.size() &&
            std::ranges::all_of(nodes, [](const glm::mat4& node) { return render::IsFinite(node); });
        if (usable) {
            pose.nodes = std::move(nodes);
        } else {
            pose.nodes = mesh->restNodes;
        }
    }
}

void ModelScene::SetClip(int clip, float seconds) {
    if (mesh != nullptr) {
        pose.Evaluate(*mesh, std::array{mesh::MeshLayer{clip, seconds}});
    }
}

const render::RenderScene& ModelScene::Update(const ViewNavigation& navigation, int height) {
    processor::ClearUpperHalves(); // the mesh is bent on the way
    scene = render::RenderScene();
    SetBackdrop(scene);
    scene.grid = render::RenderGrid::Ground;
    scene.sun.direction = navigation.Up() * 0.75f - navigation.Forward() * 0.8f - navigation.Right() * 0.55f;
    scene.sun.color = glm::vec3(1.5f, 1.45f, 1.35f);
    // From the other side, so that what the sun leaves dark keeps its shape.
    scene.lights.push_back({navigation.Eye() + navigation.Right() * navigation.distance * 0.9f,
                            glm::vec3(kFillLight), navigation.distance * 8.0f});
    if (mesh == nullptr) {
        return scene;
    }
    if (tinted == nullptr) {
        tinted = TintElement(*mesh, marks == Marks::Elements ? element : -1);
    }
    pose.SkinVertices(*tinted);
    render::RenderItem item;
    item.mesh = tinted;
    item.pose = tinted->IsPosable() ? &pose : nullptr;
    item.outline = marks == Marks::Elements && element < 0;
    scene.items.push_back(std::move(item));
    if (marks == Marks::Elements) {
        AddSkeleton(navigation, height);
        AddElement(navigation, height);
    }
    return scene;
}

render::RenderCamera ModelScene::Camera(const ViewNavigation& navigation, float aspect) const {
    const glm::mat4 matrix = navigation.CameraMatrix();
    const float size =
        mesh != nullptr && !mesh->box.IsEmpty() ? glm::length(mesh->box.Extent()) : kLeastExtent;
    const float reach = navigation.distance + size * 4.0f + engine::Metres(20.0f);
    return render::MakeCamera(glm::value_ptr(matrix), navigation.fieldOfView, aspect,
                              navigation.distance * 0.02f, reach);
}

mesh::MeshBox ModelScene::Extent(int clip) const {
    mesh::MeshBox box;
    if (mesh == nullptr) {
        return box;
    }
    const auto addNodes = [&box](const std::vector<glm::mat4>& nodes) {
        for (const glm::mat4& node : nodes) {
            if (render::IsFinite(node)) {
                box.Add(glm::vec3(node[3]));
            }
        }
    };
    box = mesh->box;
    if (box.IsEmpty()) {
        addNodes(mesh->restNodes);
    }
    if (clip >= 0 && clip < static_cast<int>(mesh->clips.size())) {
        mesh::MeshPose sample;
        for (int i = 0; i <= kClipSamples; ++i) {
            const float seconds =
                mesh->clips[static_cast<std::size_t>(clip)].duration * static_cast<float>(i) / kClipSamples;
            sample.Evaluate(*mesh, std::array{mesh::MeshLayer{clip, seconds}});
            addNodes(sample.nodes);
        }
    }
    return box;
}

void ModelScene::Frame(ViewNavigation& navigation, float aspect, int clip) const {
    mesh::MeshBox box = Extent(clip);
    if (box.IsEmpty()) {
        box.Add(glm::vec3(0.0f));
    }
    const glm::vec3 half = glm::max(box.Extent() * 0.5f, glm::vec3(kLeastExtent * 0.5f));
    // What the box sweeps when it is turned about its upright axis.
    const float radius = std::hypot(half.x, half.z);
    const float tangent = std::tan(kFieldOfView * 0.5f);
    const float wide = radius / (tangent * std::clamp(aspect, 0.05f, 20.0f));
    navigation.fieldOfView = kFieldOfView;
    navigation.yaw = kFrontYaw;
    navigation.pitch = kFrontPitch;
    navigation.pivot = box.Center();
    navigation.distance = std::max(half.y / tangent, wide) * kMargin + radius * 0.8f;
}

int ModelScene::ElementAt(const ViewNavigation& navigation, int width, int height, const glm::vec2& pixel) {
    if (mesh == nullptr || width <= 0 || height <= 0) {
        return -1;
    }
    const render::RenderCamera camera =
        Camera(navigation, static_cast<float>(width) / static_cast<float>(height));
    int nearest = -1;
    float distance = kJointPixels;
    for (std::size_t i = 0; i < isJoint.size(); ++i) {
        glm::vec3 place;
        if (isJoint[i] && render::ProjectToPixel(camera, width, height, PlaceOf(i), place) &&
            glm::distance(glm::vec2(place), pixel) < distance) {
            nearest = static_cast<int>(i);
            distance = glm::distance(glm::vec2(place), pixel);
        }
    }
    if (nearest >= 0) {
        return nearest;
    }
    mesh::MeshBvh tree;
    tree.Build(pose.ModelPositions(*mesh), mesh->indices);
    const render::ViewRay ray = render::RayThroughPixel(camera, width, height, pixel.x, pixel.y);
    const std::optional<mesh::MeshHit> hit = tree.RayCast(ray.origin, ray.direction, 1e9f);
    return hit ? ElementShare::OfTriangle(*mesh, hit->triangle) : -1;
}

void ModelScene::AddDot(const glm::vec3& place, float pixels, const glm::vec4& color,
                        const ViewNavigation& navigation, int height) {
    const float radius = PixelAt(place, navigation, height) * pixels * 0.5f;
    render::HelperShapes::AddCircle(scene.overlay, place, -navigation.Forward(), radius, color, pixels);
}

void ModelScene::AddSkeleton(const ViewNavigation& navigation, int height) {
    for (std::size_t i = 0; i < mesh->nodes.size(); ++i) {
        const int parent = mesh->nodes[i].parent;
        if (!isJoint[i]) {
            continue;
        }
        if (parent >= 0 && isJoint[static_cast<std::size_t>(parent)]) {
            scene.overlay.push_back(
                {PlaceOf(static_cast<std::size_t>(parent)), PlaceOf(i), kBoneColor, 1.2f});
        }
        const float arm = PixelAt(PlaceOf(i), navigation, height) * 2.0f;
        const glm::vec3 across = navigation.Right() * arm;
        scene.overlay.push_back({PlaceOf(i) - across, PlaceOf(i) + across, kBoneColor, 4.0f});
    }
}

void ModelScene::AddElement(const ViewNavigation& navigation, int height) {
    if (element < 0 || element >= static_cast<int>(mesh->nodes.size())) {
        return;
    }
    const glm::vec3 place = PlaceOf(static_cast<std::size_t>(element));
    for (std::size_t i = 0; i < mesh->nodes.size(); ++i) {
        if (mesh->nodes[i].parent == element) {
            scene.overlay.push_back({place, PlaceOf(i), kRimColor, 5.0f});
            scene.overlay.push_back({place, PlaceOf(i), kElementColor, 3.0f});
        }
    }
    AddDot(place, 7.0f, kRimColor, navigation, height);
    AddDot(place, 4.5f, kElementColor, navigation, height);
}

} // namespace stage

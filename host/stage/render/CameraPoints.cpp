#include "host/stage/render/CameraPoints.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/LevelData.h"
#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/SceneObject.h"
#include "host/engine/Units.h"
#include "host/stage/render/HelperShapes.h"
#include "host/stage/render/ShapeMeshes.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>

namespace render {

namespace {

// Sizes are units for a viewer ten metres away.
constexpr float kUsualDistance = engine::Metres(10.0f);
constexpr float kSmallest = 0.4f;
constexpr float kLargest = 40.0f;
constexpr float kHandleRadius = engine::Metres(0.16f);
constexpr float kTargetRadius = engine::Metres(0.09f);
constexpr float kCrossLength = engine::Metres(0.38f);
/// As HelperShapes::AddCamera draws its edges.
constexpr glm::vec3 kBodySize{engine::Metres(0.24f), engine::Metres(0.28f), engine::Metres(0.5f)};
constexpr float kPyramidDepth = engine::Metres(0.7f);
constexpr float kPyramidAngle = 0.7f; ///< radians
constexpr float kPyramidAspect = 1.6f;
constexpr glm::vec4 kEyeColor{0.96f, 0.97f, 1.0f, 1.0f};
constexpr glm::vec4 kTargetColor{1.0f, 0.25f, 1.0f, 1.0f};

bool IsFinite(const glm::vec3& v) {
    return std::isfinite(v.x + v.y + v.z);
}

glm::vec3 PlaceOf(const engine::SceneObject& object) {
    return mesh::ToGlm(object.World().Translation());
}

bool Is(const engine::SceneObject& object, const char* className) {
    return object.Info().className == className;
}

float ScaleAt(const glm::vec3& place, const std::optional<glm::vec3>& viewer) {
    const float distance = viewer.has_value() ? glm::distance(*viewer, place) : kUsualDistance;
    return std::isfinite(distance) ? std::clamp(distance / kUsualDistance, kSmallest, kLargest) : 1.0f;
}

glm::mat4 Upright(const glm::vec3& place, float scale) {
    return glm::scale(glm::translate(glm::mat4(1.0f), place), glm::vec3(scale));
}

/// A camera at a place that looks at another along its negative z.
glm::mat4 LookingAt(const glm::vec3& place, const glm::vec3& target, float scale) {
    const glm::vec3 back = glm::normalize(place - target);
    if (!IsFinite(back)) {
        return Upright(place, scale); // both stand at one place
    }
    const glm::vec3 up = std::abs(back.y) < 0.999f ? glm::vec3(0, 1, 0) : glm::vec3(1, 0, 0);
    const glm::vec3 right = glm::normalize(glm::cross(up, back));
    return {glm::vec4(right * scale, 0), glm::vec4(glm::cross(back, right) * scale, 0),
            glm::vec4(back * scale, 0), glm::vec4(place, 1)};
}

RenderItem Body(const engine::SceneObject& object, const std::shared_ptr<const mesh::Mesh>& mesh,
                const glm::mat4& world) {
    RenderItem item;
    item.objectId = object.id;
    item.mesh = mesh;
    item.world = world;
    item.castsShadow = false;
    item.outline = object.Info().IsSelected();
    return item;
}

void AddCross(std::vector<RenderLine>& lines, const glm::vec3& place, float length) {
    for (int axis = 0; axis < 3; ++axis) {
        glm::vec3 arm(0.0f);
        arm[axis] = length;
        lines.push_back({place - arm, place + arm, kTargetColor, 2.0f});
    }
}

} // namespace

CameraPoints::CameraPoints()
    : camera(ShapeMeshes::MakeBox(1.0f, {0.30f, 0.34f, 0.42f}, 0.35f)),
      target(ShapeMeshes::MakeOctahedron(kTargetRadius, {1.0f, 0.05f, 1.0f}, 1.0f)),
      inHandle(ShapeMeshes::MakeOctahedron(kHandleRadius, {0.02f, 0.75f, 0.05f}, 0.8f)),
      outHandle(ShapeMeshes::MakeOctahedron(kHandleRadius, {0.05f, 0.20f, 1.0f}, 0.8f)) {
}

bool CameraPoints::IsPoint(const engine::SceneObject& object) {
    return object.transient && engine::IsCameraPointClass(object.Info().className);
}

void CameraPoints::Append(const engine::LevelData& data, const std::optional<glm::vec3>& viewer,
                          RenderScene& scene) const {
    std::vector<const engine::SceneObject*> points;
    glm::vec3 lookAt(NAN);
    for (const auto& object : data.Objects()) {
        if (IsPoint(*object) && object->IsShown() && IsFinite(PlaceOf(*object))) {
            points.push_back(object.get());
            lookAt = Is(*object, ClassName::CameraTarget) ? PlaceOf(*object) : lookAt;
        }
    }
    for (const engine::SceneObject* point : points) {
        const glm::vec3 place = PlaceOf(*point);
        const float scale = ScaleAt(place, viewer);
        if (Is(*point, ClassName::CameraPosition)) {
            const glm::mat4 world = LookingAt(place, lookAt, scale);
            const glm::mat4 body =
                glm::scale(glm::translate(world, {0.0f, 0.0f, kBodySize.z * 0.5f}), kBodySize);
            scene.items.push_back(Body(*point, camera, body));
            HelperShapes::AddCamera(scene.lines, world, kPyramidAngle, kPyramidAspect, kPyramidDepth,
                                    kEyeColor);
        } else if (Is(*point, ClassName::CameraTarget)) {
            scene.items.push_back(Body(*point, target, Upright(place, scale)));
            AddCross(scene.lines, place, kCrossLength * scale);
        } else {
            const bool out = point->name.find("OutControl") != std::string::npos;
            scene.items.push_back(Body(*point, out ? outHandle : inHandle, Upright(place, scale)));
        }
    }
}

} // namespace render

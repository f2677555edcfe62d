#include "host/stage/host/ScenePicker.h"

#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/Units.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/type_ptr.hpp>
#include <limits>

namespace stage {

namespace {
// Units.
constexpr float kReach = engine::Metres(2000.0f); ///< that a pick looks ahead
constexpr float kMarkerRadius = engine::Metres(0.5f);
constexpr float kEmptyRadius = engine::Metres(6.0f); ///< that an empty level shows
constexpr float kBackgroundFactor = 12.0f;
constexpr float kNothing = std::numeric_limits<float>::infinity();

using mesh::FromGlm;
using mesh::ToGlm;

/// Ground, water and hills are many times larger than what a level is about.
void DropBackground(std::vector<Sphere>& balls) {
    if (balls.empty()) {
        return;
    }
    std::vector<float> radii;
    radii.reserve(balls.size());
    for (const Sphere& ball : balls) {
        radii.push_back(ball.radius);
    }
    std::nth_element(radii.begin(), radii.begin() + static_cast<std::ptrdiff_t>(radii.size() / 2),
                     radii.end());
    const float limit = radii[radii.size() / 2] * kBackgroundFactor;
    std::erase_if(balls, [limit](const Sphere& ball) { return ball.radius > limit; });
}

/// Helpers stand anywhere, as the sun's, whose place only tells a direction. They count only where nothing
/// else is.
void KeepMeshes(ObjectList& objects) {
    const auto hasMesh = [](EditorObject* object) {
        return static_cast<engine::SceneObject*>(object)->Mesh() != nullptr;
    };
    if (std::any_of(objects.begin(), objects.end(), hasMesh)) {
        objects.remove_if([&](EditorObject* object) { return !hasMesh(object); });
    }
}

/// A view that a plug-in holds shows the film's picture: only meshes, no bodies of lights and helpers.
bool IsPickable(const engine::SceneObject& object, const StageView& view) {
    return object.IsShown() && !object.notes.locked && object.id != view.CameraId() &&
           engine::IsFinite(object.World()) && (view.attachedTo == 0 || object.Mesh() != nullptr);
}
} // namespace

float ScenePicker::MeshDistance(const engine::SceneObject& object, const render::ViewRay& ray) const {
    const engine::IMesh* mesh = object.Mesh();
    engine::Matrix4 inverse;
    float fraction = 0.0f;
    if (mesh == nullptr || !engine::Invert(object.World(), inverse)) {
        return kNothing;
    }
    const Vector3 from = engine::TransformPoint(FromGlm(ray.origin), inverse);
    const Vector3 to = engine::TransformPoint(FromGlm(ray.origin + ray.direction * kReach), inverse);
    return mesh->RayCast(from, to, object.Pose(), fraction) ? fraction * kReach : kNothing;
}

engine::SceneObject* ScenePicker::At(const StageView& view, float x, float y) const {
    if (level.Data() == nullptr) {
        return nullptr;
    }
    const render::ViewRay ray = view.RayAt(x, y);
    engine::SceneObject* nearest = nullptr;
    float nearestDistance = kNothing;
    for (const auto& object : level.Data()->Objects()) {
        if (!IsPickable(*object, view)) {
            continue;
        }
        float distance = kNothing;
        glm::vec2 pixel;
        if (object->Mesh() != nullptr) {
            distance = MeshDistance(*object, ray);
        } else if (view.Project(ToGlm(object->World().Translation()), pixel) &&
                   glm::distance(pixel, glm::vec2(x, y)) <= kMarkerPixels) {
            distance = glm::distance(ToGlm(object->World().Translation()), ray.origin);
        }
        if (distance < nearestDistance) {
            nearestDistance = distance;
            nearest = object.get();
        }
    }
    return nearest;
}

ObjectList ScenePicker::InRectangle(const StageView& view, float left, float top, float right,
                                    float bottom) const {
    ObjectList found;
    if (level.Data() == nullptr) {
        return found;
    }
    for (const auto& object : level.Data()->Objects()) {
        glm::vec2 pixel;
        if (IsPickable(*object, view) && view.Project(BoundsOf(*object).center, pixel) && pixel.x >= left &&
            pixel.x <= right && pixel.y >= top && pixel.y <= bottom) {
            found.push_back(object.get());
        }
    }
    return found;
}

std::optional<glm::vec3> ScenePicker::Meet(const render::ViewRay& ray) const {
    const glm::vec3 far = ray.origin + ray.direction * kReach;
    float to[3] = {far.x, far.y, far.z};
    if (level.Data() != nullptr && level.Data()->RayCast(glm::value_ptr(ray.origin), to, 0) != 0) {
        return glm::make_vec3(to);
    }
    const float distance = -ray.origin.y / ray.direction.y;
    const bool meetsGround = std::isfinite(distance) && distance > 0.0f && distance < kReach;
    return meetsGround ? std::optional(ray.origin + ray.direction * distance) : std::nullopt;
}

glm::vec3 ScenePicker::PlaceAt(const render::ViewRay& ray, float fallbackDistance) const {
    return Meet(ray).value_or(ray.origin + ray.direction * fallbackDistance);
}

Sphere ScenePicker::BoundsOf(const engine::SceneObject& object) const {
    Vector3 low;
    Vector3 high;
    const engine::IMesh* mesh = object.Mesh();
    if (mesh != nullptr) {
        mesh->Bounds(low, high);
    }
    const glm::vec3 middle = (ToGlm(low) + ToGlm(high)) * 0.5f;
    const float scale =
        std::max({engine::Length(object.World().Axis(0)), engine::Length(object.World().Axis(1)),
                  engine::Length(object.World().Axis(2))});
    const float radius = glm::distance(ToGlm(low), ToGlm(high)) * 0.5f * scale;
    return {ToGlm(engine::TransformPoint(FromGlm(middle), object.World())),
            radius > 0.0f ? radius : kMarkerRadius};
}

Sphere ScenePicker::BoundsOf(const ObjectList& objects) const {
    ObjectList all = objects;
    if (all.empty()) {
        level.CollectObjects(all);
        KeepMeshes(all);
    }
    std::vector<Sphere> balls;
    for (EditorObject* object : all) {
        const Sphere ball = BoundsOf(*static_cast<engine::SceneObject*>(object));
        if (std::isfinite(ball.center.x + ball.center.y + ball.center.z + ball.radius)) {
            balls.push_back(ball);
        }
    }
    if (objects.empty()) {
        DropBackground(balls);
    }
    if (balls.empty()) {
        return {{0.0f, 0.0f, 0.0f}, kEmptyRadius};
    }
    glm::vec3 low(kNothing);
    glm::vec3 high(-kNothing);
    for (const Sphere& ball : balls) {
        low = glm::min(low, ball.center - ball.radius);
        high = glm::max(high, ball.center + ball.radius);
    }
    return {(low + high) * 0.5f, glm::length(high - low) * 0.5f};
}

} // namespace stage

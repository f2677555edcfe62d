#include "host/stage/host/SnapTargets.h"

#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/mesh/MeshPose.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ScenePicker.h"

namespace stage {

namespace {

/// Vertices of an object's mesh as it stands, in its own space.
std::vector<glm::vec3> Corners(const engine::SceneObject& object, const mesh::Mesh& mesh) {
    mesh::MeshPose pose;
    pose.nodes = mesh.restNodes;
    if (const engine::Matrix4* posed = object.Pose()) {
        for (std::size_t i = 0; i < pose.nodes.size(); ++i) {
            pose.nodes[i] = mesh::ToGlm(posed[i]);
        }
    }
    return pose.ModelPositions(mesh);
}

/// Whether a line of sight comes near a ball, `reach` units around it.
bool Passes(const render::ViewRay& ray, const Sphere& ball, float reach) {
    const glm::vec3 between = ball.center - ray.origin;
    const float along = glm::dot(between, ray.direction);
    return along > -ball.radius && glm::distance(between, ray.direction * along) < ball.radius + reach;
}

} // namespace

bool SnapTargets::Counts(const engine::SceneObject& object) const {
    if (!object.IsShown() || object.Mesh() == nullptr || !engine::IsFinite(object.World())) {
        return false;
    }
    for (const EditorObject* above = &object; above != nullptr; above = above->parent) {
        if (host.level.IsSelected(above)) {
            return false;
        }
    }
    return true;
}

std::optional<glm::vec3> SnapTargets::Surface(const StageView& view, float x, float y) const {
    if (host.level.Data() == nullptr) {
        return std::nullopt;
    }
    const render::ViewRay ray = view.RayAt(x, y);
    const ScenePicker picker(host.level);
    std::optional<float> nearest;
    for (const auto& object : host.level.Data()->Objects()) {
        const float distance = Counts(*object) ? picker.MeshDistance(*object, ray) : INFINITY;
        if (std::isfinite(distance) && distance < nearest.value_or(INFINITY)) {
            nearest = distance;
        }
    }
    return nearest ? std::optional(ray.origin + ray.direction * *nearest) : std::nullopt;
}

std::optional<glm::vec3> SnapTargets::Vertex(const StageView& view, float x, float y) const {
    if (host.level.Data() == nullptr) {
        return std::nullopt;
    }
    constexpr float kSamePlace = 1.0f; // pixels
    const render::ViewRay ray = view.RayAt(x, y);
    const ScenePicker picker(host.level);
    const glm::vec2 mouse(x, y);
    std::optional<glm::vec3> best;
    float nearest = kReachPixels;
    float depth = INFINITY;
    for (const auto& object : host.level.Data()->Objects()) {
        if (!Counts(*object)) {
            continue;
        }
        const Sphere ball = picker.BoundsOf(*object);
        const float away = glm::distance(ball.center, ray.origin) + ball.radius;
        const float reach = kReachPixels * render::UnitsPerPixel(away, view.FieldOfView(), view.height);
        const std::shared_ptr<const mesh::Mesh> mesh =
            Passes(ray, ball, reach) ? host.meshes.FindFile(object->meshName) : nullptr;
        const glm::mat4 world = mesh::ToGlm(object->World());
        for (const glm::vec3& corner : mesh != nullptr ? Corners(*object, *mesh) : std::vector<glm::vec3>()) {
            const glm::vec3 place(world * glm::vec4(corner, 1.0f));
            glm::vec2 pixel;
            if (!view.Project(place, pixel)) {
                continue;
            }
            const float distance = glm::distance(pixel, mouse);
            const float ahead = glm::dot(place - ray.origin, ray.direction);
            const bool isNearer = distance < nearest - kSamePlace;
            if (isNearer || (distance < nearest + kSamePlace && distance < kReachPixels && ahead < depth)) {
                nearest = std::min(nearest, distance);
                depth = ahead;
                best = place;
            }
        }
    }
    return best;
}

} // namespace stage

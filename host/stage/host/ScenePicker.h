#pragma once

#include "host/engine/Level.h"
#include "host/stage/host/StageView.h"

#include <optional>

namespace stage {

/// A ball around something in the level.
struct Sphere {
    glm::vec3 center{0.0f};
    float radius = 0.0f; ///< units
};

/// What the mouse meets in a view. Objects with a mesh are met at their triangles, as posed; the others
/// within a few pixels of their place, and not in a view that a plug-in holds, which doesn't show them.
/// Locked objects are passed over.
class ScenePicker {
public:
    static constexpr float kMarkerPixels = 14.0f;

    explicit ScenePicker(engine::Level& sceneLevel) : level(sceneLevel) {}

    /// The nearest object under a pixel, null for none.
    engine::SceneObject* At(const StageView& view, float x, float y) const;
    /// The objects whose middle lies in a rectangle of pixels, in level order.
    ObjectList InRectangle(const StageView& view, float left, float top, float right, float bottom) const;
    /// Where a ray meets a mesh, else the ground y = 0; none if it leads into the air.
    std::optional<glm::vec3> Meet(const render::ViewRay& ray) const;
    /// The same, else the point `fallbackDistance` units on.
    glm::vec3 PlaceAt(const render::ViewRay& ray, float fallbackDistance) const;
    /// A ball around an object's mesh, or a small one around a place.
    Sphere BoundsOf(const engine::SceneObject& object) const;
    /// A ball around objects; for an empty list around the whole level, without its ground and background.
    Sphere BoundsOf(const ObjectList& objects) const;

    /// Units along a line of sight to the object's mesh, infinity if it is not met.
    float MeshDistance(const engine::SceneObject& object, const render::ViewRay& ray) const;

private:
    engine::Level& level;
};

} // namespace stage

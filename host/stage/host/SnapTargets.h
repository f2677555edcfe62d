#pragma once

#include "host/stage/host/StageView.h"
#include "plugin/contract/Types.h"

#include <optional>

namespace engine {
class SceneObject;
}

namespace stage {

class EditorHost;

/// What a dragged object can be put onto: surfaces and corners of the meshes in a view. Selected objects and
/// what hangs on them don't count, since they are what is dragged.
class SnapTargets {
public:
    /// How near to the mouse a corner must be, in pixels.
    static constexpr float kReachPixels = 24.0f;

    explicit SnapTargets(EditorHost& editorHost) : host(editorHost) {}

    /// The nearest point of a mesh under a pixel, in the world.
    std::optional<glm::vec3> Surface(const StageView& view, float x, float y) const;
    /// The corner of a mesh's triangle that is seen nearest to a pixel; of those in one place the one in
    /// front. Meshes are taken as posed.
    std::optional<glm::vec3> Vertex(const StageView& view, float x, float y) const;

private:
    bool Counts(const engine::SceneObject& object) const;

    EditorHost& host;
};

} // namespace stage

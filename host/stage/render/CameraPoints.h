#pragma once

#include "host/stage/render/RenderScene.h"

#include <optional>

namespace engine {
class LevelData;
class SceneObject;
} // namespace engine

namespace render {

/// Draws the points of a film's camera that a plug-in keeps in the level while the camera is edited: a small
/// camera that looks at its target, a cross at the target, diamonds for the handles of the path, green before
/// a key and blue behind it.
class CameraPoints {
public:
    CameraPoints();

    static bool IsPoint(const engine::SceneObject& object);
    /// Appends the points that are shown. With a viewer's place they keep about their size in the picture.
    void Append(const engine::LevelData& data, const std::optional<glm::vec3>& viewer,
                RenderScene& scene) const;

private:
    std::shared_ptr<const mesh::Mesh> camera;
    std::shared_ptr<const mesh::Mesh> target;
    std::shared_ptr<const mesh::Mesh> inHandle;
    std::shared_ptr<const mesh::Mesh> outHandle;
};

} // namespace render

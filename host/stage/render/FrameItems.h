#pragma once

#include "host/stage/render/RenderScene.h"

#include <array>

namespace render {

/// An item of a frame with what the passes need of it.
struct FrameItem {
    const RenderItem* item = nullptr;
    std::size_t index = 0; ///< place in the list of drawn items
    glm::vec3 center{0.0f};
    float radius = 0.0f; ///< of the bounding sphere, world space
    mesh::MeshBox box;   ///< world space
};

/// True if all 16 numbers are finite.
bool IsFinite(const glm::mat4& matrix);

/// The world box of a box under a matrix.
mesh::MeshBox TransformBox(const mesh::MeshBox& box, const glm::mat4& matrix);

/// The items of a scene that can be drawn: with a mesh, triangles and a finite matrix.
std::vector<FrameItem> CollectItems(const RenderScene& scene);

/// The scene's lights that reach a sphere.
struct ItemLights {
    int count = 0;
    int index[RenderScene::kMaxLights] = {};
};
ItemLights LightsReaching(const RenderScene& scene, const glm::vec3& center, float radius);

/// Six planes of a camera with their insides in front, for points in world space.
std::array<glm::vec4, 6> FrustumPlanes(const glm::mat4& viewProjection);

/// Adds the corners of a world box in GL's -1 to 1 to `seen`. A box that reaches behind the camera adds
/// the whole picture.
void AddScreenBox(const mesh::MeshBox& box, const glm::mat4& viewProjection, mesh::MeshBox& seen);

/// World matrix of a part under its item's pose.
glm::mat4 PartMatrix(const RenderItem& item, const mesh::MeshPart& part);

} // namespace render

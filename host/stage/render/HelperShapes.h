#pragma once

#include "host/stage/render/RenderScene.h"

/// Wire drawings for things that have no body of their own. All append world lines.
namespace render::HelperShapes {

/// A circle about an axis.
void AddCircle(std::vector<RenderLine>& lines, const glm::vec3& center, const glm::vec3& axis, float radius,
               const glm::vec4& color, float width = 1.5f);
/// A lamp of rays in the light's colour, `size` times as long as of a light of the usual size; with
/// `showRange` three circles where the light ends.
void AddPointLight(std::vector<RenderLine>& lines, const RenderLight& light, bool showRange,
                   float size = 1.0f);
/// A camera's body and the pyramid that it sees, `depth` units deep. The matrix is that of the camera in
/// the world, looking along its negative z; the angle is vertical, in radians.
void AddCamera(std::vector<RenderLine>& lines, const glm::mat4& world, float fieldOfView, float aspect,
               float depth, const glm::vec4& color);
/// The twelve edges of a box under a matrix.
void AddBox(std::vector<RenderLine>& lines, const mesh::MeshBox& box, const glm::mat4& world,
            const glm::vec4& color);

} // namespace render::HelperShapes

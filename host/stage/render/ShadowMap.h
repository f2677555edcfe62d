#pragma once

#include "host/stage/render/ShadowAreas.h"

namespace render {

/// The sun's depth map. Used and destroyed with its context current.
class ShadowMap {
public:
    static constexpr int kSize = 2048;

    ShadowMap();
    ~ShadowMap();
    ShadowMap(const ShadowMap&) = delete;
    ShadowMap& operator=(const ShadowMap&) = delete;

    /// Starts a map of this box under a unit direction towards the sun; `Projection` holds from then on.
    void Begin(const mesh::MeshBox& world, const glm::vec3& toSun);
    /// Empties a part of the map, outside of which nothing is drawn from then on.
    static void BeginArea(const ShadowArea& area);
    static void End();
    /// World to the map's clip space.
    const glm::mat4& Projection() const { return projection; }
    /// World to texture coordinates and depth, 0 to 1.
    glm::mat4 TextureMatrix() const;
    unsigned Texture() const { return texture; }

private:
    unsigned frame = 0;
    unsigned texture = 0;
    glm::mat4 projection{1.0f};
};

/// Orthographic world to clip matrix of a light that shines on the box; depth -1 to 1.
glm::mat4 ShadowProjection(const mesh::MeshBox& world, const glm::vec3& toSun);

} // namespace render

#pragma once

#include "host/engine/mesh/Mesh.h"
#include "host/engine/mesh/MeshPose.h"
#include "host/engine/Units.h"

#include <memory>
#include <vector>

namespace render {

/// A mesh to draw. Colours are linear r, g, b.
struct RenderItem {
    int objectId = 0;
    std::shared_ptr<const mesh::Mesh> mesh;
    /// Null for the rest pose. Owned by the caller and left alone until the frame's views are drawn.
    /// Skinned parts need MeshPose::SkinVertices.
    const mesh::MeshPose* pose = nullptr;
    glm::mat4 world{1.0f}; ///< items with a matrix that is not finite are left out
    glm::vec3 tint{1.0f};
    bool outline = false;
    bool castsShadow = true;
};

/// A line between two world points, `width` pixels wide.
struct RenderLine {
    glm::vec3 from;
    glm::vec3 to;
    glm::vec4 color; ///< r, g, b, a as shown on the screen
    float width = 1.5f;
};

/// A point light. It fades to nothing at `range` units.
struct RenderLight {
    glm::vec3 position{0.0f};
    glm::vec3 color{1.0f};
    float range = engine::Metres(10.0f);
};

/// The one light that casts shadows.
struct RenderSun {
    glm::vec3 direction{0.4f, 0.8f, 0.45f}; ///< from the ground towards the sun, any length
    glm::vec3 color{1.55f, 1.38f, 1.14f};
};

/// What is seen where nothing stands, and what light comes from all around. Colours are linear.
struct RenderSky {
    glm::vec3 zenith{0.10f, 0.22f, 0.44f};
    glm::vec3 horizon{0.42f, 0.50f, 0.56f};
    glm::vec3 ground{0.13f, 0.12f, 0.11f}; ///< light that comes from below
    float fog = 0.006f;                    ///< share of light lost a metre
    float clouds = 0.38f;                  ///< 0 clear to 1 overcast
};

/// How bodies are drawn.
enum class RenderStyle {
    Lit,
    Flat,     ///< in their colours, a little darker below; no sun, no lamps, no shadows, no fog
    Wireframe ///< the edges of their triangles
};

/// The squares to measure by.
enum class RenderGrid { None, Ground, Top, Front, Side };

/// All that one frame shows; the views of a frame share it.
struct RenderScene {
    static constexpr std::size_t kMaxLights = 8;

    std::vector<RenderItem> items;
    std::vector<RenderLight> lights; ///< the first kMaxLights count
    std::vector<RenderLine> lines;   ///< hidden by what stands in front of them
    std::vector<RenderLine> overlay; ///< drawn over everything
    RenderSun sun;
    RenderSky sky;
    RenderGrid grid = RenderGrid::None;
    RenderStyle style = RenderStyle::Lit;
    bool plainBackground = false; ///< instead of the sky
    float seconds = 0.0f;         ///< moves water and clouds
    float exposure = 1.0f;
};

/// A picture, rows from top to bottom, 0xffRRGGBB each (QImage::Format_RGB32).
struct RenderImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

} // namespace render

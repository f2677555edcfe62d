#pragma once

#include "host/stage/render/FrameItems.h"
#include "host/stage/render/GlProgram.h"
#include "host/stage/render/MeshBuffers.h"

#include <map>
#include <memory>

namespace render {

/// Draws the meshes of a frame: lit, as depth alone, or as a mask. Used with its context current.
class MeshPass {
public:
    /// How one view sees the frame.
    struct View {
        glm::mat4 viewProjection{1.0f};
        glm::vec3 eye{0.0f};
        unsigned shadowTexture = 0;
        bool fine = false; ///< softer shadows, at four times their price
    };

    MeshPass();

    /// Uploads what the items need.
    void Prepare(const std::vector<FrameItem>& items);
    /// Near items first, without those outside the view.
    void DrawLit(const std::vector<FrameItem>& items, const RenderScene& scene, const View& view);
    void DrawDepth(const std::vector<const FrameItem*>& items, const glm::mat4& projection);
    /// The edges of all items; those of outlined ones stand out.
    void DrawWires(const std::vector<FrameItem>& items, const glm::mat4& projection);
    /// The outlined items in white.
    void DrawMask(const std::vector<FrameItem>& items, const glm::mat4& projection);

private:
    /// A form of the lit shader. Each is made at its first use: fixed numbers of lights and no branches are
    /// what the processor draws fastest.
    struct Variant {
        bool glossy = false;
        bool fine = false;
        int lights = 0;

        auto
        operator<=>(const Variant&) const = default; // NOLINT(modernize-use-nullptr): its zero is no pointer
    };

    void SelectSeen(const std::vector<FrameItem>& items, const View& view);
    const GlProgram& Program(const Variant& variant);
    void DrawLitItem(const FrameItem& entry, const RenderScene& scene, const View& view, bool glossy);
    void DrawLitPart(const GlProgram& program, const FrameItem& entry, const mesh::MeshPart& part,
                     const View& view);
    void DrawFlat(const GlProgram& program, const FrameItem& entry, const glm::mat4& projection);

    std::map<Variant, std::unique_ptr<GlProgram>> lit;
    GlProgram depth;
    GlProgram mask;
    GlProgram wire;
    MeshBuffers buffers;
    std::vector<const FrameItem*> order; ///< of the view being drawn
};

} // namespace render

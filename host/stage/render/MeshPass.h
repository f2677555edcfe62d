#pragma once

#include "host/stage/render/FrameItems.h"
#include "host/stage/render/GlProgram.h"
#include "host/stage/render/MeshBuffers.h"

/// Draws the meshes of a frame: lit, as depth alone, or as a mask. Used with its context current.
class MeshPass {
public:
    MeshPass();

    /// Uploads what the items need.
    void Prepare(const std::vector<FrameItem>& items);
    /// Near items first, without those outside the camera's view.
    void DrawLit(const std::vector<FrameItem>& items, const RenderScene& scene,
                 const glm::mat4& viewProjection, const glm::vec3& eye, unsigned shadowTexture);
    void DrawDepth(const std::vector<FrameItem>& items, const glm::mat4& projection);
    /// The outlined items in white.
    void DrawMask(const std::vector<FrameItem>& items, const glm::mat4& viewProjection);
    const GlProgram& PlainProgram() const { return plain; }
    const GlProgram& GlossyProgram() const { return glossy; }

private:
    void DrawFlat(const GlProgram& program, const FrameItem& entry);
    void DrawLitParts(const GlProgram& program, bool isGlossy, const RenderScene& scene,
                      unsigned shadowTexture);
    void DrawLitPart(const GlProgram& program, const FrameItem& entry, const MeshPart& part);

    GlProgram plain;  ///< for rough surfaces: no mirror and no gleam
    GlProgram glossy; ///< for all others
    GlProgram depth;
    GlProgram mask;
    MeshBuffers buffers;
    std::vector<const FrameItem*> order;
};

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
    const GlProgram& LitProgram() const { return lit; }

private:
    void DrawFlat(const GlProgram& program, const FrameItem& entry);
    void DrawLitItem(const FrameItem& entry, int lights);

    GlProgram lit;
    GlProgram depth;
    GlProgram mask;
    MeshBuffers buffers;
    std::vector<const FrameItem*> order;
};

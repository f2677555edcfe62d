#pragma once

#include "host/stage/render/GlProgram.h"
#include "host/stage/render/TextureTarget.h"

namespace render {

/// Draws a rim around what was drawn into its mask. Used and destroyed with its context current.
class OutlinePass {
public:
    OutlinePass();
    ~OutlinePass();
    OutlinePass(const OutlinePass&) = delete;
    OutlinePass& operator=(const OutlinePass&) = delete;

    /// A part of a frame in its pixels, counted from the lower left.
    struct Area {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };

    /// Binds a mask of this size, empty in the area and `radius` pixels around it, where the rim's pixels
    /// look; whatever is drawn next gets the rim. Until Draw, drawing is cut to the area.
    void BeginMask(int width, int height, const Area& area, int radius);
    /// Into the bound frame, `radius` pixels of it wide.
    void Draw(const glm::vec3& color, float radius) const;

private:
    GlProgram program;
    unsigned emptyArray = 0;
    TextureTarget mask;
};

} // namespace render

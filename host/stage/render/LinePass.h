#pragma once

#include "host/stage/render/GlProgram.h"
#include "host/stage/render/RenderScene.h"

#include <vector>

namespace render {

/// Draws lines of any width as quads. Used and destroyed with its context current.
class LinePass {
public:
    LinePass();
    ~LinePass();
    LinePass(const LinePass&) = delete;
    LinePass& operator=(const LinePass&) = delete;

    /// Into the bound frame; `scale` buffer pixels a picture pixel. Lines that are not finite are left out.
    void Draw(const std::vector<RenderLine>& lines, float scale, bool depthTest);

private:
    GlProgram program;
    unsigned array = 0;
    unsigned buffer = 0;
    std::vector<RenderLine> kept;
};

} // namespace render

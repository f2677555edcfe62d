#pragma once

#include "host/stage/render/GlProgram.h"
#include "host/stage/render/TextureTarget.h"

namespace render {

/// Draws the sky where nothing else was drawn. It is made at a quarter of the size, since the clouds' noise
/// would be the dearest part of a picture. Used and destroyed with its context current.
class SkyPass {
public:
    SkyPass();
    ~SkyPass();
    SkyPass(const SkyPass&) = delete;
    SkyPass& operator=(const SkyPass&) = delete;

    /// Makes the sky of a view of this size; binds a frame of its own.
    void Prepare(int width, int height);
    /// Into the bound frame, behind everything.
    void Draw() const;

private:
    GlProgram skyProgram;
    GlProgram backdropProgram;
    unsigned emptyArray = 0;
    TextureTarget sky;
};

} // namespace render

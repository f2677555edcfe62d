#pragma once

#include "host/stage/render/GlProgram.h"

/// Draws a rim around what was drawn into its mask. Used and destroyed with its context current.
class OutlinePass {
public:
    OutlinePass();
    ~OutlinePass();
    OutlinePass(const OutlinePass&) = delete;
    OutlinePass& operator=(const OutlinePass&) = delete;

    /// Binds an empty mask of this size; whatever is drawn next gets the rim.
    void BeginMask(int width, int height);
    /// Into the bound frame, `radius` pixels of it wide.
    void Draw(const glm::vec3& color, int radius) const;

private:
    GlProgram program;
    unsigned emptyArray = 0;
    unsigned frame = 0;
    unsigned mask = 0;
    int maskWidth = 0;
    int maskHeight = 0;
};

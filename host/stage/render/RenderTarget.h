#pragma once

#include "host/stage/render/RenderScene.h"

namespace render {

/// A colour and depth buffer off the screen, larger than the picture for smooth edges or smaller for speed.
/// Used and destroyed with its context current.
class RenderTarget {
public:
    RenderTarget() = default;
    ~RenderTarget();
    RenderTarget(const RenderTarget&) = delete;
    RenderTarget& operator=(const RenderTarget&) = delete;

    /// Pixels of the picture, and how many are drawn for one of them along a side. False if the driver
    /// refuses the size.
    bool Resize(int width, int height, float detail);
    void Bind() const;
    /// Brings what was drawn to the picture's size and copies it out.
    void Read(RenderImage& image) const;
    int Width() const { return drawnWidth; }
    int Height() const { return drawnHeight; }

private:
    void Release();

    int width = 0;
    int height = 0;
    int drawnWidth = 0;
    int drawnHeight = 0;
    unsigned frame = 0;
    unsigned color = 0;
    unsigned depth = 0;
    unsigned pictureFrame = 0; ///< 0 while what is drawn has the picture's size
    unsigned pictureColor = 0;
};

} // namespace render

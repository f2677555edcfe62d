#pragma once

#include "host/stage/render/RenderScene.h"

namespace render {

/// A colour and depth buffer off the screen, larger than the picture by a whole factor for smooth edges.
/// Used and destroyed with its context current.
class RenderTarget {
public:
    RenderTarget() = default;
    ~RenderTarget();
    RenderTarget(const RenderTarget&) = delete;
    RenderTarget& operator=(const RenderTarget&) = delete;

    /// Pixels of the picture; `factor` 1 or 2. False if the driver refuses the size.
    bool Resize(int width, int height, int factor);
    void Bind() const;
    /// Averages down to the picture's size and copies it out.
    void Read(RenderImage& image) const;
    int Width() const { return width * factor; }
    int Height() const { return height * factor; }

private:
    void Release();

    int width = 0;
    int height = 0;
    int factor = 1;
    unsigned frame = 0;
    unsigned color = 0;
    unsigned depth = 0;
    unsigned smallFrame = 0;
    unsigned smallColor = 0;
};

} // namespace render

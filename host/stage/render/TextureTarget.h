#pragma once

namespace render {

/// A texture to draw into, with a frame of its own. Used and destroyed with its context current.
class TextureTarget {
public:
    TextureTarget();
    ~TextureTarget();
    TextureTarget(const TextureTarget&) = delete;
    TextureTarget& operator=(const TextureTarget&) = delete;

    /// Binds the frame and draws into all of it. Another size than before makes the texture anew, with GL's
    /// numbers of its format inside (as GL_RGBA8) and of the channels it has (as GL_RGBA).
    void Bind(int internalFormat, unsigned channels, int width, int height);
    unsigned Texture() const { return texture; }

private:
    unsigned frame = 0;
    unsigned texture = 0;
    int textureWidth = 0;
    int textureHeight = 0;
};

} // namespace render

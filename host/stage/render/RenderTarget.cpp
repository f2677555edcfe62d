#include "host/stage/render/RenderTarget.h"

#include <algorithm>
#include <cmath>
#include <epoxy/gl.h>
#include <limits>

namespace render {

namespace {

unsigned MakeBuffer(GLenum format, int width, int height) {
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, width, height);
    return buffer;
}

unsigned MakeFrame(unsigned color, unsigned depth) {
    GLuint frame = 0;
    glGenFramebuffers(1, &frame);
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, color);
    if (depth != 0) {
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth);
    }
    return frame;
}

/// Pixels that are drawn for so many of the picture; a size that no driver has instead of one that no int
/// has.
int Drawn(int size, float detail) {
    constexpr int kTooLarge = std::numeric_limits<int>::max();
    const double drawn = static_cast<double>(size) * detail;
    return drawn < kTooLarge ? std::max(static_cast<int>(std::lround(drawn)), 1) : kTooLarge;
}

} // namespace

RenderTarget::~RenderTarget() {
    Release();
}

void RenderTarget::Release() {
    const GLuint frames[] = {frame, pictureFrame};
    const GLuint buffers[] = {color, depth, pictureColor};
    glDeleteFramebuffers(2, frames);
    glDeleteRenderbuffers(3, buffers);
    frame = pictureFrame = color = depth = pictureColor = 0;
    width = height = drawnWidth = drawnHeight = 0;
}

bool RenderTarget::Resize(int newWidth, int newHeight, float detail) {
    const int newDrawnWidth = Drawn(newWidth, detail);
    const int newDrawnHeight = Drawn(newHeight, detail);
    if (newWidth == width && newHeight == height && newDrawnWidth == drawnWidth &&
        newDrawnHeight == drawnHeight && frame != 0) {
        return true;
    }
    Release();
    GLint limit = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &limit);
    if (newWidth <= 0 || newHeight <= 0 || std::max(newWidth, newDrawnWidth) > limit ||
        std::max(newHeight, newDrawnHeight) > limit) {
        return false;
    }
    width = newWidth;
    height = newHeight;
    drawnWidth = newDrawnWidth;
    drawnHeight = newDrawnHeight;
    color = MakeBuffer(GL_RGBA8, drawnWidth, drawnHeight);
    depth = MakeBuffer(GL_DEPTH_COMPONENT24, drawnWidth, drawnHeight);
    frame = MakeFrame(color, depth);
    bool complete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    if (drawnWidth != width || drawnHeight != height) {
        pictureColor = MakeBuffer(GL_RGBA8, width, height);
        pictureFrame = MakeFrame(pictureColor, 0);
        complete = complete && glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    }
    return complete;
}

void RenderTarget::Bind() const {
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    glViewport(0, 0, Width(), Height());
}

void RenderTarget::Read(RenderImage& image) const {
    glBindFramebuffer(GL_READ_FRAMEBUFFER, frame);
    if (pictureFrame != 0) {
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, pictureFrame);
        glBlitFramebuffer(0, 0, Width(), Height(), 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_LINEAR);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, pictureFrame);
    }
    image.width = width;
    image.height = height;
    const auto pitch = static_cast<std::size_t>(width);
    image.pixels.resize(pitch * static_cast<std::size_t>(height));
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, image.pixels.data());
    // GL counts rows from the bottom.
    for (std::size_t top = 0, bottom = static_cast<std::size_t>(height) - 1; top < bottom; ++top, --bottom) {
        std::swap_ranges(image.pixels.begin() + static_cast<std::ptrdiff_t>(top * pitch),
                         image.pixels.begin() + static_cast<std::ptrdiff_t>((top + 1) * pitch),
                         image.pixels.begin() + static_cast<std::ptrdiff_t>(bottom * pitch));
    }
}

} // namespace render

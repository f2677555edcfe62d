#include "host/stage/render/RenderTarget.h"

#include <algorithm>
#include <epoxy/gl.h>

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

} // namespace

RenderTarget::~RenderTarget() {
    Release();
}

void RenderTarget::Release() {
    const GLuint frames[] = {frame, smallFrame};
    const GLuint buffers[] = {color, depth, smallColor};
    glDeleteFramebuffers(2, frames);
    glDeleteRenderbuffers(3, buffers);
    frame = smallFrame = color = depth = smallColor = 0;
    width = height = 0;
}

bool RenderTarget::Resize(int newWidth, int newHeight, int newFactor) {
    if (newWidth == width && newHeight == height && newFactor == factor && frame != 0) {
        return true;
    }
    Release();
    GLint limit = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &limit);
    if (newWidth <= 0 || newHeight <= 0 || newWidth > limit / newFactor || newHeight > limit / newFactor) {
        return false;
    }
    width = newWidth;
    height = newHeight;
    factor = newFactor;
    color = MakeBuffer(GL_RGBA8, Width(), Height());
    depth = MakeBuffer(GL_DEPTH_COMPONENT24, Width(), Height());
    frame = MakeFrame(color, depth);
    bool complete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    if (factor > 1) {
        smallColor = MakeBuffer(GL_RGBA8, width, height);
        smallFrame = MakeFrame(smallColor, 0);
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
    if (factor > 1) {
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, smallFrame);
        glBlitFramebuffer(0, 0, Width(), Height(), 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_LINEAR);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, smallFrame);
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

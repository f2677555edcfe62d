#include "host/stage/render/TextureTarget.h"

#include <epoxy/gl.h>

namespace render {

TextureTarget::TextureTarget() {
    glGenFramebuffers(1, &frame);
    glGenTextures(1, &texture);
}

TextureTarget::~TextureTarget() {
    glDeleteTextures(1, &texture);
    glDeleteFramebuffers(1, &frame);
}

void TextureTarget::Bind(int internalFormat, unsigned channels, int width, int height) {
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    if (width != textureWidth || height != textureHeight) {
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, width, height, 0, channels, GL_UNSIGNED_BYTE, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
        textureWidth = width;
        textureHeight = height;
    }
    glViewport(0, 0, width, height);
}

} // namespace render

#include "host/stage/render/SkyPass.h"

#include "host/stage/render/Shaders.h"

#include <algorithm>
#include <epoxy/gl.h>

namespace render {

namespace {

constexpr int kReduction = 4;

} // namespace

SkyPass::SkyPass()
    : skyProgram(Shaders::kFramePrelude, Shaders::kScreenVertex, Shaders::kSkyFragment),
      backdropProgram(Shaders::kFramePrelude, Shaders::kScreenVertex, Shaders::kBackdropFragment) {
    glGenVertexArrays(1, &emptyArray);
    glGenFramebuffers(1, &frame);
    glGenTextures(1, &sky);
}

SkyPass::~SkyPass() {
    glDeleteTextures(1, &sky);
    glDeleteFramebuffers(1, &frame);
    glDeleteVertexArrays(1, &emptyArray);
}

void SkyPass::Prepare(int width, int height) {
    const int neededWidth = std::max(width / kReduction, 1);
    const int neededHeight = std::max(height / kReduction, 1);
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    if (neededWidth != skyWidth || neededHeight != skyHeight) {
        skyWidth = neededWidth;
        skyHeight = neededHeight;
        glBindTexture(GL_TEXTURE_2D, sky);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, skyWidth, skyHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, sky, 0);
    }
    glViewport(0, 0, skyWidth, skyHeight);
    glDisable(GL_DEPTH_TEST);
    skyProgram.Use();
    glBindVertexArray(emptyArray);
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

void SkyPass::Draw() const {
    backdropProgram.Use();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, sky);
    glUniform1i(backdropProgram.Location("sky"), 0);
    glBindVertexArray(emptyArray);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glDepthMask(GL_FALSE);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glDepthMask(GL_TRUE);
    glDepthFunc(GL_LESS);
    glBindVertexArray(0);
}

} // namespace render

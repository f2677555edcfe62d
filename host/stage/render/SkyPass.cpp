#include "host/stage/render/SkyPass.h"

#include "host/stage/render/Shaders.h"

#include <algorithm>
#include <epoxy/gl.h>

namespace {

constexpr int kReduction = 4;

} // namespace

SkyPass::SkyPass()
    : cloudProgram(Shaders::kFramePrelude, Shaders::kScreenVertex, Shaders::kCloudFragment),
      skyProgram(Shaders::kFramePrelude, Shaders::kScreenVertex, Shaders::kSkyFragment) {
    glGenVertexArrays(1, &emptyArray);
    glGenFramebuffers(1, &frame);
    glGenTextures(1, &clouds);
}

SkyPass::~SkyPass() {
    glDeleteTextures(1, &clouds);
    glDeleteFramebuffers(1, &frame);
    glDeleteVertexArrays(1, &emptyArray);
}

void SkyPass::DrawClouds(int width, int height) {
    const int neededWidth = std::max(width / kReduction, 1);
    const int neededHeight = std::max(height / kReduction, 1);
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    if (neededWidth != cloudWidth || neededHeight != cloudHeight) {
        cloudWidth = neededWidth;
        cloudHeight = neededHeight;
        glBindTexture(GL_TEXTURE_2D, clouds);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RG8, cloudWidth, cloudHeight, 0, GL_RG, GL_UNSIGNED_BYTE, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, clouds, 0);
    }
    glViewport(0, 0, cloudWidth, cloudHeight);
    glDisable(GL_DEPTH_TEST);
    cloudProgram.Use();
    glBindVertexArray(emptyArray);
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

void SkyPass::Draw() const {
    skyProgram.Use();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, clouds);
    glUniform1i(skyProgram.Location("clouds"), 0);
    glBindVertexArray(emptyArray);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glDepthMask(GL_FALSE);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glDepthMask(GL_TRUE);
    glDepthFunc(GL_LESS);
    glBindVertexArray(0);
}

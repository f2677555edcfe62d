#include "host/stage/render/OutlinePass.h"

#include "host/stage/render/Shaders.h"

#include <epoxy/gl.h>

namespace render {

OutlinePass::OutlinePass()
    : program(Shaders::kFramePrelude, Shaders::kScreenVertex, Shaders::kOutlineFragment) {
    glGenVertexArrays(1, &emptyArray);
    glGenFramebuffers(1, &frame);
    glGenTextures(1, &mask);
}

OutlinePass::~OutlinePass() {
    glDeleteTextures(1, &mask);
    glDeleteFramebuffers(1, &frame);
    glDeleteVertexArrays(1, &emptyArray);
}

void OutlinePass::BeginMask(int width, int height, const Area& area) {
    glBindFramebuffer(GL_FRAMEBUFFER, frame);
    if (width != maskWidth || height != maskHeight) {
        glBindTexture(GL_TEXTURE_2D, mask);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_R8, width, height, 0, GL_RED, GL_UNSIGNED_BYTE, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, mask, 0);
        maskWidth = width;
        maskHeight = height;
    }
    glViewport(0, 0, width, height);
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.x, area.y, area.width, area.height);
    glDisable(GL_DEPTH_TEST);
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT);
}

void OutlinePass::Draw(const glm::vec3& color, float radius) const {
    program.Use();
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, mask);
    glUniform1i(program.Location("mask"), 1);
    glUniform3fv(program.Location("color"), 1, &color.x);
    glUniform1f(program.Location("radius"), radius);
    glBindVertexArray(emptyArray);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glDisable(GL_BLEND);
    glDisable(GL_SCISSOR_TEST);
    glBindVertexArray(0);
    glActiveTexture(GL_TEXTURE0);
}

} // namespace render

#include "host/stage/render/OutlinePass.h"

#include "host/stage/render/Shaders.h"

#include <epoxy/gl.h>

namespace render {

OutlinePass::OutlinePass()
    : program(Shaders::kFramePrelude, Shaders::kScreenVertex, Shaders::kOutlineFragment) {
    glGenVertexArrays(1, &emptyArray);
}

OutlinePass::~OutlinePass() {
    glDeleteVertexArrays(1, &emptyArray);
}

void OutlinePass::BeginMask(int width, int height, const Area& area, int radius) {
    mask.Bind(GL_R8, GL_RED, width, height);
    glEnable(GL_SCISSOR_TEST);
    glScissor(area.x - radius, area.y - radius, area.width + 2 * radius, area.height + 2 * radius);
    glDisable(GL_DEPTH_TEST);
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glScissor(area.x, area.y, area.width, area.height);
}

void OutlinePass::Draw(const glm::vec3& color, float radius) const {
    program.Use();
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, mask.Texture());
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

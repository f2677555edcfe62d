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
}

SkyPass::~SkyPass() {
    glDeleteVertexArrays(1, &emptyArray);
}

void SkyPass::Prepare(int width, int height) {
    sky.Bind(GL_RGBA8, GL_RGBA, std::max(width / kReduction, 1), std::max(height / kReduction, 1));
    glDisable(GL_DEPTH_TEST);
    skyProgram.Use();
    glBindVertexArray(emptyArray);
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

void SkyPass::Draw() const {
    backdropProgram.Use();
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, sky.Texture());
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

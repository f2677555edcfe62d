#include "host/stage/render/LinePass.h"

#include "host/stage/render/Shaders.h"

#include <cmath>
#include <cstddef>
#include <epoxy/gl.h>

namespace render {

namespace {

bool IsFinite(const RenderLine& line) {
    const glm::vec3 sum = line.from + line.to;
    return std::isfinite(sum.x + sum.y + sum.z);
}

void Attribute(GLuint index, int size, std::size_t offset) {
    glVertexAttribPointer(index, size, GL_FLOAT, GL_FALSE, sizeof(RenderLine),
                          reinterpret_cast<const void*>(offset));
    glVertexAttribDivisor(index, 1);
    glEnableVertexAttribArray(index);
}

} // namespace

LinePass::LinePass() : program(Shaders::kFramePrelude, Shaders::kLineVertex, Shaders::kLineFragment) {
    glGenVertexArrays(1, &array);
    glGenBuffers(1, &buffer);
    glBindVertexArray(array);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    Attribute(0, 3, offsetof(RenderLine, from));
    Attribute(1, 3, offsetof(RenderLine, to));
    Attribute(2, 4, offsetof(RenderLine, color));
    Attribute(3, 1, offsetof(RenderLine, width));
    glBindVertexArray(0);
}

LinePass::~LinePass() {
    glDeleteBuffers(1, &buffer);
    glDeleteVertexArrays(1, &array);
}

void LinePass::Draw(const std::vector<RenderLine>& lines, float scale, bool depthTest) {
    kept.clear();
    for (const RenderLine& line : lines) {
        if (IsFinite(line)) {
            kept.push_back(line);
        }
    }
    if (kept.empty()) {
        return;
    }
    program.Use();
    glUniform1f(program.Location("scale"), scale);
    glBindVertexArray(array);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(kept.size() * sizeof(RenderLine)), kept.data(),
                 GL_STREAM_DRAW);
    depthTest ? glEnable(GL_DEPTH_TEST) : glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glDisable(GL_CULL_FACE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDrawArraysInstanced(GL_TRIANGLES, 0, 6, static_cast<GLsizei>(kept.size()));
    glDisable(GL_BLEND);
    glDepthMask(GL_TRUE);
    glBindVertexArray(0);
}

} // namespace render

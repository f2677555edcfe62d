#include "host/stage/render/GlProgram.h"

#include "host/engine/Units.h"

#include <epoxy/gl.h>
#include <stdexcept>
#include <string>

namespace render {

namespace {

GLuint Compile(GLenum stage, const char* define, const char* prelude, const char* source) {
    const GLuint shader = glCreateShader(stage);
    const std::string metre = "#define METRE " + std::to_string(engine::kUnitsPerMetre) + "\n";
    const char* texts[] = {"#version 330 core\n", metre.c_str(), define, prelude, source};
    glShaderSource(shader, static_cast<GLsizei>(std::size(texts)), texts, nullptr);
    glCompileShader(shader);
    GLint good = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &good);
    if (!good) {
        char log[2048] = {};
        glGetShaderInfoLog(shader, sizeof(log), nullptr, log);
        glDeleteShader(shader);
        throw std::runtime_error(std::string("shader: ") + log);
    }
    return shader;
}

} // namespace

GlProgram::GlProgram(const char* prelude, const char* vertex, const char* fragment, const char* define) {
    const GLuint vertexShader = Compile(GL_VERTEX_SHADER, define, prelude, vertex);
    const GLuint fragmentShader = Compile(GL_FRAGMENT_SHADER, define, prelude, fragment);
    program = glCreateProgram();
    glAttachShader(program, vertexShader);
    glAttachShader(program, fragmentShader);
    glLinkProgram(program);
    glDeleteShader(vertexShader);
    glDeleteShader(fragmentShader);
    GLint good = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &good);
    if (!good) {
        char log[2048] = {};
        glGetProgramInfoLog(program, sizeof(log), nullptr, log);
        glDeleteProgram(program);
        throw std::runtime_error(std::string("shader link: ") + log);
    }
    const GLuint block = glGetUniformBlockIndex(program, "Frame");
    if (block != GL_INVALID_INDEX) {
        glUniformBlockBinding(program, block, kFrameBinding);
    }
}

GlProgram::~GlProgram() {
    glDeleteProgram(program);
}

void GlProgram::Use() const {
    glUseProgram(program);
}

int GlProgram::Location(const char* name) const {
    return glGetUniformLocation(program, name);
}

} // namespace render

#pragma once

#include <glm/glm.hpp>

/// A linked shader program. Created and destroyed with its context current.
class GlProgram {
public:
    /// `prelude` and then `define` are put in front of both shaders. Throws std::runtime_error with the
    /// compiler's text.
    GlProgram(const char* prelude, const char* vertex, const char* fragment, const char* define = "");
    ~GlProgram();
    GlProgram(const GlProgram&) = delete;
    GlProgram& operator=(const GlProgram&) = delete;

    void Use() const;
    int Location(const char* name) const;
    unsigned Id() const { return program; }

private:
    unsigned program = 0;
};

#pragma once

#include <glm/glm.hpp>

namespace render {

/// A linked shader program. Created and destroyed with its context current.
class GlProgram {
public:
    /// Where the uniform block "Frame" is bound in every program that has it.
    static constexpr unsigned kFrameBinding = 0;

    /// `prelude` and then `define` are put in front of both shaders; METRE is defined as a metre's units.
    /// Throws std::runtime_error with the compiler's text.
    GlProgram(const char* prelude, const char* vertex, const char* fragment, const char* define = "");
    ~GlProgram();
    GlProgram(const GlProgram&) = delete;
    GlProgram& operator=(const GlProgram&) = delete;

    void Use() const;
    int Location(const char* name) const;

private:
    unsigned program = 0;
};

} // namespace render

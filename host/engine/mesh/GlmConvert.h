#pragma once

#include "host/engine/Math.h"

#include <cstring>
#include <glm/glm.hpp>

namespace mesh {

static_assert(sizeof(engine::Matrix4) == sizeof(glm::mat4), "the floats of both stand in the same order");

/// The engine's vectors and matrices as those that meshes and pictures work with, and back.
inline glm::vec3 ToGlm(const Vector3& v) {
    return {v.x, v.y, v.z};
}
inline Vector3 FromGlm(const glm::vec3& v) {
    return {v.x, v.y, v.z};
}
inline glm::mat4 ToGlm(const engine::Matrix4& matrix) {
    glm::mat4 result;
    std::memcpy(&result[0][0], matrix.m, sizeof(result));
    return result;
}
inline engine::Matrix4 FromGlm(const glm::mat4& matrix) {
    engine::Matrix4 result;
    std::memcpy(result.m, &matrix[0][0], sizeof(result.m));
    return result;
}

} // namespace mesh

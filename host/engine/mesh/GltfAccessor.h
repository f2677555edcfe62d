#pragma once

#include <cstdint>
#include <glm/glm.hpp>
#include <vector>

namespace tinygltf {
class Model;
}

namespace mesh {

/// Reads the numbers behind accessor `index`, one vec4 an element with missing parts 0 (w of a vec3
/// included); integers that the file marks as normalised come as 0 to 1. Every offset is checked against
/// the buffers. `components` is the least number of components that the caller can use.
/// Throws MeshError without a path for anything out of place.
std::vector<glm::vec4> ReadVectors(const tinygltf::Model& model, int index, int components);

/// Reads one float an element.
std::vector<float> ReadFloats(const tinygltf::Model& model, int index);

/// Reads triangle indices. Throws MeshError for values of `vertexCount` or above.
std::vector<std::uint32_t> ReadIndices(const tinygltf::Model& model, int index, std::size_t vertexCount);

/// Reads 4 by 4 matrices.
std::vector<glm::mat4> ReadMatrices(const tinygltf::Model& model, int index);

} // namespace mesh

#pragma once

#include "host/engine/mesh/Mesh.h"

#include <memory>

namespace mesh {

/// Loads a .glb or .gltf file. Throws MeshError with the path and the reason for a file that is missing,
/// broken or beyond the limits of this loader (256 MiB, buffers included, 65,536 nodes, 4 million vertices).
/// Triangles, base colours (material and vertex), roughness, metallic and emission, node animation and
/// skins with up to four joints a vertex are read; textures, morph targets and cameras are left out, and
/// files with pictures aren't opened. A material with the extra "ripple" (0 to 1) is drawn as moving water.
/// The metres of the file become units: everything in the mesh is in centimetres.
///
/// Buffers in files of their own must lie in the model's folder, in `levelFolder`, if there is one, or below.
/// Their paths go behind `buffers`, also those of a model that can't be read.
std::shared_ptr<const Mesh> LoadGltf(const std::string& path, const std::string& levelFolder = "",
                                     std::vector<std::string>* buffers = nullptr);

/// The same from memory; `path` serves messages and the search for files beside it.
std::shared_ptr<const Mesh> LoadGltf(const std::string& path, const std::vector<unsigned char>& bytes,
                                     const std::string& levelFolder = "",
                                     std::vector<std::string>* buffers = nullptr);

} // namespace mesh

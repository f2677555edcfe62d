#pragma once

#include <string>
#include <vector>

class IFilm;
namespace mesh {
class GltfMeshLibrary;
} // namespace mesh
namespace engine {
class Level;
}

namespace headless {

/// What a film of a level names and what is not there or can't be used: models of the level's objects, the
/// film's animations, sounds and speech. One sentence each, each once.
std::vector<std::string> MissingFiles(engine::Level& level, mesh::GltfMeshLibrary& meshes, const IFilm& film);

} // namespace headless

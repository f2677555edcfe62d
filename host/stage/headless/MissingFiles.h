#pragma once

#include <string>
#include <vector>

class GltfMeshLibrary;
class IFilm;
namespace engine {
class Level;
}

/// What a film of a level names and what is not there or can't be used: models of the level's objects, the
/// film's animations, sounds and speech. One sentence each, each once.
std::vector<std::string> MissingFiles(engine::Level& level, GltfMeshLibrary& meshes, const IFilm& film);

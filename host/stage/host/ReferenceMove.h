#pragma once

#include <string>
#include <vector>

class IFilmKey;
namespace engine {
class LevelData;
class SceneObject;
} // namespace engine

namespace stage {

/// Gives a level's meshes, sounds and speech the names that lead to the same files from another folder. Holds
/// on to objects and keys: none may go while it lives.
class ReferenceMove {
public:
    ReferenceMove(engine::LevelData& data, const std::string& from, const std::string& to);
    /// The names as they were.
    void Undo();
    /// Whether some mesh has another name now.
    bool HasMovedMeshes() const { return !meshes.empty(); }

    /// Whether anything has another name now.
    bool HasMoved() const { return HasMovedMeshes() || !sounds.empty(); }

private:
    struct Mesh {
        engine::SceneObject* object;
        std::string before;
    };
    struct Sound {
        IFilmKey* key; ///< of speech or a sound
        std::string before;
    };
    void MoveSound(IFilmKey& key, const std::string& from, const std::string& to);

    std::vector<Mesh> meshes;
    std::vector<Sound> sounds;
};

} // namespace stage

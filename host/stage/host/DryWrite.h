#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class IFilm;

namespace engine {
class LevelData;
class SceneObject;
} // namespace engine

namespace stage {

class EditorHost;

/// What the bytes are for.
enum class DryWriteFor {
    Keeping,   ///< as a save writes them
    Comparison ///< the same, blind for what opening a film changes in it; see engine::FilmAtRest
};

/// The bytes that a save would write now, without saving: the open film stays open, the plug-ins get no event
/// but the one that asks what they keep themselves, and files that they write beside the level are not made.
/// Everything that they set for a save is as before afterwards. Throws engine::LevelFileError, also where
/// there is no level.
std::string DryWrite(EditorHost& host, DryWriteFor purpose = DryWriteFor::Keeping);

/// While it lives, plug-ins may write: what they set for a save is as before afterwards, and files that they
/// write beside the level are not made.
class UnsavedState {
public:
    explicit UnsavedState(engine::LevelData& levelData);
    ~UnsavedState();
    UnsavedState(const UnsavedState&) = delete;
    UnsavedState& operator=(const UnsavedState&) = delete;

private:
    engine::LevelData& data;
    std::string rootName;
    std::vector<std::pair<engine::SceneObject*, std::uint8_t>> saved;
    std::vector<std::pair<IFilm*, std::uint8_t>> validated;
};

/// While it lives, views that a plug-in holds look as the user left them: a level keeps no film's camera.
class OwnCameras {
public:
    explicit OwnCameras(EditorHost& editorHost);
    ~OwnCameras();
    OwnCameras(const OwnCameras&) = delete;
    OwnCameras& operator=(const OwnCameras&) = delete;

private:
    struct Held;
    EditorHost& host;
    std::vector<Held> held;
};

} // namespace stage

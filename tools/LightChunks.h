#pragma once

#include "host/engine/ChunkClient.h"

#include <vector>

namespace engine {
class FilmManager;
class LevelData;
class SceneObject;
} // namespace engine

/// Keeps the film lights of a level in its chunk 5782 and how the timeline shows each film in its chunk 5785,
/// as the plug-in does, for programs that work on levels without the plug-in. All films are shown whole.
/// Lights stand in the chunk in the order of the films' tracks, the sun's helper first; that order alone
/// pairs them with the tracks.
class LightChunks : public engine::IChunkClient {
public:
    static constexpr std::uint16_t kLights = 5782;
    static constexpr std::uint16_t kLight = 5783;
    static constexpr std::uint16_t kViewSettings = 5785;

    void CollectHiddenObjects(IObjectCollection& collection) override;
    void SaveChunks(fs::file& file, IHostObject* object) override;
    void LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) override;
    bool IsOwnChunk(std::uint16_t id) override { return id == kLights || id == kViewSettings; }

    /// The level whose lights are saved; not owned.
    void SetLevel(engine::LevelData* level) { data = level; }
    /// Gives the loaded lights to the tracks of all films; call after the level was installed.
    void PairWithTracks(engine::FilmManager& films);

private:
    struct Light {
        std::uint32_t kind = 0; ///< 0 GL, 1 dynamic
        bool isSun = false;
        EditorObject* object = nullptr;
    };

    std::vector<Light> LightsInOrder() const;
    void SaveViewSettings(fs::file& file) const;

    engine::LevelData* data = nullptr;
    std::vector<Light> loaded;
};

#pragma once

#include "tests/engine/EngineFixture.h"
#include "host/engine/ChunkClient.h"
#include "host/engine/FileHandles.h"
#include "host/engine/LevelFile.h"
#include "host/engine/LevelFormat.h"

#include <filesystem>

namespace engine_test {

/// Stands for the plug-ins: owns chunks 5754, 5780, 5784 and 5752 and writes down what it is asked.
class RecordingClient : public engine::IChunkClient {
public:
    void CollectHiddenObjects(IObjectCollection& collection) override;
    void SaveChunks(fs::file& file, IHostObject* object) override;
    void LoadChunk(IHostObject* object, fs::file& file, std::uint16_t id, std::uint32_t size) override;
    bool IsOwnChunk(std::uint16_t id) override;

    std::string rootText;   ///< data of chunk 5780 under the root, which is not written if empty
    std::string objectText; ///< the same of 5784 under objects
    std::string filmsText;  ///< the same of 5754 under the film manager
    EditorObject* hidden = nullptr;
    std::vector<EditorObject*> kept; ///< written in 5752 under the root, read back from there
    bool throwOnLoad = false;
    bool throwOnSave = false;
    int readExtra = 0; ///< how many bytes more than its size a chunk is read for
    std::vector<std::string> calls;
};

/// Saving to and loading from memory, and a folder of its own for files.
class LevelFileBase : public EngineTest {
protected:
    LevelFileBase();
    ~LevelFileBase() override;

    std::string Saved();
    engine::LevelMessages Load(const std::string& bytes);
    /// Saves, starts an empty level and loads.
    engine::LevelMessages Reload();
    /// Objects, a film with the five track classes and one key of each kind, links and groups.
    void MakeSample();
    std::string Path(const std::string& name) const { return (folder / name).string(); }
    std::string Content(const std::string& name) const;
    void WriteFile(const std::string& name, const std::string& bytes) const;
    std::size_t FilesInFolder() const;

    RecordingClient client;
    std::filesystem::path folder;
};

} // namespace engine_test

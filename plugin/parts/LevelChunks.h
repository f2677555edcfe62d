#pragma once

#include "plugin/contract/HostObject.h"
#include "plugin/parts/VirtualObjects.h"

#include <cstdint>

class CFilmsLightHelperMgr;
class FilmSession;
class IFilmManager;

/// The plug-in's chunks in the level's file: what they are, and their bodies. Reading consumes a chunk of any
/// content to its end.
class LevelChunks {
public:
    LevelChunks(FilmSession& openSession, CFilmsLightHelperMgr& lightHelpers,
                VirtualObjectRecords& virtualObjects)
        : session(openSession), lights(lightHelpers), virtuals(virtualObjects) {}
    LevelChunks(const LevelChunks&) = delete;
    LevelChunks& operator=(const LevelChunks&) = delete;

    static bool IsOwn(std::uint16_t chunkId);
    /// Writes the chunks that belong behind the host's object, which may be null. True if there are any, but
    /// for the level's root object.
    bool Save(fs::file& file, IHostObject* object) const;
    /// Reads one of the object's chunks of `size` bytes. False, with nothing read, for others' chunks.
    bool Load(IHostObject* object, fs::file& file, std::uint16_t chunkId, std::uint32_t size);

private:
    void SaveRoot(fs::file& file, EditorObject* root) const;
    void SaveVirtualActors(fs::file& file, const IFilmManager* manager) const;
    void LoadViewSettings(fs::file& file, std::uint32_t size);
    void LoadTrackParams(fs::file& file, std::uint32_t size);
    static void LoadObjectParams(IHostObject* object, fs::file& file, bool newForm, std::uint32_t size);
    void LoadVirtualObjects(IHostObject* object, fs::file& file, bool withClassNames, std::uint32_t size);

    FilmSession& session;
    CFilmsLightHelperMgr& lights;
    VirtualObjectRecords& virtuals;
};

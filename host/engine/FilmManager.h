#pragma once

#include "host/engine/Changes.h"
#include "host/engine/KeyFactory.h"
#include "host/engine/RawChunk.h"
#include "host/engine/SceneObjectInfo.h"
#include "host/engine/SlabPool.h"
#include "plugin/contract/FilmManager.h"

#include <memory>
#include <vector>

namespace engine {

class Film;
class LevelData;

/// All films of a level. Owned by the level data.
class FilmManager : public IFilmManager {
public:
    explicit FilmManager(LevelData& levelData);
    ~FilmManager() override;
    FilmManager(const FilmManager&) = delete;
    FilmManager& operator=(const FilmManager&) = delete;

    bool IsA(int classId) const override;
    EditorObjectInfo* GetInfo() override { return &info; }
    char* NewFilmName() const override;
    int AllocateFilm() override;
    void DeleteFilm(int index) override;
    IFilm* GetFilm(int index) const override;
    void OnObjectsDeleted(const ObjectList& objects) override;
    void ReleaseVirtualObjects(const ObjectList& objects, int zero) override;
    void SetFramesPerSecond(int rate) override {
        framesPerSecond = rate;
        NoteChange();
    }

    LevelData& Data() const { return data; }
    int FramesPerSecond() const { return framesPerSecond; }
    KeyFactory& Keys() { return factory; }
    SlabPool& Pool() { return pool; }
    Film* FilmAt(int index) const;
    /// A new film in this slot, which must be free.
    Film& MakeFilm(int index);
    /// A key that was taken out of its track while somebody may still show it: it lives until DropParked.
    void Park(IFilmKey* key) { parked.push_back(key); }
    /// When no film is shown.
    void DropParked();
    /// All slots are free. The films without tracks are kept aside, for MakeFilm in their slots.
    void Empty();
    /// Deletes what Empty kept aside and nobody took.
    void DropEmptied();
    Film* FindFilm(const std::string& name) const;
    /// Seconds of a sound file by the host's duration function or, without one, read from the file beside
    /// the level; -1.0 if it can't be read.
    float SoundSeconds(const std::string& path) const;
    /// Objects were attached, parented or set: films pose in another order.
    void OnStructureChanged();
    /// Finds the objects that films know by id.
    void Relink(std::vector<std::string>& messages);

    std::vector<RawChunk> foreignChunks; ///< in the manager's part of the file and known to nobody

private:
    LevelData& data;
    SceneObjectInfo info;
    SlabPool pool; ///< outlives the keys and the lists of all films
    KeyFactory factory;
    int framesPerSecond = 30;
    std::unique_ptr<Film> emptied[kFilms];
    std::vector<IFilmKey*> parked;
};

} // namespace engine

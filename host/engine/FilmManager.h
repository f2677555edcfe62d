#pragma once

#include "host/engine/SceneObjectInfo.h"
#include "plugin/contract/FilmManager.h"

namespace engine {

class LevelData;

/// All films of a level. Owned by the level data.
class FilmManager : public IFilmManager {
public:
    explicit FilmManager(LevelData& levelData);
    ~FilmManager() override;

    bool IsA(int classId) const override;
    EditorObjectInfo* GetInfo() override { return &info; }
    char* NewFilmName() const override;
    int AllocateFilm() override;
    void DeleteFilm(int index) override;
    IFilm* GetFilm(int index) const override;
    void OnObjectsDeleted(const ObjectList& objects) override;
    void ReleaseVirtualObjects(const ObjectList& objects, int zero) override;
    void SetFramesPerSecond(int rate) override { framesPerSecond = rate; }

    LevelData& Data() const { return data; }
    int FramesPerSecond() const { return framesPerSecond; }

private:
    LevelData& data;
    SceneObjectInfo info;
    int framesPerSecond = 30;
};

} // namespace engine

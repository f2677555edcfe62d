#pragma once

#include "plugin/contract/Film.h"

/// Makes key records.
class IKeyFactory {
public:
    virtual ~IKeyFactory() = default;
    /// A new record with its kind's defaults, in no track; null for a kind that has no record.
    virtual IFilmKey* CreateKey(int kind) = 0;
    /// Deletes a key that is in no track.
    virtual void DestroyKey(IFilmKey* key) = 0;
};

/// All films of a level. Owned by the level data.
class IFilmManager : public IHostObject {
public:
    static constexpr int kFilms = 200;

    virtual EditorObjectInfo* GetInfo() = 0;
    /// A name that no film has, made with new[]; the caller frees it with delete[].
    virtual char* NewFilmName() const = 0;
    /// Index of a free slot with a new film in it, -1 if all are taken.
    virtual int AllocateFilm() = 0;
    virtual void DeleteFilm(int index) = 0;
    virtual IFilm* GetFilm(int index) const = 0;
    /// All films forget these objects.
    virtual void OnObjectsDeleted(const ObjectList& objects) = 0;
    /// The objects stop being virtual in all films.
    virtual void ReleaseVirtualObjects(const ObjectList& objects, int zero) = 0;
    virtual void SetFramesPerSecond(int framesPerSecond) = 0;

    IFilm* films[kFilms] = {};
    IKeyFactory* keyFactory = nullptr; ///< lives as long as the manager
    IFilm* currentFilm = nullptr;      ///< written by the plug-in at each film change
};

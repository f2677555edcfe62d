#pragma once

#include "helpers/rules/FilmsLightHelper.h"
#include "plugin/contract/Film.h"
#include "plugin/contract/Level.h"

#include <cstdint>
#include <list>

class FilmSession;

/// Owns the light helpers of the level. One instance, a member of the plug-in object.
class CFilmsLightHelperMgr {
public:
    explicit CFilmsLightHelperMgr(const FilmSession& openSession) : session(openSession) {}
    virtual ~CFilmsLightHelperMgr();
    CFilmsLightHelperMgr(const CFilmsLightHelperMgr&) = delete;
    CFilmsLightHelperMgr& operator=(const CFilmsLightHelperMgr&) = delete;

    /// Takes the helper over.
    void Add(CFilmsLightHelper* helper);
    /// Gives the helper back to the caller, undestroyed.
    void Remove(CFilmsLightHelper* helper);
    void DeleteHelpers();
    /// Compares object ids, so two objects with the same id are one.
    CFilmsLightHelper* FindByObject(const EditorObject* object) const;
    /// The helper that holds the track; for any sun track the sun helper.
    CFilmsLightHelper* FindByTrack(CFilmTrack* track) const;
    /// The helper that holds exactly this track: a sun track matches only if it is held.
    CFilmsLightHelper* FindHolder(const CFilmTrack* track) const;
    CFilmsLightHelper* GetSunHelper() const;
    /// Makes the sun helper through the host if there is none; null if the host can't.
    CFilmsLightHelper* GetOrCreateSunHelper(ILevelData* levelData);
    /// True inside the host's call that makes the sun helper's object.
    bool IsCreatingSun() const { return creatingSun; }
    /// Hides or shows the lights of a film in the level.
    static void SetLightsForFilm(IFilm* film, bool hide);
    /// Marks the helper objects as not saved with the level's objects and collects them.
    void HideFromLevel(ObjectList* objects);
    /// Chunk body: the sun helper, then the films' light tracks in order. The order is part of the format.
    void Save(fs::file& file, const IFilmManager* manager) const;
    void Load(fs::file& file, EditorObject* reader, std::uint32_t size);
    /// Gives loaded helpers to the films' light tracks in the order in which they were saved.
    void PairWithTracks(ILevelData* levelData);
    /// No helper holds a track of this film any more.
    void ForgetFilm(const IFilm* film);
    /// Drops the helpers of an object that is gone.
    void ForgetObject(const EditorObject* object);

    std::list<CFilmsLightHelper*> helpers; ///< owned

private:
    const FilmSession& session;
    bool creatingSun = false; ///< the host reports the new object while it is made
};

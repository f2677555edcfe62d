#pragma once

#include "plugin/contract/Types.h"

class CFilmsLightHelperMgr;
class CFilmTrack;
class FilmSession;
class IFilm;
class ObjectMatrices;

/// Who plays in films: which object a track moves and the other way round, and how level objects become
/// actors and cease to be.
class ActorList {
public:
    ActorList(const FilmSession& openSession, const CFilmsLightHelperMgr& lightHelpers,
              const ObjectMatrices& matrices)
        : session(openSession), lights(lightHelpers), places(matrices) {}
    ActorList(const ActorList&) = delete;
    ActorList& operator=(const ActorList&) = delete;

    /// Null for tracks that move none. A track that should have one and hasn't is told to the log.
    EditorObject* FindObjectOf(CFilmTrack* track) const;
    CFilmTrack* FindTrackOf(IFilm* film, EditorObject* object) const;

    /// The selection, to the open film; the user is told of grouped objects, which can't be actors.
    void AddSelected();
    /// To the open film.
    void Add(const ObjectList& objects);
    /// Takes the objects' tracks out of the film, or only those of lights.
    void Remove(IFilm* film, const ObjectList* objects, bool lightsOnly);

private:
    bool CanBecomeActor(EditorObject* object, bool isVirtual) const;
    void AddOne(EditorObject* object);
    void RemoveOne(IFilm* film, EditorObject* object, bool lightsOnly);

    const FilmSession& session;
    const CFilmsLightHelperMgr& lights;
    const ObjectMatrices& places;
};

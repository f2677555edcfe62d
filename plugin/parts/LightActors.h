#pragma once

class CFilmsLightHelperMgr;
class CFilmTrack;
class EditorObject;
class FilmSession;
class IFilm;
class ObjectMatrices;

/// How lights and the sun come into films.
class LightActors {
public:
    LightActors(const FilmSession& openSession, CFilmsLightHelperMgr& lightHelpers,
                const ObjectMatrices& matrices)
        : session(openSession), lights(lightHelpers), places(matrices) {}
    LightActors(const LightActors&) = delete;
    LightActors& operator=(const LightActors&) = delete;

    /// A track in the open film for a light of the level, with its first keys. False for what is no light, or
    /// if film, track or light went while the user was told something.
    bool AddTrack(EditorObject* object);
    /// False if the level has no sun, or the film has a sun track already.
    bool AddSunTrack(IFilm* film);
    /// Deletes the light through the host, with which the track goes. False if no light holds the track.
    bool DeleteLightOf(const CFilmTrack* track) const;

private:
    void MakeParams(EditorObject* object) const;
    bool AddKeys(const IFilm& film, CFilmTrack* track, const EditorObject* object, bool positionOnly) const;

    const FilmSession& session;
    CFilmsLightHelperMgr& lights;
    const ObjectMatrices& places;
};

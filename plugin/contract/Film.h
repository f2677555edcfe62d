#pragma once

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/FilmKey.h"
#include "plugin/contract/FilmTrack.h"
#include "plugin/contract/TrackRenderData.h"

#include <cstdint>
#include <list>
#include <string>

/// A film: a named timeline. Owned by its manager, deleted with IFilmManager::DeleteFilm.
class IFilm {
public:
    virtual ~IFilm() = default;
    virtual void SetName(const char* text) = 0;
    /// Takes the track over, appends it and sets its `film`. The first level track becomes mainTrack.
    virtual void AddTrack(CFilmTrack* track) = 0;
    /// The five makers give a track that is not yet added; the caller owns it until AddTrack.
    virtual CFilmTrack* CreateLevelTrack() = 0;
    virtual CFilmTrack* CreateObjectTrack() = 0;
    virtual CFilmTrack* CreateGLLightTrack() = 0;
    virtual CFilmTrack* CreateDynLightTrack() = 0;
    virtual CFilmTrack* CreateCameraTrack() = 0;
    /// Removes and deletes a track of this film with its keys.
    virtual void RemoveTrack(CFilmTrack* track, int one) = 0;
    virtual CFilmTrack* FindObjectTrack(const EditorObject* object) const = 0;
    virtual void Activate() = 0;
    virtual void Deactivate() = 0;
    /// Poses all tracks and fires the keys in (previous, time]; a previous time of -1.0 fires none.
    virtual void SetTime(float time, float previousTime) = 0;
    virtual void Stop() = 0;
    virtual void OnLevelLoaded() = 0;
    virtual void NewCameraName(std::string& name) const = 0;
    virtual CFilmTrack* FindCamera(const std::string& name) const = 0;
    /// World points at a time; the film's pose is not changed.
    virtual Vector3 GetCameraPosition(CFilmTrack* camera, float time) = 0;
    virtual Vector3 GetCameraTarget(CFilmTrack* camera, float time) = 0;
    /// Fills the two strips of the record. Sampling moves the film.
    virtual void SampleCameraPath(TrackRenderData* data, int one) = 0;

    std::int32_t index = -1;    ///< slot in the manager
    const char* name = nullptr; ///< owned by the film
    std::list<CFilmTrack*> tracks;
    CFilmTrack* mainTrack = nullptr;
    float length = 10.0f; ///< seconds
    std::uint8_t validated = 0;
};

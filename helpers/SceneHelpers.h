#pragma once

#include "plugin/contract/Film.h"

/// Draws the path of the camera under edit into the 3D views.
class ITrackVisualizer {
public:
    virtual ~ITrackVisualizer() = default;
    virtual void SetRenderTrack(CFilmTrack* track) = 0;
    virtual CFilmTrack* GetRenderTrack() const = 0;
    virtual void Draw() = 0;
    virtual void RemoveCameraTracksOf(IFilm* film) = 0;
    virtual void Reset() = 0;
};

/// Gives the camera under edit a body in the 3D views.
class ICameraHelpers {
public:
    virtual ~ICameraHelpers() = default;
    virtual void UpdateObjects(CFilmTrack* track, float time) = 0;
    virtual void OnObjectsMoved(const ObjectList* objects) = 0;
    virtual void Draw() = 0;
    virtual void ForgetObject(const EditorObject* object) = 0;
    virtual void Reset() = 0;
};

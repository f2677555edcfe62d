#pragma once

#include "plugin/contract/FilmTrack.h"
#include "plugin/LevelWatch.h"

#include <string>

/// The camera that a modal dialog works on. Camera, film and level may go while the dialog is open, so what
/// is held is only compared.
class CameraWatch {
public:
    /// Null and tracks of other classes are no camera.
    void Begin(CFilmTrack* track);
    /// Null unless the current film has the camera still, under the name that it had.
    CFilmCameraTrack* Find() const;

private:
    const CFilmTrack* watched = nullptr;
    std::string name;
    LevelWatch level;
};

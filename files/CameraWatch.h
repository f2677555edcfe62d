#pragma once

#include "plugin/contract/FilmTrack.h"
#include "plugin/session/LevelWatch.h"

#include <string>

class FilmSession;

/// The camera that a modal dialog works on. Camera, film and level may go while the dialog is open, so what
/// is held is only compared.
class CameraWatch {
public:
    explicit CameraWatch(const FilmSession& shown) : session(shown) {}

    /// Null and tracks of other classes are no camera.
    void Begin(CFilmTrack* track);
    /// Null unless the current film has the camera still, under the name that it had.
    CFilmCameraTrack* Find() const;

private:
    const FilmSession& session;
    const CFilmTrack* watched = nullptr;
    std::string name;
    LevelWatch level;
};

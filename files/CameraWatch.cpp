#include "files/CameraWatch.h"

#include "plugin/session/FilmSession.h"

void CameraWatch::Begin(CFilmTrack* track) {
    const CFilmCameraTrack* camera = AsCameraTrack(track);
    watched = camera;
    level = LevelWatch(session);
    name = camera != nullptr ? camera->cameraName : std::string();
}

CFilmCameraTrack* CameraWatch::Find() const {
    const IFilm* film = session.GetCurrentFilm();
    if (film == nullptr || watched == nullptr || !level.IsSameLevel()) {
        return nullptr;
    }
    for (CFilmTrack* track : film->tracks) {
        CFilmCameraTrack* camera = track == watched ? AsCameraTrack(track) : nullptr;
        if (camera != nullptr && camera->cameraName == name) {
            return camera;
        }
    }
    return nullptr;
}

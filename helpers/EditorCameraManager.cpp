#include "helpers/EditorCameraManager.h"

#include "plugin/session/FilmSession.h"

#include <algorithm>

bool CEditorCameraManager::CameraExists(const std::string& name) const {
    const IFilm* film = session.GetCurrentFilm();
    return film != nullptr && std::ranges::any_of(film->tracks, [&name](CFilmTrack* track) {
               const CFilmCameraTrack* camera = AsCameraTrack(track);
               return camera != nullptr && camera->cameraName == name;
           });
}

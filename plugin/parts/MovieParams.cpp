#include "plugin/parts/MovieParams.h"

#include "files/base/Log.h"
#include "plugin/session/FilmSession.h"

/// Only the first record decides whether the store is known; an empty store always enters.
void AddCameraParams(FilmSession& session, const CPluginFilmsParams& params) {
    if (!params.records.empty()) {
        const MovieParamsRecord& first = params.records.front();
        for (CPluginFilmsParams& known : session.cameraParams) {
            if (known.Find(first.filmName, first.objectName, nullptr) != nullptr) {
                return;
            }
        }
    }
    session.cameraParams.push_back(params);
}

void DeleteMovieParams(FilmSession& session, const IFilm* film) {
    if (film == nullptr) {
        DebugPrint("[IPluginImpl::DeleteMovieParams] Film doesn't exist\n");
        return;
    }
    session.levelParams.RemoveFilm(film->name);
    for (CPluginFilmsParams& params : session.cameraParams) {
        params.RemoveFilm(film->name);
    }
    for (CFilmTrack* track : film->tracks) {
        const auto* objectTrack = AsObjectTrack(track);
        if (objectTrack == nullptr) {
            continue;
        }
        if (objectTrack->actor == nullptr) {
            DebugPrint("[IPluginImpl::DeleteMovieParams] Object not found for film %s\n", film->name);
        } else if (CPluginFilmsParams* params = FilmSession::GetParams(objectTrack->actor)) {
            params->RemoveFilm(film->name);
        } else {
            DebugPrint("[IPluginImpl::DeleteMovieParams] Params not found for object %s\n",
                       objectTrack->actor->name.c_str());
        }
    }
}

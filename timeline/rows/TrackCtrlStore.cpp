#include "timeline/rows/TrackCtrlStore.h"

#include "plugin/session/FilmSession.h"

#include <algorithm>

namespace {

CPluginFilmsParams* FindCameraStore(std::list<CPluginFilmsParams>& stores, const std::string& filmName,
                                    const std::string& camera) {
    const auto found = std::ranges::find_if(
        stores, [&](CPluginFilmsParams& store) { return store.Find(filmName, camera, nullptr) != nullptr; });
    return found != stores.end() ? &*found : &stores.emplace_back();
}

/// The object's store; one that has none yet gets it. The plug-in object frees it with the object.
CPluginFilmsParams* ObjectStore(EditorObject& object) {
    CPluginFilmsParams* params = FilmSession::GetParams(&object);
    EditorObjectInfo* info = object.GetInfo();
    if (params == nullptr && info != nullptr) {
        params = new CPluginFilmsParams;
        info->SetPluginData(FilmSession::kPluginKind, params);
    }
    return params;
}

} // namespace

TrackStore FindTrackStore(FilmSession& session, CFilmTrack* track, const std::string& filmName) {
    if (EditorObject* object = session.FindObjectByTrack(track)) {
        return {ObjectStore(*object), object->name};
    }
    if (const CFilmCameraTrack* camera = AsCameraTrack(track)) {
        return {FindCameraStore(session.cameraParams, filmName, camera->cameraName), camera->cameraName};
    }
    return {&session.levelParams, "Level"};
}

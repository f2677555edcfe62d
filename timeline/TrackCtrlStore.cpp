#include "timeline/TrackCtrlStore.h"

#include "plugin/PluginImpl.h"

#include <algorithm>

namespace {

CPluginFilmsParams* FindCameraStore(const std::string& filmName, const std::string& camera) {
    std::list<CPluginFilmsParams>& stores = GetPlugin().cameraParams;
    const auto found = std::ranges::find_if(
        stores, [&](CPluginFilmsParams& store) { return store.Find(filmName, camera, nullptr) != nullptr; });
    return found != stores.end() ? &*found : &stores.emplace_back();
}

/// The object's store; one that has none yet gets it. The plug-in object frees it with the object.
CPluginFilmsParams* ObjectStore(EditorObject& object) {
    CPluginFilmsParams* params = IPluginImpl::GetParams(&object);
    EditorObjectInfo* info = object.GetInfo();
    if (params == nullptr && info != nullptr) {
        params = new CPluginFilmsParams;
        info->SetPluginData(IPluginImpl::kPluginKind, params);
    }
    return params;
}

} // namespace

TrackStore FindTrackStore(CFilmTrack* track, const std::string& filmName) {
    if (EditorObject* object = GetPlugin().FindObjectByTrack(track)) {
        return {ObjectStore(*object), object->name};
    }
    if (const CFilmCameraTrack* camera = AsCameraTrack(track)) {
        return {FindCameraStore(filmName, camera->cameraName), camera->cameraName};
    }
    return {&GetPlugin().levelParams, "Level"};
}

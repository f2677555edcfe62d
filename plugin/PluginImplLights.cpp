#include "plugin/PluginImpl.h"

#include "helpers/MatrixMath.h"

#include <memory>

namespace {

/// Bit 0 of a light's flags key: the light is on.
constexpr std::uint32_t kLightOn = 1;

void SetLightObject(CFilmTrack* track, EditorObject* object) {
    if (auto* gl = AsGLLightTrack(track)) {
        gl->isFixedLight = 0;
        gl->lightObject = object;
    } else if (auto* dyn = AsDynLightTrack(track)) {
        dyn->lightObject = object;
    }
}

} // namespace

bool IPluginImpl::AddLightTrack(EditorObject* object) {
    IFilmManager* manager = GetFilmManager();
    if (object == nullptr || manager == nullptr || currentFilm == nullptr) {
        return false;
    }
    const bool dynamic = ObjectDerivesFrom(object, ClassName::DynLight);
    if (!dynamic && !ObjectDerivesFrom(object, ClassName::GLLight)) {
        return false;
    }
    MakeLightParams(object);
    object->GetInfo()->Update(0);

    auto helper = std::make_unique<CFilmsLightHelper>();
    helper->object = object;
    helper->lightKind = dynamic ? CFilmsLightHelper::kDynLight : CFilmsLightHelper::kGLLight;
    CFilmTrack* track = dynamic ? currentFilm->CreateDynLightTrack() : currentFilm->CreateGLLightTrack();
    currentFilm->AddTrack(track);
    helper->track = track;
    SetLightObject(track, object);
    AddLightKeys(track, object, /*positionOnly*/ !dynamic);
    track->RefreshTrack();
    if (level != nullptr) {
        level->MakeUniqueName(dynamic ? "MovieDynLight" : "MovieGLLight", object, 0);
    }
    if (editor != nullptr) {
        editor->BroadcastEvent(EventCode::ObjectSetChanged, pluginId, nullptr);
    }
    lightHelpers.Add(helper.release());
    if (IMainCtrl* control = GetMainCtrl()) {
        control->ShowFilm(currentFilm, true);
    }
    return true;
}

/// Required: the record of a light stands under an empty object name.
void IPluginImpl::MakeLightParams(EditorObject* object) {
    delete GetParams(object);
    auto* params = new CPluginFilmsParams;
    object->GetInfo()->SetPluginData(kPluginKind, params);
    params->Set(currentFilm->name, nullptr, 0, CPluginFilmsParams::kFilter, "");
}

/// The first keys of a light: lit, and where its object stands outside of films.
void IPluginImpl::AddLightKeys(CFilmTrack* track, EditorObject* object, bool positionOnly) {
    if (auto* flags = static_cast<CFilmFlagsKey*>(AddKey(track, KeyKind::Flags, 0.0f, nullptr))) {
        flags->keyFlags |= kLightOn;
    }
    if (object == nullptr) {
        return;
    }
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    DecomposeMatrix(GetStoredMatrix(object), position.Data(), rotation.Data(), scale.Data());
    AddKey(track, KeyKind::Position, 0.0f, position.Data());
    if (!positionOnly) {
        AddKey(track, KeyKind::Rotation, 0.0f, rotation.Data());
        AddKey(track, KeyKind::Scale, 0.0f, scale.Data());
    }
}

bool IPluginImpl::AddSunTrack(IFilm* film) {
    ILevelData* data = GetLevelData();
    if (film == nullptr || data == nullptr || data->sunObject == nullptr) {
        return false;
    }
    const CFilmsLightHelper* helper = lightHelpers.GetOrCreateSunHelper(data);
    if (FindSunTrack(*film) != nullptr || helper == nullptr) {
        return false;
    }
    auto* track = AsGLLightTrack(film->CreateGLLightTrack());
    track->isSun = 1;
    track->isFixedLight = 1;
    film->AddTrack(track);
    AddLightKeys(track, helper->object, /*positionOnly*/ true);
    track->lightObject = helper->object;
    return true;
}

bool IPluginImpl::DeleteLightOfTrack(CFilmTrack* track) {
    const CFilmsLightHelper* helper = lightHelpers.FindHolder(track);
    if (helper == nullptr) {
        return false;
    }
    if (editor != nullptr && helper->object != nullptr) {
        editor->DeleteObjects({helper->object});
    }
    return true;
}

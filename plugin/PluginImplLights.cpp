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
    IFilm* film = currentFilm;
    CFilmTrack* track = dynamic ? film->CreateDynLightTrack() : film->CreateGLLightTrack();
    film->AddTrack(track);
    helper->track = track;
    SetLightObject(track, object);
    const bool told = objectMatrices.Find(object) == nullptr; // behind a box anything may have gone
    if (!AddLightKeys(*film, track, object, /*positionOnly*/ !dynamic)) {
        return false;
    }
    if (told && !IsInLevel(object)) {
        film->RemoveTrack(track, 1);
        return false;
    }
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

/// The first keys of a light: lit, and where its object stands outside of films. False if the track went
/// meanwhile: the user may be told that the object's place is not known.
bool IPluginImpl::AddLightKeys(const IFilm& film, CFilmTrack* track, EditorObject* object,
                               bool positionOnly) {
    if (auto* flags = static_cast<CFilmFlagsKey*>(AddKey(track, KeyKind::Flags, 0.0f, nullptr))) {
        flags->keyFlags |= kLightOn;
    }
    if (object == nullptr) {
        return true;
    }
    const float* matrix = GetStoredMatrix(object);
    if (!FilmHas(&film, track)) {
        return false;
    }
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    DecomposeMatrix(matrix, position.Data(), rotation.Data(), scale.Data());
    AddKey(track, KeyKind::Position, 0.0f, position.Data());
    if (!positionOnly) {
        AddKey(track, KeyKind::Rotation, 0.0f, rotation.Data());
        AddKey(track, KeyKind::Scale, 0.0f, scale.Data());
    }
    return true;
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
    EditorObject* sun = helper->object;
    if (!AddLightKeys(*film, track, sun, /*positionOnly*/ true)) {
        return false;
    }
    track->lightObject = sun;
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

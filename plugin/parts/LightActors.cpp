#include "plugin/parts/LightActors.h"

#include "helpers/FilmsLightHelperMgr.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/contract/TrackObjects.h"
#include "plugin/parts/FirstKeys.h"
#include "plugin/parts/ObjectMatrices.h"
#include "plugin/session/FilmSession.h"

#include <memory>

namespace {

/// Bit 0 of a light's flags key: the light is on.
constexpr std::uint32_t kLightOn = 1;

void SetLightObject(CFilmTrack* track, EditorObject* object) {
    if (auto* gl = AsGLLightTrack(track)) {
        gl->isFixedLight = 0;
    }
    if (EditorObject** slot = LightSlotOf(track)) {
        *slot = object;
    }
}

} // namespace

bool LightActors::AddTrack(EditorObject* object) {
    IFilmManager* manager = session.GetFilmManager();
    if (object == nullptr || manager == nullptr || session.currentFilm == nullptr) {
        return false;
    }
    if (!session.IsLight(object)) {
        return false;
    }
    const bool dynamic = session.ObjectDerivesFrom(object, ClassName::DynLight);
    MakeParams(object);
    object->GetInfo()->Update(0);

    auto helper = std::make_unique<CFilmsLightHelper>();
    helper->object = object;
    helper->lightKind = dynamic ? CFilmsLightHelper::kDynLight : CFilmsLightHelper::kGLLight;
    IFilm* film = session.currentFilm;
    CFilmTrack* track = dynamic ? film->CreateDynLightTrack() : film->CreateGLLightTrack();
    film->AddTrack(track);
    helper->track = track;
    SetLightObject(track, object);
    const bool told = !places.Has(object); // behind a box anything may have gone
    if (!AddKeys(*film, track, object, /*positionOnly*/ !dynamic)) {
        return false;
    }
    if (told && !session.IsInLevel(object)) {
        film->RemoveTrack(track, 1);
        return false;
    }
    track->RefreshTrack();
    if (session.level != nullptr) {
        session.level->MakeUniqueName(dynamic ? "MovieDynLight" : "MovieGLLight", object, 0);
    }
    if (session.editor != nullptr) {
        session.editor->BroadcastEvent(EventCode::ObjectSetChanged, session.pluginId, nullptr);
    }
    lights.Add(helper.release());
    if (IMainCtrl* control = session.GetMainCtrl()) {
        control->ShowFilm(session.currentFilm, true);
    }
    return true;
}

/// Required by the users' levels: the record of a light stands under an empty object name.
void LightActors::MakeParams(EditorObject* object) const {
    delete FilmSession::GetParams(object);
    auto* params = new CPluginFilmsParams;
    object->GetInfo()->SetPluginData(FilmSession::kPluginKind, params);
    params->Set(session.currentFilm->name, nullptr, 0, CPluginFilmsParams::kFilter, "");
}

/// The first keys of a light: lit, and where its object stands outside of films. False if the track went
/// meanwhile: the user may be told that the object's place is not known.
bool LightActors::AddKeys(const IFilm& film, CFilmTrack* track, const EditorObject* object,
                          bool positionOnly) const {
    if (auto* flags =
            static_cast<CFilmFlagsKey*>(AddFirstKey(session, *track, KeyKind::Flags, 0.0f, nullptr))) {
        flags->keyFlags |= kLightOn;
    }
    if (object == nullptr) {
        return true;
    }
    const float* matrix = places.Get(object);
    if (!session.FilmHas(&film, track)) {
        return false;
    }
    AddFirstTransform(session, *track, matrix, positionOnly);
    return true;
}

bool LightActors::AddSunTrack(IFilm* film) {
    ILevelData* data = session.GetLevelData();
    if (film == nullptr || data == nullptr || data->sunObject == nullptr) {
        return false;
    }
    const CFilmsLightHelper* helper = lights.GetOrCreateSunHelper(data);
    if (FindSunTrack(*film) != nullptr || helper == nullptr) {
        return false;
    }
    auto* track = AsGLLightTrack(film->CreateGLLightTrack());
    track->isSun = 1;
    track->isFixedLight = 1;
    film->AddTrack(track);
    EditorObject* sun = helper->object;
    if (!AddKeys(*film, track, sun, /*positionOnly*/ true)) {
        return false;
    }
    track->lightObject = sun;
    return true;
}

bool LightActors::DeleteLightOf(const CFilmTrack* track) const {
    const CFilmsLightHelper* helper = lights.FindHolder(track);
    if (helper == nullptr) {
        return false;
    }
    if (session.editor != nullptr && helper->object != nullptr) {
        session.editor->DeleteObjects({helper->object});
    }
    return true;
}

#include "plugin/session/FilmSession.h"

#include "keys/rules/FrameTimes.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>

IFilmManager* FilmSession::GetFilmManager() const {
    ILevelData* data = GetLevelData();
    return data != nullptr ? data->filmManager : nullptr;
}

IFilm* FilmSession::GetFilmByIndex(int index) const {
    IFilmManager* manager = GetFilmManager();
    return manager != nullptr && index >= 0 && index < IFilmManager::kFilms ? manager->GetFilm(index)
                                                                            : nullptr;
}

bool FilmSession::FilmExists(const IFilm* film) const {
    const IFilmManager* manager = GetFilmManager();
    return film != nullptr && manager != nullptr &&
           std::ranges::find(manager->films, film) != std::end(manager->films);
}

bool FilmSession::FilmHas(const IFilm* film, const CFilmTrack* track) const {
    return FilmExists(film) && std::ranges::find(film->tracks, track) != film->tracks.end();
}

bool FilmSession::IsInLevel(const EditorObject* object) const {
    ObjectList objects;
    if (view != nullptr && object != nullptr) {
        view->GetAllObjects(objects, 1);
    }
    return std::ranges::find(objects, object) != objects.end();
}

bool FilmSession::ObjectDerivesFrom(EditorObject* object, const char* className) const {
    if (object == nullptr || editor == nullptr || object->GetInfo() == nullptr) {
        return false;
    }
    return IsClassDerivedFrom(editor->GetClassDatabase(), object->GetInfo()->className, className);
}

bool FilmSession::IsLight(EditorObject* object) const {
    return ObjectDerivesFrom(object, ClassName::DynLight) || ObjectDerivesFrom(object, ClassName::GLLight);
}

CPluginFilmsParams* FilmSession::GetParams(EditorObject* object) {
    EditorObjectInfo* info = object != nullptr ? object->GetInfo() : nullptr;
    return info != nullptr ? static_cast<CPluginFilmsParams*>(info->GetPluginData(kPluginKind)) : nullptr;
}

double FilmSession::SnapToFrame(float time) const {
    return NearestFrameFromBelow(time, framesPerSecond);
}

void FilmSession::TellKeyWritten(const IFilmKey* record) const {
    if (keyAttributesDlg && record != nullptr && keyAttributesDlg->GetRecord() == record) {
        keyAttributesDlg->SetKey(nullptr, /*refresh*/ true);
    }
}

void FilmSession::ApplyPendingEdits() const {
    if (keyAttributesDlg) {
        keyAttributesDlg->ApplyPending();
    }
}

#include "plugin/parts/ActorList.h"

#include "files/base/Log.h"
#include "framework/MessageBox.h"
#include "helpers/FilmsLightHelperMgr.h"
#include "plugin/parts/FirstKeys.h"
#include "plugin/parts/ObjectMatrices.h"
#include "plugin/session/FilmSession.h"
#include "plugin/session/LevelWatch.h"

#include <algorithm>

namespace {

ObjectList SelectedObjects(IEditorView* view) {
    const ObjectList* selected = view != nullptr ? view->GetSelectedObjects() : nullptr;
    return selected != nullptr ? *selected : ObjectList();
}

} // namespace

EditorObject* ActorList::FindObjectOf(CFilmTrack* track) const {
    if (track == nullptr || track->IsA(ClassId::LevelTrack) || track->IsA(ClassId::CameraTrack)) {
        return nullptr;
    }
    if (const auto* objectTrack = AsObjectTrack(track)) {
        return objectTrack->actor;
    }
    if (const CFilmsLightHelper* helper = lights.FindByTrack(track)) {
        return helper->object;
    }
    DebugPrint("[IPluginImpl::FindObjectByTrack()] fatal error - invalid track\n");
    return nullptr;
}

CFilmTrack* ActorList::FindTrackOf(IFilm* film, EditorObject* object) const {
    if (film == nullptr || object == nullptr) {
        return nullptr;
    }
    if (!session.IsLight(object)) {
        return film->FindObjectTrack(object);
    }
    const CFilmsLightHelper* helper = lights.FindByObject(object);
    if (helper == nullptr) {
        return nullptr;
    }
    if (!helper->isSun || !session.ObjectDerivesFrom(object, ClassName::GLLight)) {
        return helper->track; // Required: the light's track even if it belongs to another film.
    }
    return FindSunTrack(*film);
}

/// Behind the box the user may delete what was selected, or open another level.
void ActorList::AddSelected() {
    ObjectList asked = SelectedObjects(session.view);
    const bool grouped = std::ranges::any_of(asked, [this](EditorObject* object) {
        return object != nullptr && object->IsA(ClassId::LevelObject) &&
               session.view->GetGroupOf(object) != nullptr;
    });
    if (grouped) {
        const LevelWatch level(session);
        AfxMessageBox("Some objects are in groups and they cannot be used in movies");
        std::erase_if(asked, [&](const EditorObject* object) {
            return !level.IsSameLevel() || !session.IsInLevel(object);
        });
    }
    Add(asked);
}

void ActorList::Add(const ObjectList& objects) {
    if (session.view == nullptr || session.currentFilm == nullptr || session.editor == nullptr ||
        session.GetLevelData() == nullptr) {
        return;
    }
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the host's list may change meanwhile
    const ObjectList candidates = objects;
    const IFilm* film = session.currentFilm;
    bool added = false;
    bool told = false; // behind a box anything may have gone
    for (EditorObject* object : candidates) {
        if (told && (film != session.currentFilm || !session.IsInLevel(object))) {
            continue;
        }
        if (object == nullptr || !object->IsA(ClassId::EditorObject) ||
            session.view->GetGroupOf(object) != nullptr) {
            continue;
        }
        if (CanBecomeActor(object, session.ObjectDerivesFrom(object, ClassName::VirtualObject))) {
            told = told || !places.Has(object);
            AddOne(object);
            added = true;
        }
    }
    if (added) {
        session.RebuildWindow();
    }
}

bool ActorList::CanBecomeActor(EditorObject* object, bool isVirtual) const {
    return (isVirtual || !session.ObjectDerivesFrom(object, ClassName::Helper)) &&
           session.currentFilm->FindObjectTrack(object) == nullptr;
}

void ActorList::AddOne(EditorObject* object) {
    CPluginFilmsParams* params = FilmSession::GetParams(object);
    if (params == nullptr) {
        params = new CPluginFilmsParams;
        object->GetInfo()->SetPluginData(FilmSession::kPluginKind, params);
    }
    if (params->Find(session.currentFilm->name, object->name, nullptr) == nullptr) {
        params->Set(session.currentFilm->name, nullptr, 0, CPluginFilmsParams::kFilter, object->name);
    }
    IFilm* film = session.currentFilm;
    CFilmTrack* track = film->CreateObjectTrack();
    film->AddTrack(track);
    AsObjectTrack(track)->SetActor(object, session.ObjectDerivesFrom(object, ClassName::VirtualObject));
    track->RefreshTrack();
    const float* matrix = places.Get(object); // may tell the user
    if (!session.FilmHas(film, track)) {
        return;
    }
    AddFirstTransform(session, *track, matrix, /*positionOnly*/ false);
}

void ActorList::Remove(IFilm* film, const ObjectList* objects, bool lightsOnly) {
    if (film == nullptr || objects == nullptr || session.view == nullptr) {
        return;
    }
    const ObjectList removed = *objects;
    for (EditorObject* object : removed) {
        if (object != nullptr && object->IsA(ClassId::EditorObject)) {
            RemoveOne(film, object, lightsOnly);
        }
    }
}

void ActorList::RemoveOne(IFilm* film, EditorObject* object, bool lightsOnly) {
    places.RestoreOne(object);
    CFilmsLightHelper* helper = nullptr;
    CFilmTrack* track = nullptr;
    if (session.IsLight(object)) {
        helper = lights.FindByObject(object);
        track = helper != nullptr ? helper->track : nullptr;
    } else if (!lightsOnly && !session.ObjectDerivesFrom(object, ClassName::Helper)) {
        // Required: a virtual object counts as a helper here, so that the selection never loses its track.
        track = film->FindObjectTrack(object);
    }
    if (track == nullptr || track->film == nullptr || track->film->name != film->name) {
        return;
    }
    if (IMainCtrl* control = session.GetMainCtrl()) {
        control->ForgetTrack(track);
    }
    track->film->RemoveTrack(track, 1);
    if (helper != nullptr) {
        helper->track = nullptr; // the helper stays until its object is deleted
    }
}

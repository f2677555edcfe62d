#include "plugin/PluginImpl.h"

#include "files/Log.h"
#include "framework/MessageBox.h"
#include "helpers/MatrixMath.h"
#include "keys/NewKey.h"

#include <algorithm>
#include <memory>

namespace {

bool Contains(const ObjectList& objects, const EditorObject* object) {
    return object != nullptr && std::ranges::find(objects, object) != objects.end();
}

ObjectList SelectedObjects(IEditorView* view) {
    const ObjectList* selected = view != nullptr ? view->GetSelectedObjects() : nullptr;
    return selected != nullptr ? *selected : ObjectList();
}

std::string NameAndId(const EditorObject& object) {
    return object.name + "(" + std::to_string(object.id) + ")";
}

void AddMessage(std::list<DeleteMessage>* messages, std::string text, EditorObject* object) {
    if (messages != nullptr) {
        messages->push_back({std::move(text), object, 0});
    }
}

const char* TextOf(const char* text) {
    return text != nullptr ? text : "";
}

/// Messages of a camera's eye and target keys that follow an object of the list. False if there is one.
bool CheckCameraLinks(const CFilmCameraTrack& camera, const ObjectList& objects,
                      std::list<DeleteMessage>* messages) {
    bool free = true;
    for (IFilmKey* key : camera.keys) {
        if (key->kind != KeyKind::CameraPosition && key->kind != KeyKind::CameraTarget) {
            continue;
        }
        EditorObject* linked = static_cast<CFilmLinkedKey*>(key)->linkObject;
        if (Contains(objects, linked)) {
            AddMessage(messages,
                       "camera " + camera.cameraName + " from film " + TextOf(camera.film->name) +
                           " is linked to " + NameAndId(*linked),
                       linked);
            free = false;
        }
    }
    return free;
}

bool CheckTrack(CFilmTrack* track, const ObjectList& objects, std::list<DeleteMessage>* messages) {
    if (const auto* objectTrack = AsObjectTrack(track)) {
        EditorObject* actor = objectTrack->actor;
        if (!Contains(objects, actor)) {
            return true;
        }
        AddMessage(messages, NameAndId(*actor) + " is actor in film " + TextOf(track->film->name), actor);
        return false;
    }
    const auto* camera = AsCameraTrack(track);
    return camera == nullptr || CheckCameraLinks(*camera, objects, messages);
}

} // namespace

EditorObject* IPluginImpl::FindObjectByTrack(CFilmTrack* track) const {
    if (track == nullptr || track->IsA(ClassId::LevelTrack) || track->IsA(ClassId::CameraTrack)) {
        return nullptr;
    }
    if (const auto* objectTrack = AsObjectTrack(track)) {
        return objectTrack->actor;
    }
    if (const CFilmsLightHelper* helper = lightHelpers.FindByTrack(track)) {
        return helper->object;
    }
    DebugPrint("[IPluginImpl::FindObjectByTrack()] fatal error - invalid track\n");
    return nullptr;
}

CFilmTrack* IPluginImpl::FindTrackOfObject(IFilm* film, EditorObject* object) const {
    if (film == nullptr || object == nullptr) {
        return nullptr;
    }
    const bool glLight = ObjectDerivesFrom(object, ClassName::GLLight);
    if (!glLight && !ObjectDerivesFrom(object, ClassName::DynLight)) {
        return film->FindObjectTrack(object);
    }
    const CFilmsLightHelper* helper = lightHelpers.FindByObject(object);
    if (helper == nullptr) {
        return nullptr;
    }
    if (!helper->isSun || !glLight) {
        return helper->track; // Required: the light's track even if it belongs to another film.
    }
    return FindSunTrack(*film);
}

/// Behind the box the user may select other objects, or delete those that were selected.
void IPluginImpl::AddSelectedActors() {
    const ObjectList asked = SelectedObjects(view);
    const bool grouped = std::ranges::any_of(asked, [this](EditorObject* object) {
        return object != nullptr && object->IsA(ClassId::LevelObject) && view->GetGroupOf(object) != nullptr;
    });
    if (grouped) {
        AfxMessageBox("Some objects are in groups and they cannot be used in movies");
    }
    AddActors(SelectedObjects(view));
}

void IPluginImpl::AddActors(const ObjectList& objects) {
    if (view == nullptr || currentFilm == nullptr || editor == nullptr || GetLevelData() == nullptr) {
        return;
    }
    const ObjectList candidates = objects; // the host's list may change while tracks are made
    const IFilm* film = currentFilm;
    bool added = false;
    bool told = false; // behind a box anything may have gone
    for (EditorObject* object : candidates) {
        if (told && (film != currentFilm || !IsInLevel(object))) {
            continue;
        }
        if (object == nullptr || !object->IsA(ClassId::EditorObject) || view->GetGroupOf(object) != nullptr) {
            continue;
        }
        if (CanBecomeActor(object, ObjectDerivesFrom(object, ClassName::VirtualObject))) {
            told = told || objectMatrices.Find(object) == nullptr;
            AddActor(object);
            added = true;
        }
    }
    if (added) {
        RebuildWindow();
    }
}

bool IPluginImpl::CanBecomeActor(EditorObject* object, bool isVirtual) const {
    return (isVirtual || !ObjectDerivesFrom(object, ClassName::Helper)) &&
           currentFilm->FindObjectTrack(object) == nullptr;
}

void IPluginImpl::AddActor(EditorObject* object) {
    CPluginFilmsParams* params = GetParams(object);
    if (params == nullptr) {
        params = new CPluginFilmsParams;
        object->GetInfo()->SetPluginData(kPluginKind, params);
    }
    if (params->Find(currentFilm->name, object->name, nullptr) == nullptr) {
        params->Set(currentFilm->name, nullptr, 0, CPluginFilmsParams::kFilter, object->name);
    }
    IFilm* film = currentFilm;
    CFilmTrack* track = film->CreateObjectTrack();
    film->AddTrack(track);
    AsObjectTrack(track)->SetActor(object, ObjectDerivesFrom(object, ClassName::VirtualObject));
    track->RefreshTrack();
    const float* matrix = GetStoredMatrix(object); // may tell the user
    if (!FilmHas(film, track)) {
        return;
    }
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    DecomposeMatrix(matrix, position.Data(), rotation.Data(), scale.Data());
    AddKey(track, KeyKind::Position, 0.0f, position.Data());
    AddKey(track, KeyKind::Rotation, 0.0f, rotation.Data());
    AddKey(track, KeyKind::Scale, 0.0f, scale.Data());
}

/// A key with the value given (none for null), or null if the host makes none.
IFilmKey* IPluginImpl::AddKey(CFilmTrack* track, int kind, float time, const void* value) {
    const IFilmManager* manager = GetFilmManager();
    NewKey key(manager != nullptr ? manager->keyFactory : nullptr, kind);
    if (!key) {
        return nullptr;
    }
    key->SetTime(time);
    if (value != nullptr) {
        key->SetValue(value);
    }
    return key.AddTo(*track) ? key.Get() : nullptr;
}

void IPluginImpl::RemoveActors(IFilm* film, const ObjectList* objects, bool lightsOnly) {
    if (film == nullptr || objects == nullptr || view == nullptr) {
        return;
    }
    const ObjectList removed = *objects;
    for (EditorObject* object : removed) {
        if (object != nullptr && object->IsA(ClassId::EditorObject)) {
            RemoveActor(film, object, lightsOnly);
        }
    }
}

void IPluginImpl::RemoveActor(IFilm* film, EditorObject* object, bool lightsOnly) {
    RestoreOneMatrix(object);
    CFilmsLightHelper* helper = nullptr;
    CFilmTrack* track = nullptr;
    if (ObjectDerivesFrom(object, ClassName::DynLight) || ObjectDerivesFrom(object, ClassName::GLLight)) {
        helper = lightHelpers.FindByObject(object);
        track = helper != nullptr ? helper->track : nullptr;
    } else if (!lightsOnly && !ObjectDerivesFrom(object, ClassName::Helper)) {
        // Required: a virtual object counts as a helper here, so that the selection never loses its track.
        track = film->FindObjectTrack(object);
    }
    if (track == nullptr || track->film == nullptr || track->film->name != film->name) {
        return;
    }
    if (IMainCtrl* control = GetMainCtrl()) {
        control->ForgetTrack(track);
    }
    track->film->RemoveTrack(track, 1);
    if (helper != nullptr) {
        helper->track = nullptr; // the helper stays until its object is deleted
    }
}

bool IPluginImpl::CanDeleteObjects(const ObjectList* objects, std::list<DeleteMessage>* messages) {
    if (objects == nullptr) {
        return true;
    }
    if (GetLevelData() == nullptr) {
        return false;
    }
    bool allowed = true;
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        const IFilm* film = GetFilmByIndex(index);
        if (film == nullptr) {
            continue;
        }
        for (CFilmTrack* track : film->tracks) {
            allowed = CheckTrack(track, *objects, messages) && allowed;
        }
    }
    return allowed;
}

void IPluginImpl::OnObjectsDeleted() {
    const ObjectList* selected = view != nullptr ? view->GetSelectedObjects() : nullptr;
    if (selected == nullptr || GetLevelData() == nullptr) {
        return;
    }
    const ObjectList deleted = *selected;
    if (IFilmManager* manager = GetFilmManager()) {
        manager->OnObjectsDeleted(deleted);
    }
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        if (IFilm* film = GetFilmByIndex(index)) {
            RemoveActors(film, &deleted, /*lightsOnly*/ true);
        }
    }
    const ObjectSet gone(deleted.begin(), deleted.end());
    for (EditorObject* object : deleted) {
        if (object != nullptr && object->IsA(ClassId::LevelObject)) {
            ForgetDeletedObject(object, gone);
        }
    }
    if (currentFilm != nullptr) {
        RebuildWindow();
    }
}

void IPluginImpl::ForgetDeletedObject(EditorObject* object, const ObjectSet& deleted) {
    objectMatrices.RemoveFirst(object);
    if (ObjectDerivesFrom(object, ClassName::DynLight) || ObjectDerivesFrom(object, ClassName::GLLight)) {
        const std::unique_ptr<CFilmsLightHelper> helper(lightHelpers.FindByObject(object));
        lightHelpers.Remove(helper.get());
    }
    if (object->GetInfo()->className == ClassName::VirtualObject) {
        RemoveVirtualRecord(object);
    }
    RecordChildren(object, deleted);
}

void IPluginImpl::RecordChildren(EditorObject* object, const ObjectSet& deleted) {
    for (EditorObject* child = object->firstChild; child != nullptr; child = child->nextSibling) {
        ObjectMatrixRecord* record = objectMatrices.Find(child);
        if (record == nullptr) {
            if (!deleted.contains(child)) {
                AddObjectMatrix(child);
            }
        } else if (child->IsA(ClassId::LevelObject)) {
            std::copy_n(child->GetMatrix(0), record->matrix.size(), record->matrix.begin());
        }
    }
}

#include "plugin/PluginImpl.h"

#include "plugin/rules/LocalCommands.h"

#include <cstring>
#include <memory>

namespace {

/// The view number that a request's data point at; the host gives 32 bits.
int ViewNumber(const void* data) {
    std::int32_t number = -1;
    std::memcpy(&number, data, sizeof(number));
    return number;
}

} // namespace

void IPluginImpl::OnEvent(int code, void* data) {
    switch (code) {
    case EventCode::PanelTaken:
        SetCommandCheck(LocalCommand::Movies, false);
        break;
    case EventCode::SelectionChanged:
        OnSelectionChanged();
        break;
    case EventCode::ObjectsCreated:
        OnObjectsCreated();
        break;
    case EventCode::ObjectsDeleting:
        OnObjectsDeleted();
        break;
    case EventCode::LevelLoaded:
        OnLevelLoaded();
        break;
    case EventCode::ObjectsRenamed:
        RefreshVirtualNames();
        break;
    case EventCode::ObjectSetChanged:
        RefreshVirtualNames();
        RebuildWindow();
        break;
    case EventCode::ObjectsChangedOutside:
        RefreshMatrices(static_cast<const ObjectList*>(data));
        break;
    case EventCode::HostGoesAway:
        isPlaying = 0; // a film that still plays must not touch the host again
        editor = nullptr;
        view = nullptr;
        level = nullptr;
        break;
    case EventCode::Resume:
        OnResume();
        break;
    case EventCode::ObjectsMoved:
        if (level != nullptr && !level->selection.empty()) {
            OnObjectsMoved(level->selection);
        }
        break;
    case EventCode::ReleaseRenderResources:
        lightHelpers.DeleteHelpers();
        trackVisualizer.Reset();
        cameraHelpers.Reset();
        break;
    case EventCode::Suspend:
        OnSuspend();
        break;
    case EventCode::CollectHiddenObjects:
        CollectHiddenObjects(static_cast<HiddenObjectsRequest*>(data));
        break;
    default:
        break;
    }
}

void IPluginImpl::OnViewRequest(int code, Word, void* data, bool* result) {
    if (code == ViewRequest::IsAttached && result != nullptr) {
        *result = data != nullptr && views.Has(ViewNumber(data));
    } else if (code == ViewRequest::Detach && data != nullptr) {
        DetachView(ViewNumber(data));
    } else if (code == ViewRequest::ObjectsMoved && data != nullptr) {
        OnObjectsMoved(*static_cast<const ObjectList*>(data));
    }
}

void IPluginImpl::OnSelectionChanged() {
    IMainCtrl* control = GetMainCtrl();
    if (currentFilm == nullptr || control == nullptr) {
        return;
    }
    if (control->IsChangingActor()) {
        control->ChangeActor();
    } else {
        control->Invalidate();
    }
}

void IPluginImpl::OnObjectsCreated() {
    if (level == nullptr) {
        return;
    }
    const ObjectList created = level->selection; // the host's list may change while tracks are made
    bool asked = false;                          // a light's rows may ask, and behind a box anything may go
    for (EditorObject* object : created) {
        if (object == nullptr || (asked && !IsInLevel(object)) || !object->IsA(ClassId::LevelObject)) {
            continue;
        }
        AddObjectMatrix(object);
        if (currentFilm == nullptr || lightHelpers.IsCreatingSun() || !object->GetInfo()->IsActive()) {
            continue;
        }
        if (IsLight(object)) {
            AddLightTrack(object);
            asked = true;
        }
    }
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
    const ObjectMatrices::ObjectSet gone(deleted.begin(), deleted.end());
    for (EditorObject* object : deleted) {
        if (object != nullptr && object->IsA(ClassId::LevelObject)) {
            ForgetDeletedObject(object, gone);
        }
    }
    if (currentFilm != nullptr) {
        RebuildWindow();
    }
}

void IPluginImpl::ForgetDeletedObject(EditorObject* object, const ObjectMatrices::ObjectSet& deleted) {
    objectMatrices.RemoveFirst(object);
    if (IsLight(object)) {
        const std::unique_ptr<CFilmsLightHelper> helper(lightHelpers.FindByObject(object));
        lightHelpers.Remove(helper.get());
    }
    if (object->GetInfo()->className == ClassName::VirtualObject) {
        RemoveVirtualRecord(object);
    }
    matrices.RecordChildren(*object, deleted);
}

/// Required by what the host sees of its event: a film that plays is stopped twice and the objects are put
/// back twice, also with no film open.
void IPluginImpl::OnSuspend() {
    suspendedFilm = currentFilm;
    suspendedTime = currentTime;
    suspendedPlaying = isPlaying;
    if (currentFilm != nullptr) {
        if (isPlaying != 0) {
            StopPlaying();
        }
        SetCurrentFilm(nullptr);
    }
    RestoreMatrices();
}

/// Does not return before the film ends if it had been playing.
void IPluginImpl::OnResume() {
    RebuildMatrices();
    if (!FilmExists(suspendedFilm)) {
        suspendedFilm = nullptr; // the film went with its level meanwhile
        return;
    }
    SetCurrentFilm(suspendedFilm);
    SetTime(suspendedTime, /*fromWindow*/ false);
    if (suspendedPlaying != 0) {
        Play(suspendedTime);
    }
}

void IPluginImpl::CollectHiddenObjects(HiddenObjectsRequest* request) {
    if (request == nullptr || request->collection == nullptr) {
        return;
    }
    virtuals.Hide(*request->collection);
    ObjectList lights;
    lightHelpers.HideFromLevel(&lights);
    for (EditorObject* light : lights) {
        request->collection->Add(light);
    }
}

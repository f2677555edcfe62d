#include "plugin/parts/ObjectUses.h"

#include "plugin/session/FilmSession.h"

#include <algorithm>
#include <string>

namespace {

bool Contains(const ObjectList& objects, const EditorObject* object) {
    return object != nullptr && std::ranges::find(objects, object) != objects.end();
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

bool CanDeleteObjects(const FilmSession& session, const ObjectList* objects,
                      std::list<DeleteMessage>* messages) {
    if (objects == nullptr) {
        return true;
    }
    if (session.GetLevelData() == nullptr) {
        return false;
    }
    bool allowed = true;
    for (int index = 0; index < IFilmManager::kFilms; ++index) {
        const IFilm* film = session.GetFilmByIndex(index);
        if (film == nullptr) {
            continue;
        }
        for (CFilmTrack* track : film->tracks) {
            allowed = CheckTrack(track, *objects, messages) && allowed;
        }
    }
    return allowed;
}

#include "plugin/rules/ActorParents.h"

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/Film.h"

namespace {

/// More parents than any film has; ends the walk in a film whose attachments form a ring.
constexpr int kMaxParents = 10000;

} // namespace

bool CanAttachWithoutCycle(const IFilm* film, EditorObject* object, const EditorObject* actor) {
    if (film == nullptr || object == nullptr || actor == nullptr) {
        return false;
    }
    if (!object->IsA(ClassId::EditorObject)) {
        return true;
    }
    if (object == actor) {
        return false;
    }
    for (int step = 0; step < kMaxParents; ++step) {
        const auto* track = AsObjectTrack(film->FindObjectTrack(object));
        if (track == nullptr) {
            return true;
        }
        object = track->parentObject;
        if (object == actor) {
            return false;
        }
        if (object == nullptr || !object->IsA(ClassId::EditorObject)) {
            return true;
        }
    }
    return false;
}

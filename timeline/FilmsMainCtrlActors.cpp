#include "timeline/FilmsMainCtrl.h"

#include "framework/MessageBox.h"
#include "plugin/PluginImpl.h"

#include <algorithm>
#include <string>

namespace {

constexpr const char* kWrongTrack = "Cannot perform action for track this type!";

/// The one object that is selected, or null.
EditorObject* OnlySelectedObject(const FilmSession& plugin) {
    IEditorView* view = plugin.view;
    const ObjectList* selected = view != nullptr ? view->GetSelectedObjects() : nullptr;
    return selected != nullptr && selected->size() == 1 ? selected->front() : nullptr;
}

bool CanAct(const FilmSession& plugin, EditorObject* object) {
    return object->IsA(ClassId::EditorObject) && (!plugin.ObjectDerivesFrom(object, ClassName::Helper) ||
                                                  plugin.ObjectDerivesFrom(object, ClassName::VirtualObject));
}

bool IsLinkedFx(int kind) {
    return kind == KeyKind::FxSequence || kind == KeyKind::FxParticle || kind == KeyKind::FxTrace ||
           kind == KeyKind::FxFlare;
}

/// What a key needs and the object hasn't; empty if nothing.
std::string FaultOfKey(const IFilmKey& key, const EditorObject& object) {
    if (key.kind == KeyKind::Animation) {
        const auto& animation = static_cast<const CFilmAnimationKey&>(key);
        if (object.FindMeshElement(animation.meshElement) < 0) {
            return "Cannot find mesh element for animation key!";
        }
        if (!animation.animationName.empty() && object.FindAnimation(animation.animationName) < 0) {
            return "Cannot find animation sequence " + animation.animationName + " for animation key!";
        }
    } else if (IsLinkedFx(key.kind) &&
               object.FindMeshElement(static_cast<const CFilmFxKey&>(key).linkElement) < 0) {
        return "Cannot find mesh element for FX key!";
    }
    return {};
}

std::string FaultOfActor(const FilmSession& plugin, CFilmTrack* track, EditorObject* object) {
    if (AsObjectTrack(track) == nullptr) {
        return kWrongTrack;
    }
    if (object == nullptr) {
        return "Cannot perform action for such selection!";
    }
    if (!CanAct(plugin, object)) {
        return "Cannot change actor to that object!";
    }
    for (const IFilmKey* key : track->keys) {
        if (std::string fault = FaultOfKey(*key, *object); !fault.empty()) {
            return fault;
        }
    }
    return {};
}

} // namespace

bool CFilmsMainCtrl::ChangeActor() {
    actorPick.End();
    CFilmTrack* track = menuRow != nullptr ? menuRow->track : nullptr;
    EditorObject* object = OnlySelectedObject(plugin);
    const std::string fault = FaultOfActor(plugin, track, object);
    if (!fault.empty()) {
        AfxMessageBox(fault);
        return false;
    }
    AsObjectTrack(track)->SetActor(object, plugin.ObjectDerivesFrom(object, ClassName::VirtualObject));
    menuRow->name = object->name;
    ShowFilm(plugin.GetCurrentFilm(), /*flag*/ true);
    return true;
}

void CFilmsMainCtrl::RecordObjectKeys(EditorObject* object, float time, const float* newMatrix,
                                      const float* oldMatrix) {
    if (!(time >= 0.0f) || newMatrix == nullptr || oldMatrix == nullptr) {
        return;
    }
    CTrackCtrl* row = FindRowOfObject(object);
    if (row == nullptr) {
        return;
    }
    const Watch<CFilmsMainCtrl> window(this);
    row->WriteTransformKeys(time, newMatrix, oldMatrix);
    if (window.IsAlive()) {
        RepaintRows(); // a new key took the selection from a row that may be another object's
    }
}

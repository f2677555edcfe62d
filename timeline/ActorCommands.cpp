#include "timeline/ActorCommands.h"

#include "files/AttachMovieObjectDlg.h"
#include "framework/MessageBox.h"
#include "plugin/contract/TrackObjects.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"
#include "timeline/rows/TrackOrder.h"

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

void RemoveSelectedActors(CFilmsMainCtrl& control) {
    IFilm* film = control.plugin.GetCurrentFilm();
    if (film == nullptr || control.plugin.view == nullptr) {
        return;
    }
    control.plugin.RemoveActors(film, control.plugin.view->GetSelectedObjects(), /*lightsOnly*/ false);
    control.ShowFilm(film, /*flag*/ true);
}

/// An actor's object goes back to its place; a light goes with its helper object, whose deletion the host
/// reports.
void RemoveActorOfRow(CFilmsMainCtrl& control) {
    CFilmTrack* track = control.menuRow != nullptr ? control.menuRow->track : nullptr;
    const bool isLevel = track != nullptr && control.menuRow->IsRoot() && AsLevelTrack(track) != nullptr;
    if (track == nullptr || isLevel) { // a film's level track can't be removed
        return;
    }
    if (IsLightTrack(track)) {
        control.plugin.DeleteLightOfTrack(track);
        return;
    }
    if (const auto* actor = AsObjectTrack(track); actor != nullptr && actor->actor != nullptr) {
        control.plugin.RestoreOneMatrix(actor->actor);
    }
    control.RemoveTrackCtrl(control.menuRow, /*redraw*/ true);
}

void AskForNewActor(CFilmsMainCtrl& control) {
    control.actorPick.End();
    if (control.menuRow == nullptr) {
        return;
    }
    if (AsObjectTrack(control.menuRow->track) == nullptr) {
        AfxMessageBox(kWrongTrack);
        return;
    }
    control.actorPick.Begin("Change actor: click the object that takes the place of \"" +
                                RootRowName(control.session, control.menuRow->track) + "\". Esc gives up.",
                            PickMode::By::Click, [] {});
}

bool TakeNewActor(CFilmsMainCtrl& control) {
    control.actorPick.End();
    CFilmTrack* track = control.menuRow != nullptr ? control.menuRow->track : nullptr;
    EditorObject* object = OnlySelectedObject(control.plugin);
    const std::string fault = FaultOfActor(control.plugin, track, object);
    if (!fault.empty()) {
        AfxMessageBox(fault);
        return false;
    }
    AsObjectTrack(track)->SetActor(object,
                                   control.plugin.ObjectDerivesFrom(object, ClassName::VirtualObject));
    control.menuRow->name = object->name;
    control.ShowFilm(control.plugin.GetCurrentFilm(), /*flag*/ true);
    return true;
}

void AttachActor(CFilmsMainCtrl& control) {
    CFilmObjectTrack* track = control.menuRow != nullptr ? AsObjectTrack(control.menuRow->track) : nullptr;
    if (track == nullptr) {
        return;
    }
    if (control.attachDlg == nullptr) {
        control.attachDlg = std::make_unique<CAttachMovieObjectDlg>(control.plugin);
    }
    control.attachDlg->Show(track);
}

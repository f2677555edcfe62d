#include "timeline/CommandReasons.h"

#include "keys/views/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "timeline/FilmsMainCtrl.h"

#include <algorithm>

namespace {

const ObjectList& SelectedObjects(const FilmSession& session) {
    static const ObjectList none;
    IEditorView* view = session.view;
    const ObjectList* selected = view != nullptr ? view->GetSelectedObjects() : nullptr;
    return selected != nullptr ? *selected : none;
}

bool IsActor(const IPluginImpl& plugin, EditorObject* object) {
    return object != nullptr && plugin.FindTrackOfObject(plugin.GetCurrentFilm(), object) != nullptr;
}

bool IsVirtual(const FilmSession& session, EditorObject* object) {
    return object != nullptr && session.ObjectDerivesFrom(object, ClassName::VirtualObject);
}

} // namespace

std::string WhyNobodyComes(const CFilmsMainCtrl& control) {
    const ObjectList& selected = SelectedObjects(control.plugin);
    if (selected.empty()) {
        return "No object is selected.";
    }
    const bool allAreIn = std::ranges::all_of(
        selected, [&control](EditorObject* object) { return IsActor(control.plugin, object); });
    return allAreIn ? "The selected objects are in the film already." : "";
}

std::string WhyNobodyGoes(const CFilmsMainCtrl& control) {
    const ObjectList& selected = SelectedObjects(control.plugin);
    const auto isActor = [&control](EditorObject* object) { return IsActor(control.plugin, object); };
    if (std::ranges::none_of(selected, isActor)) {
        return "No actor of the film is selected.";
    }
    const bool stays = std::ranges::all_of(selected, [&](EditorObject* object) {
        return !isActor(object) || IsVirtual(control.plugin, object);
    });
    return stays ? "A virtual object stays in its film." : "";
}

std::string WhyNothingStops(const CFilmsMainCtrl& control) {
    return control.plugin.isPlaying == 0 ? "No film plays." : "";
}

std::string WhyNoUndo(const CFilmsMainCtrl& /*control*/) {
    return "The timeline keeps no steps: use the editor's Undo and Redo.";
}

std::string WhyNoKeyToMark(const CFilmsMainCtrl& control) {
    return control.selectedKeys.empty() ? "No key is selected." : "";
}

std::string WhyNoMarkToClear(const CFilmsMainCtrl& control) {
    if (control.selectedKeys.empty()) {
        return WhyNoKeyToMark(control);
    }
    const CTrackCtrl* row = control.FindRowOfKey(control.selectedKeys.front()->record);
    const bool isMarked = row != nullptr && std::ranges::any_of(row->keys, &CTrackKey::marked);
    return isMarked ? "" : "No key of this row is marked.";
}

std::string WhyNoCameraFrame(const CFilmsMainCtrl& control) {
    return control.plugin.GetVisualizedTrack() == nullptr
               ? "No camera is on show; a click on a camera's name shows it."
               : "";
}

std::string WhyNoTrackParameters(const CFilmsMainCtrl& control) {
    const CTrackCtrl* row = control.menuRow;
    return row != nullptr && AsCameraTrack(row->track) == nullptr ? "Only rows of cameras have parameters."
                                                                  : "";
}

std::string WhyNoDuration(const CFilmsMainCtrl& control) {
    const CTrackKey* key = control.menuKey;
    return key != nullptr && key->GetNaturalDuration() <= 0.0f ? "The key has no length of its own." : "";
}

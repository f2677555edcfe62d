#include "timeline/CommandNotes.h"

#include "framework/UserNote.h"
#include "keys/TrackKey.h"
#include "plugin/PluginImpl.h"
#include "resources/resource.h"
#include "timeline/FilmsMainCtrl.h"

#include <algorithm>

namespace {

/// Those that end without a word when no film is open.
constexpr UINT kNeedFilm[] = {IDC_ADD_ACTORS,
                              IDC_REMOVE_ACTORS,
                              IDC_PLAY_MOVIE,
                              IDC_STOP_MOVIE,
                              IDC_VALIDATE_MOVIE,
                              IDC_ADD_GL_LIGHT,
                              IDC_ADD_DYN_LIGHT,
                              IDC_ADD_CAMERA,
                              IDC_ADJUST_TIME,
                              IDC_ANIMATE_OBJECT,
                              IDC_MOVE_TO_BEGIN,
                              IDC_MOVE_TO_END,
                              IDC_FRAME_BACK,
                              IDC_FRAME_FORWARD,
                              IDC_KEY_FRAME_BACK,
                              IDC_KEY_FRAME_FORWARD,
                              IDC_CREATE_CAMERA_FRAME,
                              IDC_DESELECT_KEYS,
                              IDC_SELECT_KEY,
                              IDC_UNDO,
                              IDC_REDO};

const ObjectList& SelectedObjects(const FilmSession& session) {
    static const ObjectList none;
    IEditorView* view = session.view;
    const ObjectList* selected = view != nullptr ? view->GetSelectedObjects() : nullptr;
    return selected != nullptr ? *selected : none;
}

bool IsActor(const IPluginImpl& plugin, EditorObject* object) {
    return object != nullptr && plugin.FindTrackOfObject(plugin.GetCurrentFilm(), object) != nullptr;
}

bool IsVirtual(const IPluginImpl& plugin, EditorObject* object) {
    return object != nullptr && plugin.ObjectDerivesFrom(object, ClassName::VirtualObject);
}

std::string WhyNobodyComes(const IPluginImpl& plugin) {
    const ObjectList& selected = SelectedObjects(plugin);
    if (selected.empty()) {
        return "No object is selected.";
    }
    const auto isActor = [&plugin](EditorObject* object) { return IsActor(plugin, object); };
    return std::ranges::all_of(selected, isActor) ? "The selected objects are in the film already." : "";
}

std::string WhyNobodyGoes(const IPluginImpl& plugin) {
    const ObjectList& selected = SelectedObjects(plugin);
    const auto isActor = [&plugin](EditorObject* object) { return IsActor(plugin, object); };
    if (std::ranges::none_of(selected, isActor)) {
        return "No actor of the film is selected.";
    }
    const bool stays = std::ranges::all_of(
        selected, [&](EditorObject* object) { return !isActor(object) || IsVirtual(plugin, object); });
    return stays ? "A virtual object stays in its film." : "";
}

/// Of the first selected key, which the two buttons for marks go by.
std::string WhyNoMark(UINT command, const CFilmsMainCtrl& control) {
    if (control.selectedKeys.empty()) {
        return "No key is selected.";
    }
    const CTrackCtrl* row = control.FindRowOfKey(control.selectedKeys.front()->record);
    const bool isMarked = row != nullptr && std::ranges::any_of(row->keys, &CTrackKey::marked);
    return command == IDC_DESELECT_KEYS && !isMarked ? "No key of this row is marked." : "";
}

} // namespace

std::string WhyIdle(UINT command, const CFilmsMainCtrl& control) {
    const IPluginImpl& plugin = control.plugin;
    if (plugin.GetCurrentFilm() == nullptr && std::ranges::count(kNeedFilm, command) != 0) {
        return "No film is open.";
    }
    switch (command) {
    case IDC_ADD_ACTORS:
        return WhyNobodyComes(plugin);
    case IDC_REMOVE_ACTORS:
        return WhyNobodyGoes(plugin);
    case IDC_UNDO:
    case IDC_REDO:
        return "Edits of films can't be taken back.";
    case IDC_STOP_MOVIE:
        return plugin.isPlaying == 0 ? "No film plays." : "";
    case IDC_DESELECT_KEYS:
    case IDC_SELECT_KEY:
        return WhyNoMark(command, control);
    case IDC_CREATE_CAMERA_FRAME:
        return plugin.trackVisualizer.renderTrack == nullptr
                   ? "No camera is on show; a click on a camera's name shows it."
                   : "";
    case IDC_TRACK_PARAMETERS: {
        const CTrackCtrl* row = control.menuRow;
        return row != nullptr && AsCameraTrack(row->track) == nullptr
                   ? "Only rows of cameras have parameters."
                   : "";
    }
    case IDC_CALC_KEY_DURATION: {
        const CTrackKey* key = control.menuKey;
        return key != nullptr && key->GetNaturalDuration() <= 0.0f ? "The key has no length of its own." : "";
    }
    default:
        return "";
    }
}

void NoteIfIdle(UINT command, const CFilmsMainCtrl& control) {
    if (const std::string why = WhyIdle(command, control); !why.empty()) {
        NoteForUser(why);
    }
}

#include "timeline/LightCommands.h"

#include "framework/UserNote.h"
#include "helpers/rules/FilmsLightHelper.h"
#include "plugin/PluginImpl.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

/// Units from the eye of the view to a new light.
constexpr float kLightDistance = 100.0f;
/// Type word of helper objects for the host's helper plug-in.
constexpr int kHelperType = 2;

/// Null without an active view, and where it looks nowhere.
std::optional<Vector3> PlaceBeforeView(const FilmSession& plugin) {
    const int view = plugin.editor->GetActiveView();
    const float* matrix = plugin.view != nullptr && view >= 0 ? plugin.view->GetViewMatrix(view) : nullptr;
    if (matrix == nullptr) {
        return std::nullopt;
    }
    const Vector3 ahead{-matrix[8], -matrix[9], -matrix[10]};
    const float length = std::sqrt(ahead.x * ahead.x + ahead.y * ahead.y + ahead.z * ahead.z);
    const float factor = kLightDistance / length;
    if (!(length > 0.0f) || !std::isfinite(factor)) {
        return std::nullopt;
    }
    return Vector3{matrix[12] + ahead.x * factor, matrix[13] + ahead.y * factor,
                   matrix[14] + ahead.z * factor};
}

bool CanMakeLights(const FilmSession& plugin) {
    return plugin.editor != nullptr && plugin.editor->HasObjectClass("Control") && plugin.level != nullptr &&
           plugin.glLightClass != nullptr && plugin.dynLightClass != nullptr &&
           plugin.GetFilmManager() != nullptr && plugin.GetCurrentFilm() != nullptr;
}

} // namespace

void AddLight(IPluginImpl& plugin, bool gl) {
    const std::optional<Vector3> place = CanMakeLights(plugin) ? PlaceBeforeView(plugin) : std::nullopt;
    if (!place) {
        return;
    }
    const EditorClassDescriptor& entry = gl ? *plugin.glLightClass : *plugin.dynLightClass;
    HelperObjectParams params;
    params.position = *place;
    params.className = entry.name;
    params.modelPath = entry.path;
    EditorObject* object = nullptr;
    plugin.editor->CreateHelperObject("Control", plugin.pluginId, kHelperType, params, &object);
    if (object == nullptr) {
        return;
    }
    if (plugin.AddLightTrack(object)) {
        // Compared only: rows that were shown may have asked, and the level may be another one now.
        const auto isOfIt = [object](const CFilmsLightHelper* helper) { return helper->object == object; };
        if (std::ranges::any_of(plugin.lightHelpers.helpers, isOfIt)) {
            NoteForUser("\"" + object->name +
                        "\" stands 1 m before the view. A click on its name selects it.");
        }
    } else if (plugin.editor != nullptr && plugin.IsInLevel(object)) {
        plugin.editor->DeleteObjects({object}); // the film was closed in the host's call
    }
}

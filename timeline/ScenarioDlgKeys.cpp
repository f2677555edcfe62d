#include "files/base/Log.h"
#include "keys/views/TrackKey.h"
#include "plugin/contract/TrackObjects.h"
#include "plugin/PluginImpl.h"
#include "timeline/ScenarioDlg.h"

#include <cmath>

namespace {

/// Seconds; nothing that far away is jumped to.
constexpr double kFarthestJump = 10000.0;
constexpr double kFarthestKey = 100000.0;

using RowGroup = std::vector<CTrackCtrl*>;

/// The rows that a jump looks at. The last three only count while the first two hold no row, whether those
/// have keys or not.
struct JumpRows {
    RowGroup selectedObjects;
    RowGroup activeCamera;
    RowGroup level;
    RowGroup otherObjects;
    RowGroup otherCameras;
};

const CFilmCameraTrack* ActiveCamera(const FilmSession& plugin) {
    const IFilm* film = plugin.GetCurrentFilm();
    const CFilmLevelTrack* main = film != nullptr ? AsLevelTrack(film->mainTrack) : nullptr;
    return main != nullptr && main->cameraHolder != nullptr ? main->cameraHolder->activeCamera : nullptr;
}

EditorObject* ActorOf(const CFilmObjectTrack& track) {
    if (track.actor == nullptr) {
        DebugPrint("Object track with no attached object\n");
    }
    return track.actor;
}

EditorObject* LightOfHelper(const FilmSession& plugin, CFilmTrack* track) {
    const CFilmsLightHelper* helper = plugin.FindLightByTrack(track);
    if (helper == nullptr) {
        DebugPrint("No helper connected with gl- or dyn- light track\n");
        return nullptr;
    }
    if (helper->object == nullptr) {
        DebugPrint("CFilmsLightHelper without representing object\n");
    }
    return helper->object;
}

bool IsSelected(EditorObject& object) {
    const EditorObjectInfo* info = object.GetInfo();
    return info != nullptr && info->IsSelected();
}

/// The list that the row of a track belongs to; null for a broken track, after a word about it.
RowGroup* ListFor(const FilmSession& plugin, CFilmTrack* track, JumpRows& rows) {
    if (track->IsA(ClassId::LevelTrack)) {
        return &rows.level;
    }
    if (track->IsA(ClassId::CameraTrack)) {
        return track == ActiveCamera(plugin) ? &rows.activeCamera : &rows.otherCameras;
    }
    const CFilmObjectTrack* objectTrack = AsObjectTrack(track);
    if (objectTrack == nullptr && !IsLightTrack(track)) {
        return nullptr;
    }
    EditorObject* object = objectTrack != nullptr ? ActorOf(*objectTrack) : LightOfHelper(plugin, track);
    if (object == nullptr) {
        return nullptr;
    }
    return IsSelected(*object) ? &rows.selectedObjects : &rows.otherObjects;
}

JumpRows SortRows(const FilmSession& plugin, const std::list<CTrackCtrl*>& tracks) {
    JumpRows rows;
    for (CTrackCtrl* row : tracks) {
        if (row == nullptr) {
            DebugPrint("NULL CTrackCtrl pointer on track list\n");
        } else if (row->track == nullptr) {
            DebugPrint("CTrackCtrl with NULL pointer to CFilmTrack\n");
        } else if (row->visible && !row->IsRoot()) {
            if (RowGroup* list = ListFor(plugin, row->track, rows)) {
                list->push_back(row);
            }
        }
    }
    return rows;
}

/// The nearest key found so far, and how far away it may be to be replaced.
struct NearestKey {
    CTrackKey* key = nullptr;
    double distance = 0.0;
};

NearestKey NearestOf(const RowGroup& rows, float time, bool forward) {
    NearestKey nearest{nullptr, kFarthestKey};
    for (const CTrackCtrl* row : rows) {
        CTrackKey* key = row->FindNearestKey(time, forward);
        const double distance =
            key != nullptr ? std::fabs(static_cast<double>(key->time) - static_cast<double>(time)) : 0.0;
        if (key != nullptr && distance < nearest.distance) {
            nearest = {key, distance};
        }
    }
    return nearest;
}

CTrackKey* FindJumpKey(const JumpRows& rows, float time, bool forward) {
    NearestKey best{nullptr, kFarthestJump};
    const auto look = [&](const RowGroup& list) {
        const NearestKey nearest = NearestOf(list, time, forward);
        if (nearest.key != nullptr && nearest.distance < best.distance) {
            best = nearest;
        }
    };
    look(rows.selectedObjects);
    look(rows.activeCamera);
    if (rows.selectedObjects.empty() && rows.activeCamera.empty()) {
        look(rows.level);
        look(rows.otherObjects);
        look(rows.otherCameras);
    }
    return best.key;
}

} // namespace

void CScenarioDlg::JumpToKey(bool forward) {
    if (plugin.GetCurrentFilm() == nullptr || mainCtrl == nullptr) {
        return;
    }
    CTrackKey* key = FindJumpKey(SortRows(plugin, mainCtrl->tracks), plugin.currentTime, forward);
    if (key == nullptr) {
        return;
    }
    IPluginImpl& films = plugin; // the attributes window, which is told of the key, may let the window go
    const float time = key->time;
    mainCtrl->SelectOnly(key);
    films.SetTime(time, /*fromWindow*/ false);
}

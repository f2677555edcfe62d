#include "plugin/parts/CameraFrame.h"

#include "keys/rules/NewKey.h"
#include "plugin/session/FilmSession.h"

#include <cmath>

namespace {

/// Seconds within which a camera key stands at the frame's time.
constexpr float kSameTime = 0.0001f;
/// Units from eye to target where the camera had none.
constexpr float kDefaultDistance = 3.0f;

/// The keys of one kind around a time.
struct KeysAround {
    CFilmLinkedKey* at = nullptr;
    CFilmLinkedKey* before = nullptr;
};

KeysAround FindKeysAround(const CFilmTrack& track, int kind, float time) {
    KeysAround keys;
    for (IFilmKey* candidate : track.keys) {
        if (candidate->kind != kind) {
            continue;
        }
        auto* key = static_cast<CFilmLinkedKey*>(candidate);
        if (std::abs(key->time - time) < kSameTime) {
            keys.at = key; // the last one met counts
        } else if (key->time < time && (keys.before == nullptr || key->time > keys.before->time)) {
            keys.before = key; // of equals the first one met stays
        }
    }
    return keys;
}

void AddCameraKey(CFilmTrack& track, IKeyFactory& factory, int kind, float time, const Vector3& value,
                  const CFilmLinkedKey* before) {
    NewKey key(&factory, kind);
    if (!key) {
        return;
    }
    key->SetValue(value.Data());
    key->SetInMethod(BezierMethod::Smooth);
    key->SetOutMethod(BezierMethod::Smooth);
    key->SetTime(time);
    if (!key.AddTo(track)) {
        return;
    }
    key->SetLinkObject(before != nullptr ? before->linkObject : nullptr);
    key->SetLinkElement(before != nullptr ? before->linkElement : std::string());
}

void SetCameraKey(const FilmSession& session, CFilmTrack& track, IKeyFactory& factory, int kind, float time,
                  const Vector3& value) {
    const KeysAround keys = FindKeysAround(track, kind, time);
    if (keys.at != nullptr) {
        keys.at->SetValue(value.Data());
        session.TellKeyWritten(keys.at);
    } else {
        AddCameraKey(track, factory, kind, time, value, keys.before);
    }
}

float Distance(const Vector3& a, const Vector3& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

} // namespace

void CreateCameraFrame(const FilmSession& session, CFilmTrack* track, float time, int viewNumber) {
    const IFilmManager* manager = session.GetFilmManager();
    IFilm* film = session.currentFilm;
    IEditorView* view = session.view;
    if (track == nullptr || viewNumber == -1 || film == nullptr || !(time >= 0.0f) || time > film->length ||
        view == nullptr || manager == nullptr || manager->keyFactory == nullptr) {
        return;
    }
    const float* matrix = view->GetViewMatrix(viewNumber);
    if (matrix == nullptr) {
        return;
    }
    float distance = Distance(film->GetCameraPosition(track, time), film->GetCameraTarget(track, time));
    if (distance == 0.0f) {
        distance = kDefaultDistance;
    }
    const Vector3 eye{matrix[12], matrix[13], matrix[14]};
    const Vector3 target{eye.x - distance * matrix[8], eye.y - distance * matrix[9],
                         eye.z - distance * matrix[10]};
    SetCameraKey(session, *track, *manager->keyFactory, KeyKind::CameraPosition, time, eye);
    SetCameraKey(session, *track, *manager->keyFactory, KeyKind::CameraTarget, time, target);
    if (session.scenarioDlg != nullptr) {
        session.scenarioDlg->ShowCurrentFilm();
        session.scenarioDlg->SetTime(session.currentTime);
    }
    if (session.editor != nullptr) {
        session.editor->RedrawViews();
    }
}

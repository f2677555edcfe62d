#include "helpers/CameraHelpersController.h"

#include "keys/rules/NewKey.h"
#include "plugin/session/FilmSession.h"

namespace {

/// Once so many were handled, the first object that is none of the camera's ends the walk.
constexpr int kAllObjects = 6;

/// Writes a dragged eye or target to its key; with no key there, one is needed.
void MovePoint(const FilmSession& session, CFilmLinkedKey* key, const EditorObject& object, bool& needed) {
    if (key != nullptr) {
        key->SetValue(object.GetPosition(0));
        session.TellKeyWritten(key);
    } else {
        needed = true;
    }
}

void MoveHandle(const FilmSession& session, CFilmLinkedKey& key, void (CFilmLinkedKey::*set)(const void*),
                const EditorObject& handle) {
    (key.*set)(handle.GetPosition(0));
    session.TellKeyWritten(&key);
}

/// Whether a dragged handle is meant for the key: it is shown, and the key's side has a handle of its own.
bool TakesHandle(EditorObject& handle, const CFilmLinkedKey* key, std::int32_t CFilmVectorKey::*method) {
    const EditorObjectInfo* info = handle.GetInfo();
    return info != nullptr && !info->IsPlaced() && key != nullptr && key->*method == BezierMethod::User;
}

/// Required by the users' films: the new key is left without methods and links. True if the factory made one.
bool AddPointKey(CFilmTrack& track, IKeyFactory& factory, int kind, float time, const EditorObject& object) {
    NewKey key(&factory, kind);
    if (!key) {
        return false;
    }
    key->SetValue(object.GetPosition(0));
    key->SetTime(time);
    key.AddTo(track);
    return true;
}

/// The rows of the new keys appear; the cursor stays where it is.
void RefreshRows(const FilmSession& session, float time) {
    if (session.scenarioDlg == nullptr) {
        return;
    }
    session.scenarioDlg->ShowCurrentFilm();
    if (session.scenarioDlg != nullptr && session.GetCurrentFilm() != nullptr) {
        session.scenarioDlg->SetTime(time);
    }
}

} // namespace

void CCameraHelpersController::OnObjectsMoved(const ObjectList* objects) {
    CFilmCameraTrack* camera = AsCameraTrack(session.GetVisualizedTrack());
    if (objects == nullptr || camera == nullptr) {
        return;
    }
    const float time = session.currentTime;
    CFilmLinkedKey* eyeKey = camera->GetEyeKeyAt(time);
    CFilmLinkedKey* targetKey = camera->GetTargetKeyAt(time);
    int handled = 0;
    bool needEye = false;
    bool needTarget = false;
    for (EditorObject* object : *objects) {
        if (object == nullptr) {
            continue; // not to be taken for a helper that was never made
        }
        if (object == positionObject) {
            MovePoint(session, eyeKey, *object, needEye);
        } else if (object == targetObject) {
            MovePoint(session, targetKey, *object, needTarget);
        } else if (object == posInControl && TakesHandle(*object, eyeKey, &CFilmVectorKey::inMethod)) {
            MoveHandle(session, *eyeKey, &CFilmLinkedKey::SetInHandle, *object);
        } else if (object == posOutControl && TakesHandle(*object, eyeKey, &CFilmVectorKey::outMethod)) {
            MoveHandle(session, *eyeKey, &CFilmLinkedKey::SetOutHandle, *object);
        } else if (object == targetInControl && TakesHandle(*object, targetKey, &CFilmVectorKey::inMethod)) {
            MoveHandle(session, *targetKey, &CFilmLinkedKey::SetInHandle, *object);
        } else if (object == targetOutControl &&
                   TakesHandle(*object, targetKey, &CFilmVectorKey::outMethod)) {
            MoveHandle(session, *targetKey, &CFilmLinkedKey::SetOutHandle, *object);
        } else if (handled == kAllObjects) {
            break;
        } else {
            continue;
        }
        ++handled;
    }
    if (needEye || needTarget) {
        AddMissingKeys(*camera, time, needEye, needTarget);
    }
}

void CCameraHelpersController::AddMissingKeys(CFilmTrack& track, float time, bool needEye, bool needTarget) {
    const IFilmManager* manager = session.GetFilmManager();
    if (manager == nullptr || manager->keyFactory == nullptr) {
        return;
    }
    IKeyFactory& factory = *manager->keyFactory;
    const bool eyeMade =
        needEye && AddPointKey(track, factory, KeyKind::CameraPosition, time, *positionObject);
    const bool targetMade =
        needTarget && AddPointKey(track, factory, KeyKind::CameraTarget, time, *targetObject);
    if (eyeMade || targetMade) {
        RefreshRows(session, time);
    }
}

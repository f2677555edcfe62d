#include "plugin/parts/FirstKeys.h"

#include "helpers/rules/MatrixMath.h"
#include "keys/rules/NewKey.h"
#include "plugin/session/FilmSession.h"

IFilmKey* AddFirstKey(const FilmSession& session, CFilmTrack& track, int kind, float time,
                      const void* value) {
    const IFilmManager* manager = session.GetFilmManager();
    NewKey key(manager != nullptr ? manager->keyFactory : nullptr, kind);
    if (!key) {
        return nullptr;
    }
    key->SetTime(time);
    if (value != nullptr) {
        key->SetValue(value);
    }
    return key.AddTo(track) ? key.Get() : nullptr;
}

void AddFirstTransform(const FilmSession& session, CFilmTrack& track, const float* matrix,
                       bool positionOnly) {
    Vector3 position;
    Vector3 rotation;
    Vector3 scale;
    DecomposeMatrix(matrix, position.Data(), rotation.Data(), scale.Data());
    AddFirstKey(session, track, KeyKind::Position, 0.0f, position.Data());
    if (!positionOnly) {
        AddFirstKey(session, track, KeyKind::Rotation, 0.0f, rotation.Data());
        AddFirstKey(session, track, KeyKind::Scale, 0.0f, scale.Data());
    }
}

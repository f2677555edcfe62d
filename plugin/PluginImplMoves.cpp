#include "plugin/PluginImpl.h"

#include "files/Log.h"
#include "helpers/MatrixMath.h"
#include "keys/NewKey.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Seconds within which a key stands at the present time.
constexpr float kSameTime = 0.00001f;
/// Units, degrees or factors below which a component counts as not moved.
constexpr float kSameValue = 0.00001f;
/// Where the search for the nearest keys starts.
constexpr float kBeforeAll = -1.0f;
constexpr float kAfterAll = 100000.0f;

/// Position, rotation and scale of a moved object, before and after.
struct Transform {
    Vector3 position, rotation, scale;
};

struct TransformChange {
    int kind;
    const char* refused;
    const Vector3& newValue;
    const Vector3& oldValue;
};

Transform Split(const float* matrix, const Vector3& reference) {
    Transform result;
    result.rotation = reference;
    DecomposeMatrixNear(matrix, result.position.Data(), result.rotation.Data(), result.scale.Data());
    return result;
}

bool SameValue(const Vector3& a, const Vector3& b) {
    return std::abs(a.x - b.x) < kSameValue && std::abs(a.y - b.y) < kSameValue &&
           std::abs(a.z - b.z) < kSameValue;
}

Vector3 Moved(const Vector3& point, const Vector3& to, const Vector3& from) {
    return {point.x + to.x - from.x, point.y + to.y - from.y, point.z + to.z - from.z};
}

CFilmVectorKey* FindKeyAt(const CFilmTrack& track, int kind, float time) {
    const auto found = std::ranges::find_if(track.keys, [kind, time](const IFilmKey* key) {
        return key->kind == kind && std::abs(key->time - time) < kSameTime;
    });
    return found == track.keys.end() ? nullptr : static_cast<CFilmVectorKey*>(*found);
}

/// The rotation from which the new angles are to differ little.
Vector3 ReferenceRotation(const CFilmTrack& track, float time) {
    if (const CFilmVectorKey* key = FindKeyAt(track, KeyKind::Rotation, time)) {
        return key->value;
    }
    const CFilmVectorKey* before = nullptr;
    const CFilmVectorKey* after = nullptr;
    float beforeTime = kBeforeAll;
    float afterTime = kAfterAll;
    for (const IFilmKey* key : track.keys) {
        if (key->kind != KeyKind::Rotation) {
            continue;
        }
        if (key->time < time && key->time > beforeTime) {
            beforeTime = key->time;
            before = static_cast<const CFilmVectorKey*>(key);
        } else if (key->time > time && key->time < afterTime) {
            afterTime = key->time;
            after = static_cast<const CFilmVectorKey*>(key);
        }
    }
    if (before == nullptr) {
        return {};
    }
    return after != nullptr ? track.GetRotationAt(time) : before->value;
}

void MoveExistingKey(CFilmVectorKey& key, const TransformChange& change) {
    const Vector3 in = Moved(key.inHandle, change.newValue, change.oldValue);
    const Vector3 out = Moved(key.outHandle, change.newValue, change.oldValue);
    key.SetValue(change.newValue.Data());
    key.SetInHandle(in.Data());
    key.SetOutHandle(out.Data());
    GetPlugin().TellKeyWritten(&key);
}

void AddMovedKey(CFilmTrack& track, IKeyFactory& factory, const TransformChange& change, float time) {
    NewKey key(&factory, change.kind);
    if (!key) {
        return;
    }
    key->SetTime(time);
    if (!key.AddTo(track)) {
        DebugPrint("%s", change.refused);
    }
    key->SetValue(change.newValue.Data()); // Required: a refused key is filled in all the same.
    key->SetInHandle(change.newValue.Data());
    key->SetOutHandle(change.newValue.Data());
}

} // namespace

void IPluginImpl::RecordTransformKeys(EditorObject* object, IFilm* film, float time, const float* newMatrix,
                                      const float* oldMatrix) {
    CFilmTrack* track = FindTrackOfObject(film, object);
    if (track == nullptr) {
        return;
    }
    if (film == currentFilm) {
        if (IMainCtrl* control = GetMainCtrl()) {
            control->RecordObjectKeys(object, std::max(time, 0.0f), newMatrix, oldMatrix);
        }
        return;
    }
    const IFilmManager* manager = GetFilmManager();
    if (manager == nullptr || manager->keyFactory == nullptr) {
        return;
    }
    // Required: keys of a film that is not shown go to the present time, whatever time was given.
    const Vector3 reference = ReferenceRotation(*track, currentTime);
    const Transform now = Split(newMatrix, reference);
    const Transform before = Split(oldMatrix, reference);
    const TransformChange changes[] = {
        {KeyKind::Position, "New position key was not added to track\n", now.position, before.position},
        {KeyKind::Rotation, "New rotation key was not added to track\n", now.rotation, before.rotation},
        {KeyKind::Scale, "New scale key was not added to track\n", now.scale, before.scale},
    };
    for (const TransformChange& change : changes) {
        if (CFilmVectorKey* key = FindKeyAt(*track, change.kind, currentTime)) {
            MoveExistingKey(*key, change);
        } else if (!SameValue(change.newValue, change.oldValue)) {
            AddMovedKey(*track, *manager->keyFactory, change, currentTime);
        }
    }
}

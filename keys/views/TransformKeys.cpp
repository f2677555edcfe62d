#include "keys/views/TransformKeys.h"

#include "helpers/rules/MatrixMath.h"
#include "plugin/contract/FilmTrack.h"

#include <cmath>

namespace {

/// Units, degrees or factors below which a component counts as not moved.
constexpr float kSameValue = 0.00001f;

struct Transform {
    Vector3 position, rotation, scale;
};

Transform Split(const float* matrix, const Vector3& reference) {
    Transform result;
    result.rotation = reference;
    DecomposeMatrixNear(matrix, result.position.Data(), result.rotation.Data(), result.scale.Data());
    return result;
}

bool IsFinite(const Vector3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool IsSame(const TransformChange& change) {
    const Vector3& a = change.newValue;
    const Vector3& b = change.oldValue;
    return std::abs(a.x - b.x) < kSameValue && std::abs(a.y - b.y) < kSameValue &&
           std::abs(a.z - b.z) < kSameValue;
}

bool IsBetweenTheSameWholeNumbers(const TransformChange& change) {
    const Vector3& a = change.newValue;
    const Vector3& b = change.oldValue;
    return std::trunc(a.x) == std::trunc(b.x) && std::trunc(a.y) == std::trunc(b.y) &&
           std::trunc(a.z) == std::trunc(b.z);
}

/// Whether a change is worth a key where none stands.
bool NeedsKey(const TransformChange& change, const TransformRules& rules) {
    const bool isSmall = change.kind == KeyKind::Position && IsBetweenTheSameWholeNumbers(change);
    return !IsSame(change) && !(rules.skipsSmallMoves && isSmall);
}

Vector3 Moved(const Vector3& point, const TransformChange& change, const TransformRules& rules) {
    const Vector3& to = change.newValue;
    const Vector3& from = change.oldValue;
    if (rules.addsStep) {
        return {point.x + (to.x - from.x), point.y + (to.y - from.y), point.z + (to.z - from.z)};
    }
    return {point.x + to.x - from.x, point.y + to.y - from.y, point.z + to.z - from.z};
}

void MoveKey(CFilmVectorKey& key, const TransformChange& change, const TransformRules& rules) {
    key.SetValue(change.newValue.Data());
    const Vector3 in = Moved(key.inHandle, change, rules);
    if (rules.writesOnlyOutHandle && key.kind == KeyKind::Position) {
        key.SetOutHandle(in.Data());
    } else {
        key.SetInHandle(in.Data());
    }
    const Vector3 out = Moved(key.outHandle, change, rules);
    key.SetOutHandle(out.Data());
}

} // namespace

Vector3 ReferenceRotation(const RotationsAbout& keys, const CFilmTrack& track, float time) {
    if (keys.at != nullptr) {
        return keys.at->value;
    }
    if (keys.before == nullptr) {
        return {};
    }
    return keys.after != nullptr ? track.GetRotationAt(time) : keys.before->value;
}

void RecordTransform(TransformSink& sink, const TransformRules& rules, const Vector3& reference,
                     const float* newMatrix, const float* oldMatrix) {
    const Transform now = Split(newMatrix, reference);
    const Transform before = Split(oldMatrix, reference);
    const TransformChange changes[] = {
        {KeyKind::Position, now.position, before.position},
        {KeyKind::Rotation, now.rotation, before.rotation},
        {KeyKind::Scale, now.scale, before.scale},
    };
    for (const TransformChange& change : changes) {
        const bool isFinite = IsFinite(change.newValue) && IsFinite(change.oldValue);
        if (!sink.Takes(change.kind) || (rules.onlyFinite && !isFinite)) {
            continue;
        }
        if (CFilmVectorKey* key = sink.FindKey(change.kind)) {
            MoveKey(*key, change, rules);
            sink.TellMoved(*key);
        } else if (NeedsKey(change, rules)) {
            sink.AddKey(change);
        }
    }
}

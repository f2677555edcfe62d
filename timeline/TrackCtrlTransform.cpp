// Keys from the moves of an object in the 3D views.
#include "helpers/MatrixMath.h"
#include "keys/TrackKey.h"
#include "timeline/LooseKey.h"
#include "timeline/TimelineContext.h"
#include "timeline/TrackCtrl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

/// Units, degrees or factors below which a component counts as not moved.
constexpr float kSameValue = 0.00001f;

struct Transform {
    Vector3 position, rotation, scale;
};

struct Change {
    Vector3 newValue;
    Vector3 oldValue;

    Vector3 Moved(const Vector3& point) const {
        return {point.x + (newValue.x - oldValue.x), point.y + (newValue.y - oldValue.y),
                point.z + (newValue.z - oldValue.z)};
    }
};

bool IsFinite(const Vector3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool IsSame(const Change& change) {
    const Vector3& a = change.newValue;
    const Vector3& b = change.oldValue;
    return std::abs(a.x - b.x) < kSameValue && std::abs(a.y - b.y) < kSameValue &&
           std::abs(a.z - b.z) < kSameValue;
}

bool IsBetweenTheSameWholeNumbers(const Change& change) {
    const Vector3& a = change.newValue;
    const Vector3& b = change.oldValue;
    return std::trunc(a.x) == std::trunc(b.x) && std::trunc(a.y) == std::trunc(b.y) &&
           std::trunc(a.z) == std::trunc(b.z);
}

/// Whether a change is worth a key where none stands.
bool NeedsKey(int kind, const Change& change) {
    // Required: a move of under one unit between the same whole numbers makes no key.
    return !IsSame(change) && !(kind == KeyKind::Position && IsBetweenTheSameWholeNumbers(change));
}

CFilmVectorKey& VectorRecord(const CTrackKey& view) {
    return *static_cast<CFilmVectorKey*>(view.record);
}

void MoveKey(CFilmVectorKey& key, const Change& change) {
    key.SetValue(change.newValue.Data());
    const Vector3 in = change.Moved(key.inHandle);
    if (key.kind == KeyKind::Position) {
        key.SetOutHandle(in.Data()); // Required: the out handle is written twice and the in handle never.
    } else {
        key.SetInHandle(in.Data());
    }
    const Vector3 out = change.Moved(key.outHandle);
    key.SetOutHandle(out.Data());
}

/// The rotation from which the new angles are to differ little; degrees.
Vector3 StartAngles(const CTrackCtrl* rotations, const CTrackKey* keyAtTime, const CFilmTrack& track,
                    float time) {
    if (keyAtTime != nullptr) {
        return VectorRecord(*keyAtTime).value;
    }
    const CTrackKey* before =
        rotations != nullptr ? rotations->FindNearestKey(time, /*after*/ false) : nullptr;
    if (before == nullptr) {
        return {};
    }
    const bool isBetween = rotations->FindNearestKey(time, /*after*/ true) != nullptr;
    return isBetween ? track.GetRotationAt(time) : VectorRecord(*before).value;
}

/// Position, angles and scale in the space of the track's keys.
Transform Split(const float* worldMatrix, CFilmTrack& track, const Vector3& startAngles) {
    std::array<float, 16> matrix{};
    std::copy_n(worldMatrix, matrix.size(), matrix.begin());
    if (const CFilmObjectTrack* objectTrack = AsObjectTrack(&track)) {
        objectTrack->ToParentSpace(matrix.data());
    }
    Transform result;
    result.rotation = startAngles;
    DecomposeMatrixNear(matrix.data(), result.position.Data(), result.rotation.Data(), result.scale.Data());
    return result;
}

/// Whether the open film has the record still, in a track that may have gone; pointers are only compared.
bool IsInOpenFilm(const FilmSession& session, CFilmTrack* track, IFilmKey* record) {
    const IFilm* film = session.currentFilm;
    return film != nullptr && std::ranges::find(film->tracks, track) != film->tracks.end() &&
           std::ranges::find(track->keys, record) != track->keys.end();
}

/// A key of the row at a time without one.
/// Required: its values are written when it stands in its row.
void AddMovedKey(CTrackCtrl& row, TimelineContext& timeline, float time, const Vector3& value) {
    LooseKey key(timeline.CreateKeyView(row.kind));
    if (key == nullptr) {
        return;
    }
    key->SetPosition(time, /*viewOnly*/ false);
    const FilmSession& session = timeline.session; // which outlives the timeline
    IFilmKey* record = key->record;
    CFilmTrack* track = row.track;
    const Watch watchedRow(&row);
    const Watch watchedKey(key.get());
    if (!row.AddKeyView(key.get(), /*redraw*/ false, /*existing*/ false, /*noUndo*/ false)) {
        return;
    }
    key.release();
    // The attributes window may have made the rows anew; the record is the film's by now.
    if (watchedKey.IsAlive() || IsInOpenFilm(session, track, record)) {
        record->SetValue(value.Data());
        record->SetInHandle(value.Data());
        record->SetOutHandle(value.Data());
    }
    if (watchedRow.IsAlive()) {
        row.Invalidate(TRUE);
    }
}

} // namespace

void CTrackCtrl::WriteTransformKeys(float time, const float* newMatrix, const float* oldMatrix) {
    TimelineContext* timeline = TimelineOf(this);
    if (!(time >= 0.0f) || timeline == nullptr || track == nullptr) {
        return;
    }
    CTrackCtrl* rotations = FindChild(KeyKind::Rotation, kAnySubIndex);
    const CTrackKey* rotationKey = rotations != nullptr ? rotations->KeyAtTime(time) : nullptr;
    const Vector3 startAngles = StartAngles(rotations, rotationKey, *track, time);
    const Transform now = Split(newMatrix, *track, startAngles);
    const Transform before = Split(oldMatrix, *track, startAngles);
    const std::pair<int, Change> changes[] = {
        {KeyKind::Position, {now.position, before.position}},
        {KeyKind::Rotation, {now.rotation, before.rotation}},
        {KeyKind::Scale, {now.scale, before.scale}},
    };
    const FilmSession& session = timeline->session;
    const Watch self(this);
    for (const auto& [keyKind, change] : changes) {
        CTrackCtrl* row = self.IsAlive() ? FindChild(keyKind, kAnySubIndex) : nullptr;
        if (row == nullptr || !IsFinite(change.newValue) || !IsFinite(change.oldValue)) {
            continue;
        }
        if (const CTrackKey* key = row->KeyAtTime(time)) {
            MoveKey(VectorRecord(*key), change);
        } else if (NeedsKey(keyKind, change)) {
            AddMovedKey(*row, *timeline, time, change.newValue);
        }
    }
    if (IKeyAttributesDlg* dialog = session.keyAttributesDlg.get()) {
        dialog->SetKey(nullptr, /*refresh*/ true);
    }
}

// Keys from the moves of an object in the 3D views.
#include "keys/views/LooseKey.h"
#include "keys/views/TrackKey.h"
#include "keys/views/TransformKeys.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>
#include <array>

namespace {

CFilmVectorKey* VectorRecord(const CTrackKey* view) {
    return view != nullptr ? static_cast<CFilmVectorKey*>(view->record) : nullptr;
}

using Matrix = std::array<float, 16>;

/// A world matrix in the space of the track's keys.
Matrix InKeySpace(const float* worldMatrix, CFilmTrack& track) {
    Matrix matrix{};
    std::copy_n(worldMatrix, matrix.size(), matrix.begin());
    if (const CFilmObjectTrack* objectTrack = AsObjectTrack(&track)) {
        objectTrack->ToParentSpace(matrix.data());
    }
    return matrix;
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
    static_cast<void>(key.release()); // the row owns it now
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

/// The rows of one object, which may be made anew as soon as a key is added.
class RowKeys final : public TransformSink {
public:
    RowKeys(CTrackCtrl& objectRow, TimelineContext& control, float keyTime)
        : root(&objectRow), timeline(control), time(keyTime) {}

    bool Takes(int kind) override { return FindRow(kind) != nullptr; }
    CFilmVectorKey* FindKey(int kind) override { return VectorRecord(FindRow(kind)->KeyAtTime(time)); }
    void TellMoved(const CFilmVectorKey&) override {} // the attributes window is told at the end
    void AddKey(const TransformChange& change) override {
        AddMovedKey(*FindRow(change.kind), timeline, time, change.newValue);
    }
    RotationsAbout Rotations() const {
        const CTrackCtrl* row = FindRow(KeyKind::Rotation);
        if (row == nullptr) {
            return {nullptr, nullptr, nullptr};
        }
        return {VectorRecord(row->KeyAtTime(time)), VectorRecord(row->FindNearestKey(time, /*after*/ false)),
                VectorRecord(row->FindNearestKey(time, /*after*/ true))};
    }

private:
    CTrackCtrl* FindRow(int kind) const {
        return root.IsAlive() ? root->FindChild(kind, CTrackCtrl::kAnySubIndex) : nullptr;
    }

    Watch<CTrackCtrl> root;
    TimelineContext& timeline;
    float time;
};

} // namespace

void CTrackCtrl::WriteTransformKeys(float time, const float* newMatrix, const float* oldMatrix) {
    TimelineContext* timeline = TimelineOf(this);
    if (!(time >= 0.0f) || timeline == nullptr || track == nullptr) {
        return;
    }
    const FilmSession& session = timeline->session;
    RowKeys rows(*this, *timeline, time);
    const Vector3 reference = ReferenceRotation(rows.Rotations(), *track, time);
    const Matrix now = InKeySpace(newMatrix, *track);
    const Matrix before = InKeySpace(oldMatrix, *track);
    RecordTransform(rows, kOpenFilmRules, reference, now.data(), before.data());
    if (IKeyAttributesDlg* dialog = session.keyAttributesDlg.get()) {
        dialog->SetKey(nullptr, /*refresh*/ true);
    }
}

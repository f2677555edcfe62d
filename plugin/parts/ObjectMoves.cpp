#include "plugin/parts/ObjectMoves.h"

#include "helpers/CameraHelpersController.h"
#include "plugin/contract/EventCodes.h"
#include "plugin/parts/ActorList.h"
#include "plugin/rules/ObjectMatrixRecords.h"
#include "plugin/session/FilmSession.h"

#include <algorithm>

namespace {

/// Keeps a move in the list of those that are told of objects' ends.
class UnderWay {
public:
    UnderWay(std::vector<MovedObjects*>& list, MovedObjects& moved) : moves(list) { moves.push_back(&moved); }
    ~UnderWay() { moves.pop_back(); }
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

private:
    std::vector<MovedObjects*>& moves;
};

ObjectList PresentOf(const MovedObjects& moved) {
    ObjectList present;
    for (const MovedObject& move : moved) {
        if (move.object != nullptr) {
            present.push_back(move.object);
        }
    }
    return present;
}

} // namespace

void ObjectMoves::OnMoved(const ObjectList& objects) {
    // Copies: what follows poses the film, makes tracks, changes the host's list and may ask the user, behind
    // whose back objects go.
    MovedObjects moved;
    for (EditorObject* object : objects) {
        if (object != nullptr) {
            MovedObject& move = moved.emplace_back(object);
            std::copy_n(object->GetMatrix(0), move.userMatrix.size(), move.userMatrix.begin());
        }
    }
    const UnderWay registered(underWay, moved);
    const ObjectList told = PresentOf(moved);
    cameraHelpers.OnObjectsMoved(&told);
    if (session.animateObjects != 0) {
        actors.Add(PresentOf(moved));
    }
    for (MovedObject& move : moved) {
        if (move.object != nullptr) {
            MoveOne(move);
        }
    }
    std::erase_if(moved, [](const MovedObject& move) { return !move.isSnappedBack; });
    ObjectList snappedBack = PresentOf(moved);
    if (!snappedBack.empty() && session.editor != nullptr) {
        session.editor->BroadcastEvent(EventCode::ObjectsMoved, session.pluginId, &snappedBack);
    }
}

void ObjectMoves::MoveOne(MovedObject& move) {
    EditorObject* object = move.object;
    const float* userMatrix = move.userMatrix.data();
    ObjectMatrixRecord* record = places.Find(object);
    if (object->objectKind != ObjectKind::MatrixOnly) {
        if (!object->IsA(ClassId::EditorObject)) {
            return;
        }
        if (CFilmTrack* track = actors.FindTrackOf(session.currentFilm, object)) {
            track->ApplyAt(session.currentTime, FilmSession::kNoPrevious, 0);
            std::array<float, 16> filmMatrix{};
            std::copy_n(object->GetMatrix(0), filmMatrix.size(), filmMatrix.begin());
            object->SetMatrix(userMatrix, 0);
            if (session.animateObjects != 0) {
                recordKeys(object, userMatrix, filmMatrix.data());
                return;
            }
            object->SetMatrix(filmMatrix.data(), 0);
            move.isSnappedBack = true;
            return;
        }
        if (record == nullptr) {
            return; // nothing is known of where it stood
        }
        if (session.animateObjects != 0) {
            // Required: the record keeps the old matrix, so that a later film switch takes the object back.
            const std::array<float, 16> stored = record->matrix;
            recordKeys(object, userMatrix, stored.data());
            return;
        }
    }
    if (record != nullptr) {
        std::copy_n(object->GetMatrix(0), record->matrix.size(), record->matrix.begin());
    }
}

void ObjectMoves::ForgetObject(const EditorObject* object) const {
    for (MovedObjects* moved : underWay) {
        for (MovedObject& move : *moved) {
            move.object = move.object == object ? nullptr : move.object;
        }
    }
}

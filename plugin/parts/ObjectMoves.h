#pragma once

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/Types.h"

#include <array>
#include <functional>
#include <vector>

class ActorList;
class CCameraHelpersController;
class FilmSession;
class ObjectMatrixRecords;

/// An object that the host has moved, while the move is answered.
struct MovedObject {
    explicit MovedObject(EditorObject* moved) : object(moved) {}

    EditorObject* object; ///< null once it is destroyed
    std::array<float, 16> userMatrix{};
    bool isSnappedBack = false; ///< to its film pose, which the other plug-ins are told
};

using MovedObjects = std::vector<MovedObject>;

/// Answers the host's moves of objects: drags of the camera's helpers go into its keys; other objects become
/// keys of the open film, go back to their film pose, or have another place of their own from now on.
class ObjectMoves {
public:
    /// Writes keys of the open film for an object's move, from its matrix before to the user's.
    using Recorder =
        std::function<void(EditorObject* object, const float* userMatrix, const float* matrixBefore)>;

    ObjectMoves(const FilmSession& openSession, ObjectMatrixRecords& ownPlaces, ActorList& filmActors,
                CCameraHelpersController& helpers, Recorder keyRecorder)
        : session(openSession), places(ownPlaces), actors(filmActors), cameraHelpers(helpers),
          recordKeys(std::move(keyRecorder)) {}
    ObjectMoves(const ObjectMoves&) = delete;
    ObjectMoves& operator=(const ObjectMoves&) = delete;

    void OnMoved(const ObjectList& objects);
    /// The object is destroyed, maybe while its move is answered.
    void ForgetObject(const EditorObject* object) const;

private:
    void MoveOne(MovedObject& move);

    const FilmSession& session;
    ObjectMatrixRecords& places;
    ActorList& actors;
    CCameraHelpersController& cameraHelpers;
    Recorder recordKeys;
    std::vector<MovedObjects*> underWay; ///< one inside the other
};

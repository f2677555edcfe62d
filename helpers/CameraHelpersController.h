#pragma once

#include "plugin/contract/Editor.h"
#include "plugin/contract/EditorObject.h"
#include "plugin/contract/Film.h"

class FilmSession;

/// Gives the camera under edit a body in the 3D views: an object at its eye, one at its target, and the
/// handles of the keys that stand at the present time. The user drags them as ordinary objects and the keys
/// follow. A member of the plug-in object; the objects belong to the level.
class CCameraHelpersController {
public:
    explicit CCameraHelpersController(const FilmSession& openSession) : session(openSession) {}
    virtual ~CCameraHelpersController() = default;
    CCameraHelpersController(const CCameraHelpersController&) = delete;
    CCameraHelpersController& operator=(const CCameraHelpersController&) = delete;

    /// Finds the three class descriptors among the host's editor classes.
    void GetHelpersDesc();
    /// Makes the objects that are missing, through the host. False, with a debug print, if the host can't
    /// make any; single objects that it refuses stay null.
    bool CreateObjects();
    /// Appends the objects there are, in the order of the fields.
    void CollectObjects(ObjectList& objects) const;
    void ShowObjects(bool hide) const;
    /// Puts the objects where the track's camera is as last posed, at a film time in seconds; hides them
    /// for null.
    void UpdateObjects(CFilmTrack* track, float time);
    /// Lines from eye and target to the handles that are shown, into the view being drawn.
    void Draw() const;
    /// The user moved these: keys of the visualized camera at the current time follow, and are made where
    /// none stood.
    void OnObjectsMoved(const ObjectList* objects);
    /// The object is about to be destroyed.
    void ForgetObject(const EditorObject* object);
    /// Forgets the objects; the level deletes them.
    void Reset();

    EditorObject* positionObject = nullptr;
    EditorObject* posInControl = nullptr;
    EditorObject* posOutControl = nullptr;
    EditorObject* targetObject = nullptr;
    EditorObject* targetInControl = nullptr;
    EditorObject* targetOutControl = nullptr;
    const EditorClassDescriptor* positionDesc = nullptr; ///< the three belong to the host
    const EditorClassDescriptor* targetDesc = nullptr;
    const EditorClassDescriptor* controlPointDesc = nullptr;

private:
    void AddMissingKeys(CFilmTrack& track, float time, bool needEye, bool needTarget);

    const FilmSession& session;
};

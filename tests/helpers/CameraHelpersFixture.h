#pragma once

#include "files/base/Log.h"
#include "tests/plugin/PluginFixture.h"

#include <string>
#include <vector>

/// An open film with the camera "Cam", at a host that can make the camera's objects.
class CameraHelpersTest : public PluginTest {
protected:
    CameraHelpersTest();
    ~CameraHelpersTest() override;

    /// An eye key (kind 16) or a target key (kind 17) at a world point.
    CFilmLinkedKey* AddPoint(int kind, float time, const Vector3& value);
    /// Gives both sides of a key handles of their own at these world points.
    static void SetHandles(CFilmLinkedKey& key, const Vector3& in, const Vector3& out);
    void Visualize() { plugin.SetVisualizedTrack(camera); }
    /// As the user drags several objects at once.
    void UserMovesAll(const ObjectList& objects);
    std::vector<EditorObject*> Objects() const;
    static bool IsHidden(EditorObject* object) { return object->GetInfo()->IsPlaced(); }
    static std::vector<std::string> Printed();

    IFilm* film;
    CFilmCameraTrack* camera;
    CCameraHelpersController& helpers = plugin.cameraHelpers;
};

#pragma once

#include "host/engine/ViewManager.h"
#include "host/stage/host/ViewLook.h"
#include "host/stage/host/ViewNavigation.h"
#include "host/stage/render/CameraMath.h"

#include <glm/glm.hpp>
#include <memory>
#include <vector>

namespace stage {

/// A 3D view without its window, over the engine's view that plug-ins write to. The user's own camera is
/// kept while a plug-in holds the view.
class StageView {
public:
    explicit StageView(engine::View& engineView);

    /// Logical pixels.
    void Resize(int newWidth, int newHeight);
    /// Writes the user's camera into the engine's view. Does nothing while a plug-in holds the view.
    void ApplyNavigation();
    /// The camera in the world. A matrix that can't be inverted falls back to the user's camera.
    glm::mat4 CameraMatrix() const;
    glm::mat4 ViewMatrix() const;
    /// Another kind of view. Flat ones show what stood around the pivot; back in perspective the camera
    /// stands where it was. `newCameraId` names the object that a camera's view looks through.
    void SetKind(ViewKind newKind, int newCameraId = 0);
    ViewKind Kind() const { return kind; }
    int CameraId() const { return kind == ViewKind::Camera ? cameraId : 0; }
    /// Takes the place of the object that the view looks through; scaled matrices are made square.
    void LookThrough(const glm::mat4& world, float fieldOfView);
    /// True while the picture is a flat one; not while a plug-in holds the view.
    bool IsFlatNow() const { return attachedTo == 0 && IsFlat(kind); }
    /// True while the picture is that of a camera in the level.
    bool IsCameraNow() const { return attachedTo == 0 && kind == ViewKind::Camera; }
    /// Units from the beginning of a line of sight to the pivot.
    float DepthOfPivot() const;
    /// Moves the camera of a flat view so that the point under a pixel stays there after a zoom.
    void ZoomAt(float steps, float x, float y);

    /// With the view's own proportions, whatever camera it follows.
    glm::mat4 ProjectionMatrix() const;
    render::RenderCamera Camera() const { return {ViewMatrix(), ProjectionMatrix()}; }
    float FieldOfView() const; ///< radians, vertical
    /// The line of sight through a pixel, from the eye; in a flat view from far behind it, so that nothing
    /// stands before its beginning.
    render::ViewRay RayAt(float x, float y) const;
    /// Pixels of a world point; false behind the camera.
    bool Project(const glm::vec3& point, glm::vec2& pixel) const;
    engine::View& Engine() const { return *view; }

    ViewNavigation navigation;
    unsigned attachedTo = 0; ///< number of the plug-in that holds the view, 0 for none
    int width = 640;         ///< logical pixels
    int height = 480;
    ViewShading shading = ViewShading::Lit;

private:
    float HalfHeight() const; ///< units that a flat view shows above its middle

    float Aspect() const { return static_cast<float>(width) / static_cast<float>(height); }

    engine::View* view;
    ViewKind kind = ViewKind::Perspective;
    int cameraId = 0;
    ViewNavigation perspective; ///< while the view is of another kind
};

/// The shown views by number, in step with the engine's.
class StageViews {
public:
    static constexpr int kMaxViews = 4;

    explicit StageViews(engine::ViewManager& viewManager);
    /// Adds or drops views at the end; 1 to kMaxViews.
    void SetCount(int count);
    int Count() const { return static_cast<int>(views.size()); }
    /// Null for a number that is not shown.
    StageView* At(int number);

private:
    engine::ViewManager& manager;
    std::vector<std::unique_ptr<StageView>> views;
};

} // namespace stage

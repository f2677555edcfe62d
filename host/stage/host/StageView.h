#pragma once

#include "host/engine/ViewManager.h"
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
    /// With the view's own proportions, whatever camera it follows.
    glm::mat4 ProjectionMatrix() const;
    render::RenderCamera Camera() const { return {ViewMatrix(), ProjectionMatrix()}; }
    float FieldOfView() const; ///< radians, vertical
    /// The line of sight through a pixel, from the eye.
    render::ViewRay RayAt(float x, float y) const;
    /// Pixels of a world point; false behind the camera.
    bool Project(const glm::vec3& point, glm::vec2& pixel) const;
    engine::View& Engine() const { return *view; }

    ViewNavigation navigation;
    unsigned attachedTo = 0; ///< number of the plug-in that holds the view, 0 for none
    int width = 640;         ///< logical pixels
    int height = 480;

private:
    float Aspect() const { return static_cast<float>(width) / static_cast<float>(height); }

    engine::View* view;
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

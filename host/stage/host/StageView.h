#pragma once

#include "host/stage/host/ViewNavigation.h"
#include "plugin/contract/Level.h"

#include <array>
#include <glm/glm.hpp>
#include <memory>
#include <vector>

/// A point on the way from the eye into the scene.
struct ViewRay {
    glm::vec3 origin{0.0f};
    glm::vec3 direction{0.0f, 0.0f, -1.0f}; ///< length 1
};

/// A 3D view without its window: the camera record that plug-ins write, and the user's own camera, which
/// is kept while a plug-in holds the view.
class StageView : public IView {
public:
    StageView();

    void SetProjection(float fieldOfView, float nearPlane, float farPlane, int zero) override;
    float GetFieldOfView() const override { return fieldOfView; }

    /// Logical pixels.
    void Resize(int newWidth, int newHeight);
    /// Writes the user's camera into the record. Does nothing while a plug-in holds the view.
    void ApplyNavigation();
    /// What the renderer needs, from the record: a matrix with a non-finite number falls back to the
    /// user's camera.
    glm::mat4 ViewMatrix() const;
    glm::mat4 ProjectionMatrix() const;
    ViewRay RayAt(float x, float y) const;
    /// Pixels of a world point; false behind the camera.
    bool Project(const glm::vec3& point, glm::vec2& pixel) const;

    ViewNavigation navigation;
    unsigned attachedTo = 0; ///< number of the plug-in that holds the view, 0 for none
    int width = 640;
    int height = 480;

private:
    CameraRecord record;
    float fieldOfView = ViewNavigation::kDefaultFieldOfView;
};

/// The views by number. All views exist for the host's life; the window shows the first `shown` of them.
class StageViews : public IViewManager {
public:
    static constexpr int kMaxViews = 4;

    StageViews();
    /// Null for a number that is not shown.
    IView* GetView(int number) override { return View(number); }
    StageView* View(int number);

    int shown = 1;

private:
    std::array<std::unique_ptr<StageView>, kMaxViews> views;
};

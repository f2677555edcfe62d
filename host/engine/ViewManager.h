#pragma once

#include "plugin/contract/Level.h"

#include <memory>
#include <vector>

namespace engine {

/// The camera side of a 3D view: what it looks through and with which projection. Owned by ViewManager.
class View : public IView {
public:
    View();
    ~View() override;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    void SetProjection(float fieldOfViewRadians, float nearPlane, float farPlane, int zero) override;
    float GetFieldOfView() const override { return angle; }

    /// Width over height. The projection is made anew.
    void SetAspect(float aspect);
    /// The camera in the world, row 2 backwards; 16 floats. The other matrices follow.
    void SetCamera(const float* matrix);
    const float* CameraMatrix() const { return record.data.matrices[0]; }

private:
    void Rebuild();

    CameraRecord record;
    float angle = 1.0471976f; ///< radians, vertical
};

/// The 3D views by number. Owned by the level, one for the host's life.
class ViewManager : public IViewManager {
public:
    IView* GetView(int number) override { return At(number); }
    View* At(int number);
    /// Adds or drops views at the end.
    void SetCount(int count);
    int Count() const { return static_cast<int>(views.size()); }

private:
    std::vector<std::unique_ptr<View>> views;
};

} // namespace engine

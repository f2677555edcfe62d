#pragma once

#include "host/engine/Units.h"
#include "host/stage/render/CameraMath.h"

#include <optional>

namespace gizmo {

/// What a drag of the handles does.
enum class GizmoMode { Translate, Rotate, Scale };

/// What of the gizmo is gripped. A plane is named by the two axes that it moves along.
enum class GizmoPart { None, AxisX, AxisY, AxisZ, PlaneXY, PlaneYZ, PlaneZX, Uniform };

/// The steps that a drag keeps to while its modifier key is held.
struct GizmoSnap {
    float units = engine::Metres(0.25f);
    float degrees = 15.0f;
    float factor = 0.1f;
};

/// Handles to move, turn and scale objects with the mouse: pure geometry over lines of sight. A drag gives
/// the matrix that takes the objects from where they stood at its start to where they belong now; the
/// caller keeps the starting matrices and applies `delta * start`.
class Gizmo {
public:
    /// Changing the mode cancels nothing: it is ignored during a drag.
    void SetMode(GizmoMode newMode);
    GizmoMode Mode() const { return mode; }
    /// Place and axes (columns 0 to 2, made unit and square). Ignored during a drag.
    void Show(const glm::mat4& frame);
    /// The axes of the world at a place.
    void ShowAt(const glm::vec3& place);
    void Hide();
    bool IsShown() const { return shown; }
    /// How large the handles are for a camera, in units; the same on the screen at any distance.
    float Size(const render::RenderCamera& camera) const;

    /// The handle under the line of sight; None during a drag or while hidden.
    GizmoPart HitTest(const render::ViewRay& ray, const render::RenderCamera& camera) const;

    /// Starts a drag; false, and no drag, if the handle can't be gripped from there.
    bool BeginDrag(GizmoPart part, const render::ViewRay& ray, const render::RenderCamera& camera);
    bool IsDragging() const { return dragged != GizmoPart::None; }
    GizmoPart Dragged() const { return dragged; }
    /// The matrix from start to now, in world space. A line of sight that tells nothing (along the axis, away
    /// from the plane) gives the last one again. Identity without a drag.
    const glm::mat4& UpdateDrag(const render::ViewRay& ray, bool snap);
    /// Puts another matrix in place of the last one: where the drag is drawn, and left by its end.
    void SetDelta(const glm::mat4& other);
    /// Where the handles stood when the drag began, and stand now without one.
    glm::vec3 StartPlace() const { return Place(); }
    /// Ends the drag and leaves the gizmo where the drag brought it.
    void EndDrag();
    /// Ends the drag and puts the gizmo back; the objects go back to their starting matrices.
    void CancelDrag();

    GizmoSnap snapping;

private:
    friend class GizmoLines;

    glm::vec3 Axis(int index) const { return glm::vec3(frame[index]); }
    glm::vec3 Place() const { return glm::vec3(frame[3]); }
    std::optional<float> AlongAxis(const render::ViewRay& ray, int axis) const;
    std::optional<glm::vec3> OnPlane(const render::ViewRay& ray, const glm::vec3& normal) const;
    std::optional<float> AngleAbout(const render::ViewRay& ray, int axis) const;
    std::optional<glm::mat4> Moved(const render::ViewRay& ray, bool snap) const;
    std::optional<glm::mat4> Turned(const render::ViewRay& ray, bool snap) const;
    std::optional<glm::mat4> Scaled(const render::ViewRay& ray, bool snap) const;
    float DistanceTo(GizmoPart part, const render::ViewRay& ray, float size) const;

    GizmoMode mode = GizmoMode::Translate;
    glm::mat4 frame{1.0f};
    bool shown = false;

    GizmoPart dragged = GizmoPart::None;
    float startSize = 1.0f;
    glm::vec3 startPoint{0.0f}; ///< world point that was gripped
    glm::vec3 startUp{0.0f};    ///< the camera's up and right, for uniform scaling
    glm::vec3 startNormal{0.0f};
    float startValue = 0.0f; ///< along the axis in units, or the angle in radians
    glm::mat4 delta{1.0f};
};

} // namespace gizmo

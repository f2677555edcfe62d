#pragma once

#include "host/stage/gizmo/Gizmo.h"

/// Sizes of the handles as shares of the gizmo's size, and distances from a line of sight.
namespace gizmo::GizmoGeometry {

constexpr float kAxisStart = 0.12f;
constexpr float kPlaneNear = 0.25f;
constexpr float kPlaneFar = 0.50f;
constexpr float kCenterSize = 0.06f;
/// How far beside a handle a press still grips it.
constexpr float kGripReach = 0.08f;
constexpr int kCircleSteps = 48;

/// 0 to 2 for the three axes, -1 for other parts.
int AxisOf(GizmoPart part);
/// The axis across a plane part, -1 for other parts.
int NormalOf(GizmoPart part);
bool IsFinitePoint(const glm::vec3& point);
/// Point `step` of the circle about an axis of a frame.
glm::vec3 CirclePoint(const glm::mat4& frame, int axis, int step, float radius);
float DistanceToPoint(const render::ViewRay& ray, const glm::vec3& point);
float DistanceToSegment(const render::ViewRay& ray, const glm::vec3& a, const glm::vec3& b);

} // namespace gizmo::GizmoGeometry

#include "host/stage/gizmo/GizmoLines.h"

#include "host/stage/gizmo/GizmoGeometry.h"

#include <array>

namespace gizmo {

namespace {

constexpr glm::vec4 kHot(1.0f, 0.85f, 0.25f, 1.0f);
constexpr std::array<glm::vec4, 3> kColors = {glm::vec4(0.92f, 0.26f, 0.24f, 1.0f),
                                              glm::vec4(0.40f, 0.80f, 0.25f, 1.0f),
                                              glm::vec4(0.25f, 0.50f, 0.95f, 1.0f)};
constexpr float kWidth = 2.5f;

class Pen {
public:
    Pen(const glm::mat4& gizmoFrame, float gizmoSize, GizmoPart hotPart,
        std::vector<render::RenderLine>& target)
        : frame(gizmoFrame), size(gizmoSize), hot(hotPart), lines(target) {}

    void Axis(GizmoPart part, GizmoMode mode) {
        const int axis = GizmoGeometry::AxisOf(part);
        const glm::vec4 color = part == hot ? kHot : kColors[static_cast<std::size_t>(axis)];
        const glm::vec3 way(frame[axis]);
        const glm::vec3 u(frame[(axis + 1) % 3]);
        const glm::vec3 v(frame[(axis + 2) % 3]);
        const glm::vec3 tip = Place() + way * size;
        Line(Place() + way * (size * GizmoGeometry::kAxisStart), tip, color);
        const float head = size * 0.06f;
        for (const glm::vec3& side : {u, -u, v, -v}) {
            if (mode == GizmoMode::Translate) {
                Line(tip, tip - way * (head * 2.2f) + side * head, color);
            } else {
                Line(tip + side * head, tip + way * head, color);
                Line(tip + side * head, tip - way * head, color);
            }
        }
    }

    void Circle(GizmoPart part) {
        const int axis = GizmoGeometry::AxisOf(part);
        const glm::vec4 color = part == hot ? kHot : kColors[static_cast<std::size_t>(axis)];
        for (int i = 0; i < GizmoGeometry::kCircleSteps; ++i) {
            Line(GizmoGeometry::CirclePoint(frame, axis, i, size),
                 GizmoGeometry::CirclePoint(frame, axis, i + 1, size), color);
        }
    }

    void Plane(GizmoPart part) {
        const int normal = GizmoGeometry::NormalOf(part);
        const glm::vec4 color = part == hot ? kHot : kColors[static_cast<std::size_t>(normal)];
        const glm::vec3 u = glm::vec3(frame[(normal + 1) % 3]) * size;
        const glm::vec3 v = glm::vec3(frame[(normal + 2) % 3]) * size;
        const float a = GizmoGeometry::kPlaneNear;
        const float b = GizmoGeometry::kPlaneFar;
        const glm::vec3 corners[] = {Place() + u * a + v * a, Place() + u * b + v * a,
                                     Place() + u * b + v * b, Place() + u * a + v * b};
        for (int i = 0; i < 4; ++i) {
            Line(corners[i], corners[(i + 1) % 4], color);
        }
    }

    void Center() {
        const glm::vec4 color = hot == GizmoPart::Uniform ? kHot : glm::vec4(0.9f, 0.9f, 0.9f, 1.0f);
        const float half = size * GizmoGeometry::kCenterSize;
        for (int axis = 0; axis < 3; ++axis) {
            Line(Place() - glm::vec3(frame[axis]) * half, Place() + glm::vec3(frame[axis]) * half, color);
        }
    }

private:
    glm::vec3 Place() const { return glm::vec3(frame[3]); }
    void Line(const glm::vec3& from, const glm::vec3& to, const glm::vec4& color) {
        lines.push_back({from, to, color, kWidth});
    }

    glm::mat4 frame;
    float size;
    GizmoPart hot;
    std::vector<render::RenderLine>& lines;
};

} // namespace

void GizmoLines::Append(const Gizmo& gizmo, const render::RenderCamera& camera, GizmoPart hot,
                        std::vector<render::RenderLine>& lines) {
    if (!gizmo.shown) {
        return;
    }
    const bool follows = gizmo.IsDragging() && gizmo.mode != GizmoMode::Scale;
    Pen pen(follows ? gizmo.delta * gizmo.frame : gizmo.frame, gizmo.Size(camera),
            gizmo.IsDragging() ? gizmo.dragged : hot, lines);
    for (const GizmoPart part : {GizmoPart::AxisX, GizmoPart::AxisY, GizmoPart::AxisZ}) {
        gizmo.mode == GizmoMode::Rotate ? pen.Circle(part) : pen.Axis(part, gizmo.mode);
    }
    if (gizmo.mode == GizmoMode::Translate) {
        for (const GizmoPart part : {GizmoPart::PlaneXY, GizmoPart::PlaneYZ, GizmoPart::PlaneZX}) {
            pen.Plane(part);
        }
    } else if (gizmo.mode == GizmoMode::Scale) {
        pen.Center();
    }
}

} // namespace gizmo

#include "host/stage/windows/ViewTool.h"

#include "host/engine/mesh/GlmConvert.h"
#include "host/stage/gizmo/GizmoLines.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/host/SnapTargets.h"
#include "host/stage/windows/ViewArea.h"

#include <algorithm>
#include <cmath>

namespace stage {

namespace {

gizmo::GizmoMode GizmoModeOf(ToolMode mode) {
    switch (mode) {
    case ToolMode::Rotate:
        return gizmo::GizmoMode::Rotate;
    case ToolMode::Scale:
        return gizmo::GizmoMode::Scale;
    default:
        return gizmo::GizmoMode::Translate;
    }
}

render::ViewRay RayAt(const StageView& view, const QPointF& place) {
    return view.RayAt(static_cast<float>(place.x()), static_cast<float>(place.y()));
}

} // namespace

void ViewTool::SetMode(ToolMode newMode) {
    mode = newMode;
    gizmo.SetMode(GizmoModeOf(mode));
    hot = gizmo::GizmoPart::None;
}

void ViewTool::Choose(const ObjectList& found, Qt::KeyboardModifiers modifiers, bool byRectangle,
                      Groups groups) {
    const ObjectList met = groups == Groups::Whole ? area.commands.WithGroups(found) : found;
    if (!(modifiers & (Qt::ShiftModifier | Qt::ControlModifier))) {
        area.host.Select(met);
        return;
    }
    ObjectList chosen = area.host.level.selection;
    for (EditorObject* object : met) {
        const auto present = std::find(chosen.begin(), chosen.end(), object);
        if (present == chosen.end()) {
            if (!byRectangle || !(modifiers & Qt::ControlModifier)) {
                chosen.push_back(object);
            }
        } else if (modifiers & Qt::ControlModifier) {
            chosen.erase(present);
        }
    }
    area.host.Select(chosen);
}

void ViewTool::Place() {
    if (gizmo.IsDragging()) {
        return;
    }
    const std::vector<engine::SceneObject*> selected = area.commands.Selected();
    if (mode == ToolMode::Select || selected.empty()) {
        gizmo.Hide();
        return;
    }
    const glm::mat4 last = mesh::ToGlm(selected.back()->World());
    glm::vec3 place(0.0f);
    for (const engine::SceneObject* object : selected) {
        place += mesh::ToGlm(object->World().Translation()) / static_cast<float>(selected.size());
    }
    place = snap.pivotOfLast ? glm::vec3(last[3]) : place;
    // Scaling goes along an object's own axes: along others it would shear a turned object.
    if (snap.localAxes || (selected.size() == 1 && mode == ToolMode::Scale)) {
        glm::mat4 frame = last;
        frame[3] = glm::vec4(place, 1.0f);
        gizmo.Show(frame);
    } else {
        gizmo.ShowAt(place);
    }
}

void ViewTool::AppendLines(const StageView& view, std::vector<render::RenderLine>& lines) {
    Place();
    if (gizmo.IsShown()) {
        gizmo::GizmoLines::Append(gizmo, view.Camera(), gizmo.IsDragging() ? gizmo.Dragged() : hot, lines);
    }
}

bool ViewTool::Hover(const StageView& view, const QPointF& place) {
    Place();
    const gizmo::GizmoPart met = gizmo.HitTest(RayAt(view, place), view.Camera());
    const bool changed = met != hot;
    hot = met;
    return changed;
}

bool ViewTool::Leave() {
    const bool changed = hot != gizmo::GizmoPart::None;
    hot = gizmo::GizmoPart::None;
    return changed;
}

bool ViewTool::Press(const StageView& view, const QPointF& place) {
    Place();
    const render::ViewRay ray = RayAt(view, place);
    const render::RenderCamera camera = view.Camera();
    const gizmo::GizmoPart part = gizmo.HitTest(ray, camera);
    if (part == gizmo::GizmoPart::None || !gizmo.BeginDrag(part, ray, camera)) {
        return false;
    }
    starts.clear();
    for (const engine::SceneObject* object : area.commands.Selected()) {
        starts.push_back({object->id, object->World()});
    }
    return true;
}

void ViewTool::MoveTo(const glm::mat4& delta) {
    std::vector<ObjectMove> moves;
    for (const Start& start : starts) {
        ObjectMove move{area.host.level.FindObject(start.id), {}};
        if (move.object == nullptr || !area.host.level.IsSelected(move.object)) {
            continue; // gone, or its twin in a level that was opened meanwhile
        }
        move.world = mesh::FromGlm(delta * mesh::ToGlm(start.world));
        moves.push_back(move);
    }
    area.commands.Move(std::move(moves));
}

std::optional<glm::vec3> ViewTool::Target(const StageView& view, const QPointF& place, const SnapKeys& keys,
                                          const glm::vec3& free) const {
    const SnapTargets targets(area.host);
    const auto x = static_cast<float>(place.x());
    const auto y = static_cast<float>(place.y());
    std::optional<glm::vec3> target;
    if (snap.vertex || keys.vertex) {
        target = targets.Vertex(view, x, y);
    }
    if (!target && (snap.surface || keys.surface)) {
        target = targets.Surface(view, x, y);
    }
    if (!target && snap.grid != keys.inverted && !snap.localAxes && snap.step > 0.0f) {
        // Only what moves goes to the grid: a drag along one axis leaves the others alone.
        constexpr float kStill = 1e-3f;
        target = free;
        for (int axis = 0; axis < 3; ++axis) {
            if (std::abs(free[axis] - gizmo.StartPlace()[axis]) > kStill) {
                (*target)[axis] = std::round(free[axis] / snap.step) * snap.step;
            }
        }
    }
    return target;
}

void ViewTool::Drag(const StageView& view, const QPointF& place, const SnapKeys& keys) {
    if (!gizmo.IsDragging()) {
        return;
    }
    gizmo.snapping.units = snap.step;
    gizmo.snapping.degrees = snap.degrees;
    const render::ViewRay ray = RayAt(view, place);
    if (mode != ToolMode::Move) {
        MoveTo(gizmo.UpdateDrag(ray, (mode == ToolMode::Rotate ? snap.angle : snap.grid) != keys.inverted));
        return;
    }
    const bool bySteps = snap.localAxes && snap.grid != keys.inverted;
    const glm::vec3 way(gizmo.UpdateDrag(ray, bySteps)[3]);
    if (const std::optional<glm::vec3> target = Target(view, place, keys, gizmo.StartPlace() + way)) {
        glm::mat4 delta(1.0f);
        delta[3] = glm::vec4(*target - gizmo.StartPlace(), 1.0f);
        gizmo.SetDelta(delta);
        MoveTo(delta);
    } else {
        MoveTo(gizmo.UpdateDrag(ray, bySteps));
    }
}

void ViewTool::Release() {
    gizmo.EndDrag();
    starts.clear();
}

void ViewTool::Cancel() {
    if (gizmo.IsDragging()) {
        gizmo.CancelDrag();
        MoveTo(glm::mat4(1.0f));
    }
    starts.clear();
}

} // namespace stage

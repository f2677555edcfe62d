#include "host/stage/windows/ViewTool.h"

#include "host/engine/mesh/GlmConvert.h"
#include "host/stage/gizmo/GizmoLines.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/ViewArea.h"

#include <algorithm>

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

void ViewTool::Choose(const ObjectList& found, Qt::KeyboardModifiers modifiers) {
    const ObjectList met = area.commands.WithGroups(found);
    if (!(modifiers & (Qt::ShiftModifier | Qt::ControlModifier))) {
        area.host.Select(met);
        return;
    }
    ObjectList chosen = area.host.level.selection;
    for (EditorObject* object : met) {
        const auto present = std::find(chosen.begin(), chosen.end(), object);
        if (present == chosen.end()) {
            chosen.push_back(object);
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
    // Scaling goes along an object's own axes: along others it would shear a turned object.
    if (selected.size() == 1 && mode == ToolMode::Scale) {
        gizmo.Show(mesh::ToGlm(selected.front()->World()));
        return;
    }
    glm::vec3 middle(0.0f);
    for (const engine::SceneObject* object : selected) {
        middle += mesh::ToGlm(object->World().Translation()) / static_cast<float>(selected.size());
    }
    gizmo.ShowAt(middle);
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

void ViewTool::Drag(const StageView& view, const QPointF& place, bool snap) {
    if (gizmo.IsDragging()) {
        MoveTo(gizmo.UpdateDrag(RayAt(view, place), snap));
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

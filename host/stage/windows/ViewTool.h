#pragma once

#include "host/engine/Math.h"
#include "host/stage/gizmo/Gizmo.h"
#include "host/stage/render/RenderScene.h"
#include "plugin/contract/Types.h"

#include <QPointF>
#include <Qt>
#include <vector>

namespace engine {
class SceneObject;
}

namespace stage {

class StageView;
class ViewArea;

enum class ToolMode { Select, Move, Rotate, Scale };

/// What the left button does in the views: choosing objects, and dragging the selected ones with the gizmo.
class ViewTool {
public:
    explicit ViewTool(ViewArea& viewArea) : area(viewArea) {}

    void SetMode(ToolMode newMode);
    ToolMode Mode() const { return mode; }

    /// Makes what was met the selection, with the groups it belongs to: Shift adds, Ctrl toggles.
    void Choose(const ObjectList& found, Qt::KeyboardModifiers modifiers);

    /// True if the picture changes.
    bool Hover(const StageView& view, const QPointF& place);
    bool Leave();
    /// True if a drag begins.
    bool Press(const StageView& view, const QPointF& place);
    void Drag(const StageView& view, const QPointF& place, bool snap);
    void Release();
    /// Puts the objects back where the drag began.
    void Cancel();
    /// Puts the gizmo where the selection is and appends its lines as this view sees it.
    void AppendLines(const StageView& view, std::vector<render::RenderLine>& lines);

private:
    /// An object of the drag and where it stood at its start. By id: it may go in mid-drag.
    struct Start {
        int id = 0;
        engine::Matrix4 world;
    };

    void Place();
    void MoveTo(const glm::mat4& delta);

    ViewArea& area;
    ToolMode mode = ToolMode::Move;
    gizmo::Gizmo gizmo;
    gizmo::GizmoPart hot = gizmo::GizmoPart::None;
    std::vector<Start> starts;
};

} // namespace stage

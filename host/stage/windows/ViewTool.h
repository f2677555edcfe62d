#pragma once

#include "host/engine/Math.h"
#include "host/stage/gizmo/Gizmo.h"
#include "host/stage/render/RenderScene.h"
#include "plugin/contract/Types.h"

#include <optional>
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

/// What a drag keeps to, and about what it turns. The user's own choice.
struct SnapSettings {
    bool grid = false;        ///< places are multiples of the step
    bool angle = false;       ///< turns are
    bool surface = false;     ///< objects stand on what is under the mouse
    bool vertex = false;      ///< objects go to the corner next to the mouse
    bool localAxes = false;   ///< handles along the axes of the object that was selected last
    bool pivotOfLast = false; ///< handles at the place of that object instead of the middle of all
    float step = 25.0f;       ///< units
    float degrees = 15.0f;
};

/// Keys that are held during a drag: they hold for as long.
struct SnapKeys {
    bool inverted = false; ///< snaps to grid and angle where the settings don't, and doesn't where they do
    bool surface = false;
    bool vertex = false;
};

/// What the left button does in the views: choosing objects, and dragging the selected ones with the gizmo.
class ViewTool {
public:
    explicit ViewTool(ViewArea& viewArea) : area(viewArea) {}

    void SetMode(ToolMode newMode);
    ToolMode Mode() const { return mode; }

    /// Makes what was met the selection, with the groups it belongs to: Shift adds, Ctrl toggles, or takes
    /// out what a rectangle has met.
    enum class Groups { Whole, Single };
    void Choose(const ObjectList& found, Qt::KeyboardModifiers modifiers, bool byRectangle,
                Groups groups = Groups::Whole);

    /// True if the picture changes.
    bool Hover(const StageView& view, const QPointF& place);
    bool Leave();
    /// True if a drag begins.
    bool Press(const StageView& view, const QPointF& place);
    void Drag(const StageView& view, const QPointF& place, const SnapKeys& keys);
    void Release();
    /// Puts the objects back where the drag began.
    void Cancel();
    /// Puts the gizmo where the selection is and appends its lines as this view sees it.
    void AppendLines(const StageView& view, std::vector<render::RenderLine>& lines);

    SnapSettings snap;

private:
    /// Where the place of the handles goes when it moves freely: onto a surface, a corner or the grid.
    std::optional<glm::vec3> Target(const StageView& view, const QPointF& place, const SnapKeys& keys,
                                    const glm::vec3& free) const;
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

#pragma once

#include "plugin/contract/Types.h"

#include <QPointF>
#include <Qt>

namespace stage {

class StageView;
class ViewArea;

enum class ToolMode { Select, Move, Rotate, Scale };

/// What the left button does in the views: choosing objects, and dragging the selected ones with the gizmo.
class ViewTool {
public:
    explicit ViewTool(ViewArea& viewArea) : area(viewArea) {}

    void SetMode(ToolMode newMode) { mode = newMode; }
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

private:
    ViewArea& area;
    ToolMode mode = ToolMode::Move;
};

} // namespace stage

#pragma once

#include "host/stage/gizmo/Gizmo.h"
#include "host/stage/render/RenderScene.h"

namespace gizmo {

/// Appends the gizmo as a camera sees it; the handle `hot` (under the mouse or gripped) is bright. During a
/// drag the handles stand where the drag has brought them.
class GizmoLines {
public:
    static void Append(const Gizmo& gizmo, const render::RenderCamera& camera, GizmoPart hot,
                       std::vector<render::RenderLine>& lines);
};

} // namespace gizmo

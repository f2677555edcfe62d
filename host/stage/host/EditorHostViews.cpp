#include "host/engine/ClassDatabase.h"
#include "host/engine/mesh/GlmConvert.h"
#include "host/stage/host/EditorHost.h"
#include "plugin/contract/EventCodes.h"

#include <algorithm>

namespace stage {

void EditorHost::RedrawViews() {
    RedrawView(-1);
}

void EditorHost::RedrawView(int view) {
    // A plug-in poses its film while a view is drawn; a redraw asked for by that would never end.
    if (drawingView < 0) {
        windows.RedrawView(view);
    }
}

int EditorHost::GetActiveView() {
    // While a view is drawn, the render calls are about that one.
    return drawingView >= 0 ? drawingView : windows.ActiveView();
}

const float* EditorHost::GetViewMatrix(int view) {
    const StageView* stageView = views.At(view);
    return stageView != nullptr ? stageView->Engine().CameraMatrix() : nullptr;
}

bool EditorHost::AttachViewToPlugin(int view, PluginCommandId plugin) {
    StageView* stageView = views.At(view);
    const PluginEntry* owner = plugins.Find(plugin.PluginNumber());
    if (stageView == nullptr || owner == nullptr) {
        return false;
    }
    const unsigned number = owner->number;
    if (stageView->attachedTo != 0 && stageView->attachedTo != number) {
        RequestDetach(view, *stageView);
    }
    stageView->attachedTo = number;
    windows.AttachmentChanged(view);
    return true;
}

void EditorHost::DetachViewFromPlugin(int view, PluginCommandId plugin) {
    StageView* stageView = views.At(view);
    if (stageView == nullptr || stageView->attachedTo == 0 ||
        stageView->attachedTo != plugin.PluginNumber()) {
        return;
    }
    stageView->attachedTo = 0;
    stageView->ApplyNavigation();
    windows.AttachmentChanged(view);
}

bool EditorHost::IsViewAttachedToPlugin(int view, PluginCommandId plugin) {
    const StageView* stageView = views.At(view);
    return stageView != nullptr && stageView->attachedTo != 0 &&
           stageView->attachedTo == plugin.PluginNumber();
}

void EditorHost::RequestDetach(int view, StageView& stageView) {
    PluginEntry* owner = plugins.Find(stageView.attachedTo);
    // Given back before the owner is told: its own call to detach then finds nothing to do.
    stageView.attachedTo = 0;
    stageView.ApplyNavigation();
    if (owner != nullptr) {
        std::int32_t number = view;
        bool unused = false;
        plugins.Guarded("OnViewRequest",
                        [&] { owner->plugin->OnViewRequest(ViewRequest::Detach, 0, &number, &unused); });
    }
    windows.AttachmentChanged(view);
}

void EditorHost::TakeView(int view) {
    StageView* stageView = views.At(view);
    if (stageView != nullptr && stageView->attachedTo != 0) {
        RequestDetach(view, *stageView);
        RedrawView(view);
    }
}

void EditorHost::SetViewCount(int count) {
    for (int view = std::max(count, 1); view < views.Count(); ++view) {
        TakeView(view);
    }
    views.SetCount(count);
}

bool EditorHost::FollowsPlugin(int view) {
    const StageView* stageView = views.At(view);
    PluginEntry* owner = stageView != nullptr ? plugins.Find(stageView->attachedTo) : nullptr;
    bool follows = false;
    if (owner != nullptr) {
        std::int32_t number = view;
        plugins.Guarded("OnViewRequest",
                        [&] { owner->plugin->OnViewRequest(ViewRequest::IsAttached, 0, &number, &follows); });
    }
    return follows;
}

void EditorHost::FollowCamera(int view) {
    StageView* stageView = views.At(view);
    if (stageView == nullptr || !stageView->IsCameraNow()) {
        return;
    }
    const engine::SceneObject* camera = level.FindObject(stageView->CameraId());
    if (camera == nullptr || camera->Info().className != engine::kCameraClass) {
        stageView->SetKind(ViewKind::Perspective);
        return;
    }
    stageView->LookThrough(mesh::ToGlm(camera->World()), camera->notes.Angle());
}

const std::vector<OverlayLine>& EditorHost::RenderPlugins(int view) {
    lines.clear();
    if (drawingView < 0) {
        drawingView = view;
        plugins.Render();
        drawingView = -1;
    }
    return lines;
}

void EditorHost::DrawLine(const float* from, const float* to, const float* color) {
    if (drawingView < 0 || from == nullptr || to == nullptr || color == nullptr) {
        return;
    }
    OverlayLine line;
    std::copy_n(from, 3, line.from);
    std::copy_n(to, 3, line.to);
    std::copy_n(color, 4, line.color);
    lines.push_back(line);
}

} // namespace stage

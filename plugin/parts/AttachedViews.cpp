#include "plugin/parts/AttachedViews.h"

#include "plugin/session/FilmSession.h"

#include <algorithm>

namespace {

/// Degrees to radians, float32 as the host's views take it.
constexpr float kRadiansPerDegree = 0.017453292f;

} // namespace

bool AttachedViews::Has(int viewNumber) const {
    return std::ranges::find(numbers, viewNumber) != numbers.end();
}

/// Required: a listed view that the host says is not attached stays as it is until it is detached.
void AttachedViews::Attach(int viewNumber) {
    IEditor* editor = session.editor;
    if (editor == nullptr) {
        return;
    }
    const bool listed = Has(viewNumber);
    const bool attached = editor->IsViewAttachedToPlugin(viewNumber, session.pluginId);
    if (listed && !attached) {
        return;
    }
    if (attached) {
        editor->DetachViewFromPlugin(viewNumber, session.pluginId);
        if (editor->IsViewAttachedToPlugin(viewNumber, session.pluginId)) {
            return;
        }
    }
    if (!editor->AttachViewToPlugin(viewNumber, session.pluginId)) {
        return;
    }
    if (!Has(viewNumber)) {
        numbers.push_back(viewNumber);
    }
    editor->RedrawView(viewNumber);
    UpdateButton();
}

void AttachedViews::Detach(int viewNumber) {
    const auto found = std::ranges::find(numbers, viewNumber);
    if (found == numbers.end()) {
        return;
    }
    numbers.erase(found);
    if (session.editor != nullptr) {
        session.editor->DetachViewFromPlugin(viewNumber, session.pluginId);
        session.editor->RedrawView(viewNumber);
    }
    UpdateButton();
}

void AttachedViews::CopyCamera() const {
    const IFilm* film = session.currentFilm;
    const CFilmLevelTrack* main = film != nullptr ? AsLevelTrack(film->mainTrack) : nullptr;
    const CFilmCameraTrack* camera =
        main != nullptr && main->cameraHolder != nullptr ? main->cameraHolder->activeCamera : nullptr;
    IViewManager* views = session.level != nullptr ? session.level->GetViewManager() : nullptr;
    if (camera == nullptr || camera->cameraData == nullptr || views == nullptr) {
        return;
    }
    const CameraData& record = camera->cameraData->data;
    for (const int number : numbers) {
        IView* attached = views->GetView(number);
        if (attached == nullptr || attached->camera == nullptr) {
            continue;
        }
        attached->camera->data = record;
        attached->SetProjection(camera->fieldOfView * kRadiansPerDegree, record.recordNear, record.recordFar,
                                0);
    }
}

void AttachedViews::UpdateButton() const {
    IScenarioWindow* window = session.scenarioDlg;
    if (window != nullptr && window->IsEnabled()) {
        window->UpdateAttachButton();
    }
}

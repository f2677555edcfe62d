#include "host/stage/host/StageView.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

namespace stage {

namespace {
constexpr float kMaxFieldOfView = 3.1f; ///< radians, short of a half turn

bool IsUsable(const float* matrix) {
    if (!std::all_of(matrix, matrix + 16, [](float number) { return std::isfinite(number); })) {
        return false;
    }
    return std::abs(glm::determinant(glm::mat3(glm::make_mat4(matrix)))) > 1e-12f;
}
} // namespace

StageView::StageView(engine::View& engineView) : view(&engineView) {
    ApplyNavigation();
}

void StageView::Resize(int newWidth, int newHeight) {
    width = std::max(1, newWidth);
    height = std::max(1, newHeight);
    view->SetAspect(Aspect());
}

void StageView::ApplyNavigation() {
    if (attachedTo != 0) {
        return;
    }
    const glm::mat4 world = navigation.CameraMatrix();
    view->SetAspect(Aspect());
    view->SetProjection(navigation.fieldOfView, ClipPlane::Near, ClipPlane::Far, 0);
    view->SetCamera(glm::value_ptr(world));
}

glm::mat4 StageView::CameraMatrix() const {
    const float* world = view->CameraMatrix();
    return IsUsable(world) ? glm::make_mat4(world) : navigation.CameraMatrix();
}

glm::mat4 StageView::ViewMatrix() const {
    return glm::inverse(CameraMatrix());
}

float StageView::FieldOfView() const {
    const float angle = view->GetFieldOfView();
    return angle > 0.0f && angle < kMaxFieldOfView ? angle : ViewNavigation::kDefaultFieldOfView;
}

glm::mat4 StageView::ProjectionMatrix() const {
    const CameraData& data = view->camera->data;
    const bool sane =
        data.recordNear > 0.0f && data.recordFar > data.recordNear && std::isfinite(data.recordFar);
    return glm::perspective(FieldOfView(), Aspect(), sane ? data.recordNear : ClipPlane::Near,
                            sane ? data.recordFar : ClipPlane::Far);
}

render::ViewRay StageView::RayAt(float x, float y) const {
    return render::RayFromEye(CameraMatrix(), FieldOfView(), width, height, x, y);
}

bool StageView::Project(const glm::vec3& point, glm::vec2& pixel) const {
    glm::vec3 place;
    if (!render::ProjectToPixel(Camera(), width, height, point, place)) {
        return false;
    }
    pixel = glm::vec2(place);
    return true;
}

StageViews::StageViews(engine::ViewManager& viewManager) : manager(viewManager) {
    SetCount(1);
}

void StageViews::SetCount(int count) {
    const int wanted = std::clamp(count, 1, kMaxViews);
    while (Count() > wanted) {
        views.pop_back();
    }
    manager.SetCount(wanted);
    while (Count() < wanted) {
        views.push_back(std::make_unique<StageView>(*manager.At(Count())));
    }
}

StageView* StageViews::At(int number) {
    return number >= 0 && number < Count() ? views[static_cast<std::size_t>(number)].get() : nullptr;
}

} // namespace stage

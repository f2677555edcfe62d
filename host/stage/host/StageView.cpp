#include "host/stage/host/StageView.h"

#include <algorithm>
#include <cmath>
#include <glm/gtc/constants.hpp>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

namespace stage {

namespace {
/// Flat views show what stands this far before and behind the pivot's plane, units.
constexpr float kFlatReach = engine::Metres(1000.0f);

/// Yaw and pitch of the flat views.
struct Direction {
    float yaw;
    float pitch;
};

Direction DirectionOf(ViewKind kind) {
    switch (kind) {
    case ViewKind::Top:
        return {0.0f, -glm::half_pi<float>()};
    case ViewKind::Side:
        return {glm::half_pi<float>(), 0.0f};
    default:
        return {0.0f, 0.0f};
    }
}

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
    // A flat view has a camera too, for whoever asks where the view stands: it sees the same around the
    // pivot.
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

void StageView::SetKind(ViewKind newKind, int newCameraId) {
    if (kind == ViewKind::Perspective) {
        perspective = navigation;
    }
    if (newKind == ViewKind::Perspective && kind != ViewKind::Perspective) {
        navigation = perspective;
    } else if (IsFlat(newKind)) {
        const Direction direction = DirectionOf(newKind);
        navigation.yaw = direction.yaw;
        navigation.pitch = direction.pitch;
        navigation.fieldOfView = ViewNavigation::kDefaultFieldOfView;
    }
    kind = newKind;
    cameraId = newKind == ViewKind::Camera ? newCameraId : 0;
    ApplyNavigation();
}

void StageView::LookThrough(const glm::mat4& world, float fieldOfView) {
    if (!IsCameraNow() || !IsUsable(glm::value_ptr(world))) {
        return;
    }
    const glm::vec3 back = glm::normalize(glm::vec3(world[2]));
    const glm::vec3 right = glm::normalize(glm::cross(glm::vec3(world[1]), back));
    const glm::mat4 square(glm::vec4(right, 0.0f), glm::vec4(glm::cross(back, right), 0.0f),
                           glm::vec4(back, 0.0f), world[3]);
    const glm::vec3 eye(world[3]);
    navigation.LookAt(eye, eye - back * navigation.distance);
    navigation.fieldOfView = fieldOfView;
    view->SetAspect(Aspect());
    view->SetProjection(fieldOfView, ClipPlane::Near, ClipPlane::Far, 0);
    view->SetCamera(glm::value_ptr(square));
}

float StageView::HalfHeight() const {
    return navigation.distance * std::tan(navigation.fieldOfView * 0.5f);
}

float StageView::DepthOfPivot() const {
    return IsFlatNow() ? kFlatReach : navigation.distance;
}

void StageView::ZoomAt(float steps, float x, float y) {
    const glm::vec3 before = RayAt(x, y).origin;
    navigation.Zoom(steps);
    if (IsFlatNow()) {
        navigation.pivot += before - RayAt(x, y).origin;
        ApplyNavigation();
    }
}

glm::mat4 StageView::ProjectionMatrix() const {
    if (IsFlatNow()) {
        const float half = HalfHeight();
        const float wide = half * Aspect();
        return glm::ortho(-wide, wide, -half, half, navigation.distance - kFlatReach,
                          navigation.distance + kFlatReach);
    }
    const CameraData& data = view->camera->data;
    const bool sane =
        data.recordNear > 0.0f && data.recordFar > data.recordNear && std::isfinite(data.recordFar);
    return glm::perspective(FieldOfView(), Aspect(), sane ? data.recordNear : ClipPlane::Near,
                            sane ? data.recordFar : ClipPlane::Far);
}

render::ViewRay StageView::RayAt(float x, float y) const {
    if (IsFlatNow()) {
        const float across = (2.0f * x / static_cast<float>(width) - 1.0f) * HalfHeight() * Aspect();
        const float up = (1.0f - 2.0f * y / static_cast<float>(height)) * HalfHeight();
        return {navigation.pivot + navigation.Right() * across + navigation.Up() * up -
                    navigation.Forward() * kFlatReach,
                navigation.Forward()};
    }
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

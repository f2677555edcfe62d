#include "host/stage/host/StageView.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

namespace {
constexpr float kNear = 0.1f;
constexpr float kFar = 1000.0f;

bool IsFinite(const float* matrix) {
    return std::all_of(matrix, matrix + 16, [](float number) { return std::isfinite(number); });
}
} // namespace

StageView::StageView() {
    camera = &record;
    ApplyNavigation();
    SetProjection(navigation.fieldOfView, kNear, kFar, 0);
}

void StageView::SetProjection(float newFieldOfView, float nearPlane, float farPlane, int /*zero*/) {
    if (std::isfinite(newFieldOfView) && newFieldOfView > 0.0f && newFieldOfView < 3.1f) {
        fieldOfView = newFieldOfView;
    }
    if (std::isfinite(nearPlane) && std::isfinite(farPlane) && nearPlane > 0.0f && farPlane > nearPlane) {
        record.data.recordNear = nearPlane;
        record.data.recordFar = farPlane;
    }
    const glm::mat4 projection = ProjectionMatrix();
    std::memcpy(record.data.matrices[2], glm::value_ptr(projection), sizeof(record.data.matrices[2]));
}

void StageView::Resize(int newWidth, int newHeight) {
    width = std::max(1, newWidth);
    height = std::max(1, newHeight);
    record.data.aspect = static_cast<float>(width) / static_cast<float>(height);
    SetProjection(fieldOfView, record.data.recordNear, record.data.recordFar, 0);
}

void StageView::ApplyNavigation() {
    if (attachedTo != 0) {
        return;
    }
    const glm::mat4 world = navigation.CameraMatrix();
    const glm::mat4 inverse = glm::inverse(world);
    std::memcpy(record.data.matrices[0], glm::value_ptr(world), sizeof(record.data.matrices[0]));
    std::memcpy(record.data.matrices[1], glm::value_ptr(inverse), sizeof(record.data.matrices[1]));
    SetProjection(navigation.fieldOfView, kNear, kFar, 0);
}

glm::mat4 StageView::ViewMatrix() const {
    const float* world = record.data.matrices[0];
    const glm::mat4 matrix = IsFinite(world) ? glm::make_mat4(world) : navigation.CameraMatrix();
    const float volume = glm::determinant(glm::mat3(matrix));
    return glm::inverse(std::abs(volume) > 1e-12f ? matrix : navigation.CameraMatrix());
}

glm::mat4 StageView::ProjectionMatrix() const {
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    const bool sane = record.data.recordNear > 0.0f && record.data.recordFar > record.data.recordNear;
    return glm::perspective(fieldOfView, aspect, sane ? record.data.recordNear : kNear,
                            sane ? record.data.recordFar : kFar);
}

ViewRay StageView::RayAt(float x, float y) const {
    const glm::mat4 camera4 = glm::inverse(ViewMatrix());
    const float tangent = std::tan(fieldOfView * 0.5f);
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    const float across = (2.0f * x / static_cast<float>(width) - 1.0f) * tangent * aspect;
    const float upwards = (1.0f - 2.0f * y / static_cast<float>(height)) * tangent;
    const glm::vec3 way = glm::vec3(camera4 * glm::vec4(across, upwards, -1.0f, 0.0f));
    return {glm::vec3(camera4[3]), glm::normalize(way)};
}

bool StageView::Project(const glm::vec3& point, glm::vec2& pixel) const {
    const glm::vec4 clip = ProjectionMatrix() * ViewMatrix() * glm::vec4(point, 1.0f);
    if (!(clip.w > 1e-6f)) {
        return false;
    }
    pixel = {(clip.x / clip.w * 0.5f + 0.5f) * static_cast<float>(width),
             (0.5f - clip.y / clip.w * 0.5f) * static_cast<float>(height)};
    return true;
}

StageViews::StageViews() {
    for (auto& view : views) {
        view = std::make_unique<StageView>();
    }
}

StageView* StageViews::View(int number) {
    return number >= 0 && number < shown ? views[static_cast<std::size_t>(number)].get() : nullptr;
}

#include "host/engine/ViewManager.h"

#include "host/engine/Math.h"
#include "host/engine/Units.h"

#include <algorithm>
#include <cstring>

namespace engine {

View::View() {
    camera = &record;
    const Matrix4 start =
        engine::CameraMatrix({Metres(8.0f), Metres(6.0f), Metres(8.0f)}, {0.0f, 0.0f, 0.0f}, 0.0f);
    SetCamera(start.m);
}

View::~View() = default;

void View::SetProjection(float fieldOfViewRadians, float nearPlane, float farPlane, int) {
    angle = fieldOfViewRadians;
    record.data.recordNear = nearPlane;
    record.data.recordFar = farPlane;
    Rebuild();
}

void View::SetAspect(float aspect) {
    record.data.aspect = aspect;
    Rebuild();
}

void View::SetCamera(const float* matrix) {
    std::memcpy(record.data.matrices[0], matrix, sizeof record.data.matrices[0]);
    Rebuild();
}

void View::Rebuild() {
    CameraData& data = record.data;
    const Matrix4 world = MatrixFrom(data.matrices[0]);
    Matrix4 inverse;
    Invert(world, inverse);
    const Matrix4 projection =
        Perspective(angle / kRadiansPerDegree, data.aspect, data.recordNear, data.recordFar);
    std::memcpy(data.matrices[1], inverse.m, sizeof inverse.m);
    std::memcpy(data.matrices[2], projection.m, sizeof projection.m);
    std::memcpy(data.matrices[3], Multiply(inverse, projection).m, sizeof projection.m);
}

View* ViewManager::At(int number) {
    return number >= 0 && number < Count() ? views[static_cast<std::size_t>(number)].get() : nullptr;
}

void ViewManager::SetCount(int count) {
    const auto wanted = static_cast<std::size_t>(std::max(count, 0));
    while (views.size() < wanted) {
        views.push_back(std::make_unique<View>());
    }
    views.resize(wanted);
}

} // namespace engine

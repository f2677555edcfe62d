#include "tests/whole/GizmoHand.h"

#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"

#include <cmath>
#include <glm/gtc/matrix_transform.hpp>
#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QTest>

QWidget* GizmoHand::View() const {
    return window.views->Widget(0);
}

std::optional<QPoint> GizmoHand::PixelOf(stage::MainWindow& mainWindow, const Vector3& point) {
    glm::vec2 pixel;
    if (!mainWindow.host.views.At(0)->Project({point.x, point.y, point.z}, pixel)) {
        return std::nullopt;
    }
    return QPoint(static_cast<int>(std::lround(pixel.x)), static_cast<int>(std::lround(pixel.y)));
}

std::optional<QPoint> GizmoHand::Grip(gizmo::GizmoMode mode, gizmo::GizmoPart part,
                                      const Vector3& place) const {
    gizmo::Gizmo gizmo;
    gizmo.SetMode(mode);
    gizmo.Show(glm::translate(glm::mat4(1.0f), glm::vec3(place.x, place.y, place.z)));
    const stage::StageView& view = *window.host.views.At(0);
    const render::RenderCamera camera = view.Camera();
    for (int y = 0; y < View()->height(); y += 2) {
        for (int x = 0; x < View()->width(); x += 2) {
            if (gizmo.HitTest(view.RayAt(static_cast<float>(x), static_cast<float>(y)), camera) == part) {
                return QPoint(x, y);
            }
        }
    }
    return std::nullopt;
}

bool GizmoHand::Press(const char* tool, gizmo::GizmoMode mode, gizmo::GizmoPart part, const Vector3& place) {
    window.findChild<QAction*>(tool)->trigger();
    QApplication::processEvents();
    const std::optional<QPoint> from = Grip(mode, part, place);
    if (!from.has_value()) {
        return false;
    }
    start = present = *from;
    QTest::mouseMove(View(), start);
    QTest::mousePress(View(), Qt::LeftButton, Qt::NoModifier, start);
    return true;
}

void GizmoHand::Move(const QPoint& way) {
    constexpr int kSteps = 5;
    const QPoint from = present;
    for (int step = 1; step <= kSteps; ++step) {
        present = from + (start + way - from) * step / kSteps;
        QMouseEvent move(QEvent::MouseMove, QPointF(present), View()->mapToGlobal(QPointF(present)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(View(), &move);
    }
}

void GizmoHand::Release() {
    QTest::mouseRelease(View(), Qt::LeftButton, Qt::NoModifier, present);
}

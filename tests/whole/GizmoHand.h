#pragma once

#include "host/stage/gizmo/Gizmo.h"
#include "host/stage/windows/MainWindow.h"

#include <optional>
#include <QPoint>

/// The user's hand in the first view: it grips a part of the gizmo and drags it with the mouse.
class GizmoHand {
public:
    explicit GizmoHand(stage::MainWindow& mainWindow) : window(mainWindow) {}

    /// Chooses a tool, by the name of its action, and presses on a part of the gizmo that stands at a place
    /// along the world's axes. False if no pixel shows the part.
    bool Press(const char* tool, gizmo::GizmoMode mode, gizmo::GizmoPart part, const Vector3& place);
    /// Goes so far from where it pressed, in pixels and several steps.
    void Move(const QPoint& way);
    void Release();
    /// The pixel of the first view that shows a world point.
    static std::optional<QPoint> PixelOf(stage::MainWindow& mainWindow, const Vector3& point);

private:
    std::optional<QPoint> Grip(gizmo::GizmoMode mode, gizmo::GizmoPart part, const Vector3& place) const;
    QWidget* View() const;

    stage::MainWindow& window;
    QPoint start;
    QPoint present;
};

#pragma once

#include "host/stage/host/StageView.h"

#include <functional>
#include <QElapsedTimer>
#include <QPoint>
#include <QTimer>
#include <QWidget>

namespace stage {

class ViewArea;
class ViewHeader;

/// One 3D view: shows the picture of its number and turns the mouse into gestures.
class ViewWidget : public QWidget {
    Q_OBJECT
public:
    ViewWidget(ViewArea& viewArea, int viewNumber);

    /// True while the gizmo or a rectangle is dragged in this view; Escape gives it up.
    bool IsDragging() const { return gesture == Gesture::Gizmo || (gesture == Gesture::Select && moved); }
    /// True while the mouse does something in this view.
    bool IsBusy() const { return gesture != Gesture::None; }
    /// What the view waits for, or what it is out of the ordinary; empty else.
    QString ModeText() const;

    const int number;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    enum class Gesture { None, Select, Gizmo, Orbit, Pan, Look };

    StageView* View() const;
    void BeginLeft(const QMouseEvent& event);
    void FinishSelect(const QMouseEvent& event);
    void Navigate(const QPointF& delta);
    void TakeNavigation();
    bool MayNavigate();
    void EndGesture();
    void Fly();
    QRect Band() const;
    QRect BadgeRect() const;
    void PaintChrome(QPainter& painter);
    void PaintLabels(QPainter& painter);
    void PaintBadge(QPainter& painter);
    void PaintHint(QPainter& painter);

    ViewArea& area;
    ViewHeader* header;
    Gesture gesture = Gesture::None;
    Qt::MouseButton button = Qt::NoButton; ///< the one that holds the gesture
    QPointF pressed;
    QPointF last;
    bool moved = false;   ///< farther than a shaky click
    bool doubled = false; ///< the second press of a double click holds it
    QTimer refineTimer;   ///< draws once more, finely, when the picture stands still
    bool fine = false;
    QTimer flyTimer;
    QElapsedTimer flyClock;
    bool vertexHeld = false;
    unsigned flyKeys = 0; ///< bits in the order of the fly key table
};

} // namespace stage

#include "host/stage/windows/ViewWidget.h"

#include "host/engine/ClassDatabase.h"
#include "host/engine/mesh/GlmConvert.h"
#include "host/engine/Units.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/ScenePictures.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewHeader.h"
#include "host/stage/windows/ViewTool.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace stage {

namespace {
constexpr double kClickPixels = 4.0;
constexpr int kFlyIntervalMs = 15;
constexpr int kRefineMs = 250;
constexpr float kFlyUnitsPerSecond = engine::Metres(6.0f);
constexpr float kFastFactor = 4.0f;
constexpr int kVertexKey = Qt::Key_V; ///< held during a drag: to corners of meshes

struct FlyKey {
    int key;
    float right, up, forward;
};

constexpr FlyKey kFlyKeys[] = {
    {Qt::Key_W, 0, 0, 1},  {Qt::Key_S, 0, 0, -1}, {Qt::Key_D, 1, 0, 0},
    {Qt::Key_A, -1, 0, 0}, {Qt::Key_E, 0, 1, 0},  {Qt::Key_Q, 0, -1, 0},
};

unsigned FlyBit(int key) {
    for (unsigned i = 0; i < std::size(kFlyKeys); ++i) {
        if (kFlyKeys[i].key == key) {
            return 1u << i;
        }
    }
    return 0;
}
} // namespace

ViewWidget::ViewWidget(ViewArea& viewArea, int viewNumber)
    : QWidget(&viewArea), number(viewNumber), area(viewArea) {
    setObjectName(QString("View%1").arg(number));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(120, 90);
    header = new ViewHeader(area, *this);
    refineTimer.setInterval(kRefineMs);
    refineTimer.setSingleShot(true);
    connect(&refineTimer, &QTimer::timeout, this, [this] {
        fine = true;
        update();
    });
    flyTimer.setInterval(kFlyIntervalMs);
    connect(&flyTimer, &QTimer::timeout, this, &ViewWidget::Fly);
}

StageView* ViewWidget::View() const {
    return area.host.views.At(number);
}

void ViewWidget::resizeEvent(QResizeEvent*) {
    if (StageView* view = View()) {
        view->Resize(width(), height());
    }
}

bool ViewWidget::event(QEvent* event) {
    // While flying, the letters steer and are no shortcuts.
    if (event->type() == QEvent::ShortcutOverride && gesture == Gesture::Look &&
        FlyBit(static_cast<QKeyEvent*>(event)->key()) != 0) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    area.Activate(number);
    setFocus(Qt::MouseFocusReason);
    if (gesture != Gesture::None) {
        if (gesture == Gesture::Gizmo && event->button() == Qt::RightButton) {
            area.tool->Cancel();
            EndGesture();
        }
        return;
    }
    pressed = last = event->position();
    moved = doubled = false;
    button = event->button();
    if (button == Qt::LeftButton && BadgeRect().contains(event->position().toPoint())) {
        area.host.TakeView(number);
    } else if (button == Qt::MiddleButton) {
        gesture = event->modifiers() & Qt::ShiftModifier ? Gesture::Pan : Gesture::Orbit;
    } else if (button == Qt::RightButton) {
        gesture = Gesture::Look;
    } else if (button == Qt::LeftButton) {
        BeginLeft(*event);
    }
    update();
}

void ViewWidget::BeginLeft(const QMouseEvent& event) {
    if (event.modifiers() & Qt::AltModifier) {
        gesture = Gesture::Orbit;
    } else if (View() != nullptr && area.tool->Press(*View(), event.position())) {
        gesture = Gesture::Gizmo;
    } else {
        gesture = Gesture::Select;
    }
}

bool ViewWidget::MayNavigate() {
    const StageView* view = View();
    if (view == nullptr) {
        return false;
    }
    if (view->attachedTo != 0) {
        emit area.StatusText(tr("This view shows the film's camera. Click its badge to take it back."));
        return false;
    }
    const engine::SceneObject* camera = area.host.level.FindObject(view->CameraId());
    if (camera != nullptr && camera->notes.locked) {
        emit area.StatusText(
            tr("%1 is locked and stays where it is.").arg(QString::fromStdString(camera->name)));
        return false;
    }
    return true;
}

/// The view goes where the navigation is; if it looks through a camera, that goes along.
void ViewWidget::TakeNavigation() {
    StageView& view = *View();
    if (view.IsCameraNow()) {
        engine::SceneObject* camera = area.host.level.FindObject(view.CameraId());
        if (camera != nullptr) {
            area.commands.Move({{camera, mesh::FromGlm(view.navigation.CameraMatrix())}});
        }
    } else {
        view.ApplyNavigation();
    }
    update();
}

void ViewWidget::Navigate(const QPointF& delta) {
    if (!MayNavigate()) {
        return;
    }
    StageView& view = *View();
    ViewNavigation& navigation = view.navigation;
    const auto dx = static_cast<float>(delta.x());
    const auto dy = static_cast<float>(delta.y());
    const bool isFlat = view.IsFlatNow(); // which can't turn
    if (gesture == Gesture::Pan || (isFlat && (gesture == Gesture::Orbit || gesture == Gesture::Look))) {
        navigation.Pan(dx, dy, height());
    } else if (gesture == Gesture::Orbit && area.orbitsSelection && !area.host.level.selection.empty()) {
        navigation.OrbitAbout(area.picker.BoundsOf(area.host.level.selection).center, dx, dy);
    } else if (gesture == Gesture::Orbit) {
        navigation.Orbit(dx, dy);
    } else if (gesture == Gesture::Look) {
        navigation.Look(dx, dy);
    } else {
        return;
    }
    TakeNavigation();
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF delta = event->position() - last;
    last = event->position();
    if (gesture == Gesture::None) {
        if (View() != nullptr && area.tool->Hover(*View(), event->position())) {
            update();
        }
        return;
    }
    moved = moved || (event->position() - pressed).manhattanLength() > kClickPixels;
    if (gesture == Gesture::Gizmo) {
        area.tool->Drag(*View(), event->position(),
                        {(event->modifiers() & Qt::ControlModifier) != 0,
                         (event->modifiers() & Qt::ShiftModifier) != 0, vertexHeld});
    } else if (moved) {
        if (gesture == Gesture::Look && !flyTimer.isActive()) {
            flyTimer.start();
            flyClock.start();
        }
        Navigate(delta);
    }
    update();
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != button || gesture == Gesture::None) {
        return;
    }
    const Gesture ended = gesture;
    const bool click = !moved;
    if (ended == Gesture::Gizmo) {
        area.tool->Release();
    } else if (ended == Gesture::Select || (ended == Gesture::Orbit && click && button == Qt::LeftButton)) {
        FinishSelect(*event);
    }
    EndGesture();
    // Last: a menu runs its own loop.
    if (ended == Gesture::Look && click) {
        EditorObject* object = View() != nullptr ? area.picker.At(*View(), static_cast<float>(pressed.x()),
                                                                  static_cast<float>(pressed.y()))
                                                 : nullptr;
        emit area.MenuRequested(number, object, mapToGlobal(event->position().toPoint()));
    }
}

void ViewWidget::FinishSelect(const QMouseEvent& event) {
    if (View() == nullptr) {
        return;
    }
    ObjectList found;
    if (moved) {
        const QRectF band = Band();
        found =
            area.picker.InRectangle(*View(), static_cast<float>(band.left()), static_cast<float>(band.top()),
                                    static_cast<float>(band.right()), static_cast<float>(band.bottom()));
    } else if (EditorObject* object = area.picker.At(*View(), static_cast<float>(pressed.x()),
                                                     static_cast<float>(pressed.y()))) {
        found.push_back(object);
    }
    // With Alt, or by a double click, one of a group is chosen alone.
    const bool isSingle = !moved && (doubled || gesture == Gesture::Orbit);
    area.tool->Choose(found, event.modifiers(), moved,
                      isSingle ? ViewTool::Groups::Single : ViewTool::Groups::Whole);
}

void ViewWidget::EndGesture() {
    gesture = Gesture::None;
    button = Qt::NoButton;
    flyTimer.stop();
    flyKeys = 0;
    vertexHeld = false;
    update();
}

void ViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    doubled = gesture == Gesture::Select;
}

void ViewWidget::wheelEvent(QWheelEvent* event) {
    area.Activate(number);
    if (MayNavigate()) {
        View()->ZoomAt(static_cast<float>(event->angleDelta().y()) / 120.0f,
                       static_cast<float>(event->position().x()), static_cast<float>(event->position().y()));
        TakeNavigation();
    }
    event->accept();
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
    const StageView* view = View();
    if (event->key() == Qt::Key_Escape && IsDragging()) {
        if (gesture == Gesture::Gizmo) {
            area.tool->Cancel();
        }
        EndGesture();
    } else if (event->key() == Qt::Key_Escape && gesture == Gesture::None && view != nullptr &&
               view->IsCameraNow()) {
        area.SetKind(number, ViewKind::Perspective);
    } else if (event->key() == kVertexKey && gesture == Gesture::Gizmo) {
        vertexHeld = true;
    } else if (gesture == Gesture::Look && FlyBit(event->key()) != 0) {
        flyKeys |= FlyBit(event->key());
        moved = true;
        if (!flyTimer.isActive()) {
            flyTimer.start();
            flyClock.start();
        }
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ViewWidget::keyReleaseEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat()) {
        flyKeys &= ~FlyBit(event->key());
        vertexHeld = vertexHeld && event->key() != kVertexKey;
    }
    QWidget::keyReleaseEvent(event);
}

void ViewWidget::Fly() {
    const float seconds = std::min(0.1f, static_cast<float>(flyClock.restart()) / 1000.0f);
    if (flyKeys == 0 || !MayNavigate()) {
        return;
    }
    glm::vec3 way(0.0f);
    for (unsigned i = 0; i < std::size(kFlyKeys); ++i) {
        if (flyKeys & (1u << i)) {
            way += glm::vec3(kFlyKeys[i].right, kFlyKeys[i].up, kFlyKeys[i].forward);
        }
    }
    const bool fast = QApplication::keyboardModifiers() & Qt::ShiftModifier;
    View()->navigation.Fly(way * seconds * kFlyUnitsPerSecond * (fast ? kFastFactor : 1.0f));
    TakeNavigation();
}

void ViewWidget::focusOutEvent(QFocusEvent* event) {
    flyKeys = 0;
    QWidget::focusOutEvent(event);
}

void ViewWidget::leaveEvent(QEvent*) {
    if (gesture == Gesture::None && area.tool->Leave()) {
        update();
    }
}

QRect ViewWidget::Band() const {
    return QRectF(pressed, last).normalized().toAlignedRect();
}

QRect ViewWidget::BadgeRect() const {
    const StageView* view = View();
    return view != nullptr && view->attachedTo != 0 ? QRect(width() - 138, 10, 128, 26) : QRect();
}

void ViewWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QImage& picture = area.pictures->Draw(number, size() * devicePixelRatioF(), fine);
    if (!fine) {
        refineTimer.start();
    }
    fine = false;
    if (picture.isNull()) {
        painter.fillRect(rect(), QColor(70, 78, 86));
    } else {
        painter.drawImage(rect(), picture);
    }
    PaintChrome(painter);
    header->Follow();
    area.CountFrame();
    area.TellMode();
}

QString ViewWidget::ModeText() const {
    const StageView* view = View();
    if (gesture == Gesture::Gizmo) {
        return tr(
            "Drag: with Ctrl in steps, or free of them, with Shift onto surfaces, with V to corners. Escape "
            "puts it back.");
    }
    if (gesture == Gesture::Select && moved) {
        return tr("Let go to select what the rectangle meets: Shift adds, Ctrl takes out. Escape gives up.");
    }
    if (gesture == Gesture::Look && moved) {
        return tr("Look and fly: W A S D, E goes up, Q down, Shift is faster.");
    }
    if (view == nullptr || view->attachedTo != 0) {
        return view != nullptr ? tr("This view shows the film's camera. Click its badge to take it back.")
                               : QString();
    }
    const engine::SceneObject* camera =
        view->IsCameraNow() ? area.host.level.FindObject(view->CameraId()) : nullptr;
    if (camera == nullptr) {
        return {};
    }
    return (camera->notes.locked ? tr("Through %1, which is locked and stays where it is. Escape leaves.")
                                 : tr("Through %1, which goes along when you move. Escape leaves."))
        .arg(QString::fromStdString(camera->name));
}

void ViewWidget::PaintChrome(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    if (gesture == Gesture::Select && moved) {
        painter.setPen(QPen(QColor(255, 255, 255, 220), 1, Qt::DashLine));
        painter.setBrush(QColor(31, 122, 140, 50));
        painter.drawRect(QRectF(Band()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
    PaintLabels(painter);
    PaintBadge(painter);
    PaintHint(painter);
    if (area.ActiveView() == number && area.host.views.Count() > 1) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor::fromRgb(0xff1f7a8c), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

/// Labels of the level, over everything; the film's picture has none.
void ViewWidget::PaintLabels(QPainter& painter) {
    const StageView* view = View();
    const engine::LevelData* level = area.host.level.Data();
    if (view == nullptr || level == nullptr || view->attachedTo != 0) {
        return;
    }
    for (const auto& object : level->Objects()) {
        glm::vec2 pixel;
        const Vector3 place = object->World().Translation();
        if (object->Info().className != engine::kLabelClass || !object->IsShown() ||
            object->notes.text.empty() || !view->Project({place.x, place.y, place.z}, pixel)) {
            continue;
        }
        constexpr int kPad = 6;
        const QString text = QString::fromStdString(object->notes.text);
        QRectF box = painter.boundingRect(QRectF(pixel.x, pixel.y, 0, 0), Qt::AlignCenter, text);
        box.adjust(-kPad, -kPad / 2.0, kPad, kPad / 2.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(object->Info().IsSelected() ? QColor(200, 120, 20, 220) : QColor(20, 26, 32, 170));
        painter.drawRoundedRect(box, 4, 4);
        painter.setPen(QColor(240, 244, 247));
        painter.drawText(box, Qt::AlignCenter, text);
    }
}

void ViewWidget::PaintBadge(QPainter& painter) {
    const QRect badge = BadgeRect();
    if (badge.isEmpty()) {
        return;
    }
    const bool follows = area.host.FollowsPlugin(number);
    painter.setPen(Qt::NoPen);
    painter.setBrush(follows ? QColor(217, 130, 43, 235) : QColor(110, 110, 110, 220));
    painter.drawRoundedRect(badge, 13, 13);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, tr("\u25cf  Film camera  \u00d7"));
}

void ViewWidget::PaintHint(QPainter& painter) {
    const QString hint = area.pictures->Hint();
    if (hint.isEmpty()) {
        return;
    }
    const QRect box =
        painter.boundingRect(rect().adjusted(40, 40, -40, -40), Qt::AlignCenter | Qt::TextWordWrap, hint)
            .adjusted(-18, -12, 18, 12);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(20, 26, 32, 150));
    painter.drawRoundedRect(box, 8, 8);
    painter.setPen(QColor(240, 244, 247));
    painter.drawText(box, Qt::AlignCenter | Qt::TextWordWrap, hint);
}

} // namespace stage

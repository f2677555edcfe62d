#include "host/stage/windows/browse/ModelPicture.h"

#include "host/stage/render/Renderer.h"

#include <algorithm>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace stage {

namespace {
// Of the distance from which the model is seen whole.
constexpr float kNearest = 0.08f;
constexpr float kFarthest = 4.0f;
constexpr float kNotch = 120.0f; ///< eighths of a degree of the wheel
const QColor kBackdrop(58, 66, 74);
} // namespace

ModelPicture::ModelPicture(std::shared_ptr<const mesh::Mesh> mesh, QWidget* parent)
    : QWidget(parent), scene(std::move(mesh)) {
    setObjectName("ModelPicture");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(200, 200);
    setCursor(Qt::OpenHandCursor);
    ShowWhole();
}

ModelPicture::~ModelPicture() = default;

float ModelPicture::Aspect() const {
    return static_cast<float>(std::max(width(), 1)) / static_cast<float>(std::max(height(), 1));
}

void ModelPicture::SetMarks(ModelScene::Marks marks) {
    scene.marks = marks;
    update();
}

void ModelPicture::SetElement(int element) {
    scene.SetElement(element);
    update();
}

void ModelPicture::SetPose(std::vector<glm::mat4> nodes) {
    scene.SetPose(std::move(nodes));
    update();
}

void ModelPicture::SetClip(int clip, float seconds) {
    scene.SetClip(clip, seconds);
    update();
}

void ModelPicture::ShowWhole(int clip) {
    framedClip = clip;
    touched = false;
    scene.Frame(navigation, Aspect(), clip);
    wholeDistance = navigation.distance;
    update();
}

void ModelPicture::SetMoving(bool isMoving) {
    moving = isMoving;
    update();
}

void ModelPicture::resizeEvent(QResizeEvent*) {
    if (!touched) {
        ShowWhole(framedClip);
    }
}

void ModelPicture::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressed = last = event->position();
        turning = false;
        setCursor(Qt::ClosedHandCursor);
    }
}

void ModelPicture::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) == 0) {
        return;
    }
    const QPointF delta = event->position() - last;
    last = event->position();
    turning = turning || (last - pressed).manhattanLength() >= QApplication::startDragDistance();
    if (turning) {
        touched = true;
        navigation.Orbit(static_cast<float>(delta.x()), static_cast<float>(delta.y()));
        update();
    }
}

void ModelPicture::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    setCursor(Qt::OpenHandCursor);
    if (!turning && scene.Shown() != nullptr && scene.marks == ModelScene::Marks::Elements) {
        emit ElementClicked(
            scene.ElementAt(navigation, width(), height(),
                            {static_cast<float>(pressed.x()), static_cast<float>(pressed.y())}));
    }
}

void ModelPicture::mouseDoubleClickEvent(QMouseEvent*) {
    ShowWhole(framedClip);
    turning = true; // the release that follows is no click
}

void ModelPicture::wheelEvent(QWheelEvent* event) {
    touched = true;
    navigation.Zoom(static_cast<float>(event->angleDelta().y()) / kNotch);
    navigation.distance =
        std::clamp(navigation.distance, wholeDistance * kNearest, wholeDistance * kFarthest);
    update();
    event->accept();
}

void ModelPicture::Draw() {
    if (renderer == nullptr && failure.isEmpty()) {
        std::string error;
        renderer = render::Renderer::Create(error);
        failure = renderer == nullptr ? QString::fromStdString(error) : QString();
    }
    pixels = render::RenderImage();
    if (renderer == nullptr) {
        return;
    }
    const QSize size = this->size() * devicePixelRatioF();
    renderer->BeginFrame(scene.Update(navigation, size.height()));
    renderer->DrawView(scene.Camera(navigation, Aspect()), size.width(), size.height(), pixels,
                       moving ? 1.0f : 2.0f);
}

void ModelPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QString words = message;
    if (scene.Shown() != nullptr) {
        Draw();
        words = failure.isEmpty() ? QString()
                                  : tr("The picture can't be drawn on this machine.\n%1").arg(failure);
    }
    if (scene.Shown() != nullptr && !pixels.pixels.empty()) {
        painter.drawImage(rect(), QImage(reinterpret_cast<const uchar*>(pixels.pixels.data()), pixels.width,
                                         pixels.height, static_cast<qsizetype>(pixels.width) * 4,
                                         QImage::Format_RGB32));
    } else {
        painter.fillRect(rect(), kBackdrop);
    }
    painter.setPen(QColor(225, 231, 236));
    painter.drawText(rect().adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap, words);
}

} // namespace stage

#pragma once

#include "host/stage/windows/browse/ModelScene.h"

#include <QImage>
#include <QWidget>

namespace render {
class Renderer;
} // namespace render

namespace stage {

/// A picture of one mesh that the mouse turns: drag to look around it, the wheel to come nearer, a double
/// click to see it whole. It draws with a renderer of its own and only what it was given.
class ModelPicture : public QWidget {
    Q_OBJECT
public:
    /// The mesh may be null; then `message` stands in its place.
    ModelPicture(std::shared_ptr<const mesh::Mesh> mesh, QWidget* parent);
    ~ModelPicture() override;

    void SetMarks(ModelScene::Marks marks);
    void SetElement(int element);
    void SetPose(std::vector<glm::mat4> nodes);
    /// Keeps where the viewer stands.
    void SetClip(int clip, float seconds);
    /// From the front, as a whole; all that `clip` reaches too.
    void ShowWhole(int clip = -1);
    /// Draws fast instead of finely, for pictures that follow each other.
    void SetMoving(bool isMoving);
    const ModelScene& Scene() const { return scene; }

    QString message; ///< told instead of a picture

signals:
    /// A click that did not turn the model; -1 beside it.
    void ElementClicked(int element);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Draw();
    float Aspect() const;

    ModelScene scene;
    ViewNavigation navigation;
    std::unique_ptr<render::Renderer> renderer; ///< made at the first picture
    QString failure;                            ///< why there is none
    render::RenderImage pixels;
    QPointF pressed;
    QPointF last;
    float wholeDistance = 1.0f; ///< from where the model is seen whole
    int framedClip = -1;
    bool touched = false; ///< the user has turned or neared it
    bool turning = false;
    bool moving = false;
};

} // namespace stage

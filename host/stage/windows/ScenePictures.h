#pragma once

#include <memory>
#include <QImage>
#include <QString>

class Renderer;

namespace stage {

class ViewArea;

/// The pictures of the views: level, plug-in lines and gizmo, drawn by one renderer.
class ScenePictures {
public:
    explicit ScenePictures(ViewArea& viewArea);
    ~ScenePictures();

    /// Draws a view in a size of device pixels. Null without a renderer. Good until the next call.
    const QImage& Draw(int view, const QSize& size);
    /// What to tell the user in an empty view, "" if there is something to see.
    QString Hint() const;

    bool showGrid = true;

private:
    ViewArea& area;
    std::unique_ptr<Renderer> renderer;
    QString failure; ///< why there is no renderer
    QImage picture;
    bool drawing = false;
};

} // namespace stage

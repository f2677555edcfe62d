#pragma once

#include "host/stage/render/LevelScene.h"
#include "host/stage/windows/PictureDetail.h"

#include <memory>
#include <QElapsedTimer>
#include <QImage>
#include <QString>

namespace render {
class Renderer;
} // namespace render

namespace stage {

struct OverlayLine;
class StageView;
class ViewArea;

/// The pictures of the views: level, plug-in lines and gizmo, drawn by one renderer that is made at the
/// first picture.
class ScenePictures {
public:
    explicit ScenePictures(ViewArea& viewArea);
    ~ScenePictures();

    /// Draws a view in a size of device pixels; `fine` smooths edges at four times the work. Null without a
    /// renderer. Good until the next call.
    const QImage& Draw(int view, const QSize& size, bool fine);
    /// What to tell the user in an empty view, "" if there is something to see.
    QString Hint() const;

    bool showGrid = true;
    bool quickWhileMoving = false; ///< pictures that follow each other may be drawn less finely

private:
    render::LevelSceneOptions OptionsFor(const StageView& view) const;
    void AddLines(int view, const std::vector<OverlayLine>& lines);
    /// True for a picture that follows another as in a film.
    bool MoveClock();

    ViewArea& area;
    render::LevelScene level;
    std::unique_ptr<render::Renderer> renderer;
    QString failure; ///< why there is no renderer
    QImage picture;
    render::RenderImage image;
    QElapsedTimer sinceLast;
    PictureDetail detail;
    float seconds = 0.0f; ///< stands still while no film plays, so that the sky does not jump
    bool drawing = false;
};

} // namespace stage

#include "host/stage/windows/ScenePictures.h"

#include "host/stage/host/EditorHost.h"
#include "host/stage/render/Renderer.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewTool.h"

#include <cstring>
#include <glm/gtc/type_ptr.hpp>

namespace stage {

namespace {
/// Pictures that follow each other faster than this are a film.
constexpr qint64 kFilmMs = 200;

render::RenderStyle StyleOf(ViewShading shading) {
    return shading == ViewShading::Lit    ? render::RenderStyle::Lit
           : shading == ViewShading::Flat ? render::RenderStyle::Flat
                                          : render::RenderStyle::Wireframe;
}

render::RenderGrid GridOf(ViewKind kind) {
    return kind == ViewKind::Top     ? render::RenderGrid::Top
           : kind == ViewKind::Front ? render::RenderGrid::Front
                                     : render::RenderGrid::Side;
}
} // namespace

ScenePictures::ScenePictures(ViewArea& viewArea) : area(viewArea), level(viewArea.host.meshes) {
}

ScenePictures::~ScenePictures() = default;

QString ScenePictures::Hint() const {
    if (!failure.isEmpty()) {
        return QObject::tr("The 3D picture can't be drawn on this machine.\n%1").arg(failure);
    }
    const engine::LevelData* data = area.host.level.Data();
    if (data == nullptr || data->Objects().empty()) {
        return QObject::tr("An empty level.\nOpen one with Ctrl+O, or add objects with the Create menu.");
    }
    return {};
}

bool ScenePictures::MoveClock() {
    const qint64 elapsed = sinceLast.isValid() ? sinceLast.restart() : (sinceLast.start(), kFilmMs);
    if (elapsed < kFilmMs) {
        seconds += static_cast<float>(elapsed) / 1000.0f;
    }
    return elapsed < kFilmMs;
}

void ScenePictures::AddLines(int view, const std::vector<OverlayLine>& lines) {
    for (const OverlayLine& line : lines) {
        level.scene.lines.push_back(
            {glm::make_vec3(line.from), glm::make_vec3(line.to), glm::make_vec4(line.color)});
    }
    area.tool->AppendLines(*area.host.views.At(view), level.scene.overlay);
}

render::LevelSceneOptions ScenePictures::OptionsFor(const StageView& view) const {
    render::LevelSceneOptions options;
    options.editor = view.attachedTo == 0;
    options.hiddenId = options.editor ? view.CameraId() : 0;
    options.style = options.editor ? StyleOf(view.shading) : render::RenderStyle::Lit;
    options.plainBackground =
        options.editor && (view.IsFlatNow() || options.style == render::RenderStyle::Wireframe);
    if (showGrid) {
        options.grid = view.IsFlatNow() ? GridOf(view.Kind()) : render::RenderGrid::Ground;
    }
    return options;
}

const QImage& ScenePictures::Draw(int view, const QSize& size, bool fine) {
    const StageView* stageView = area.host.views.At(view);
    // A plug-in's render call may pump; a picture in a picture would use the scene that is being built.
    if (drawing || stageView == nullptr || size.isEmpty()) {
        return picture;
    }
    if (renderer == nullptr && failure.isEmpty()) {
        std::string error;
        renderer = render::Renderer::Create(error);
        failure = renderer == nullptr ? QString::fromStdString(error) : QString();
    }
    if (renderer == nullptr) {
        picture = QImage();
        return picture;
    }
    drawing = true;
    const bool isQuick = MoveClock() && quickWhileMoving && !fine;
    area.host.FollowCamera(view);
    // The plug-ins first: they pose the film that is drawn.
    const std::vector<OverlayLine>& lines = area.host.RenderPlugins(view);
    render::LevelSceneOptions options = OptionsFor(*stageView);
    options.seconds = seconds;
    options.viewer = glm::vec3(stageView->CameraMatrix()[3]);
    level.Update(area.host.level, options);
    AddLines(view, lines);
    QElapsedTimer spent;
    spent.start();
    const float drawn = fine ? 2.0f : isQuick ? detail.Detail() : 1.0f;
    using Shadows = render::Renderer::Shadows;
    renderer->BeginFrame(level.scene, drawn < 1.0f ? Shadows::Lagging : Shadows::Exact);
    if (renderer->DrawView(stageView->Camera(), size.width(), size.height(), image, drawn)) {
        if (isQuick) {
            detail.Note(static_cast<double>(spent.nsecsElapsed()) * 1e-6 * area.host.views.Count());
        }
        picture = QImage(reinterpret_cast<const uchar*>(image.pixels.data()), image.width, image.height,
                         static_cast<qsizetype>(image.width) * 4, QImage::Format_RGB32);
    } else {
        picture = QImage();
    }
    drawing = false;
    return picture;
}

} // namespace stage

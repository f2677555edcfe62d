#include "host/stage/headless/FilmPlayback.h"

#include "host/engine/Film.h"
#include "host/engine/LevelTrack.h"
#include "host/stage/headless/FilmSounds.h"
#include "host/stage/headless/OutputError.h"
#include "host/stage/render/CameraMath.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

constexpr double kWideFormat = 2.35;

const CFilmCameraTrack* ActiveCamera(const IFilm& film) {
    const CFilmLevelTrack* track = AsLevelTrack(film.mainTrack);
    return track != nullptr && track->cameraHolder != nullptr ? track->cameraHolder->activeCamera : nullptr;
}

/// Lets a sink hear the level's films for the life of the scope.
class SinkScope {
public:
    SinkScope(engine::Level& heardLevel, engine::IFilmSink& sink)
        : level(heardLevel), before(level.FilmSink()) {
        level.SetFilmSink(&sink);
    }
    ~SinkScope() { level.SetFilmSink(before); }
    SinkScope(const SinkScope&) = delete;
    SinkScope& operator=(const SinkScope&) = delete;

private:
    engine::Level& level;
    engine::IFilmSink* before;
};

/// A film that the host shows for the life of the scope.
class ShownFilm {
public:
    ShownFilm(HeadlessHost& filmHost, IFilm& shownFilm) : host(filmHost), film(shownFilm) {
        host.Begin(film);
    }
    ~ShownFilm() { host.End(film); }
    ShownFilm(const ShownFilm&) = delete;
    ShownFilm& operator=(const ShownFilm&) = delete;

private:
    HeadlessHost& host;
    IFilm& film;
};

} // namespace

void DrawBlackBars(render::RenderImage& image) {
    constexpr std::uint32_t kBlack = 0xff000000u;
    const int kept = static_cast<int>(std::lround(image.width / kWideFormat));
    const int bar = std::max((image.height - kept) / 2, 0);
    const auto count = static_cast<std::ptrdiff_t>(bar) * image.width;
    std::fill(image.pixels.begin(), image.pixels.begin() + count, kBlack);
    std::fill(image.pixels.end() - count, image.pixels.end(), kBlack);
}

FilmPlayback::FilmPlayback(HeadlessHost& filmHost, IFilm& playedFilm, const HeadlessOptions& asked,
                           const StopSignals& stopSignals)
    : host(filmHost), film(playedFilm), options(asked), signals(stopSignals), scene(filmHost.Meshes()) {
}

bool FilmPlayback::Prepare(std::string& error) {
    renderer = render::Renderer::Create(error);
    return renderer != nullptr;
}

void FilmPlayback::ForEachFrame(int first, int last, const std::function<void(int, float)>& onFrame) {
    const auto timeOf = [&](int frame) {
        return static_cast<float>(frame) / static_cast<float>(options.fps);
    };
    const ShownFilm shown(host, film);
    float previous = -1.0f;
    for (int frame = first; frame <= last; ++frame) {
        signals.Check();
        const float time = timeOf(frame);
        host.Pose(film, time, previous);
        onFrame(frame, time);
        previous = time;
    }
}

render::RenderCamera FilmPlayback::Camera() const {
    const float aspect = static_cast<float>(options.width) / static_cast<float>(options.height);
    if (const CFilmCameraTrack* camera = ActiveCamera(film)) {
        return render::MakeCamera(camera->cameraData->data.matrices[0], glm::radians(camera->fieldOfView),
                                  aspect, camera->nearPlane, camera->farPlane);
    }
    // Without a camera in force the level's own view shows the film.
    engine::ViewManager& views = host.Level().Views();
    if (views.Count() == 0) {
        views.SetCount(1);
    }
    const engine::View& view = *views.At(0);
    return render::MakeCamera(view.CameraMatrix(), view.GetFieldOfView(), aspect,
                              view.camera->data.recordNear, view.camera->data.recordFar);
}

const float* FilmPlayback::ListenerMatrix() const {
    const CFilmCameraTrack* camera = ActiveCamera(film);
    return camera != nullptr ? camera->cameraData->data.matrices[0] : nullptr;
}

bool FilmPlayback::HasBlackBars() const {
    const CFilmLevelTrack* track = AsLevelTrack(film.mainTrack);
    return track != nullptr && static_cast<const engine::LevelTrack*>(track)->BlackBars();
}

void FilmPlayback::Play(int first, int last,
                        const std::function<void(int, const render::RenderImage&)>& onFrame) {
    render::RenderImage image;
    ForEachFrame(first, last, [&](int frame, float time) {
        render::LevelSceneOptions look;
        look.editor = false;
        look.seconds = time;
        scene.Update(host.Level(), look);
        renderer->BeginFrame(scene.scene);
        if (!renderer->DrawView(Camera(), options.width, options.height, image,
                                options.draft ? 1.0f : 2.0f)) {
            throw OutputError("the GL driver can't draw " + std::to_string(options.width) + "x" +
                              std::to_string(options.height) + " pixels");
        }
        if (HasBlackBars()) {
            DrawBlackBars(image);
        }
        onFrame(frame, image);
    });
}

void FilmPlayback::PlaySound(int first, int last, FilmSounds& sounds) {
    const SinkScope listening(host.Level(), sounds);
    ForEachFrame(first, last, [&](int frame, float time) {
        const float heard = static_cast<float>(frame + 1 - first) / static_cast<float>(options.fps);
        sounds.MixUpTo(time, heard, ListenerMatrix());
    });
}

} // namespace headless

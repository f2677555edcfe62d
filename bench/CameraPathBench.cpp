#include "bench/EngineBenches.h"
#include "bench/TimelineCases.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelFile.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "host/stage/render/LevelScene.h"
#include "host/stage/render/Renderer.h"

#include <benchmark/benchmark.h>
#include <glm/gtc/matrix_transform.hpp>
#include <glm/gtc/type_ptr.hpp>

namespace films_bench {

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr float kTime = 8.0f; ///< seconds into the film, while "Along the dock" is in force
/// Keys in free points, and keys whose target is tied to an actor's bone.
constexpr const char* kFreeCamera = "Evening";
constexpr const char* kTiedCamera = "Along the dock";

/// The sample level at a time of its first film, in a view that looks over the harbour.
class SampleView {
public:
    SampleView() : host(level), scene(meshes) {
        const std::string folder = FILMS_SOURCE_DIR "/examples/harbour";
        meshes.SetFolder(folder);
        level.SetMeshLibrary(&meshes);
        engine::LoadLevel(level, folder + "/harbour.level");
        film = level.Data()->Films().FindFilm("Intro");
        plugin.Initialize(&host, 1, &host);
        plugin.currentFilm = film;
        plugin.currentTime = kTime;
        film->Activate();
        film->SetTime(kTime, IPluginImpl::kNoPrevious);
    }
    ~SampleView() {
        plugin.trackVisualizer.Reset();
        plugin.currentFilm = nullptr;
        plugin.OnEvent(EventCode::HostGoesAway, nullptr);
    }
    /// Visualizes a camera whose eye and target have so many times the keys of the sample.
    void Show(const char* name, int factor) {
        constexpr float kStep = 0.05f; // seconds between a key and its copies
        CFilmCameraTrack* camera = AsCameraTrack(film->FindCamera(name));
        IKeyFactory& factory = *level.Data()->Films().keyFactory;
        const std::vector<IFilmKey*> sources(camera->keys.begin(), camera->keys.end());
        for (IFilmKey* source : sources) {
            const bool isPoint =
                source->kind == KeyKind::CameraPosition || source->kind == KeyKind::CameraTarget;
            for (int copy = 1; isPoint && copy < factor; ++copy) {
                IFilmKey* key = factory.CreateKey(source->kind);
                key->CopyFrom(*source, 0);
                key->SetTime(source->time + static_cast<float>(copy) * kStep);
                camera->AddKey(key);
            }
            moved = source->kind == KeyKind::CameraTarget ? source : moved;
        }
        plugin.trackVisualizer.SetRenderTrack(camera);
    }
    /// What a view does for a path before it draws its picture; the lines that the plug-in draws.
    const std::vector<DrawnLine>& RenderPlugin() {
        host.lines.clear();
        plugin.OnRender();
        return host.lines;
    }
    /// A whole frame of the view. False if the machine can't draw it.
    bool DrawFrame() {
        const std::vector<DrawnLine>& lines = RenderPlugin();
        scene.Update(level, {});
        for (const DrawnLine& line : lines) {
            scene.scene.lines.push_back({glm::make_vec3(line.from.Data()), glm::make_vec3(line.to.Data()),
                                         glm::make_vec4(line.color.data())});
        }
        if (renderer == nullptr) {
            std::string error;
            renderer = render::Renderer::Create(error);
        }
        if (renderer == nullptr) {
            return false;
        }
        const render::RenderCamera camera{
            glm::lookAt(glm::vec3(-400, 600, 2400), glm::vec3(400, 140, 200), glm::vec3(0, 1, 0)),
            glm::perspective(0.9f, static_cast<float>(kWidth) / kHeight, ClipPlane::Near, ClipPlane::Far)};
        renderer->BeginFrame(scene.scene);
        return renderer->DrawView(camera, kWidth, kHeight, image);
    }

    IFilmKey* moved = nullptr; ///< a target key of the camera on show

private:
    mesh::GltfMeshLibrary meshes;
    engine::Level level;
    FrameHost host;
    render::LevelScene scene;
    IPluginImpl plugin;
    IFilm* film = nullptr;
    std::unique_ptr<render::Renderer> renderer;
    render::RenderImage image;
};

/// A frame of the sample level, with the path of a camera or, for null, without.
void SceneFrame(benchmark::State& state, const char* cameraName) {
    SampleView view;
    if (cameraName != nullptr) {
        view.Show(cameraName, 1);
    }
    if (!view.DrawFrame()) {
        state.SkipWithError("no GL driver");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(view.DrawFrame());
    }
}

/// Sampling, posing anew and handing over the lines while nothing changes.
void CameraPath(benchmark::State& state, const char* cameraName, int factor) {
    SampleView view;
    view.Show(cameraName, factor);
    for (auto _ : state) {
        benchmark::DoNotOptimize(view.RenderPlugin().size());
    }
    if (view.RenderPlugin().empty()) {
        state.SkipWithError("there is no path");
    }
}

/// The same with a key of the target that goes to and fro.
void CameraPathChanged(benchmark::State& state, const char* cameraName, int factor) {
    SampleView view;
    view.Show(cameraName, factor);
    float value[] = {0.0f, 1.0f, 2.0f};
    for (auto _ : state) {
        value[0] = 1.0f - value[0];
        view.moved->SetValue(value);
        benchmark::DoNotOptimize(view.RenderPlugin().size());
    }
}

} // namespace

void RegisterCameraPathBenches() {
    const auto addFrame = [](const char* name, const char* camera) {
        // The driver draws in threads of its own.
        constexpr double kSeconds = 1.0; // some eight pictures with the software driver
        benchmark::RegisterBenchmark(name, SceneFrame, camera)
            ->MeasureProcessCPUTime()
            ->MinTime(kSeconds)
            ->Unit(benchmark::kMillisecond);
    };
    addFrame("SceneFrame/harbour", nullptr);
    addFrame("SceneFrame/camera_path", kFreeCamera);
    const auto addPaths = [](const std::string& name, const char* camera) {
        for (const int factor : {1, 10}) {
            const std::string size = factor == 1 ? "" : "_10x";
            benchmark::RegisterBenchmark(("CameraPath/" + name + size).c_str(), CameraPath, camera, factor)
                ->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark(("CameraPathChanged/" + name + size).c_str(), CameraPathChanged,
                                         camera, factor)
                ->Unit(benchmark::kMicrosecond);
        }
    };
    addPaths("free", kFreeCamera);
    addPaths("tied", kTiedCamera);
}

} // namespace films_bench

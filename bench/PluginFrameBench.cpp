#include "bench/EngineBenches.h"
#include "bench/TimelineCases.h"
#include "plugin/PluginImpl.h"

#include <benchmark/benchmark.h>

namespace films_bench {

namespace {

void AddCamera(EngineFilm& film) {
    film.film->AddTrack(film.film->CreateLevelTrack());
    CFilmCameraTrack* camera = AsCameraTrack(film.film->CreateCameraTrack());
    camera->cameraName = "Camera";
    film.film->AddTrack(camera);
    IKeyFactory& keys = *film.level.GetLevelData()->filmManager->keyFactory;
    IFilmKey* cut = keys.CreateKey(KeyKind::Camera);
    cut->SetEndTime(1e6f);
    cut->SetValue(&camera->cameraName);
    film.film->mainTrack->AddKey(cut);
    camera->AddKey(keys.CreateKey(KeyKind::CameraPosition));
    camera->AddKey(keys.CreateKey(KeyKind::CameraTarget));
}

/// A playing film's frame: posing, firing, the event, and the camera copied into a view.
void SetFrame(benchmark::State& state) {
    EngineFilm film(kMedium);
    film.Build();
    AddCamera(film);
    FrameHost host(film.level);
    IPluginImpl plugin;
    plugin.Initialize(&host, 1, &host);
    plugin.currentFilm = film.film;
    plugin.AttachView(0);
    plugin.isPlaying = 1;
    float previous = 0.0f;
    int frame = 0;
    for (auto _ : state) {
        const float time = static_cast<float>(frame) * kFrameSeconds;
        plugin.SetFrame(time, previous);
        previous = time;
        frame = frame + 1 < kFrames ? frame + 1 : 0;
    }
    benchmark::DoNotOptimize(film.level.Data()->Objects().back()->World().m[0]);
    plugin.currentFilm = nullptr;
    plugin.OnEvent(EventCode::HostGoesAway, nullptr);
}

} // namespace

void RegisterPluginBenches() {
    benchmark::RegisterBenchmark("SetFrame/M", SetFrame);
}

} // namespace films_bench

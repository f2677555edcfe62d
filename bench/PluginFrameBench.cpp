#include "bench/EngineBenches.h"
#include "bench/TimelineCases.h"
#include "plugin/PluginImpl.h"
#include "processor/UpperHalves.h"

#include <benchmark/benchmark.h>
#include <QImage>

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

/// A fill of the toolkit's, as it does before each widget's paint: the smallest, for what it leaves behind.
class ToolkitPaint {
public:
    void Paint() { image.fill(++pixel); }
    /// Whether what it leaves can be seen at all on this processor.
    bool LeavesSomething() {
        processor::ClearUpperHalves();
        Paint();
        return processor::UpperHalvesInUse().value_or(false);
    }

private:
    static constexpr int kSide = 8; ///< pixels
    QImage image{kSide, kSide, QImage::Format_RGB32};
    unsigned pixel = 0;
};

/// A playing film's frame: posing, firing, the event, and the camera copied into a view. With `afterPaint`
/// the toolkit has painted before each frame, as it always has in an editor.
void SetFrame(benchmark::State& state, bool afterPaint) {
    ToolkitPaint toolkit;
    state.counters["registers_in_use"] = toolkit.LeavesSomething() ? 1.0 : 0.0;
    processor::ClearUpperHalves();
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
        if (afterPaint) {
            toolkit.Paint();
        }
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
    benchmark::RegisterBenchmark("SetFrame/M", SetFrame, /*afterPaint*/ false);
    benchmark::RegisterBenchmark("SetFrame/M_after_paint", SetFrame, /*afterPaint*/ true);
}

} // namespace films_bench

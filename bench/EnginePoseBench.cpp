#include "bench/EngineBare.h"
#include "bench/EngineBenches.h"
#include "bench/EngineCases.h"

#include <benchmark/benchmark.h>

namespace films_bench {

namespace {

std::vector<float> SequentialTimes() {
    std::vector<float> times(kFrames);
    for (int i = 0; i < kFrames; ++i) {
        times[static_cast<std::size_t>(i)] = static_cast<float>(i) * kFrameSeconds;
    }
    return times;
}

/// One iteration is one frame, the times taken in turn.
void PoseEngine(benchmark::State& state, const Case& size, const std::vector<float>& times) {
    EngineFilm film(size);
    film.Build();
    std::size_t frame = 0;
    for (auto _ : state) {
        film.film->SetTime(times[frame], -1.0f);
        frame = frame + 1 < times.size() ? frame + 1 : 0;
    }
    benchmark::DoNotOptimize(film.level.Data()->Objects().back()->World().m[0]);
}

void PoseBare(benchmark::State& state, const Case& size, const std::vector<float>& times) {
    BareFilm film(size);
    std::size_t frame = 0;
    for (auto _ : state) {
        film.Pose(times[frame]);
        frame = frame + 1 < times.size() ? frame + 1 : 0;
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(film.matrices.data());
}

/// A key is moved back and forth by a frame, and the film posed where it plays.
void DragKey(benchmark::State& state) {
    EngineFilm film(kMedium);
    film.Build();
    const std::vector<float> times = SequentialTimes();
    IFilmKey& key = **std::next(film.tracks[0]->keys.begin(), 250);
    const float home = key.GetTime();
    std::size_t frame = 0;
    for (auto _ : state) {
        key.SetTime(home + (frame % 2 == 0 ? kFrameSeconds : 0.0f));
        film.film->SetTime(times[frame], -1.0f);
        frame = frame + 1 < times.size() ? frame + 1 : 0;
    }
}

void Register(const std::string& name, const Case& size, const std::vector<float>& times) {
    benchmark::RegisterBenchmark(("pose_" + name + "/" + size.name).c_str(),
                                 [=](benchmark::State& state) { PoseEngine(state, size, times); });
    benchmark::RegisterBenchmark(("bare_" + name + "/" + size.name).c_str(),
                                 [=](benchmark::State& state) { PoseBare(state, size, times); });
}

} // namespace

void RegisterPoseBenches() {
    for (const Case& size : {kSmall, kMedium, kWide}) {
        Register("seq_300", size, SequentialTimes());
    }
    for (const Case& size : {kMedium, kWide}) {
        Register("rand_300", size, RandomTimes(size));
    }
    benchmark::RegisterBenchmark("drag_key_and_pose/M", DragKey);
}

} // namespace films_bench

#include "bench/EngineBare.h"
#include "bench/EngineBenches.h"
#include "bench/EngineCases.h"

#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <optional>

namespace films_bench {

namespace {

/// A key is made, put in the middle of a channel of 500 keys, taken out and destroyed.
void InsertKey(benchmark::State& state, const Case& size) {
    EngineFilm film(size);
    film.Build();
    IKeyFactory& factory = *film.level.Data()->Films().keyFactory;
    CFilmTrack& track = *film.tracks[0];
    film.film->SetTime(0.0f, -1.0f);
    for (auto _ : state) {
        IFilmKey* key = factory.CreateKey(KeyKind::Position);
        key->SetTime(50.1f);
        track.AddKey(key);
        benchmark::DoNotOptimize(track.GetPositionAt(50.0f));
        track.RemoveKey(key, true);
    }
}

/// Only the making is timed; what was made goes untimed.
void BuildEngine(benchmark::State& state) {
    for (auto _ : state) {
        EngineFilm film(kMedium);
        StartCold();
        const double start = ProcessorSeconds();
        film.Build();
        state.SetIterationTime(ProcessorSeconds() - start);
    }
}

void BuildBare(benchmark::State& state) {
    for (auto _ : state) {
        BareRecords records;
        StartCold();
        const double start = ProcessorSeconds();
        records.Build(kMedium);
        state.SetIterationTime(ProcessorSeconds() - start);
    }
}

/// Heap that tracks and keys take, in the counter `bytes_per_key`.
void Memory(benchmark::State& state) {
    double perKey = 0.0;
    for (auto _ : state) {
        EngineFilm film(kMedium);
        const struct mallinfo2 before = mallinfo2();
        film.Build();
        film.film->SetTime(0.0f, -1.0f);
        const struct mallinfo2 after = mallinfo2();
        const auto used = static_cast<double>(after.uordblks + after.hblkhd) -
                          static_cast<double>(before.uordblks + before.hblkhd);
        perKey = used / KeyCount(kMedium);
    }
    state.counters["bytes_per_key"] = perKey;
}

} // namespace

void RegisterEditBenches() {
    benchmark::RegisterBenchmark("insert_key/M", [](benchmark::State& state) { InsertKey(state, kMedium); });
    benchmark::RegisterBenchmark("insert_key/one_track", [](benchmark::State& state) {
        InsertKey(state, {"one_track", 1, 500});
    });
    benchmark::RegisterBenchmark("build/M", BuildEngine)->UseManualTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("bare_build/M", BuildBare)->UseManualTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("memory/M", Memory)->Iterations(1)->Unit(benchmark::kMillisecond);
}

} // namespace films_bench

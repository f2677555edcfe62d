#include "bench/EngineBare.h"
#include "bench/EngineBenches.h"
#include "bench/EngineCases.h"

#include "host/engine/FileHandles.h"
#include "host/engine/FilmManager.h"
#include "host/engine/LevelData.h"
#include "host/engine/LevelFile.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>

namespace films_bench {

namespace {

/// A folder that goes with it.
class Folder {
public:
    Folder() {
        char name[] = "/tmp/films-bench-XXXXXX";
        path = mkdtemp(name);
    }
    ~Folder() { std::filesystem::remove_all(path); }
    std::string File() const { return (path / "film.level").string(); }

private:
    std::filesystem::path path;
};

void Save(benchmark::State& state) {
    const Folder folder;
    EngineFilm film(kMedium);
    film.Build();
    for (auto _ : state) {
        engine::SaveLevel(film.level, folder.File());
    }
    const auto bytes = static_cast<double>(std::filesystem::file_size(folder.File()));
    EngineFilm empty({"empty", kMedium.objects, 0});
    empty.Build();
    engine::LevelMessages messages;
    const auto frame = static_cast<double>(engine::SerializeLevel(empty.level, "", messages).size());
    state.counters["bytes_per_key"] = (bytes - frame) / KeyCount(kMedium);
}

/// The bytes of the same level, written beside, flushed and renamed.
void PlainWrite(benchmark::State& state) {
    const Folder folder;
    EngineFilm film(kMedium);
    film.Build();
    engine::LevelMessages messages;
    const std::string bytes = engine::SerializeLevel(film.level, "", messages);
    std::string error;
    for (auto _ : state) {
        engine::ReplaceFile(folder.File(), bytes, error);
    }
}

void Load(benchmark::State& state) {
    const Folder folder;
    EngineFilm film(kMedium);
    film.Build();
    engine::SaveLevel(film.level, folder.File());
    for (auto _ : state) {
        engine::Level level;
        StartCold();
        const double start = ProcessorSeconds();
        engine::LoadLevel(level, folder.File());
        state.SetIterationTime(ProcessorSeconds() - start);
        if (level.Data()->Films().FilmAt(0)->tracks.size() != film.film->tracks.size()) {
            state.SkipWithError("the level did not come back");
        }
    }
}

void BareLoad(benchmark::State& state) {
    const Folder folder;
    EngineFilm film(kMedium);
    film.Build();
    engine::SaveLevel(film.level, folder.File());
    for (auto _ : state) {
        ArenaLevel level;
        StartCold();
        const double start = ProcessorSeconds();
        level.Load(folder.File());
        state.SetIterationTime(ProcessorSeconds() - start);
        if (level.KeyCount() != static_cast<std::size_t>(KeyCount(kMedium))) {
            state.SkipWithError("the keys did not come back");
        }
    }
}

} // namespace

void RegisterFileBenches() {
    benchmark::RegisterBenchmark("save/M", Save)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("plain_write/M", PlainWrite)->Unit(benchmark::kMillisecond)->UseRealTime();
    benchmark::RegisterBenchmark("load/M", Load)->UseManualTime()->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("arena_load/M", BareLoad)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace films_bench

#include "bench/EngineBenches.h"
#include "bench/EngineCases.h"
#include "host/engine/FilmManager.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/app/HeadlessStage.h"
#include "plugin/contract/EventCodes.h"

#include <benchmark/benchmark.h>
#include <filesystem>

namespace films_bench {

namespace {

constexpr int kFilms = 4;

/// The editor with the plug-in, without windows.
class Editor {
public:
    Editor() : stage({Folder(), Folder()}, {FILMS_PLUGIN}), commands(stage.host, stage.session) {}

    /// A new level of so many objects, all selected, with a few films.
    void Fill(int objects) {
        stage.session.New();
        engine::LevelData& data = *stage.Level().Data();
        for (int i = 0; i < objects; ++i) {
            data.AddLoaded(0).name = "Object" + std::to_string(i);
        }
        for (int i = 0; i < kFilms; ++i) {
            data.Films().AllocateFilm();
        }
        ObjectList all;
        stage.Level().CollectObjects(all);
        stage.host.Select(all);
        stage.host.plugins.SendEvent(EventCode::ObjectsCreated, nullptr);
    }

    stage::HeadlessStage stage;
    stage::ObjectCommands commands;

private:
    static std::string Folder() { return std::filesystem::temp_directory_path().string(); }
};

void LeaveLevel(benchmark::State& state, int objects) {
    Editor editor;
    for (auto _ : state) {
        editor.Fill(objects);
        const double start = ProcessorSeconds();
        editor.stage.session.New();
        state.SetIterationTime(ProcessorSeconds() - start);
    }
    if (!editor.stage.TakeTroubles().empty()) {
        state.SkipWithError("the plug-in could not be loaded");
    }
}

void CopyObjects(benchmark::State& state, int objects) {
    Editor editor;
    for (auto _ : state) {
        editor.Fill(objects);
        const double start = ProcessorSeconds();
        const int copies = editor.commands.Duplicate();
        state.SetIterationTime(ProcessorSeconds() - start);
        if (copies != objects) {
            state.SkipWithError("not all objects were copied");
        }
    }
}

} // namespace

void RegisterStageObjectsBenches() {
    for (const int objects : {500, 5000}) {
        benchmark::RegisterBenchmark(("CopyObjects/" + std::to_string(objects)).c_str(), CopyObjects, objects)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    for (const int objects : {4000, 40000}) {
        benchmark::RegisterBenchmark(("LeaveLevel/" + std::to_string(objects)).c_str(), LeaveLevel, objects)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
}

} // namespace films_bench

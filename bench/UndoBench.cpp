#include "bench/EngineBenches.h"
#include "bench/EngineCases.h"
#include "host/engine/FilmManager.h"
#include "host/stage/host/DryWrite.h"
#include "host/stage/host/ObjectCommands.h"
#include "host/stage/windows/app/HeadlessStage.h"

#include <benchmark/benchmark.h>
#include <filesystem>

namespace films_bench {

namespace {

constexpr int kSteps = 1000;
constexpr double kBytesPerMegabyte = 1e6;

/// The editor with the plug-in, without windows, and a level with the open film of a case.
class UndoFilm {
public:
    explicit UndoFilm(const Case& size)
        : stage({Folder(), Folder()}, {FILMS_PLUGIN}), commands(stage.host, stage.session) {
        engine::LevelData& data = *stage.Level().Data();
        film = data.Films().GetFilm(data.Films().AllocateFilm());
        film->SetName("M");
        film->AddTrack(film->CreateLevelTrack());
        for (int i = 0; i < size.objects; ++i) {
            engine::SceneObject& object = data.AddLoaded(0);
            object.name = "Object" + std::to_string(i);
            CFilmTrack* track = film->CreateObjectTrack();
            film->AddTrack(track);
            AsObjectTrack(track)->SetActor(&object, false);
            for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
                AddKeys(*track, kind, size.keys);
            }
            last = track;
        }
        data.filmManager->currentFilm = film;
        film->Activate();
        film->SetTime(1.0f, -1.0f);
        stage.session.History().Start();
    }
    ~UndoFilm() {
        film->Deactivate();
        stage.Level().Data()->filmManager->currentFilm = nullptr;
    }
    UndoFilm(const UndoFilm&) = delete;
    UndoFilm& operator=(const UndoFilm&) = delete;

    stage::LevelHistory& History() { return stage.session.History(); }
    /// A key in the middle of the last row goes to and fro between its neighbours.
    void DragKey(int step) {
        auto place = last->keys.begin();
        std::advance(place, last->keys.size() / 2);
        (*place)->SetTime((*place)->time + (step % 2 == 0 ? 0.05f : -0.05f));
    }

    stage::HeadlessStage stage;
    stage::ObjectCommands commands;
    IFilm* film = nullptr;

    static std::string Folder() { return std::filesystem::temp_directory_path().string(); }

private:
    void AddKeys(CFilmTrack& track, int kind, int count) {
        IKeyFactory& factory = *stage.Level().Data()->filmManager->keyFactory;
        for (int i = 0; i < count; ++i) {
            IFilmKey* key = factory.CreateKey(kind);
            key->time = static_cast<float>(i) * kKeySeconds;
            static_cast<CFilmVectorKey*>(key)->value = {KeyValue(0, kind, i, 0), 1.0f, 1.0f};
            track.AddKey(key);
        }
    }

    CFilmTrack* last = nullptr;
};

void UndoStep(benchmark::State& state, const Case& size) {
    UndoFilm level(size);
    int step = 0;
    for (auto _ : state) {
        level.DragKey(step++);
        const double start = ProcessorSeconds();
        const bool noted = level.History().Note();
        state.SetIterationTime(ProcessorSeconds() - start);
        if (!noted) {
            state.SkipWithError("no step was noted");
        }
    }
}

/// Of the dearest kind: an object comes back, for which the level is put together anew.
void UndoRestore(benchmark::State& state, const Case& size) {
    UndoFilm level(size);
    level.commands.Create({"EmptyObject", "Made", "", {}, nullptr, true});
    level.History().Note();
    for (auto _ : state) {
        const double start = ProcessorSeconds();
        const bool undone = level.History().Undo();
        state.SetIterationTime(ProcessorSeconds() - start);
        if (!undone || !level.History().Redo()) {
            state.SkipWithError("nothing was undone");
        }
    }
}

/// What UndoRestore is measured against: the same level from the bytes of its file.
void UndoLoad(benchmark::State& state, const Case& size) {
    UndoFilm level(size);
    stage::HeadlessStage other({UndoFilm::Folder(), UndoFilm::Folder()}, {FILMS_PLUGIN});
    stage::KeptWork work;
    work.bytes = stage::DryWrite(level.stage.host);
    for (auto _ : state) {
        const double start = ProcessorSeconds();
        const bool loaded = other.session.Recover(work);
        state.SetIterationTime(ProcessorSeconds() - start);
        if (!loaded) {
            state.SkipWithError("the level was not loaded");
        }
    }
}

void UndoMemory(benchmark::State& state, const Case& size) {
    for (auto _ : state) {
        UndoFilm level(size);
        const double start = ProcessorSeconds();
        for (int step = 0; step < kSteps; ++step) {
            level.DragKey(step);
            level.History().Note();
        }
        state.SetIterationTime(ProcessorSeconds() - start);
        state.counters["megabytes"] = static_cast<double>(level.History().Size()) / kBytesPerMegabyte;
    }
}

} // namespace

void RegisterUndoBenches() {
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run, kMedium)->UseManualTime()->Unit(benchmark::kMicrosecond);
    };
    add("UndoStep/M", UndoStep);
    add("UndoRestore/M", UndoRestore);
    add("UndoLoad/M", UndoLoad);
    benchmark::RegisterBenchmark("undo_memory/M", UndoMemory, kMedium)->UseManualTime();
}

} // namespace films_bench

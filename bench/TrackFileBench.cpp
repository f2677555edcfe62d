#include "bench/EngineBenches.h"
#include "bench/RowWindows.h"
#include "bench/TimelineCases.h"
#include "files/QuorlEdFileDialog.h"
#include "framework/TestHooks.h"
#include "resources/resource.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace films_bench {

namespace {

/// A folder that goes with it, for the file and as the program's own. The working directory is put back.
class Folder {
public:
    Folder() : before(std::filesystem::current_path()) {
        char name[] = "/tmp/films-bench-XXXXXX";
        path = mkdtemp(name);
        Hooks().fileDialog = [this](CFileDialog& shown) {
            dynamic_cast<CQuorlEdFileDialog&>(shown).programDir = path.string() + "/";
            shown.SetPathName((path / "walk.track").string());
            return IDOK;
        };
    }
    ~Folder() {
        Hooks().fileDialog = nullptr;
        std::filesystem::current_path(before);
        std::filesystem::remove_all(path);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

private:
    std::filesystem::path before;
    std::filesystem::path path;
};

void Run(TimelineFilm& timeline, UINT command) {
    for (CTrackCtrl* row : timeline.control->tracks) {
        if (row->kind == KeyKind::Position) {
            timeline.control->menuRow = row;
            break;
        }
    }
    timeline.control->OnCmdMsg(command, 0, nullptr, nullptr);
}

/// The command "Import" of a file of so many position keys in place of as many, up to the film shown anew;
/// its actor has as many keys of each of the other two kinds.
void ImportTrack(benchmark::State& state, int keys) {
    const Folder folder;
    TimelineFilm timeline({"import", /*actors*/ 1, keys});
    timeline.Show();
    Run(timeline, IDC_EXPORT_TRACK);
    TimelineFilm::Paint();
    const std::size_t views = timeline.CountViews();
    bool whole = views >= static_cast<std::size_t>(keys);
    for (auto _ : state) {
        const double start = ProcessorSeconds();
        Run(timeline, IDC_IMPORT_TRACK);
        state.SetIterationTime(ProcessorSeconds() - start);
        whole = whole && timeline.control->menuRow == nullptr && timeline.CountViews() == views;
        TimelineFilm::Paint();
    }
    if (!whole) {
        state.SkipWithError("the keys were not imported");
    }
}

} // namespace

void RegisterTrackFileBenches() {
    for (const int keys : {1'000, 10'000}) {
        benchmark::RegisterBenchmark(("ImportTrack/" + std::to_string(keys)).c_str(), ImportTrack, keys)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace films_bench

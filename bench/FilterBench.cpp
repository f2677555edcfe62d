#include "bench/EngineBenches.h"
#include "bench/TimelineCases.h"
#include "files/KeysFilterDlg.h"
#include "framework/TestHooks.h"
#include "resources/resource.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>

namespace films_bench {

namespace {

constexpr int kRepeats = 5;

CTrackCtrl* FirstActor(const TimelineFilm& timeline) {
    const auto& rows = timeline.control->tracks;
    return *std::ranges::find_if(
        rows, [](const CTrackCtrl* row) { return row->IsRoot() && AsObjectTrack(row->track) != nullptr; });
}

/// From OK of "Filter keys" for all tracks until the rows have been painted. Every other time two kinds of
/// three hide and all keys get another height.
void FilterKeys(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    TimelineFilm timeline(kMedium);
    timeline.Show();
    timeline.Unfold();
    Clock::time_point start;
    bool all = false;
    Hooks().modalDialog = [&](CDialog& shown) {
        auto& dialog = dynamic_cast<CKeysFilterDlg&>(shown);
        dialog.params[KeyKind::Rotation].visible = all;
        dialog.params[KeyKind::Scale].visible = all;
        for (KeyKindParams& record : dialog.params) {
            record.rectHeight = all ? 15 : 11;
        }
        dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED);
        start = Clock::now();
        dialog.SendMessage(WM_COMMAND, IDOK);
        return IDCANCEL;
    };
    for (auto _ : state) {
        StartCold();
        timeline.control->menuRow = FirstActor(timeline);
        timeline.control->OnCmdMsg(IDC_FILTER_KEYS, 0, nullptr, nullptr);
        TimelineFilm::Paint();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        all = !all;
    }
    state.counters["rows"] = static_cast<double>(timeline.control->visibleTracks.size());
    Hooks().modalDialog = nullptr;
}

} // namespace

void RegisterFilterBenches() {
    benchmark::RegisterBenchmark("FilterKeys/M", FilterKeys)
        ->UseManualTime()
        ->Iterations(kRepeats)
        ->Unit(benchmark::kMillisecond);
}

} // namespace films_bench

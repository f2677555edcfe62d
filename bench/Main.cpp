#include "bench/EngineBenches.h"
#include "framework/FilmsApplication.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

int main(int argc, char** argv) {
    // Windows are painted into memory unless the caller names a platform.
    setenv("QT_QPA_PLATFORM", "offscreen", /*overwrite*/ 0);
    const FilmsApplication application(argc, argv);
    films_bench::RegisterPoseBenches();
    films_bench::RegisterEditBenches();
    films_bench::RegisterFileBenches();
    films_bench::RegisterPluginBenches();
    films_bench::RegisterTimelineBenches();
    films_bench::RegisterTimelineDrawBenches();
    films_bench::RegisterTimelineWindowBenches();
    films_bench::RegisterKeyDragBenches();
    films_bench::RegisterKeyDragFrameBenches();
    films_bench::RegisterCameraPathBenches();
    films_bench::RegisterStageObjectsBenches();
    films_bench::RegisterAttributesBenches();
    films_bench::RegisterFilterBenches();
    films_bench::RegisterTrackFileBenches();
    films_bench::RegisterUndoBenches();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#include "bench/EngineBenches.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    films_bench::RegisterPoseBenches();
    films_bench::RegisterEditBenches();
    films_bench::RegisterFileBenches();
    films_bench::RegisterPluginBenches();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

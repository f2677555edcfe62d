#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

namespace films_bench {

/// Measures each call of `frame`, which takes its number, and tells how they spread, in milliseconds.
template <class Frame> void MeasureFrames(benchmark::State& state, Frame frame) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> milliseconds;
    int number = 0;
    for (auto _ : state) {
        const auto start = Clock::now();
        frame(number++);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        state.SetIterationTime(seconds);
        milliseconds.push_back(seconds * 1e3);
    }
    std::ranges::sort(milliseconds);
    const auto at = [&](double part) {
        return milliseconds[static_cast<std::size_t>(part * static_cast<double>(milliseconds.size() - 1))];
    };
    state.counters["p50_ms"] = at(0.5);
    state.counters["p95_ms"] = at(0.95);
    state.counters["p99_ms"] = at(0.99);
    state.counters["max_ms"] = at(1.0);
}

/// Registers a benchmark of so many frames.
template <class Run> void RegisterFrames(const char* name, Run run) {
    constexpr int kMeasured = 600;
    benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(kMeasured)->Unit(
        benchmark::kMillisecond);
}

} // namespace films_bench

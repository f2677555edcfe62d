#!/bin/sh
# Builds the benchmarks and prints each figure with its limit. Medians of several runs in mixed order, so
# that a busy machine hits both sides of a ratio alike. Usage: bench/run.sh [repetitions]
set -e
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" --preset release >/dev/null
cmake --build "$root/build/release" --target films_bench -- -j2 >/dev/null
result=$(mktemp)
trap 'rm -f "$result"' EXIT
"$root/build/release/bin/films_bench" --benchmark_repetitions="${1:-9}" --benchmark_min_time=0.05 \
  --benchmark_enable_random_interleaving=true --benchmark_format=json >"$result" 2>/dev/null
python3 "$root/bench/table.py" "$result"

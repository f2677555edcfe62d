#!/bin/sh
# Builds the benchmarks, measures each in a process of its own and prints each figure with its limit and verdict.
# Ends with 1 if one is over its limit. Usage: bench/run.sh [repetitions]
set -e
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" --preset release >/dev/null
cmake --build "$root/build/release" --target films_bench -- -j2 >/dev/null
python3 -B "$root/bench/table.py" "$root/build/release/bin/films_bench" "${1:-9}"

#!/usr/bin/env bash
# Builds the fuzz targets with clang under both sanitizers and runs each for a while: fuzz/run.sh [SECONDS] [TARGET...]
# JOBS is how many run at a time. Findings stand in out/fuzz/<target>/; the last lines tell runs and findings.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-600}
shift || true
targets=${*:-level track_file property_model key_params chunk_5750 chunk_5752 chunk_5780 chunk_5781 chunk_5782 chunk_5784 chunk_5785}

[ -f build/fuzz/build.ninja ] || cmake --preset fuzz
cmake --build build/fuzz --target films_fuzz_level_corpus $(printf 'films_fuzz_%s ' $targets)

mkdir -p out/fuzz/corpus/level out/fuzz/corpus/track_file out/fuzz/corpus/property_model out/fuzz/corpus/key_params
# Engine and plug-in each carry the file wrapper, so its type information stands twice: only copies of unlike size
# are an error.
export QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=1:detect_odr_violation=1
build/fuzz/bin/films_fuzz_level_corpus out/fuzz/corpus/level
cp examples/harbour/harbour.level out/fuzz/corpus/level/
cp host/stage/data/DefaultKeysParams.fkd out/fuzz/corpus/key_params/
python3 fuzz/track_corpus.py out/fuzz/corpus/track_file
python3 fuzz/chunk_corpus.py examples/harbour/harbour.level out/fuzz/corpus

run() {
  local target=$1 corpus=out/fuzz/corpus/${1#chunk_}
  mkdir -p "out/fuzz/$target"
  build/fuzz/bin/films_fuzz_"$target" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=20 -max_len=65536 \
    -len_control=0 -close_fd_mask=1 -artifact_prefix="out/fuzz/$target/" "$corpus" > "out/fuzz/$target/log" 2>&1 ||
    echo "$target: FINDING, see out/fuzz/$target/log"
}
export -f run
export seconds
printf '%s\n' $targets | xargs -P "${JOBS:-$(nproc)}" -I{} bash -c 'run {}'
for target in $targets; do
  printf '%-12s %s\n' "$target" "$(grep -E '^Done|SUMMARY|ERROR' "out/fuzz/$target/log" | tail -1)"
done

#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests.
#
#   ./test.sh                        the whole suite
#   ./test.sh --filter 'PlayTest.*'  the tests of that name (a gtest filter)
#   ./test.sh -R timeline            arguments go to ctest, which knows the test programs
#   ./test.sh --asan                 under the address and undefined behaviour sanitizers
#   ./test.sh --shuffle 7            the tests of each program in the random order of a seed
#   ./test.sh --alone                each test in a process of its own
set -euo pipefail
cd "$(dirname "$0")"

preset=debug
alone=
arguments=()
while [ $# -gt 0 ]; do
  case "$1" in
    --asan) preset=asan ;;
    --filter) export GTEST_FILTER=${2:?--filter needs a gtest filter}; shift ;;
    --shuffle) export GTEST_SHUFFLE=1 GTEST_RANDOM_SEED=${2:?--shuffle needs a seed}; shift ;;
    --alone) alone=1 ;;
    -h | --help) sed -n '2,9s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) arguments+=("$1") ;;
  esac
  shift
done

. tools/setup.sh
install_packages "$([ -n "${CI:-}" ] && echo desktop || echo test)"
build "$preset"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS=print_suppressions=0

if [ -n "$alone" ]; then
  exec python3 -B tests/alone.py "build/$preset/bin"
fi
results=$PWD/build/$preset/test-results
rm -rf "$results"
mkdir -p "$results"
status=0
ctest --test-dir "build/$preset" --output-on-failure -j "$(nproc)" --output-junit "$results/ctest.xml" \
  ${arguments[@]+"${arguments[@]}"} || status=$?
python3 -B tests/summary.py "$results/ctest.xml" "$results" || status=1
exit "$status"

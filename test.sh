#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests.
#
#   ./test.sh              the whole suite
#   ./test.sh -R Movies    arguments go to ctest
#   ./test.sh --asan       the suite under the address and undefined behaviour sanitizers
set -euo pipefail
cd "$(dirname "$0")"

preset=debug
if [ "${1:-}" = --asan ]; then
  preset=asan
  shift
fi

. tools/setup.sh
install_packages test
build "$preset"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0 UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS=print_suppressions=0
ctest --test-dir "build/$preset" --output-on-failure -j "$(nproc)" "$@"

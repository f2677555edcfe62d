#!/usr/bin/env bash
# Edits at random under the address and undefined behaviour sanitizers.
#
#   tests/editing/run.sh                 200,000 steps
#   tests/editing/run.sh STEPS [SEED]    the seed is printed, and taken from the clock without one
set -euo pipefail
cd "$(dirname "$0")/../.."

steps=${1:-200000}
. tools/setup.sh
install_packages test
build asan films_editing_tests
export QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8
export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export LSAN_OPTIONS=print_suppressions=0
exec build/asan/bin/films_editing_tests --steps "$steps" ${2:+--seed "$2"}

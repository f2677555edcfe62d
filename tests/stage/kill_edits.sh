#!/usr/bin/env bash
# Ends Stage in the middle of edits 100 times, mostly by kill -9, and looks whether the next start has the work.
#
#   tests/stage/kill_edits.sh [ROUNDS [SEED]]
set -euo pipefail
cd "$(dirname "$0")/../.."
build=build/debug
[ -f $build/build.ninja ] || cmake --preset debug > /dev/null
cmake --build $build --target films_edit_kills > /dev/null
exec $build/bin/films_edit_kills "${1:-100}" "${2:-1}"

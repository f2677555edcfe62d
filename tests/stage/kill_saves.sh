#!/usr/bin/env bash
# Kills Stage's saving 1,000 times and looks whether the level is whole each time.
#
#   tests/stage/kill_saves.sh [ROUNDS [SEED]]
set -euo pipefail
cd "$(dirname "$0")/../.."
build=build/debug
[ -f $build/build.ninja ] || cmake --preset debug > /dev/null
cmake --build $build --target films_save_kills > /dev/null
exec $build/bin/films_save_kills "${1:-1000}" "${2:-1}"

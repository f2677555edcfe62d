#!/usr/bin/env bash
# Installs what is missing, builds, and plays the sample film.
#
#   ./run.sh                        Stage with the sample level, its film playing (pictures without a display)
#   ./run.sh --headless --out DIR   the film as pictures, DIR/frame_0000.png onwards
#   ./run.sh --build-only           build/release/bin/stage and build/release/lib/films.so
set -euo pipefail
cd "$(dirname "$0")"

level=examples/harbour/harbour.level
film=Intro
out=out/frames
mode=auto
while [ $# -gt 0 ]; do
  case "$1" in
    --headless) mode=headless ;;
    --out) out=${2:?--out needs a folder}; shift ;;
    --build-only) mode=build ;;
    -h | --help) sed -n '2,6s/^# \{0,1\}//p' "$0"; exit 0 ;;
    *) echo "run.sh: unknown option '$1' (see --help)" >&2; exit 1 ;;
  esac
  shift
done

. tools/setup.sh
install_packages build
build release stage films

[ "$mode" = build ] && { echo "Built build/release/bin/stage and build/release/lib/films.so"; exit 0; }
if [ "$mode" = auto ] && { [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }; then
  exec build/release/bin/stage "$level" --film "$film" --play
fi
mkdir -p "$out"
build/release/bin/stage --render "$level" --film "$film" --out "$out"
echo "The film '$film' is in $out/frame_0000.png and following."

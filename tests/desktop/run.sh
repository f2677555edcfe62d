#!/usr/bin/env bash
# Drives Stage on a plain X desktop with real mouse and keys, and checks what they do.
#
#   tests/desktop/run.sh [SCREENSHOTS]      builds; pictures go to SCREENSHOTS (out/desktop)
#   tests/desktop/run.sh --stage PROGRAM [SCREENSHOTS]   the program as it is, installing nothing
set -euo pipefail

root=$(cd "$(dirname "$0")/../.." && pwd)
program=
if [ "${1:-}" = --stage ]; then
  program=${2:?--stage needs the program}
  shift 2
fi
case "${1:-}" in
  -h | --help) sed -n '2,5s/^# \{0,1\}//p' "$0"; exit 0 ;;
  -*) echo "run.sh: unknown option '$1' (see --help)" >&2; exit 1 ;;
esac
screenshots=${1:-$root/out/desktop}

if [ -z "$program" ]; then
  cd "$root"
  . tools/setup.sh
  install_packages desktop
  build debug stage films
  program=$root/build/debug/bin/stage
fi
exec python3 -B "$root/tests/desktop/check_desktop.py" --stage "$program" \
  --level "$root/examples/harbour/harbour.level" --screenshots "$screenshots"

#!/usr/bin/env bash
# Builds the tree with counters, runs the tests and prints the shares of lines and branches that they run, by folder:
#   tests/coverage.sh          (needs gcovr)
set -euo pipefail
cd "$(dirname "$0")/.."

cmake --preset coverage > /dev/null
cmake --build build/coverage
find build/coverage -name '*.gcda' -delete
# The desktop's windows are tried for what is seen, not for what they run.
ctest --test-dir build/coverage -LE desktop --output-on-failure
gcovr --root . --object-directory build/coverage -j "$(nproc)" --exclude-throw-branches \
  --filter '(plugin|timeline|keys|undo|helpers|files|framework|processor|host)/' \
  --json-summary build/coverage/summary.json
python3 -B tests/coverage_table.py build/coverage/summary.json

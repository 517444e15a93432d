#!/bin/bash
# Builds the release and prints the performance report; its options are passed on,
# for example: scripts/bench.sh --size 2592x1944 --mode 0 --section live
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${JQ_BENCH_BUILD_DIR:-$root/build-bench}
launcher=
if command -v ccache >/dev/null 2>&1; then launcher=-DCMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DJQ_BUILD_APPS=OFF \
  -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=ON $launcher >"$build.log" 2>&1 ||
  { cat "$build.log"; exit 1; }
cmake --build "$build" --target jqbench_report >>"$build.log" 2>&1 || { cat "$build.log"; exit 1; }
rm -f "$build.log"
JQ_BENCH_COMMIT=$(git -C "$root" describe --always --dirty 2>/dev/null || echo unknown)
export JQ_BENCH_COMMIT
exec "$build/bench/jqbench_report" "$@"

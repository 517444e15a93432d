#!/bin/bash
# Builds the library and its tests for 64-bit ARM with the cross compiler, against a
# Debian arm64 system root, and runs them under emulation: once on a processor that has
# NEON alone, and once on one with SVE. Installs what is missing.
#
# usage: scripts/test_aarch64.sh [--cpu neon|sve]... [--build DIR] [-- CTEST-OPTIONS]
#
#   --cpu    only on this processor
#   --build  build folder; the system root is made once, in DIR/root
#
# Emulation is slow: random tests run JQ_TEST_ROUNDS rounds, 5 when it is not set.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build-aarch64
processors=()
while [ $# -gt 0 ]; do
  case "$1" in
    --cpu) processors+=("$2"); shift 2 ;;
    --build) build=$2; shift 2 ;;
    --) shift; break ;;
    -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
  esac
done
[ ${#processors[@]} -gt 0 ] || processors=(neon sve)

scripts/install_dependencies.sh --aarch64
mkdir -p "$build"
build=$(cd "$build" && pwd)
root=$build/root
[ -d "$root" ] || scripts/make_aarch64_root.sh "$root"

options=(--toolchain "$PWD/cmake/AArch64Linux.cmake" -DJQ_AARCH64_ROOT="$root"
  -DCMAKE_BUILD_TYPE=Release -DJQ_WARNINGS_AS_ERRORS=ON -DJQ_BUILD_APPS=OFF -DJQ_BUILD_BENCH=OFF)
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${options[@]}"
cmake --build "$build"

export JQ_TEST_ROUNDS=${JQ_TEST_ROUNDS:-5}
for processor in "${processors[@]}"; do
  case "$processor" in
    neon) export QEMU_CPU=cortex-a72 ;;
    sve) export QEMU_CPU=max ;;
    *) echo "--cpu takes neon or sve, not '$processor'" >&2; exit 2 ;;
  esac
  echo "== $processor: emulating $QEMU_CPU, $JQ_TEST_ROUNDS rounds of each random test"
  scripts/run_tests.sh "$build" "$@"
done

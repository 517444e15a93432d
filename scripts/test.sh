#!/bin/bash
# Installs what is missing, configures, builds and runs every test.
#
# usage: scripts/test.sh [--compiler gcc|clang] [--qt 5|6] [--sanitize] [--werror]
#                        [--no-bench] [--no-libvips] [--separate] [--rooms "ROOM..."]
#                        [--build DIR] [-- CTEST-OPTIONS]
#
#   --compiler GCC when not given, or clang 14
#   --qt       major version of Qt, 5 when not given
#   --sanitize AddressSanitizer and UndefinedBehaviorSanitizer instead of a release
#              build; leaves the benches out
#   --werror   warnings are errors
#   --no-bench leave the benches out
#   --no-libvips  build without libvips, and so without Deep Zoom
#   --separate compile every source by itself; otherwise several are compiled as one, which
#              takes half the time where all are new, but longer after a small change
#   --rooms    only the tests in these folders of tests/
#   --build    build folder, one for each combination when not given
set -euo pipefail
cd "$(dirname "$0")/.."

compiler=gcc
qt=5
sanitize=
werror=OFF
bench=ON
unity=ON
libvips=ON
rooms=
build=
while [ $# -gt 0 ]; do
  case "$1" in
    --compiler) compiler=$2; shift 2 ;;
    --qt) qt=$2; shift 2 ;;
    --sanitize) sanitize=1; bench=OFF; shift ;;
    --werror) werror=ON; shift ;;
    --no-bench) bench=OFF; shift ;;
    --no-libvips) libvips=OFF; shift ;;
    --separate) unity=OFF; shift ;;
    --rooms) rooms=${2// /;}; shift 2 ;;
    --build) build=$2; shift 2 ;;
    --) shift; break ;;
    -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
  esac
done

name=build-qt$qt
packages=(--readers --qt "$qt")
options=(-DJQ_QT_MAJOR="$qt" -DJQ_WARNINGS_AS_ERRORS=$werror -DJQ_BUILD_BENCH=$bench
  -DJQ_BUILD_APPS=ON -DJQ_BUILD_TESTS=ON "-DJQ_TEST_ROOMS=$rooms"
  -DJQ_LIBVIPS=$libvips -DCMAKE_UNITY_BUILD=$unity)
# The window takes long to build and is tried in its own room alone.
case ";$rooms;" in
  ';;' | *';scope;'*) ;;
  *) options+=(-DJQ_BUILD_SCOPE=OFF) ;;
esac
[ $libvips = OFF ] || packages+=(--libvips)
case "$compiler" in
  gcc) ;;
  clang)
    name=build-clang-qt$qt
    packages+=(--clang)
    options+=(-DCMAKE_CXX_COMPILER=clang++-14) ;;
  *) echo "--compiler takes gcc or clang, not '$compiler'" >&2; exit 2 ;;
esac
scripts/install_dependencies.sh "${packages[@]}"

if [ -n "$sanitize" ]; then
  name+=-sanitize
  # Between -O0, which runs for ages, and -O2, which builds for ages. No
  # debug information: a finding still names its functions. The set is spelled out
  # so that NDEBUG stays off and assertions hold too.
  options+=(-DCMAKE_BUILD_TYPE=Sanitize -DCMAKE_CXX_FLAGS_SANITIZE=-O1
    "-DJQ_SANITIZE=address;undefined")
  export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:detect_stack_use_after_return=1}
  export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
else
  options+=(-DCMAKE_BUILD_TYPE=Release -DJQ_SANITIZE=)
fi
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

: "${build:=$name}"
cmake -S . -B "$build" -G Ninja "${options[@]}"
cmake --build "$build"
scripts/run_tests.sh "$build" "$@"
